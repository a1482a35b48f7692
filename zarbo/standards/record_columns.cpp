#include "zarbo/standards/record_columns.h"

#include <cmath>
#include <limits>

#include "platform/text/trim.h"

namespace {

/// A standards file may hold a number in any width; what is no number counts as 0.
double numberOf(const VARIANT& value) {
  switch (value.vt) {
    case VT_I2:
      return value.iVal;
    case VT_I4:
      return value.lVal;
    case VT_UI1:
      return value.bVal;
    case VT_R4:
      return value.fltVal;
    case VT_R8:
      return value.dblVal;
    default:
      return 0;
  }
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

void IntegerColumn::take(const VARIANT& value) {
  const double number = std::nearbyint(numberOf(value));
  const bool fits =
      number >= std::numeric_limits<int32_t>::min() && number <= std::numeric_limits<int32_t>::max();
  value_ = fits ? static_cast<int32_t>(number) : 0;
}

COleVariant IntegerColumn::give() const { return COleVariant(LONG{value_}); }

void RealColumn::take(const VARIANT& value) { value_ = numberOf(value); }

COleVariant RealColumn::give() const { return COleVariant(value_); }

void FlagColumn::take(const VARIANT& value) { value_ = value.vt == VT_BOOL && value.boolVal == VARIANT_TRUE; }

COleVariant FlagColumn::give() const { return COleVariant::boolean(value_); }

void TextColumn::take(const VARIANT& value) {
  value_ = value.vt == VT_BSTR ? trimmedRight(viewOf(value.bstrVal)) : std::wstring_view();
}

COleVariant TextColumn::give() const { return COleVariant(value_); }
