#include "platform/mail/headers.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "platform/mail/encodings.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

/// Longer texts are encoded only because that folds them.
constexpr size_t longestPlainText = 60;
/// Bytes of a text in one encoded word, or in one part of a file's name.
constexpr size_t longestPiece = 36;

std::string withoutControls(const std::wstring& text) {
  std::wstring plain = text;
  for (wchar_t& c : plain) {
    if (c < L' ' || (c >= 0x7f && c < 0xa0) || c == L'\u2028' || c == L'\u2029') c = L' ';
  }
  return toUtf8(plain);
}

bool isPlain(const std::string& text) {
  return text.size() <= longestPlainText && text.find("=?") == std::string::npos &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

// Cut between characters.
std::vector<std::string_view> piecesOf(std::string_view text) {
  std::vector<std::string_view> pieces;
  while (!text.empty()) {
    size_t end = std::min(longestPiece, text.size());
    while (end < text.size() && (text[end] & 0xC0) == 0x80) --end;
    pieces.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return pieces;
}

std::string encodedWords(const std::string& text) {
  std::string words;
  for (const std::string_view piece : piecesOf(text))
    words += (words.empty() ? "=?UTF-8?B?" : "\r\n =?UTF-8?B?") + base64(piece) + "?=";
  return words;
}

std::string quoted(const std::string& text) {
  std::string out = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') out += '\\';
    out += c;
  }
  return out + '"';
}

std::string percentEncoded(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                         c == '.' || c == '-' || c == '_';
    char code[4];
    std::snprintf(code, sizeof code, "%%%02X", static_cast<unsigned char>(c));
    out += isPlain ? std::string(1, c) : code;
  }
  return out;
}

}  // namespace

std::string headerText(const std::wstring& text) {
  const std::string plain = withoutControls(text);
  return isPlain(plain) ? plain : encodedWords(plain);
}

std::string headerMailbox(const std::wstring& name, const std::string& address) {
  const std::string plain = withoutControls(name);
  if (plain.empty()) return "<" + address + ">";
  return (isPlain(plain) ? quoted(plain) : encodedWords(plain)) + "\r\n <" + address + ">";
}

std::string headerFileName(const std::wstring& name) {
  const std::string plain = withoutControls(name);
  if (isPlain(plain)) return ";\r\n filename=" + quoted(plain);
  const std::vector<std::string_view> pieces = piecesOf(plain);
  if (pieces.size() == 1) return ";\r\n filename*=UTF-8''" + percentEncoded(plain);
  std::string parts;
  for (size_t i = 0; i < pieces.size(); ++i)
    parts +=
        ";\r\n filename*" + std::to_string(i) + "*=" + (i == 0 ? "UTF-8''" : "") + percentEncoded(pieces[i]);
  return parts;
}

// The names stand in English, whatever the locale is.
std::string headerDate(std::time_t time) {
  constexpr const char* days[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  constexpr const char* months[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  std::tm local{};
  localtime_r(&time, &local);
  const long zone = local.tm_gmtoff / 60, minutes = std::abs(zone);
  char text[80];
  std::snprintf(text, sizeof text, "%s, %02d %s %d %02d:%02d:%02d %c%02ld%02ld", days[local.tm_wday],
                local.tm_mday, months[local.tm_mon], local.tm_year + 1900, local.tm_hour, local.tm_min,
                local.tm_sec, zone < 0 ? '-' : '+', minutes / 60, minutes % 60);
  return text;
}

std::optional<std::string> mailAddress(const std::wstring& text) {
  const std::string address = toUtf8(text);
  const size_t at = address.find('@');
  const bool isWhole = at != std::string::npos && at != 0 && at + 1 < address.size();
  const bool isSafe = std::all_of(address.begin(), address.end(), [](char c) {
    return c > ' ' && c <= '~' && std::string_view("<>()[],;:\\\"").find(c) == std::string_view::npos;
  });
  return isWhole && isSafe ? std::optional(address) : std::nullopt;
}

}  // namespace platform
