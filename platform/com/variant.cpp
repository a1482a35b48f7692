#ifndef _WIN32

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string>

#include "platform/com/automation.h"
#include "platform/text/utf.h"

namespace {

constexpr double moneyScale = 10'000;
constexpr double beyondInteger = 0x1p63;

// Any value on the way from one type to another.
struct Value {
  enum Kind { Integer, Real, Money, Text, Date, Boolean } kind;
  int64_t integer = 0;  // Integer, Boolean; ten-thousandths for Money
  double real = 0;      // Real, Date
  std::wstring text;
};

bool parseReal(const std::wstring& text, double& value) {
  std::string bytes = toUtf8(text);
  const size_t first = bytes.find_first_not_of(" \t");
  const size_t last = bytes.find_last_not_of(" \t");
  if (first == std::string::npos) return false;
  bytes = bytes.substr(first, last - first + 1);
  const char* begin = bytes.data() + (bytes[0] == '+' && bytes.size() > 1 && bytes[1] != '-');
  const char* end = bytes.data() + bytes.size();
  const auto result = std::from_chars(begin, end, value);
  return result.ec == std::errc() && result.ptr == end && std::isfinite(value);
}

HRESULT readValue(const VARIANT& source, Value& value) {
  auto integer = [&](int64_t v) {
    value = {Value::Integer, v, 0, {}};
    return S_OK;
  };
  switch (source.vt) {
    case VT_EMPTY:
      return integer(0);
    case VT_I1:
      return integer(source.cVal);
    case VT_UI1:
      return integer(source.bVal);
    case VT_I2:
      return integer(source.iVal);
    case VT_UI2:
      return integer(source.uiVal);
    case VT_I4:
    case VT_INT:
    case VT_ERROR:
      return integer(source.lVal);
    case VT_UI4:
    case VT_UINT:
      return integer(source.ulVal);
    case VT_I8:
      return integer(source.llVal);
    case VT_UI8:
      if (source.ullVal > INT64_MAX) return DISP_E_OVERFLOW;
      return integer(static_cast<int64_t>(source.ullVal));
    case VT_BOOL:
      value = {Value::Boolean, source.boolVal ? -1 : 0, 0, {}};
      return S_OK;
    case VT_R4:
      value = {Value::Real, 0, source.fltVal, {}};
      return S_OK;
    case VT_R8:
      value = {Value::Real, 0, source.dblVal, {}};
      return S_OK;
    case VT_CY:
      value = {Value::Money, source.cyVal.int64, 0, {}};
      return S_OK;
    case VT_DATE:
      value = {Value::Date, 0, source.date, {}};
      return S_OK;
    case VT_BSTR:
      value = {Value::Text, 0, 0,
               std::wstring(source.bstrVal ? source.bstrVal : L"", SysStringLen(source.bstrVal))};
      return S_OK;
    default:
      return DISP_E_TYPEMISMATCH;
  }
}

HRESULT toReal(const Value& value, double& real) {
  switch (value.kind) {
    case Value::Integer:
    case Value::Boolean:
      real = static_cast<double>(value.integer);
      return S_OK;
    case Value::Money:
      real = static_cast<double>(value.integer) / moneyScale;
      return S_OK;
    case Value::Real:
    case Value::Date:
      real = value.real;
      return S_OK;
    case Value::Text:
      return parseReal(value.text, real) ? S_OK : DISP_E_TYPEMISMATCH;
  }
  return DISP_E_TYPEMISMATCH;
}

HRESULT toInteger(const Value& value, int64_t least, int64_t most, int64_t& integer) {
  if (value.kind == Value::Integer || value.kind == Value::Boolean) {
    integer = value.integer;
  } else {
    double real;
    const HRESULT result = toReal(value, real);
    if (FAILED(result)) return result;
    const double rounded = std::nearbyint(real);
    if (!(std::fabs(rounded) < beyondInteger)) return DISP_E_OVERFLOW;
    integer = static_cast<int64_t>(rounded);
  }
  return integer < least || integer > most ? DISP_E_OVERFLOW : S_OK;
}

std::wstring moneyText(int64_t amount) {
  const bool negative = amount < 0;
  const uint64_t size = negative ? 0 - static_cast<uint64_t>(amount) : static_cast<uint64_t>(amount);
  wchar_t text[40];
  std::swprintf(text, 40, L"%ls%llu.%04llu", negative ? L"-" : L"",
                static_cast<unsigned long long>(size / 10000), static_cast<unsigned long long>(size % 10000));
  std::wstring result = text;
  result.erase(result.find_last_not_of(L'0') + 1);
  if (result.back() == L'.') result.pop_back();
  return result;
}

HRESULT toText(const Value& value, BSTR* text) {
  std::wstring result;
  switch (value.kind) {
    case Value::Text:
      result = value.text;
      break;
    case Value::Integer:
      result = std::to_wstring(value.integer);
      break;
    case Value::Boolean:
      result = value.integer ? L"True" : L"False";
      break;
    case Value::Money:
      result = moneyText(value.integer);
      break;
    case Value::Date:
      return VarBstrFromDate(value.real, LOCALE_USER_DEFAULT, 0, text);
    case Value::Real: {
      char bytes[64];
      const auto end = std::to_chars(bytes, bytes + sizeof bytes, value.real, std::chars_format::general, 15);
      result = fromUtf8({bytes, static_cast<size_t>(end.ptr - bytes)});
      break;
    }
  }
  *text = SysAllocStringLen(result.data(), static_cast<UINT>(result.size()));
  return *text ? S_OK : E_OUTOFMEMORY;
}

HRESULT toBoolean(const Value& value, VARIANT_BOOL& boolean) {
  if (value.kind == Value::Text) {
    if (wcscasecmp(value.text.c_str(), L"true") == 0 || wcscasecmp(value.text.c_str(), L"#TRUE#") == 0) {
      boolean = VARIANT_TRUE;
      return S_OK;
    }
    if (wcscasecmp(value.text.c_str(), L"false") == 0 || wcscasecmp(value.text.c_str(), L"#FALSE#") == 0) {
      boolean = VARIANT_FALSE;
      return S_OK;
    }
  }
  double real;
  const HRESULT result = toReal(value, real);
  if (SUCCEEDED(result)) boolean = real != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  return result;
}

HRESULT toDate(const Value& value, DATE& date) {
  if (value.kind == Value::Text) {
    const HRESULT result = VarDateFromStr(value.text.c_str(), LOCALE_USER_DEFAULT, 0, &date);
    if (SUCCEEDED(result)) return result;
  }
  double real;
  const HRESULT result = toReal(value, real);
  if (FAILED(result)) return result;
  SYSTEMTIME parts;
  if (!VariantTimeToSystemTime(real, &parts)) return DISP_E_OVERFLOW;
  date = real;
  return S_OK;
}

HRESULT toMoney(const Value& value, CY& money) {
  if (value.kind == Value::Money) {
    money.int64 = value.integer;
    return S_OK;
  }
  double real;
  const HRESULT result = toReal(value, real);
  if (FAILED(result)) return result;
  // A double has too few digits for the greatest amounts.
  const long double scaled = std::nearbyint(static_cast<long double>(real) * moneyScale);
  if (!(std::fabs(scaled) < beyondInteger)) return DISP_E_OVERFLOW;
  money.int64 = static_cast<int64_t>(scaled);
  return S_OK;
}

template <class Member>
HRESULT storeInteger(const Value& value, int64_t least, int64_t most, Member& member) {
  int64_t integer;
  const HRESULT result = toInteger(value, least, most, integer);
  if (SUCCEEDED(result)) member = static_cast<Member>(integer);
  return result;
}

HRESULT convert(const Value& value, VARTYPE type, VARIANT& result) {
  switch (type) {
    case VT_I1:
      return storeInteger(value, INT8_MIN, INT8_MAX, result.cVal);
    case VT_UI1:
      return storeInteger(value, 0, UINT8_MAX, result.bVal);
    case VT_I2:
      return storeInteger(value, INT16_MIN, INT16_MAX, result.iVal);
    case VT_UI2:
      return storeInteger(value, 0, UINT16_MAX, result.uiVal);
    case VT_I4:
    case VT_INT:
      return storeInteger(value, INT32_MIN, INT32_MAX, result.lVal);
    case VT_UI4:
    case VT_UINT:
      return storeInteger(value, 0, UINT32_MAX, result.ulVal);
    case VT_I8:
      return storeInteger(value, INT64_MIN, INT64_MAX, result.llVal);
    case VT_UI8:
      return storeInteger(value, 0, INT64_MAX, result.ullVal);
    case VT_R4: {
      double real;
      const HRESULT done = toReal(value, real);
      if (FAILED(done)) return done;
      if (std::isfinite(real) && std::fabs(real) > 3.4028235677973366e38) return DISP_E_OVERFLOW;
      result.fltVal = static_cast<float>(real);
      return S_OK;
    }
    case VT_R8:
      return toReal(value, result.dblVal);
    case VT_CY:
      return toMoney(value, result.cyVal);
    case VT_DATE:
      return toDate(value, result.date);
    case VT_BOOL:
      return toBoolean(value, result.boolVal);
    case VT_BSTR:
      return toText(value, &result.bstrVal);
    default:
      return DISP_E_BADVARTYPE;
  }
}

}  // namespace

