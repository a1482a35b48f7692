#include "zarbo/support/scrambled.h"

#include <cstdint>

namespace {

bool isFirstHalf(char16_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool isSecondHalf(char16_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

std::u16string unitsOf(std::wstring_view text) {
  std::u16string units;
  for (const wchar_t c : text) {
    const auto code = static_cast<uint32_t>(c);
    if (code > 0xFFFF) {
      units += static_cast<char16_t>(0xD7C0 + (code >> 10));
      units += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
    } else {
      units += static_cast<char16_t>(code);
    }
  }
  return units;
}

std::wstring textOf(const std::u16string& units) {
  std::wstring text;
  for (size_t at = 0; at < units.size(); ++at) {
    uint32_t code = units[at];
    if (isFirstHalf(units[at]) && at + 1 < units.size() && isSecondHalf(units[at + 1]) && sizeof(wchar_t) > 2)
      code = 0x10000 + ((code - 0xD800) << 10) + (uint32_t{units[++at]} - 0xDC00);
    text += static_cast<wchar_t>(code);
  }
  return text;
}

std::wstring moved(std::wstring_view text, int step) {
  std::u16string units = unitsOf(text);
  for (char16_t& unit : units) unit = static_cast<char16_t>(unit + step);
  return textOf(units);
}

}  // namespace

std::wstring scrambled(std::wstring_view plain) { return moved(plain, 1); }
std::wstring unscrambled(std::wstring_view text) { return moved(text, -1); }
