#include "zarbo/standards/record_columns.h"

#include <cwctype>

namespace {

std::wstring_view trimmedRight(std::wstring_view text) {
  while (!text.empty() && std::iswspace(static_cast<wint_t>(text.back()))) text.remove_suffix(1);
  return text;
}

}  // namespace

void Column::SetNull() {
  null_ = true;
  changed_ = true;
}

void Column::noteSet() {
  null_ = false;
  changed_ = true;
}

void Column::load(const VARIANT& value) {
  null_ = nullable_ && (value.vt == VT_EMPTY || value.vt == VT_NULL);
  if (null_) {
    reset();
  } else {
    take(value);
  }
}

COleVariant Column::stored() const { return isNull() ? COleVariant::null() : give(); }

void IntegerColumn::take(const VARIANT& value) { value_ = value.vt == VT_I4 ? value.lVal : 0; }

COleVariant IntegerColumn::give() const { return COleVariant(LONG{value_}); }

void RealColumn::take(const VARIANT& value) { value_ = value.vt == VT_R8 ? value.dblVal : 0.0; }

COleVariant RealColumn::give() const { return COleVariant(value_); }

void FlagColumn::take(const VARIANT& value) { value_ = value.vt == VT_BOOL && value.boolVal == VARIANT_TRUE; }

COleVariant FlagColumn::give() const { return COleVariant::boolean(value_); }

void TextColumn::take(const VARIANT& value) {
  value_ = value.vt == VT_BSTR ? trimmedRight(viewOf(value.bstrVal)) : std::wstring_view();
}

COleVariant TextColumn::give() const { return COleVariant(value_); }
