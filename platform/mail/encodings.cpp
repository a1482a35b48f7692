#include "platform/mail/encodings.h"

#include <cstdint>

namespace platform {

namespace {

constexpr char base64Symbols[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

void appendBase64(std::string& out, std::string_view bytes) {
  const auto byte = [&](size_t at) {
    return at < bytes.size() ? uint32_t{static_cast<uint8_t>(bytes[at])} : 0u;
  };
  for (size_t at = 0; at < bytes.size(); at += 3) {
    const uint32_t three = byte(at) << 16 | byte(at + 1) << 8 | byte(at + 2);
    out += base64Symbols[three >> 18];
    out += base64Symbols[three >> 12 & 63];
    out += at + 1 < bytes.size() ? base64Symbols[three >> 6 & 63] : '=';
    out += at + 2 < bytes.size() ? base64Symbols[three & 63] : '=';
  }
}

std::string quotedByte(char c) {
  constexpr char digits[] = "0123456789ABCDEF";
  const auto byte = static_cast<uint8_t>(c);
  return {'=', digits[byte >> 4], digits[byte & 15]};
}

}  // namespace

std::string base64(std::string_view bytes) {
  std::string out;
  appendBase64(out, bytes);
  return out;
}

std::string base64Lines(std::string_view bytes) {
  std::string out;
  out.reserve(sizeOfBase64Lines(bytes.size()));
  for (size_t at = 0; at < bytes.size(); at += bytesOfBase64Line) {
    appendBase64(out, bytes.substr(at, bytesOfBase64Line));
    out += "\r\n";
  }
  return out;
}

size_t sizeOfBase64Lines(size_t bytes) {
  const size_t lines = (bytes + bytesOfBase64Line - 1) / bytesOfBase64Line;
  return (bytes + 2) / 3 * 4 + lines * 2;
}

std::string withMailLineEnds(std::string_view text) {
  std::string out;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\r' && at + 1 < text.size() && text[at + 1] == '\n') ++at;
    if (text[at] == '\r' || text[at] == '\n') {
      out += "\r\n";
    } else {
      out += text[at];
    }
  }
  return out;
}

std::string quotedPrintable(std::string_view text) {
  constexpr size_t longestLine = 75;  // and the "=" of a soft line break
  std::string out;
  size_t column = 0;
  for (size_t at = 0; at < text.size(); ++at) {
    if (text.substr(at, 2) == "\r\n") {
      out += "\r\n";
      ++at;
      column = 0;
      continue;
    }
    const char c = text[at];
    const bool endsLine = at + 1 == text.size() || text[at + 1] == '\r';
    const bool isPlain = (c > ' ' && c <= '~' && c != '=') || (c == ' ' && !endsLine);
    const std::string piece = isPlain ? std::string(1, c) : quotedByte(c);
    if (column + piece.size() > longestLine) {
      out += "=\r\n";
      column = 0;
    }
    out += piece;
    column += piece.size();
  }
  return out;
}

}  // namespace platform
