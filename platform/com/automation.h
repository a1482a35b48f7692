#pragma once

#include "platform/com/types.h"

/// The system's functions on strings, arrays and variants, under their names there. They neither throw
/// nor keep state. Prefer the owners of `platform/com/owners.h`: raw calls are for the borders.

#ifndef _WIN32

// Strings. Null stands for the empty string wherever a BSTR is read. A length counts characters; the
// text may hold NULs and has one more behind its end.

/// A copy, to be freed with SysFreeString; null for null and when memory is short.
BSTR SysAllocString(const OLECHAR* text);
/// `length` characters; `text` null leaves them zero.
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
void SysFreeString(BSTR text);
UINT SysStringLen(BSTR text);
UINT SysStringByteLen(BSTR text);

// Variants. A cleared variant owns nothing; Clear frees what the type says.

void VariantInit(VARIANT* variant);
HRESULT VariantClear(VARIANT* variant);
/// A deep copy; what `destination` held is freed. They may be the same.
HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);
/// Converts by value between numbers, booleans, texts, dates and money; a real becomes an integer by
/// rounding to the nearest even. DISP_E_OVERFLOW when it doesn't fit, DISP_E_TYPEMISMATCH when there is no
/// such conversion; `destination` is unchanged then.
HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, USHORT flags, VARTYPE type);

// One-dimensional arrays. An array owns its elements. `index` points to one index, counted from the
// lower bound.

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds);
SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements);
/// DISP_E_ARRAYISLOCKED while its data are accessed.
HRESULT SafeArrayDestroy(SAFEARRAY* array);
HRESULT SafeArrayCopy(SAFEARRAY* source, SAFEARRAY** copy);
UINT SafeArrayGetDim(SAFEARRAY* array);
UINT SafeArrayGetElemsize(SAFEARRAY* array);
HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);
HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
/// A copy of the element, which the caller owns.
HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* index, void* element);
/// Stores a copy; a BSTR or interface pointer is passed itself, anything else by address.
HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* index, void* element);
/// The elements themselves, until SafeArrayUnaccessData.
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);

// Dates: years 100 to 9999, to the second.

inline constexpr LCID LOCALE_USER_DEFAULT = 1024;

/// Date as the user's locale writes it; without the time at midnight, without the date on day 0.
/// E_INVALIDARG for a value that is no date.
HRESULT VarBstrFromDate(DATE date, LCID locale, ULONG flags, BSTR* text);
/// Reads what VarBstrFromDate writes, and year-month-day with or without a time.
HRESULT VarDateFromStr(const OLECHAR* text, LCID locale, ULONG flags, DATE* date);
/// Zero when out of range.
INT SystemTimeToVariantTime(SYSTEMTIME* parts, DATE* date);
INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* parts);

// Identifiers: "{4D6FDF05-A48B-43B0-B640-64B299548BC4}".

/// Characters written with the final NUL, 39, or 0 when `capacity` is too small.
int StringFromGUID2(const GUID& guid, OLECHAR* text, int capacity);
HRESULT CLSIDFromString(const OLECHAR* text, CLSID* guid);
HRESULT CoCreateGuid(GUID* guid);

#endif
