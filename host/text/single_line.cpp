#include "host/text/single_line.h"

#include <algorithm>
#include <cmath>

#include "host/text/multibyte.h"
#include "platform/text/letters.h"

namespace host::text {

Measure measure(std::wstring_view letters, const Format& format) {
  Measure result;
  const double wide = format.height * format.widthFactor;
  const double lean = format.height * (std::tan(format.oblique) + format.font->slant());
  for (const wchar_t letter : letters) {
    const Glyph& glyph = format.font->glyph(letter);
    if (!glyph.blank()) {
      const double low = glyph.bottom * lean, high = glyph.top * lean;
      result.left = std::min(result.left, result.advance + glyph.left * wide + std::min(low, high));
      result.right = std::max(result.right, result.advance + glyph.right * wide + std::max(low, high));
      result.bottom = std::min(result.bottom, glyph.bottom * format.height);
      result.top = std::max(result.top, glyph.top * format.height);
    }
    result.advance += glyph.advance * wide * format.tracking;
  }
  return result;
}

namespace {

int digitOf(wchar_t letter) { return letter >= L'0' && letter <= L'9' ? letter - L'0' : -1; }

wchar_t percentLetter(wchar_t code) {
  switch (code) {
    case L'c':
    case L'C':
      return L'\u2300';
    case L'd':
    case L'D':
      return L'\u00B0';
    case L'p':
    case L'P':
      return L'\u00B1';
    case L'%':
      return L'%';
    default:
      return 0;
  }
}

}  // namespace

wchar_t letterOfCode(std::wstring_view text, size_t& at) {
  if (text.substr(at, 2) != L"%%") return unicodeMark(text, at);
  if (at + 2 >= text.size()) return 0;
  if (const wchar_t letter = percentLetter(text[at + 2])) return at += 3, letter;
  size_t end = at + 2;
  int code = 0;
  while (end < text.size() && end < at + 5 && digitOf(text[end]) >= 0)
    code = code * 10 + digitOf(text[end++]);
  if (code == 0 || code > 255) return 0;
  at = end;
  return static_cast<wchar_t>(code);
}

std::vector<LinePart> partsOf(std::wstring_view text) {
  std::vector<LinePart> parts(1);
  const auto toggle = [&parts](bool LinePart::*flag) {
    LinePart next = parts.back();
    next.letters.clear();
    next.*flag = !(next.*flag);
    if (parts.back().letters.empty()) {
      parts.back() = next;
    } else {
      parts.push_back(next);
    }
  };
  for (size_t at = 0; at < text.size();) {
    const wchar_t code = text[at] == L'%' && text.substr(at, 2) == L"%%" && at + 2 < text.size()
                             ? lowerLetter(text[at + 2])
                             : L'\0';
    bool LinePart::*const flag = code == L'u'   ? &LinePart::underlined
                                 : code == L'o' ? &LinePart::overlined
                                 : code == L'k' ? &LinePart::struck
                                                : nullptr;
    if (flag) {
      toggle(flag), at += 3;
    } else if (const wchar_t letter = letterOfCode(text, at)) {
      parts.back().letters += letter;
    } else {
      parts.back().letters += std::max(text[at++], L' ');
    }
  }
  return parts;
}

}  // namespace host::text
