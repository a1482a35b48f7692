#include "platform/com/owners.h"

#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "platform/com/com_error.h"

namespace {

BSTR allocate(std::wstring_view text) {
  if (text.size() > std::numeric_limits<UINT>::max()) throw std::bad_alloc();
  // An empty view may have no data; the result is an empty string all the same.
  BSTR result = SysAllocStringLen(text.data() ? text.data() : L"", static_cast<UINT>(text.size()));
  if (!result) throw std::bad_alloc();
  return result;
}

bool holdsArray(const VARIANT& variant) {
  return (variant.vt & VT_ARRAY) != 0 && (variant.vt & VT_BYREF) == 0 && variant.parray;
}

void requireArray(const VARIANT& variant) {
  if (!holdsArray(variant)) throwComError(DISP_E_TYPEMISMATCH, interfaceId<IUnknown>);
}

VARIANT taken(VARIANT& variant) {
  const VARIANT result = variant;
  VariantInit(&variant);
  return result;
}

}  // namespace

Bstr::Bstr(std::wstring_view text) : text_(allocate(text)) {}

Bstr& Bstr::operator=(Bstr other) noexcept {
  std::swap(text_, other.text_);
  return *this;
}

Bstr Bstr::attach(BSTR text) {
  Bstr result;
  result.text_ = text;
  return result;
}

BSTR Bstr::detach() { return std::exchange(text_, nullptr); }

BSTR* Bstr::put() {
  SysFreeString(detach());
  return &text_;
}

COleVariant::COleVariant(const VARIANT& other) {
  VariantInit(this);
  checkResult(VariantCopy(this, &other));
}

COleVariant::COleVariant(COleVariant&& other) noexcept : VARIANT(taken(other)) {}

COleVariant::COleVariant(std::wstring_view text) {
  VariantInit(this);
  bstrVal = allocate(text);
  vt = VT_BSTR;
}

COleVariant::COleVariant(SHORT value, VARTYPE type) {
  VariantInit(this);
  vt = type == VT_BOOL ? VT_BOOL : VT_I2;
  iVal = type == VT_BOOL && value != 0 ? VARIANT_TRUE : value;
}

COleVariant::COleVariant(LONG value, VARTYPE type) {
  VariantInit(this);
  if (type == VT_BOOL) {
    vt = VT_BOOL;
    boolVal = value != 0 ? VARIANT_TRUE : VARIANT_FALSE;
  } else {
    vt = type == VT_ERROR ? VT_ERROR : VT_I4;
    lVal = value;
  }
}

COleVariant::COleVariant(BYTE value) {
  VariantInit(this);
  vt = VT_UI1;
  bVal = value;
}

COleVariant::COleVariant(float value) {
  VariantInit(this);
  vt = VT_R4;
  fltVal = value;
}

COleVariant::COleVariant(double value) {
  VariantInit(this);
  vt = VT_R8;
  dblVal = value;
}

COleVariant& COleVariant::operator=(const VARIANT& other) {
  checkResult(VariantCopy(this, &other));
  return *this;
}

COleVariant& COleVariant::operator=(COleVariant&& other) noexcept {
  if (this != &other) Attach(other);
  return *this;
}

COleVariant COleVariant::null() {
  COleVariant result;
  result.vt = VT_NULL;
  return result;
}

COleVariant COleVariant::boolean(bool value) {
  return COleVariant(static_cast<SHORT>(value ? -1 : 0), VT_BOOL);
}

COleVariant COleVariant::dateOf(DATE value) {
  COleVariant result(value);
  result.vt = VT_DATE;
  return result;
}

void COleVariant::Attach(VARIANT& other) {
  VariantClear(this);
  static_cast<VARIANT&>(*this) = taken(other);
}

VARIANT COleVariant::Detach() { return taken(*this); }

void COleVariant::ChangeType(VARTYPE type) { checkResult(VariantChangeType(this, this, 0, type)); }

VARIANT* COleVariant::put() {
  VariantClear(this);
  return this;
}

COleSafeArray::COleSafeArray(const VARIANT& other) {
  VariantInit(this);
  requireArray(other);
  checkResult(VariantCopy(this, &other));
}

COleSafeArray::COleSafeArray(const COleSafeArray& other) {
  VariantInit(this);
  checkResult(VariantCopy(this, &other));
}

COleSafeArray::COleSafeArray(COleSafeArray&& other) noexcept : VARIANT(taken(other)) {}

COleSafeArray& COleSafeArray::operator=(COleSafeArray other) noexcept {
  std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
  return *this;
}

void COleSafeArray::CreateOneDim(VARTYPE type, ULONG elements, const void* data, LONG lowerBound) {
  VariantClear(this);
  parray = SafeArrayCreateVector(type, lowerBound, elements);
  if (!parray) throwComError(E_OUTOFMEMORY, interfaceId<IUnknown>);
  vt = static_cast<VARTYPE>(VT_ARRAY | type);
  if (!data) return;
  const ULONG size = SafeArrayGetElemsize(parray);
  const bool byPointer = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
  for (ULONG i = 0; i < elements; ++i) {
    const void* element = static_cast<const char*>(data) + static_cast<size_t>(i) * size;
    PutElement(lowerBound + static_cast<LONG>(i), byPointer ? *static_cast<void* const*>(element) : element);
  }
}

void COleSafeArray::Attach(VARIANT& other) {
  requireArray(other);
  VariantClear(this);
  static_cast<VARIANT&>(*this) = taken(other);
}

VARIANT COleSafeArray::Detach() { return taken(*this); }

VARIANT* COleSafeArray::put() {
  VariantClear(this);
  return this;
}

LONG COleSafeArray::GetLBound() const {
  LONG bound = 0;
  requireArray(*this);
  checkResult(SafeArrayGetLBound(parray, 1, &bound));
  return bound;
}

LONG COleSafeArray::GetUBound() const {
  LONG bound = 0;
  requireArray(*this);
  checkResult(SafeArrayGetUBound(parray, 1, &bound));
  return bound;
}

ULONG COleSafeArray::GetOneDimSize() const { return empty() ? 0 : parray->rgsabound[0].cElements; }

void COleSafeArray::GetElement(LONG index, void* element) const {
  requireArray(*this);
  checkResult(SafeArrayGetElement(parray, &index, element));
}

COleVariant COleSafeArray::variantAt(LONG index) const {
  if (vt != (VT_ARRAY | VT_VARIANT)) throwComError(DISP_E_TYPEMISMATCH, interfaceId<IUnknown>);
  COleVariant result;
  GetElement(index, result.put());
  return result;
}

void COleSafeArray::PutElement(LONG index, const void* element) {
  requireArray(*this);
  checkResult(SafeArrayPutElement(parray, &index, const_cast<void*>(element)));
}

void COleSafeArray::AccessData(void** data) {
  requireArray(*this);
  checkResult(SafeArrayAccessData(parray, data));
}

void COleSafeArray::UnaccessData() {
  requireArray(*this);
  checkResult(SafeArrayUnaccessData(parray));
}

VariantElements::VariantElements(const VARIANT& array) {
  if (array.vt != (VT_ARRAY | VT_VARIANT) || !array.parray) return;
  void* data = nullptr;
  checkResult(SafeArrayAccessData(array.parray, &data));
  array_ = array.parray;
  data_ = static_cast<VARIANT*>(data);
  size_ = array_->rgsabound[0].cElements;
}

VariantElements::~VariantElements() {
  if (array_) SafeArrayUnaccessData(array_);
}
