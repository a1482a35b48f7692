#pragma once

#include <string>
#include <string_view>

/// Texts that shall not be read over a shoulder: each code of 16 bits is one above, or below, the plain one.
/// No secret is kept by this.
std::wstring scrambled(std::wstring_view plain);
std::wstring unscrambled(std::wstring_view text);
