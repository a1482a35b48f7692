#pragma once

#include <string>
#include <vector>

#include "host/text/format.h"

namespace host::text {

/// A part of a line of text with the codes of percent signs taken out.
struct LinePart {
  std::wstring letters;
  bool underlined = false, overlined = false, struck = false;
};

/// Reads the code at `at`, where two percent signs stand, and moves `at` behind it: %%c %%d %%p %%nnn %%%
/// and the Unicode mark \U+XXXX, which stands without percent signs. 0 when there is none.
wchar_t letterOfCode(std::wstring_view text, size_t& at);

/// Parts of a text without formatting of paragraphs: %%u, %%o and %%k switch lines on and off.
std::vector<LinePart> partsOf(std::wstring_view text);

}  // namespace host::text
