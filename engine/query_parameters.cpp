#include "engine/query_parameters.h"

#include "engine/errors/errors.h"
#include "platform/com/owners.h"
#include "platform/text/utf.h"

namespace {

bool isMark(const VARIANT& value, const wchar_t* mark) {
  return value.vt == VT_BSTR && viewOf(value.bstrVal) == mark;
}

jet::Parameter valueOf(const VARIANT& value) {
  jet::Parameter made;
  switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
      break;
    case VT_I4:
      made.type = jet::Type::Long;
      made.value = int64_t{value.lVal};
      break;
    case VT_R8:
      made.type = jet::Type::Double;
      made.value = value.dblVal;
      break;
    case VT_BOOL:
      made.type = jet::Type::YesNo;
      made.value = int64_t{value.boolVal != VARIANT_FALSE ? -1 : 0};
      break;
    case VT_BSTR:
      made.type = jet::Type::Text;
      made.value = toUtf8(viewOf(value.bstrVal));
      break;
    default:
      fail(invalidArgument, "a parameter of the query");
  }
  return made;
}

/// The place of the mark that ends the list whose beginning stands at `begin`.
ULONG endOfList(const VariantElements& items, ULONG begin) {
  ULONG depth = 0;
  for (ULONG i = begin; i < items.size(); ++i) {
    if (isMark(items[i], L"*RTLB*")) ++depth;
    if (isMark(items[i], L"*RTLE*") && --depth == 0) return i;
  }
  fail(invalidArgument, "the list of the query's parameters is not ended");
}

bool isAnyMark(const VARIANT& item) {
  return isMark(item, L"*RTLB*") || isMark(item, L"*RTLE*") || isMark(item, L"*RTDOTE*");
}

/// A name and its value, with a dot between or without: ("Floor" . 5), ("Floor" 5). A pair with nil is a list
/// of the name alone to LISP, so that ("Floor") is null.
jet::Parameter namedParameter(const VariantElements& items, ULONG begin, ULONG end) {
  if (begin == end || items[begin].vt != VT_BSTR || isAnyMark(items[begin])) {
    fail(invalidArgument, "a parameter of the query has no name");
  }
  const std::string name = toUtf8(viewOf(items[begin].bstrVal));
  ULONG value = begin + 1;
  if (value < end && isMark(items[value], L"*RTDOTE*")) ++value;
  if (end - value > 1 || (value < end && isAnyMark(items[value]))) {
    fail(invalidArgument, "the query's parameter '" + name + "' takes one value");
  }
  jet::Parameter made = value < end ? valueOf(items[value]) : jet::Parameter();
  made.name = name;
  return made;
}

}  // namespace

std::vector<jet::Parameter> readParameters(const VARIANT& list) {
  std::vector<jet::Parameter> parameters;
  const VariantElements items(list);
  ULONG begin = 0, end = items.size();
  if (end == 1 && items[0].vt == VT_EMPTY) return parameters;
  const bool hasList = end > 0 && isMark(items[0], L"*RTLB*") && endOfList(items, 0) == end - 1;
  // One pair may also stand alone.
  const bool isPair = hasList && end > 2 && isMark(items[2], L"*RTDOTE*");
  if (hasList && !isPair) {
    ++begin;
    --end;
  }
  for (ULONG i = begin; i < end; ++i) {
    if (isMark(items[i], L"*RTLB*")) {
      const ULONG last = endOfList(items, i);
      parameters.push_back(namedParameter(items, i + 1, last));
      i = last;
    } else if (isAnyMark(items[i])) {
      fail(invalidArgument, "the list of the query's parameters");
    } else {
      parameters.push_back(valueOf(items[i]));
    }
  }
  return parameters;
}
