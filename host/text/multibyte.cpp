#include "host/text/multibyte.h"

#include <iconv.h>

#include <cstddef>
#include <iterator>

#include "platform/text/hex.h"

namespace host::text {
namespace {

/// The number of `count` hexadecimal digits, -1 when one is missing.
long hexadecimal(std::wstring_view text, size_t at, size_t count) {
  if (at + count > text.size()) return -1;
  const auto value = readHex(text.substr(at, count));
  return value ? static_cast<long>(*value) : -1;
}

constexpr const char* codePages[] = {"CP932", "BIG5", "CP949", "JOHAB", "GBK"};

/// Opened at the first use of its code page, and kept.
iconv_t converter(size_t page) {
  static iconv_t kept[std::size(codePages)] = {};
  if (!kept[page]) kept[page] = iconv_open("WCHAR_T", codePages[page]);
  return kept[page];
}

wchar_t letterOfBytes(size_t page, long bytes) {
  const iconv_t conversion = converter(page);
  if (conversion == reinterpret_cast<iconv_t>(-1)) return L'\uFFFD';
  char source[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes)};
  wchar_t letter = 0;
  char* from = source;
  char* to = reinterpret_cast<char*>(&letter);
  size_t left = sizeof source, room = sizeof letter;
  iconv(conversion, nullptr, nullptr, nullptr, nullptr);
  const bool whole = iconv(conversion, &from, &left, &to, &room) != static_cast<size_t>(-1) && room == 0;
  return whole ? letter : L'\uFFFD';
}

}  // namespace

wchar_t unicodeMark(std::wstring_view text, size_t& at) {
  const std::wstring_view start = text.substr(at, 3);
  if (start == L"\\U+" || start == L"\\u+") {
    const long code = hexadecimal(text, at + 3, 4);
    if (code <= 0) return 0;
    at += 7;
    return code >= 0xD800 && code < 0xE000 ? L'\uFFFD' : static_cast<wchar_t>(code);
  }
  if (start != L"\\M+" || at + 3 >= text.size() || text[at + 3] < L'1' || text[at + 3] > L'5') return 0;
  const long bytes = hexadecimal(text, at + 4, 4);
  if (bytes < 0) return 0;
  const auto page = static_cast<size_t>(text[at + 3] - L'1');
  at += 8;
  return letterOfBytes(page, bytes);
}

}  // namespace host::text
