#include "host/text/code_page.h"

#include <iconv.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <utility>

#include "platform/text/utf.h"

namespace host::text {
namespace {

const iconv_t noConverter = reinterpret_cast<iconv_t>(-1);

/// The library's name of a code page; empty for one that it can't know.
std::string pageName(std::string_view name) {
  std::string lower;
  for (const char c : name) lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  const auto digitsBehind = [&](std::string_view prefix) {
    const bool fits = lower.starts_with(prefix) && lower.size() > prefix.size() &&
                      std::all_of(lower.begin() + static_cast<std::ptrdiff_t>(prefix.size()), lower.end(),
                                  [](unsigned char c) { return std::isdigit(c); });
    return fits ? lower.substr(prefix.size()) : std::string();
  };
  for (const std::string_view prefix : {"ansi_", "dos", "cp", "windows-", "windows"}) {
    const std::string digits = digitsBehind(prefix);
    if (digits == "1361") return "JOHAB";
    if (!digits.empty()) return "CP" + digits;
  }
  for (const std::string_view prefix : {"iso8859-", "iso-8859-"}) {
    if (const std::string part = digitsBehind(prefix); !part.empty()) return "ISO-8859-" + part;
  }
  if (lower == "latin-1" || lower == "latin1") return "ISO-8859-1";
  if (lower == "utf-16" || lower == "utf-8") return lower;
  if (lower == "ascii") return "CP1252";
  if (lower == "mac-roman" || lower == "macroman") return "MACINTOSH";
  if (lower == "ksc5601") return "CP949";
  if (lower == "big5") return "CP950";
  if (lower == "gb2312") return "CP936";
  return lower == "johab" ? "JOHAB" : "";
}

}  // namespace

CodePage::CodePage(std::string_view name) : converter_(noConverter) {
  const std::string page = pageName(name);
  if (!page.empty()) converter_ = iconv_open("UTF-8", page.c_str());
}
CodePage::~CodePage() {
  if (converter_ != noConverter) iconv_close(converter_);
}
CodePage::CodePage(CodePage&& other) noexcept : converter_(std::exchange(other.converter_, noConverter)) {}
CodePage& CodePage::operator=(CodePage&& other) noexcept {
  std::swap(converter_, other.converter_);
  return *this;
}

bool CodePage::isKnown() const { return converter_ != noConverter; }

std::wstring CodePage::decode(std::string_view bytes) const {
  std::string utf8;
  char* from = const_cast<char*>(bytes.data());
  size_t left = bytes.size();
  iconv(converter_, nullptr, nullptr, nullptr, nullptr);
  while (left) {
    char buffer[512];
    char* to = buffer;
    size_t room = sizeof buffer;
    const size_t result = iconv(converter_, &from, &left, &to, &room);
    utf8.append(buffer, static_cast<size_t>(to - buffer));
    if (result == static_cast<size_t>(-1) && errno != E2BIG) {
      utf8 += "\xEF\xBF\xBD";
      ++from, --left;
    }
  }
  return fromUtf8(utf8);
}

}  // namespace host::text
