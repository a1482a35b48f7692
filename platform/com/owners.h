#pragma once

#include <string>
#include <string_view>

#include "platform/com/automation.h"

/// Owners of the automation types. What an owner holds is freed exactly once; copies are deep. A call
/// that gives something out takes the address from `put()`, a call that takes something over is
/// handed `detach()`. Shortage of memory throws std::bad_alloc.

/// Owns a BSTR.
class Bstr {
 public:
  Bstr() = default;
  Bstr(std::wstring_view text);
  Bstr(const wchar_t* text) : Bstr(text ? std::wstring_view(text) : std::wstring_view()) {}
  Bstr(const std::wstring& text) : Bstr(std::wstring_view(text)) {}
  Bstr(const Bstr& other) : Bstr(other.view()) {}
  Bstr(Bstr&& other) noexcept : text_(other.detach()) {}
  ~Bstr() { SysFreeString(text_); }
  Bstr& operator=(Bstr other) noexcept;

  static Bstr attach(BSTR text);
  [[nodiscard]] BSTR detach();
  BSTR* put();

  BSTR get() const { return text_; }
  std::wstring_view view() const { return text_ ? std::wstring_view(text_, SysStringLen(text_)) : L""; }
  std::wstring str() const { return std::wstring(view()); }
  bool empty() const { return SysStringLen(text_) == 0; }

 private:
  BSTR text_ = nullptr;
};

/// The same text for one owner more, who frees it as any other: the names of fields go out with every record.
/// No owner may write into it. Null for null and when memory is short.
BSTR shareBstr(BSTR text);

/// The text of a BSTR that somebody else owns; null reads as empty.
inline std::wstring_view viewOf(BSTR text) {
  return text ? std::wstring_view(text, SysStringLen(text)) : L"";
}

/// Owns a variant. It is a VARIANT, so it goes by value wherever a call reads one.
class COleVariant : public VARIANT {
 public:
  COleVariant() { VariantInit(this); }
  COleVariant(const VARIANT& other);
  COleVariant(const COleVariant& other) : COleVariant(static_cast<const VARIANT&>(other)) {}
  COleVariant(COleVariant&& other) noexcept;
  COleVariant(std::wstring_view text);
  COleVariant(const wchar_t* text) : COleVariant(std::wstring_view(text)) {}
  COleVariant(const std::wstring& text) : COleVariant(std::wstring_view(text)) {}
  /// VT_I2, or VT_BOOL where `type` says so.
  COleVariant(SHORT value, VARTYPE type = VT_I2);
  /// VT_I4, or VT_ERROR or VT_BOOL where `type` says so.
  COleVariant(LONG value, VARTYPE type = VT_I4);
  COleVariant(BYTE value);
  COleVariant(float value);
  COleVariant(double value);
  ~COleVariant() { VariantClear(this); }

  COleVariant& operator=(const VARIANT& other);
  COleVariant& operator=(const COleVariant& other) { return *this = static_cast<const VARIANT&>(other); }
  COleVariant& operator=(COleVariant&& other) noexcept;

  static COleVariant null();
  static COleVariant boolean(bool value);
  static COleVariant dateOf(DATE value);

  void Clear() { VariantClear(this); }
  /// Takes over what `other` holds and leaves it empty.
  void Attach(VARIANT& other);
  [[nodiscard]] VARIANT Detach();
  /// Throws ComError when there is no such conversion.
  void ChangeType(VARTYPE type);
  VARIANT* put();

  bool isNull() const { return vt == VT_NULL || vt == VT_EMPTY; }
  bool isArray() const { return (vt & VT_ARRAY) != 0 && (vt & VT_BYREF) == 0 && parray; }
  /// The text of a VT_BSTR, "" for any other type.
  std::wstring_view text() const { return vt == VT_BSTR ? viewOf(bstrVal) : std::wstring_view(); }
};

/// Owns a one-dimensional array, as a variant of VT_ARRAY and the element type, or nothing (VT_EMPTY).
/// Failing calls throw ComError.
class COleSafeArray : public VARIANT {
 public:
  COleSafeArray() { VariantInit(this); }
  /// A copy; throws DISP_E_TYPEMISMATCH when `other` holds no array.
  explicit COleSafeArray(const VARIANT& other);
  COleSafeArray(const COleSafeArray& other);
  COleSafeArray(COleSafeArray&& other) noexcept;
  ~COleSafeArray() { VariantClear(this); }
  COleSafeArray& operator=(COleSafeArray other) noexcept;

  /// `data` null leaves the elements empty, else `elements` of them are copied from there.
  void CreateOneDim(VARTYPE type, ULONG elements, const void* data = nullptr, LONG lowerBound = 0);
  void Clear() { VariantClear(this); }
  /// Takes over the array that `other` holds; throws and leaves it when that is none.
  void Attach(VARIANT& other);
  [[nodiscard]] VARIANT Detach();
  VARIANT* put();

  bool empty() const { return vt == VT_EMPTY || !parray; }
  LONG GetLBound() const;
  LONG GetUBound() const;
  /// Number of elements; 0 when there is no array.
  ULONG GetOneDimSize() const;
  /// A copy of the element, to be owned by the caller.
  void GetElement(LONG index, void* element) const;
  /// The element of an array of variants.
  COleVariant variantAt(LONG index) const;
  void PutElement(LONG index, const void* element);
  void AccessData(void** data);
  void UnaccessData();
};

/// The variants of an array in place, from its first element on; unlocks at the end. Nothing when `array`
/// holds no array of variants.
class VariantElements {
 public:
  explicit VariantElements(const VARIANT& array);
  VariantElements(const VariantElements&) = delete;
  VariantElements& operator=(const VariantElements&) = delete;
  ~VariantElements();

  ULONG size() const { return size_; }
  VARIANT& operator[](ULONG place) const { return data_[place]; }
  VARIANT* begin() const { return data_; }
  VARIANT* end() const { return data_ + size_; }

 private:
  SAFEARRAY* array_ = nullptr;
  VARIANT* data_ = nullptr;
  ULONG size_ = 0;
};
