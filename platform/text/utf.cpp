#include "platform/text/utf.h"

#include <cstdint>

namespace {

constexpr char32_t replacement = 0xFFFD;
constexpr bool wideIsUtf16 = sizeof(wchar_t) == 2;

bool isSurrogate(char32_t c) { return c >= 0xD800 && c <= 0xDFFF; }

void appendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += static_cast<char>(c);
  } else if (c < 0x800) {
    out += static_cast<char>(0xC0 | c >> 6);
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += static_cast<char>(0xE0 | c >> 12);
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | c >> 18);
    out += static_cast<char>(0x80 | (c >> 12 & 0x3F));
    out += static_cast<char>(0x80 | (c >> 6 & 0x3F));
    out += static_cast<char>(0x80 | (c & 0x3F));
  }
}

void appendWide(std::wstring& out, char32_t c) {
  if constexpr (wideIsUtf16) {
    if (c >= 0x10000) {
      out += static_cast<wchar_t>(0xD800 + ((c - 0x10000) >> 10));
      out += static_cast<wchar_t>(0xDC00 + ((c - 0x10000) & 0x3FF));
      return;
    }
  }
  out += static_cast<wchar_t>(c);
}

struct Decoded {
  char32_t character;
  size_t length;
  bool valid;
};

// One code point of well-formed UTF-8 as the Unicode standard's table 3-7 has it, or the length of
// the maximal ill-formed part.
Decoded decode(std::string_view bytes) {
  auto byte = [&](size_t i) { return static_cast<uint8_t>(bytes[i]); };
  const uint8_t lead = byte(0);
  if (lead < 0x80) return {lead, 1, true};
  const size_t length = lead >= 0xC2 && lead <= 0xDF   ? 2
                        : lead >= 0xE0 && lead <= 0xEF ? 3
                        : lead >= 0xF0 && lead <= 0xF4 ? 4
                                                       : 1;
  if (length == 1) return {replacement, 1, false};
  char32_t c = lead & (0xFF >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    const uint8_t low = i > 1 ? 0x80 : lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const uint8_t high = i > 1 ? 0xBF : lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (i >= bytes.size() || byte(i) < low || byte(i) > high) return {replacement, i, false};
    c = c << 6 | (byte(i) & 0x3F);
  }
  return {c, length, true};
}

}  // namespace

std::string toUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<char32_t>(text[i]);
    if (wideIsUtf16 && c >= 0xD800 && c < 0xDC00 && i + 1 < text.size()) {
      const auto next = static_cast<char32_t>(text[i + 1]);
      if (next >= 0xDC00 && next <= 0xDFFF) {
        c = 0x10000 + ((c - 0xD800) << 10) + (next - 0xDC00);
        ++i;
      }
    }
    appendUtf8(out, isSurrogate(c) || c > 0x10FFFF ? replacement : c);
  }
  return out;
}

std::wstring fromUtf8(std::string_view bytes) {
  std::wstring out;
  out.reserve(bytes.size());
  while (!bytes.empty()) {
    const Decoded next = decode(bytes);
    appendWide(out, next.character);
    bytes.remove_prefix(next.length);
  }
  return out;
}

bool isValidUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const Decoded next = decode(bytes);
    if (!next.valid) return false;
    bytes.remove_prefix(next.length);
  }
  return true;
}
