#pragma once

#include <string_view>

namespace host::text {

/// Reads \U+XXXX or \M+nXXXX at `at` and moves `at` behind it; 0 when there is none. The letter of
/// \M is that of the two bytes XXXX in the code page n: 1 Japanese, 2 traditional Chinese, 3 and 4
/// Korean, 5 simplified Chinese.
wchar_t unicodeMark(std::wstring_view text, size_t& at);

}  // namespace host::text
