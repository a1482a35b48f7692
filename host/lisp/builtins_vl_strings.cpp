#include "host/lisp/builtins.h"

namespace lisp {
namespace {

Value textValue(std::wstring_view text) { return Value(text); }

size_t optionalPlace(const Call& call, size_t place) {
  if (!call.has(place) || call[place].isNil()) return 0;
  const int32_t value = call.integer(place);
  if (value < 0) failType(L"non-negative integer:", call[place]);
  return static_cast<size_t>(value);
}

// Places count from 0.
Value search(const Call& call) {
  const std::wstring &pattern = call.text(0), &text = call.text(1);
  const size_t start = optionalPlace(call, 2);
  if (start > text.size()) return {};
  const size_t found = text.find(pattern, start);
  return found == std::wstring::npos ? Value() : Value(static_cast<int32_t>(found));
}

Value subst(const Call& call) {
  std::wstring text = call.text(2);
  const size_t start = optionalPlace(call, 3);
  const size_t found = start > text.size() ? std::wstring::npos : text.find(call.text(1), start);
  if (found != std::wstring::npos) text.replace(found, call.text(1).size(), call.text(0));
  return textValue(text);
}

Value translate(const Call& call) {
  const std::wstring &from = call.text(0), &to = call.text(1);
  std::wstring text = call.text(2);
  for (wchar_t& c : text) {
    const size_t place = from.find(c);
    if (place < to.size()) c = to[place];
  }
  return textValue(text);
}

enum class Side { left, right, both };

template <Side side>
Value trim(const Call& call) {
  const std::wstring& dropped = call.text(0);
  std::wstring_view text = call.text(1);
  if (side != Side::right) text.remove_prefix(std::min(text.find_first_not_of(dropped), text.size()));
  if (side != Side::left) text = text.substr(0, text.find_last_not_of(dropped) + 1);
  return textValue(text);
}

Value toList(const Call& call) {
  ListBuilder list;
  for (const wchar_t c : call.text(0)) list.add(static_cast<int32_t>(c));
  return list.take();
}

Value fromList(const Call& call) {
  std::wstring text;
  for (const Value& code : Elements(call.list(0))) text += characterOf(code);
  return textValue(text);
}

Value elt(const Call& call) {
  const size_t place = optionalPlace(call, 1);
  if (place >= call.text(0).size()) throw LispError(L"bad argument value: index out of range");
  return static_cast<int32_t>(call.text(0)[place]);
}

/// With a fourth argument that is true, the last place at or behind the third.
Value position(const Call& call) {
  const std::wstring& text = call.text(1);
  const auto sought = static_cast<wchar_t>(call.integer(0));
  const size_t start = optionalPlace(call, 2);
  const bool fromEnd = call.has(3) && call[3].isTrue();
  const size_t found = fromEnd ? text.rfind(sought) : text.find(sought, start);
  return found == std::wstring::npos || found < start ? Value() : Value(static_cast<int32_t>(found));
}

Value mismatch(const Call& call) {
  const std::wstring &a = call.text(0), &b = call.text(1);
  const size_t startA = std::min(optionalPlace(call, 2), a.size());
  const size_t startB = std::min(optionalPlace(call, 3), b.size());
  const bool ignoreCase = call.has(4) && call[4].isTrue();
  const std::wstring left = ignoreCase ? upperCased(a) : a, right = ignoreCase ? upperCased(b) : b;
  int32_t same = 0;
  for (size_t i = startA, j = startB; i < left.size() && j < right.size() && left[i] == right[j]; ++i, ++j)
    ++same;
  return same;
}

}  // namespace

std::span<const Builtin> vlStringBuiltins() {
  static const Builtin table[] = {
      {L"VL-STRING-SEARCH", search, 2, 3},
      {L"VL-STRING-SUBST", subst, 3, 4},
      {L"VL-STRING-TRANSLATE", translate, 3, 3},
      {L"VL-STRING-TRIM", trim<Side::both>, 2, 2},
      {L"VL-STRING-LEFT-TRIM", trim<Side::left>, 2, 2},
      {L"VL-STRING-RIGHT-TRIM", trim<Side::right>, 2, 2},
      {L"VL-STRING->LIST", toList, 1, 1},
      {L"VL-LIST->STRING", fromList, 1, 1},
      {L"VL-STRING-ELT", elt, 2, 2},
      {L"VL-STRING-POSITION", position, 2, 4},
      {L"VL-STRING-MISMATCH", mismatch, 2, 5},
  };
  return table;
}

}  // namespace lisp
