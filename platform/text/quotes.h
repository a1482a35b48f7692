#pragma once

#include <string>
#include <string_view>

/// A text between marks; marks inside it are doubled, as statements of databases want it.
template <class Char>
std::basic_string<Char> inQuotes(std::basic_string_view<Char> text, Char mark) {
  std::basic_string<Char> quoted(1, mark);
  for (const Char c : text) quoted.append(c == mark ? 2 : 1, c);
  return quoted += mark;
}
