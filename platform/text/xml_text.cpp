#include "platform/text/xml_text.h"

#include "platform/text/utf.h"

namespace {

bool isAllowed(wchar_t c) {
  if (c == L'\t' || c == L'\n' || c == L'\r') return true;
  return c >= L' ' && c != L'\uFFFE' && c != L'\uFFFF';
}

}  // namespace

std::string xmlText(std::string_view utf8) {
  std::wstring text;
  for (const wchar_t c : fromUtf8(utf8)) {
    switch (c) {
      case L'<':
        text += L"&lt;";
        break;
      case L'>':
        text += L"&gt;";
        break;
      case L'&':
        text += L"&amp;";
        break;
      case L'"':
        text += L"&quot;";
        break;
      default:
        text += isAllowed(c) ? c : L'\uFFFD';
    }
  }
  return toUtf8(text);
}
