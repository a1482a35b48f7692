#include "zarbo/dialogs/cell_texts.h"

#include "platform/text/digits.h"
#include "zarbo/support/number_text.h"

namespace {

/// Nothing in it for what is no number.
COleVariant asNumber(const VARIANT& value) {
  COleVariant number(value);
  if (number.vt == VT_BSTR || number.isNull() || number.isArray()) return COleVariant();
  number.ChangeType(VT_R8);
  return number;
}

}  // namespace

std::wstring cellText(const VARIANT& value) {
  if (value.vt == VT_BSTR) return std::wstring(viewOf(value.bstrVal));
  const COleVariant number = asNumber(value);
  return number.vt == VT_R8 ? intToText(truncated(number.dblVal)) : std::wstring();
}

std::wstring numberText(const VARIANT& value, int decimals) {
  const COleVariant number = asNumber(value);
  return number.vt == VT_R8 ? realToText(number.dblVal, decimals, true) : std::wstring();
}

std::wstring flagText(const VARIANT& value) {
  const COleVariant number = asNumber(value);
  return number.vt == VT_R8 && number.dblVal != 0 ? L"-1" : L"0";
}
