#pragma once

#include <cstddef>
#include <string_view>

#include "platform/com/types.h"

/// Compressed texts of GUIDs: 22 symbols out of 64, or 20 out of 85. Those that write take a buffer with
/// its size in characters, the NUL included, and give the length of the text, or 0 when the buffer is
/// too small.

int guidToString64(const GUID& guid, wchar_t* text, size_t capacity);
/// False on a wrong length, an unknown symbol, or a text whose first piece is beyond 255.
bool string64ToGuid(std::wstring_view text, GUID& guid);
/// 0 also for a null `guid`.
int guidToString85(const GUID* guid, wchar_t* text, size_t capacity);
/// False on a wrong length, an unknown symbol, or a piece beyond 32 bits.
bool string85ToGuid(std::wstring_view text, GUID& guid);
/// "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}".
int guidToBraceString(const GUID& guid, wchar_t* text, size_t capacity);
/// A new GUID; 0 also when none could be made.
int createGuidString64(wchar_t* text, size_t capacity);

// From one text to another by way of a GUID; 0 for a text that is none, too.
int string64ToBraceString(std::wstring_view source, wchar_t* text, size_t capacity);
int string64ToString85(std::wstring_view source, wchar_t* text, size_t capacity);
int string85ToString64(std::wstring_view source, wchar_t* text, size_t capacity);
