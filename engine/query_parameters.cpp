#include "engine/query_parameters.h"

#include "engine/errors.h"
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

}  // namespace

std::vector<jet::Parameter> readParameters(const VARIANT& list) {
  std::vector<jet::Parameter> parameters;
  const VariantElements items(list);
  const auto end = items.size();
  for (ULONG i = 0; i < end; ++i) {
    const VARIANT& item = items[i];
    // A name, a dot and a value in a list of their own.
    const bool isPair = isMark(item, L"*RTLB*") && i + 4 < end && items[i + 1].vt == VT_BSTR &&
                        isMark(items[i + 2], L"*RTDOTE*") && isMark(items[i + 4], L"*RTLE*");
    if (isPair) {
      parameters.push_back(valueOf(items[i + 3]));
      parameters.back().name = toUtf8(viewOf(items[i + 1].bstrVal));
      i += 4;
    } else if (isMark(item, L"*RTDOTE*")) {
      fail(invalidArgument, "the list of the query's parameters");
    } else if (!isMark(item, L"*RTLB*") && !isMark(item, L"*RTLE*") && !(item.vt == VT_EMPTY && end == 1)) {
      parameters.push_back(valueOf(item));
    }
  }
  return parameters;
}
