#pragma once

/// The component object model's plain types. On Windows they are the system's own; elsewhere they are
/// declared here with the same names, values and layout, so that code reads the same on both.

#ifdef _WIN32

#include <windows.h>
// windows.h must stand before the headers that build on it.
#include <oleauto.h>
#include <unknwn.h>

#else

#include <cstdint>
#include <cstring>

using BYTE = uint8_t;
using WORD = uint16_t;
using DWORD = uint32_t;
using SHORT = int16_t;
using USHORT = uint16_t;
using LONG = int32_t;  ///< 32 bits on every platform
using ULONG = uint32_t;
using INT = int32_t;
using UINT = uint32_t;
using FLOAT = float;
using DOUBLE = double;
using HRESULT = int32_t;
using SCODE = int32_t;
using LCID = uint32_t;
using DISPID = int32_t;
using OLECHAR = wchar_t;
using BSTR = wchar_t*;  ///< its length in bytes stands in the 32 bits before the first character
using DATE = double;    ///< days since 1899-12-30; the fraction is the time of day also in negative days
using VARTYPE = uint16_t;
using VARIANT_BOOL = int16_t;

#define STDMETHODCALLTYPE

inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

constexpr bool SUCCEEDED(HRESULT result) { return result >= 0; }
constexpr bool FAILED(HRESULT result) { return result < 0; }

namespace com_detail {
constexpr HRESULT code(uint32_t bits) { return static_cast<HRESULT>(bits); }
}  // namespace com_detail

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = com_detail::code(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = com_detail::code(0x80004002);
inline constexpr HRESULT E_POINTER = com_detail::code(0x80004003);
inline constexpr HRESULT E_FAIL = com_detail::code(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = com_detail::code(0x8000FFFF);
inline constexpr HRESULT E_OUTOFMEMORY = com_detail::code(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = com_detail::code(0x80070057);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = com_detail::code(0x80020005);
inline constexpr HRESULT DISP_E_BADVARTYPE = com_detail::code(0x80020008);
inline constexpr HRESULT DISP_E_OVERFLOW = com_detail::code(0x8002000A);
inline constexpr HRESULT DISP_E_BADINDEX = com_detail::code(0x8002000B);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = com_detail::code(0x8002000D);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = com_detail::code(0x80040110);
inline constexpr HRESULT CLASS_E_CLASSNOTAVAILABLE = com_detail::code(0x80040111);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = com_detail::code(0x80040154);
inline constexpr HRESULT CO_E_CLASSSTRING = com_detail::code(0x800401F3);
inline constexpr HRESULT CO_E_DLLNOTFOUND = com_detail::code(0x800401F8);

struct GUID {
  uint32_t Data1;
  uint16_t Data2;
  uint16_t Data3;
  uint8_t Data4[8];
};
using CLSID = GUID;
using IID = GUID;

inline bool operator==(const GUID& a, const GUID& b) { return std::memcmp(&a, &b, sizeof a) == 0; }

enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000,
};

/// Money: `int64` counts ten-thousandths.
struct CY {
  int64_t int64;
};

struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

/// Made and freed only by the SafeArray functions.
struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];
};

struct IUnknown;
struct IDispatch;

struct VARIANT {
  VARTYPE vt;
  WORD wReserved1, wReserved2, wReserved3;
  union {
    int64_t llVal;
    uint64_t ullVal;
    LONG lVal;
    ULONG ulVal;
    SHORT iVal;
    USHORT uiVal;
    BYTE bVal;
    int8_t cVal;
    INT intVal;
    UINT uintVal;
    FLOAT fltVal;
    DOUBLE dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    CY cyVal;
    DATE date;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
    SAFEARRAY* parray;
    VARIANT* pvarVal;
    void* byref;
  };
};
using VARIANTARG = VARIANT;

struct SYSTEMTIME {
  WORD wYear, wMonth, wDayOfWeek, wDay, wHour, wMinute, wSecond, wMilliseconds;
};

/// An object lives until every reference that QueryInterface or AddRef gave has been released.
struct IUnknown {
  virtual HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

struct ITypeInfo;
struct DISPPARAMS;
struct EXCEPINFO;

struct IDispatch : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) = 0;
  virtual HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID& iid, OLECHAR** names, UINT count, LCID locale,
                                                  DISPID* ids) = 0;
  virtual HRESULT STDMETHODCALLTYPE Invoke(DISPID member, const IID& iid, LCID locale, WORD flags,
                                           DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                           UINT* argumentError) = 0;
};

/// Makes the objects of one class.
struct IClassFactory : IUnknown {
  virtual HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, const IID& iid, void** object) = 0;
  virtual HRESULT STDMETHODCALLTYPE LockServer(int lock) = 0;
};

#endif

/// Identifier of an interface: `interfaceId<IUnknown>`. Each interface header adds its own.
template <class Interface>
inline constexpr IID interfaceId = IID{};
template <>
inline constexpr IID interfaceId<IUnknown> = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
template <>
inline constexpr IID interfaceId<IClassFactory> = {1, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
template <>
inline constexpr IID interfaceId<IDispatch> = {0x20400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
