#include "platform/text/letters.h"

#include <clocale>
#include <cwctype>

namespace {

#if defined(_WIN32)
wint_t toUpper(wchar_t c) { return std::towupper(c); }
wint_t toLower(wchar_t c) { return std::towlower(c); }
#else
locale_t unicode() {
  static const locale_t made = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return made;
}
wint_t toUpper(wchar_t c) { return towupper_l(static_cast<wint_t>(c), unicode()); }
wint_t toLower(wchar_t c) { return towlower_l(static_cast<wint_t>(c), unicode()); }
#endif

}  // namespace

wchar_t upperLetter(wchar_t c) {
  if (c < 128) return c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - 32) : c;
  return static_cast<wchar_t>(toUpper(c));
}

wchar_t lowerLetter(wchar_t c) {
  if (c < 128) return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
  return static_cast<wchar_t>(toLower(c));
}

std::wstring upperCased(std::wstring text) {
  for (wchar_t& c : text) c = upperLetter(c);
  return text;
}

std::wstring lowerCased(std::wstring text) {
  for (wchar_t& c : text) c = lowerLetter(c);
  return text;
}
