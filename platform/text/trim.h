#pragma once

#include <string_view>

/// Texts without the blanks at their ends: spaces, tabs, line and page breaks.

inline std::wstring_view trimmedRight(std::wstring_view text) {
  return text.substr(0, text.find_last_not_of(L" \t\n\v\f\r") + 1);
}
inline std::string_view trimmedRight(std::string_view text) {
  return text.substr(0, text.find_last_not_of(" \t\n\v\f\r") + 1);
}

inline std::wstring_view trimmed(std::wstring_view text) {
  text = trimmedRight(text);
  return text.empty() ? text : text.substr(text.find_first_not_of(L" \t\n\v\f\r"));
}
inline std::string_view trimmed(std::string_view text) {
  text = trimmedRight(text);
  return text.empty() ? text : text.substr(text.find_first_not_of(" \t\n\v\f\r"));
}
