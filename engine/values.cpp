#include "engine/values.h"

#include <cmath>
#include <new>
#include <string>

#include "platform/com/com_error.h"
#include "platform/text/utf.h"

namespace {

bool isNothing(const VARIANT& value) { return value.vt == VT_EMPTY || value.vt == VT_NULL; }

COleVariant converted(const VARIANT& value, VARTYPE type, const jet::Column& column) {
  COleVariant result;
  const HRESULT done = VariantChangeType(&result, &value, 0, type);
  if (done == DISP_E_OVERFLOW) fail(jet::numberTooLarge, column.name);
  if (FAILED(done)) fail(wrongValueType, column.name);
  return result;
}

Stored real(double value, const jet::Column& column) {
  // SQLite would keep a NaN as null.
  if (!std::isfinite(value)) fail(wrongValueType, column.name);
  return Stored::of(value);
}

Stored text(const VARIANT& value, const jet::Column& column) {
  const COleVariant converted_ = converted(value, VT_BSTR, column);
  return Stored::of(std::string_view(toUtf8(converted_.text())));
}

Stored guid(const VARIANT& value, const jet::Column& column) {
  std::wstring name = value.vt == VT_BSTR ? std::wstring(viewOf(value.bstrVal)) : L"";
  if (!name.empty() && name.front() != L'{') name = L"{" + name + L"}";
  GUID parsed;
  if (FAILED(CLSIDFromString(name.c_str(), &parsed))) fail(wrongValueType, column.name);
  wchar_t written[40];
  StringFromGUID2(parsed, written, 40);
  return Stored::of(std::string_view(toUtf8(written)));
}

Stored binary(const VARIANT& value, const jet::Column& column) {
  if (value.vt != (VT_ARRAY | VT_UI1) || !value.parray) fail(wrongValueType, column.name);
  void* data = nullptr;
  checkResult(SafeArrayAccessData(value.parray, &data));
  Stored result;
  result.kind = Stored::Kind::Blob;
  result.bytes.assign(static_cast<const char*>(data),
                      SafeArrayGetElemsize(value.parray) == 1 ? COleSafeArray(value).GetOneDimSize() : 0);
  SafeArrayUnaccessData(value.parray);
  return result;
}

Stored convert(const VARIANT& value, const jet::Column& column) {
  switch (column.type) {
    case jet::Type::YesNo:
      return Stored::of(int64_t{converted(value, VT_BOOL, column).boolVal ? -1 : 0});
    case jet::Type::Byte:
      return Stored::of(int64_t{converted(value, VT_UI1, column).bVal});
    case jet::Type::Integer:
      return Stored::of(int64_t{converted(value, VT_I2, column).iVal});
    case jet::Type::Long:
      return Stored::of(int64_t{converted(value, VT_I4, column).lVal});
    case jet::Type::Currency:
      return Stored::of(int64_t{converted(value, VT_CY, column).cyVal.int64});
    case jet::Type::Single:
      return real(converted(value, VT_R4, column).fltVal, column);
    case jet::Type::Double:
      return real(converted(value, VT_R8, column).dblVal, column);
    case jet::Type::Date:
      return real(converted(value, VT_DATE, column).date, column);
    case jet::Type::Guid:
      return guid(value, column);
    case jet::Type::Binary:
      return binary(value, column);
    case jet::Type::Text:
    case jet::Type::Memo:
    case jet::Type::Unknown:
      return text(value, column);
  }
  fail(wrongValueType, column.name);
}

size_t characters(std::string_view utf8) {
  size_t count = 0;
  for (const char c : utf8) count += (c & 0xC0) != 0x80;
  return count;
}

void checkSize(const Stored& value, const jet::Column& column) {
  constexpr int textDefault = 255;
  if (column.type == jet::Type::Text) {
    const int most = column.size > 0 ? column.size : textDefault;
    if (characters(value.bytes) > static_cast<size_t>(most)) fail(jet::textTooLong, column.name);
  } else if (column.type == jet::Type::Binary && column.size > 0) {
    if (value.bytes.size() > static_cast<size_t>(column.size)) fail(jet::textTooLong, column.name);
  }
  const bool isText = column.type == jet::Type::Text || column.type == jet::Type::Memo;
  if (isText && !column.emptyAllowed && value.bytes.empty()) fail(jet::emptyText, column.name);
}

}  // namespace

