#pragma once

#include <string>
#include <string_view>

/// A text as it goes into a statement: between apostrophes, its own apostrophes doubled. An empty text
/// becomes a single blank.
std::wstring sqlText(std::wstring_view text);
