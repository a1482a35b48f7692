#include "host/lisp/builtins.h"

#include <numbers>

#include "host/lisp/printer.h"

namespace lisp {

void defineBuiltins(Interpreter& lisp) {
  for (const auto table :
       {listBuiltins(), numberBuiltins(), stringBuiltins(), controlBuiltins(), outputBuiltins(),
        fileBuiltins(), geometryBuiltins(), unitBuiltins(), vlListBuiltins(), vlStringBuiltins()}) {
    for (const Builtin& row : table) lisp.define(row.name, row.body, row.fewest, row.most);
  }
  Symbol* const pi = lisp.intern(L"PI");
  pi->value = Value(std::numbers::pi);
  pi->constant = true;
}

void failType(const wchar_t* predicate, const Value& value) {
  throw LispError(std::wstring(L"bad argument type: ") + predicate + L" " + printed(value, Style::readable));
}

wchar_t characterOf(const Value& code) {
  if (!code.isInteger()) failType(L"fixnump:", code);
  if (code.integer() < 0 || code.integer() > 0x10FFFF) {
    throw LispError(L"bad argument value: character code " + std::to_wstring(code.integer()));
  }
  return static_cast<wchar_t>(code.integer());
}

std::vector<Value> elementsOf(const Value& list) {
  std::vector<Value> elements;
  const Value* at = &list;
  for (; at->isCons(); at = &cdr(*at)) elements.push_back(car(*at));
  if (at->isTrue()) failType(L"listp", list);
  return elements;
}

Value listOf(std::span<const Value> values) {
  ListBuilder list;
  for (const Value& value : values) list.add(value);
  return list.take();
}

}  // namespace lisp
