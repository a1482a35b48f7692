#include "host/filing/dxf_text.h"

#include <algorithm>

#include "platform/text/hex.h"
#include "platform/text/utf.h"

namespace host {
namespace {

bool isPlain(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Value of `count` hexadecimal digits at `at`; -1 when they aren't there.
int hexadecimal(const std::wstring& text, size_t at, size_t count) {
  if (at + count > text.size()) return -1;
  const auto value = readHex(std::wstring_view(text).substr(at, count));
  return value ? static_cast<int>(*value) : -1;
}

bool standsForControl(wchar_t behindCaret) { return behindCaret >= L'@' && behindCaret <= L'_'; }

/// `\U+XXXX` at `at`, two of them when they are a pair of surrogates. 0 when there is none.
size_t takeUnicodeMark(const std::wstring& text, size_t at, wchar_t& c) {
  constexpr size_t length = 7;
  const auto unit = [&](size_t place) {
    return text.compare(place, 3, L"\\U+") == 0 ? hexadecimal(text, place + 3, 4) : -1;
  };
  const int first = unit(at);
  if (first <= 0) return 0;
  if (first < 0xD800 || first > 0xDFFF) {
    c = static_cast<wchar_t>(first);
    return length;
  }
  const int second = first < 0xDC00 && at + length < text.size() ? unit(at + length) : -1;
  if (second < 0xDC00 || second > 0xDFFF) return 0;
  c = static_cast<wchar_t>(0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00));
  return 2 * length;
}

/// Resolves the marks in place.
void resolveMarks(std::wstring& text, Carets carets) {
  size_t to = 0;
  for (size_t from = 0; from < text.size(); ++to) {
    const wchar_t c = text[from];
    wchar_t made = c;
    size_t used = 1;
    if (c == L'^' && carets == Carets::marks && from + 1 < text.size()) {
      const wchar_t next = text[from + 1];
      if (next == L' ') used = 2;
      // A NUL would end the text for its readers.
      if (standsForControl(next) && next != L'@') made = static_cast<wchar_t>(next - L'@'), used = 2;
    } else if (c == L'\\') {
      used = std::max<size_t>(takeUnicodeMark(text, from, made), 1);
    }
    text[to] = made;
    from += used;
  }
  text.resize(to);
}

}  // namespace

bool DxfTextDecoder::useCodePage(std::string_view name) {
  utf8_ = false;
  text::CodePage page(name);
  if (!page.isKnown()) return false;
  page_ = std::move(page);
  return true;
}

void DxfTextDecoder::decode(std::string_view bytes, std::wstring& text, Carets carets) {
  if (isPlain(bytes)) {
    text.assign(bytes.begin(), bytes.end());
  } else {
    text = utf8_ && isValidUtf8(bytes) ? fromUtf8(bytes) : page_.decode(bytes);
  }
  if (text.find_first_of(L"^\\") != std::wstring::npos) resolveMarks(text, carets);
}

void encodeDxfText(std::wstring_view text, std::string& bytes, Carets carets) {
  for (size_t i = 0; i < text.size(); ++i) {
    const wchar_t c = text[i];
    if (c >= 0x80) {
      size_t end = i + 1;
      while (end < text.size() && text[end] >= 0x80) ++end;
      bytes += toUtf8(text.substr(i, end - i));
      i = end - 1;
    } else if (c < L' ') {
      bytes += '^';
      bytes += static_cast<char>(c + L'@');
    } else {
      bytes += static_cast<char>(c);
      if (c == L'^' && carets == Carets::marks) bytes += ' ';
    }
  }
}

}  // namespace host
