#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

/// Values of the host's LISP. The language has no operation that changes a cons or a string, so that
/// values form no cycles and counting references frees each exactly when it is last used.

namespace lisp {

class Value;
struct Symbol;
struct Cons;
struct Text;
struct Function;
struct Opaque;

enum class Type : uint8_t {
  nil,
  integer,
  real,
  symbol,
  entity,
  // From here on the value counts a reference to an object.
  text,
  cons,
  function,
  opaque,
};

/// Base of all objects that values share. Counts are not atomic: one thread runs all LISP.
struct Counted {
  union {
    uint32_t references = 0;
    /// Of an object that is being freed, which nothing counts any more.
    Counted* nextFalling;
  };
};

class Value {
 public:
  Value() = default;
  Value(int32_t value) : type_(Type::integer) {
    as_.integer = value;
  }  // NOLINT: values convert by themselves
  Value(double value) : type_(Type::real) { as_.real = value; }
  Value(Symbol* symbol) : type_(Type::symbol) { as_.symbol = symbol; }
  explicit Value(std::wstring_view text);
  explicit Value(Cons* cons) : type_(Type::cons) { as_.counted = reinterpret_cast<Counted*>(cons), retain(); }
  explicit Value(Function* function);
  explicit Value(Opaque* opaque);
  static Value entity(int64_t name) {
    Value made;
    made.type_ = Type::entity;
    made.as_.entity = name;
    return made;
  }

  Value(const Value& other) : as_(other.as_), type_(other.type_) { retain(); }
  Value(Value&& other) noexcept : as_(other.as_), type_(std::exchange(other.type_, Type::nil)) {}
  Value& operator=(Value other) noexcept {
    swap(*this, other);
    return *this;
  }
  friend void swap(Value& a, Value& b) noexcept {
    std::swap(a.as_, b.as_);
    std::swap(a.type_, b.type_);
  }
  ~Value() {
    if (isCounted() && --as_.counted->references == 0) release();
  }

  Type type() const { return type_; }
  bool isNil() const { return type_ == Type::nil; }
  bool isTrue() const { return type_ != Type::nil; }
  bool isInteger() const { return type_ == Type::integer; }
  bool isReal() const { return type_ == Type::real; }
  bool isNumber() const { return isInteger() || isReal(); }
  bool isSymbol() const { return type_ == Type::symbol; }
  bool isText() const { return type_ == Type::text; }
  bool isCons() const { return type_ == Type::cons; }
  bool isList() const { return isNil() || isCons(); }
  bool isFunction() const { return type_ == Type::function; }

  // Only for values of the type.
  int32_t integer() const { return as_.integer; }
  double real() const { return as_.real; }
  double number() const { return isInteger() ? as_.integer : as_.real; }
  Symbol* symbol() const { return as_.symbol; }
  int64_t entityName() const { return as_.entity; }
  const std::wstring& text() const;
  const Cons& cons() const;
  Function* function() const;
  Opaque* opaque() const;
  /// The text with `end` behind it. Costs the length of `end` alone, over a row of such steps of which only
  /// the last one's result is kept.
  static Value lengthened(const Value& text, std::wstring_view end);
  /// The same object, or the same plain value.
  bool same(const Value& other) const;

 private:
  bool isCounted() const { return type_ >= Type::text; }
  void retain() {
    if (isCounted()) ++as_.counted->references;
  }
  /// Frees what the last reference held. Lists may be a hundred thousand deep in either direction, and so may
  /// functions that hold functions: there is no recursion along them, and no need of memory.
  void release();
  static void freeList(Cons* list);
  static void freeFunction(Function* function);
  static void join(const Text& text);

  union {
    int32_t integer;
    double real;
    Symbol* symbol;
    int64_t entity;
    Counted* counted;
  } as_{};
  Type type_ = Type::nil;
};

struct Cons : Counted {
  Value car, cdr;
};

/// A text may still be in two parts, so that programs can make a long one piece by piece: then `text` is
/// its end, and `begin` holds what stands before it.
struct Text : Counted {
  mutable std::wstring text;
  mutable Value begin;
};

/// Something of the host's that LISP only hands around: selection sets, files. The last reference
/// destroys it.
struct Opaque : Counted {
  virtual ~Opaque() = default;
  /// What `type` answers.
  virtual std::wstring_view typeName() const = 0;
  virtual std::wstring print() const = 0;
};

inline const std::wstring& Value::text() const {
  const Text& own = *reinterpret_cast<const Text*>(as_.counted);
  if (!own.begin.isNil()) join(own);
  return own.text;
}
inline const Cons& Value::cons() const { return *reinterpret_cast<Cons*>(as_.counted); }

inline Value cons(Value car, Value cdr) {
  auto* made = new Cons;
  made->car = std::move(car);
  made->cdr = std::move(cdr);
  return Value(made);
}
inline const Value& car(const Value& list) { return list.cons().car; }
inline const Value& cdr(const Value& list) { return list.cons().cdr; }

/// Builds a list from front to back.
class ListBuilder {
 public:
  void add(Value value) {
    auto* made = new Cons;
    made->car = std::move(value);
    if (tail_) {
      tail_->cdr = Value(made);
    } else {
      head_ = Value(made);
    }
    tail_ = made;
  }
  /// The end of a list that isn't nil; a dotted pair's second half.
  void end(Value rest) {
    if (tail_) {
      tail_->cdr = std::move(rest);
    } else {
      head_ = std::move(rest);
    }
  }
  Value take() {
    tail_ = nullptr;
    return std::move(head_);
  }

 private:
  Value head_;
  Cons* tail_ = nullptr;
};

/// Walks the elements of a list up to its last cons.
class Elements {
 public:
  explicit Elements(const Value& list) : list_(&list) {}
  struct Iterator {
    const Value* at;
    const Value& operator*() const { return car(*at); }
    Iterator& operator++() {
      at = &cdr(*at);
      return *this;
    }
    bool operator!=(std::nullptr_t) const { return at->isCons(); }
  };
  Iterator begin() const { return {list_}; }
  std::nullptr_t end() const { return nullptr; }

 private:
  const Value* list_;
};

/// The number of elements up to the last cons.
size_t lengthOf(const Value& list);

/// As `equal` compares; reals within `fuzz`.
bool equalValues(const Value& a, const Value& b, double fuzz = 0.0);

}  // namespace lisp
