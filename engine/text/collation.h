#pragma once

#include <string>
#include <string_view>

/// Text order of the database: by code point after simple case folding, so "abc" and "ABC" are equal.
/// Both texts are UTF-8; ill-formed bytes compare as U+FFFD. Negative, zero or positive as in `memcmp`.
int compareText(std::string_view a, std::string_view b);

/// Simple case mappings, one character to one; a character without a mapping stays.
wchar_t lowerCharacter(wchar_t c);
wchar_t upperCharacter(wchar_t c);
/// The same for all characters that are equal without regard to case, also for those that have several small
/// forms, as the sigma has one for the end of a word.
wchar_t foldCharacter(wchar_t c);

/// Same name in the database's sense: equal without regard to case.
inline bool sameText(std::string_view a, std::string_view b) { return compareText(a, b) == 0; }

/// UTF-8 text that is equal for two texts exactly when `compareText` says that they are: a key for maps.
std::string foldText(std::string_view text);

/// Order of names for `std::map` and `std::set`.
struct TextLess {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return compareText(a, b) < 0; }
};
