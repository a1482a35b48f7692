#pragma once

#include <string>
#include <string_view>

/// The one pair of conversions between the wide strings of the module and the UTF-8 of files,
/// databases and terminals. Neither fails: what is not valid in the source becomes U+FFFD, one for
/// each maximal ill-formed sequence. On a platform with 16-bit `wchar_t`, wide text is UTF-16.
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view bytes);

/// True when `bytes` is UTF-8 without any ill-formed sequence.
bool isValidUtf8(std::string_view bytes);
