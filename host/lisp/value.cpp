#include "host/lisp/value.h"

#include <cmath>
#include <tuple>
#include <vector>

#include "host/lisp/code.h"

namespace lisp {

Value::Value(std::wstring_view text) : type_(Type::text) {
  auto* made = new Text;
  made->text = text;
  as_.counted = made;
  retain();
}

Value Value::lengthened(const Value& text, std::wstring_view end) {
  text.text();  // so that no text is ever in more than two parts
  Value made(end);
  reinterpret_cast<Text*>(made.as_.counted)->begin = text;
  return made;
}

void Value::join(const Text& text) {
  auto& begin = *reinterpret_cast<Text*>(text.begin.as_.counted);
  if (begin.references == 1) {
    // Nobody else sees the beginning: it grows where it is.
    begin.text += text.text;
    text.text = std::move(begin.text);
  } else {
    text.text.insert(0, begin.text);
  }
  text.begin = Value();
}

Value::Value(Function* function) : type_(Type::function) {
  as_.counted = function;
  retain();
}

Value::Value(Opaque* opaque) : type_(Type::opaque) {
  as_.counted = opaque;
  retain();
}

bool Value::same(const Value& other) const {
  if (type_ != other.type_) return false;
  switch (type_) {
    case Type::nil:
      return true;
    case Type::integer:
      return as_.integer == other.as_.integer;
    case Type::real:
      return as_.real == other.as_.real;
    default:
      return as_.entity == other.as_.entity;
  }
}

void Value::release() {
  switch (type_) {
    case Type::cons:
      return freeList(reinterpret_cast<Cons*>(as_.counted));
    case Type::text:
      delete reinterpret_cast<Text*>(as_.counted);
      return;
    case Type::function:
      return freeFunction(static_cast<Function*>(as_.counted));
    default:
      delete static_cast<Opaque*>(as_.counted);
  }
}

void Value::freeList(Cons* list) {
  Counted* falling = list;
  falling->nextFalling = nullptr;
  while (falling) {
    auto* const freed = static_cast<Cons*>(falling);
    falling = falling->nextFalling;
    for (Value* const part : {&freed->car, &freed->cdr}) {
      if (!part->isCons()) continue;
      part->type_ = Type::nil;
      Counted* const held = part->as_.counted;
      if (--held->references == 0) held->nextFalling = std::exchange(falling, held);
    }
    delete freed;
  }
}

void Value::freeFunction(Function* function) {
  // What falls free inside a function's program comes back to here.
  static thread_local Counted* falling = nullptr;
  static thread_local bool freeing = false;
  function->nextFalling = std::exchange(falling, function);
  if (freeing) return;
  freeing = true;
  while (falling) {
    auto* const freed = static_cast<Function*>(falling);
    falling = falling->nextFalling;
    delete freed;
  }
  freeing = false;
}

Function::Function() = default;
Function::~Function() = default;

namespace {

bool equalAtoms(const Value& a, const Value& b, double fuzz) {
  if (a.isNumber() && b.isNumber()) {
    if (a.isInteger() && b.isInteger()) return a.integer() == b.integer();
    return std::abs(a.number() - b.number()) <= fuzz;
  }
  if (a.isText() && b.isText()) return a.text() == b.text();
  return a.same(b);
}

}  // namespace

size_t lengthOf(const Value& list) {
  size_t length = 0;
  for (const Value* at = &list; at->isCons(); at = &cdr(*at)) ++length;
  return length;
}

bool equalValues(const Value& a, const Value& b, double fuzz) {
  if (!a.isCons() || !b.isCons()) return equalAtoms(a, b, fuzz);
  // What is still to be compared; lists may be deeper than the stack.
  std::vector<std::pair<const Value*, const Value*>> waiting;
  const Value *left = &a, *right = &b;
  for (;;) {
    while (left->isCons() && right->isCons() && !left->same(*right)) {
      const Value &carLeft = car(*left), &carRight = car(*right);
      if (carLeft.isCons() && carRight.isCons()) {
        waiting.emplace_back(&carLeft, &carRight);
      } else if (!equalAtoms(carLeft, carRight, fuzz)) {
        return false;
      }
      left = &cdr(*left);
      right = &cdr(*right);
    }
    if (!equalAtoms(*left, *right, fuzz)) return false;
    if (waiting.empty()) return true;
    std::tie(left, right) = waiting.back();
    waiting.pop_back();
  }
}

}  // namespace lisp
