#pragma once

#include <limits>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/lisp/value.h"

/// Symbols and functions of the host's LISP.

namespace lisp {

class Interpreter;
struct Lambda;
struct Function;

/// Interned; one for each name and interpreter. A value of nil is unbound.
struct Symbol {
  std::wstring name;
  Value value;
  /// `T`, `PI` and the functions of the language may be set, but not by `foreach` and the like.
  bool constant = false;
};

using Arguments = std::span<const Value>;

/// Raises "bad argument type: PREDICATE VALUE".
[[noreturn]] void failType(const wchar_t* predicate, const Value& value);

/// A call of a function written in C++. The arguments are valid for the length of the call.
struct Call {
  Interpreter& lisp;
  Arguments args;
  const Function& function;

  size_t count() const { return args.size(); }
  bool has(size_t place) const { return place < args.size(); }
  const Value& operator[](size_t place) const { return args[place]; }

  // The argument in its type; another raises the language's "bad argument type".
  double number(size_t place) const { return checked<&Value::isNumber>(place, L"numberp:").number(); }
  int32_t integer(size_t place) const { return checked<&Value::isInteger>(place, L"fixnump:").integer(); }
  const std::wstring& text(size_t place) const { return checked<&Value::isText>(place, L"stringp").text(); }
  const Value& list(size_t place) const { return checked<&Value::isList>(place, L"listp"); }
  Symbol* symbol(size_t place) const { return checked<&Value::isSymbol>(place, L"symbolp").symbol(); }

 private:
  template <bool (Value::*isOfType)() const>
  const Value& checked(size_t place, const wchar_t* predicate) const {
    const Value& value = args[place];
    if (!(value.*isOfType)()) failType(predicate, value);
    return value;
  }
};

using Native = Value (*)(const Call&);

constexpr int anyCount = std::numeric_limits<int>::max();

struct Function : Counted {
  enum class Kind : uint8_t { subr, usubr, external, specialForm };

  Kind kind = Kind::subr;
  std::wstring name;
  Native native = nullptr;
  int fewest = 0, most = anyCount;
  /// What `define` was given, for functions of the host.
  void* context = nullptr;
  int code = 0;
  std::unique_ptr<Lambda> lambda;

  Function();
  ~Function();
};

inline Function* Value::function() const { return reinterpret_cast<Function*>(as_.counted); }
inline Opaque* Value::opaque() const { return static_cast<Opaque*>(as_.counted); }

}  // namespace lisp
