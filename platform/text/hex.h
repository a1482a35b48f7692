#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Hexadecimal digits: read in either case, written in capitals.

/// -1 for any other character.
constexpr int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

/// The number of a text that is digits from its first character to its last; none for any other text, and for
/// one that 64 bits don't hold.
template <class Char>
constexpr std::optional<uint64_t> readHex(std::basic_string_view<Char> text) {
  if (text.empty()) return {};
  uint64_t value = 0;
  for (const Char c : text) {
    const int digit = hexDigit(static_cast<wchar_t>(c));
    if (digit < 0 || value >> 60) return {};
    value = value << 4 | static_cast<uint64_t>(digit);
  }
  return value;
}
inline std::optional<uint64_t> readHex(const wchar_t* text) { return readHex(std::wstring_view(text)); }

/// Two digits.
template <class Char>
void appendHex(std::basic_string<Char>& text, unsigned char byte) {
  constexpr char digits[] = "0123456789ABCDEF";
  text += static_cast<Char>(digits[byte >> 4]);
  text += static_cast<Char>(digits[byte & 15]);
}

/// Without leading zeros.
template <class Char = wchar_t>
std::basic_string<Char> hexText(uint64_t value) {
  std::basic_string<Char> text;
  for (int shift = 56; shift >= 0; shift -= 8) {
    const auto byte = static_cast<unsigned char>(value >> shift);
    if (byte || !text.empty()) appendHex(text, byte);
  }
  if (text.empty()) return {static_cast<Char>('0')};
  return text.front() == static_cast<Char>('0') ? text.substr(1) : text;
}