void VariantInit(VARIANT* variant) {
  if (variant) *variant = VARIANT{};
}

HRESULT VariantClear(VARIANT* variant) {
  if (!variant) return E_INVALIDARG;
  if ((variant->vt & VT_BYREF) == 0) {
    if (variant->vt & VT_ARRAY) {
      const HRESULT result = SafeArrayDestroy(variant->parray);
      if (FAILED(result)) return result;
    } else if (variant->vt == VT_BSTR) {
      SysFreeString(variant->bstrVal);
    } else if ((variant->vt == VT_UNKNOWN || variant->vt == VT_DISPATCH) && variant->punkVal) {
      variant->punkVal->Release();
    }
  }
  *variant = VARIANT{};
  return S_OK;
}

HRESULT VariantCopy(VARIANT* destination, const VARIANT* source) {
  if (!destination || !source) return E_INVALIDARG;
  if (destination == source) return S_OK;
  VARIANT copy = *source;
  if ((source->vt & VT_BYREF) == 0) {
    if (source->vt & VT_ARRAY) {
      const HRESULT result = SafeArrayCopy(source->parray, &copy.parray);
      if (FAILED(result)) return result;
    } else if (source->vt == VT_BSTR && source->bstrVal) {
      copy.bstrVal = SysAllocStringLen(source->bstrVal, SysStringLen(source->bstrVal));
      if (!copy.bstrVal) return E_OUTOFMEMORY;
    } else if ((source->vt == VT_UNKNOWN || source->vt == VT_DISPATCH) && source->punkVal) {
      source->punkVal->AddRef();
    }
  }
  VariantClear(destination);
  *destination = copy;
  return S_OK;
}

HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT, VARTYPE type) {
  if (!destination || !source) return E_INVALIDARG;
  if (source->vt == type) return VariantCopy(destination, source);
  if ((source->vt | type) & (VT_ARRAY | VT_BYREF)) return DISP_E_TYPEMISMATCH;
  VARIANT result{};
  if (type != VT_EMPTY && type != VT_NULL) {
    Value value{};
    HRESULT done = readValue(*source, value);
    if (SUCCEEDED(done) && source->vt == VT_EMPTY && type == VT_BSTR) value = {Value::Text, 0, 0, {}};
    if (SUCCEEDED(done)) done = convert(value, type, result);
    if (FAILED(done)) return done;
  }
  result.vt = type;
  VariantClear(destination);
  *destination = result;
  return S_OK;
}

#endif