Stored storedValue(const VARIANT& value, const jet::Column& column) {
  if (isNothing(value)) {
    if (column.type == jet::Type::YesNo) return Stored::of(int64_t{0});
    if (column.required) fail(jet::valueRequired, column.name);
    return {};
  }
  Stored result = convert(value, column);
  checkSize(result, column);
  return result;
}

Stored searchValue(const VARIANT& value, const jet::Column& column) {
  if (isNothing(value)) return column.type == jet::Type::YesNo ? Stored::of(int64_t{0}) : Stored();
  const bool whole = column.type == jet::Type::Byte || column.type == jet::Type::Integer ||
                     column.type == jet::Type::Long || column.type == jet::Type::Currency;
  if (whole) {
    // Out of the type's range, or between two of its values, is simply not there. An amount is meant by the
    // real number that is nearest to it.
    const long double scale = column.type == jet::Type::Currency ? 10'000 : 1;
    const double number = converted(value, VT_R8, column).dblVal;
    const long double units = std::nearbyint(number * scale);
    const bool isWhole = std::fabs(units) < 0x1p63L && static_cast<double>(units / scale) == number;
    return isWhole ? Stored::of(static_cast<int64_t>(units))
                   : real(static_cast<double>(number * scale), column);
  }
  if (column.type == jet::Type::Single) {
    // A single that was stored from a double is found by that double.
    const double number = converted(value, VT_R8, column).dblVal;
    return real(std::fabs(number) < 3e38 ? static_cast<double>(static_cast<float>(number)) : number, column);
  }
  return convert(value, column);
}

BSTR bstrOfUtf8(std::string_view text) {
  bool ascii = true;
  for (const char c : text) ascii &= static_cast<signed char>(c) >= 0;
  BSTR result;
  if (ascii) {
    result = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
    if (!result) throw std::bad_alloc();
    for (size_t i = 0; i < text.size(); ++i) result[i] = static_cast<wchar_t>(text[i]);
    return result;
  }
  const std::wstring wide = fromUtf8(text);
  result = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (!result) throw std::bad_alloc();
  return result;
}

namespace {

void variantOfNumber(const Cell& cell, jet::Type type, VARIANT& result) {
  const bool isReal = cell.kind == Stored::Kind::Real;
  const double number = isReal ? cell.real : static_cast<double>(cell.integer);
  switch (type) {
    case jet::Type::YesNo:
      result.vt = VT_BOOL;
      result.boolVal = number != 0 ? VARIANT_TRUE : VARIANT_FALSE;
      return;
    case jet::Type::Byte:
      result.vt = VT_UI1;
      result.bVal = static_cast<BYTE>(cell.integer);
      return;
    case jet::Type::Integer:
      result.vt = VT_I2;
      result.iVal = static_cast<SHORT>(cell.integer);
      return;
    case jet::Type::Currency:
      // Callers read no currency variants: an amount would reach LISP as nil.
      result.vt = VT_R8;
      result.dblVal = (isReal ? number : static_cast<double>(cell.integer)) / 10000;
      return;
    case jet::Type::Single:
      result.vt = VT_R4;
      result.fltVal = static_cast<float>(number);
      return;
    case jet::Type::Double:
      result.vt = VT_R8;
      result.dblVal = number;
      return;
    case jet::Type::Date:
      result.vt = VT_DATE;
      result.date = number;
      return;
    default:
      break;
  }
  // A whole number is a long while it fits; a value of a result without a known type as well.
  if (!isReal && cell.integer >= INT32_MIN && cell.integer <= INT32_MAX) {
    result.vt = VT_I4;
    result.lVal = static_cast<LONG>(cell.integer);
  } else {
    result.vt = VT_R8;
    result.dblVal = number;
  }
}

}  // namespace

void variantOf(const Cell& cell, const char* bytes, jet::Type type, VARIANT& result) {
  if (cell.kind == Stored::Kind::Null) {
    result.vt = VT_NULL;
    return;
  }
  if (cell.kind == Stored::Kind::Text) {
    result.bstrVal = bstrOfUtf8({bytes, cell.length});
    result.vt = VT_BSTR;
    return;
  }
  if (cell.kind == Stored::Kind::Blob) {
    result.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(cell.length));
    if (!result.parray) throw std::bad_alloc();
    result.vt = VT_ARRAY | VT_UI1;
    if (cell.length > 0) std::memcpy(result.parray->pvData, bytes, cell.length);
    return;
  }
  variantOfNumber(cell, type, result);
}
