#include "host/filing/dxf_tokens.h"

#include <charconv>
#include <cmath>
#include <cstring>

#include "platform/text/hex.h"
#include "platform/text/utf.h"

namespace host {
namespace {

constexpr std::string_view binaryMark("AutoCAD Binary DXF\r\n\x1a\0", 22);
constexpr std::string_view utf8Mark("\xEF\xBB\xBF");

/// Without control characters as well: old files end with one.
std::string_view trimmed(std::string_view text) {
  while (!text.empty() && static_cast<unsigned char>(text.front()) <= ' ') text.remove_prefix(1);
  while (!text.empty() && static_cast<unsigned char>(text.back()) <= ' ') text.remove_suffix(1);
  return text;
}

std::string_view number(std::string_view text) {
  text = trimmed(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  return text;
}

bool readCode(std::string_view line, int& code) {
  line = number(line);
  const auto [end, problem] = std::from_chars(line.data(), line.data() + line.size(), code);
  return problem == std::errc() && end == line.data() + line.size() && wireKind(code) != WireKind::none;
}

template <class T>
T littleEndian(std::string_view bytes) {
  T value{};
  std::memcpy(&value, bytes.data(), std::min(bytes.size(), sizeof value));
  return value;
}

/// Length of the value behind a group code in a binary file; npos when the file is too short for it.
size_t binaryLength(WireKind kind, std::string_view rest) {
  switch (kind) {
    case WireKind::real:
    case WireKind::int64:
      return rest.size() < 8 ? std::string_view::npos : 8;
    case WireKind::int32:
      return rest.size() < 4 ? std::string_view::npos : 4;
    case WireKind::int16:
      return rest.size() < 2 ? std::string_view::npos : 2;
    case WireKind::boolean:
      return rest.empty() ? std::string_view::npos : 1;
    case WireKind::chunk: {
      if (rest.empty()) return std::string_view::npos;
      const size_t length = 1 + static_cast<unsigned char>(rest[0]);
      return rest.size() < length ? std::string_view::npos : length;
    }
    default:
      return rest.find('\0');
  }
}

std::wstring shortened(std::string_view text) {
  constexpr size_t most = 40;
  std::wstring shown = fromUtf8(text.substr(0, most));
  for (wchar_t& c : shown) {
    if (c < L' ') c = L' ';
  }
  return L"'" + shown + (text.size() > most ? L"…'" : L"'");
}

}  // namespace

bool DxfGroup::real(double& value) const {
  value = 0;
  if (binary) {
    value = littleEndian<double>(raw);
  } else {
    const std::string_view text = number(raw);
    const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (problem != std::errc() || end != text.data() + text.size()) return value = 0, false;
  }
  if (std::isfinite(value)) return true;
  value = 0;
  return false;
}

bool DxfGroup::integer(int64_t& value) const {
  value = 0;
  if (binary) {
    switch (raw.size()) {
      case 1:
        return value = static_cast<unsigned char>(raw[0]), true;
      case 2:
        return value = littleEndian<int16_t>(raw), true;
      case 4:
        return value = littleEndian<int32_t>(raw), true;
      default:
        return value = littleEndian<int64_t>(raw), true;
    }
  }
  const std::string_view text = number(raw);
  const auto [end, problem] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (problem == std::errc() && end == text.data() + text.size()) return true;
  // Some programs write whole numbers as reals.
  double asReal = 0;
  if (real(asReal) && asReal == std::floor(asReal) && std::abs(asReal) < 9e15) {
    value = static_cast<int64_t>(asReal);
    return true;
  }
  value = 0;
  return false;
}

bool DxfGroup::handle(uint64_t& value) const {
  const auto read = readHex(trimmed(raw));
  value = read.value_or(0);
  return read.has_value();
}

DxfTokens::DxfTokens(std::string_view bytes, FilingReport& report) : bytes_(bytes), report_(report) {
  if (bytes.starts_with(binaryMark)) {
    offset_ = binaryMark.size();
    // The first group is 0 "SECTION": old files have one byte for its code, new ones two.
    codeBytes_ = offset_ + 1 < bytes.size() && bytes[offset_ + 1] == '\0' ? 2 : 1;
  } else if (bytes.starts_with(utf8Mark)) {
    offset_ = utf8Mark.size();
  }
}

bool DxfTokens::next(DxfGroup& group) {
  do {
    if (!(isBinary() ? nextBinary(group) : nextText(group))) return false;
  } while (group.code == 999);
  return true;
}

std::string_view DxfTokens::takeLine() {
  const char* const start = bytes_.data() + offset_;
  const size_t rest = bytes_.size() - offset_;
  const auto* const end = static_cast<const char*>(std::memchr(start, '\n', rest));
  size_t length = end ? static_cast<size_t>(end - start) : rest;
  offset_ += length + (end ? 1 : 0);
  ++line_;
  if (length && start[length - 1] == '\r') --length;
  return {start, length};
}

/// Goes to the next line "0" with a word behind it; false when there is none.
bool DxfTokens::resynchronise() {
  while (offset_ < bytes_.size()) {
    const Position here = position();
    if (trimmed(takeLine()) != "0" || offset_ >= bytes_.size()) continue;
    const char first = bytes_[offset_];
    if ((first >= 'A' && first <= 'Z') || first == '_') {
      goTo(here);
      return true;
    }
  }
  return false;
}

bool DxfTokens::nextText(DxfGroup& group) {
  while (offset_ < bytes_.size()) {
    const std::string_view line = takeLine();
    if (readCode(line, group.code)) {
      if (offset_ >= bytes_.size()) {
        report_.add(line_, 0, L"the file ends behind a group code");
        return false;
      }
      group.raw = takeLine();
      group.place = line_;
      return true;
    }
    if (trimmed(line).empty() && trimmed(bytes_.substr(offset_)).empty()) return false;
    report_.add(line_, 0,
                L"a group code is expected, but " + shortened(line) +
                    L" stands there; reading goes on at the next object");
    if (!resynchronise()) return false;
  }
  return false;
}

bool DxfTokens::failBinary(size_t at) {
  report_.add(at, 0, L"no group can be read at this byte; the rest of the file is left out");
  offset_ = bytes_.size();
  return false;
}

bool DxfTokens::nextBinary(DxfGroup& group) {
  const size_t at = offset_;
  std::string_view rest = bytes_.substr(offset_);
  if (rest.empty()) return false;
  size_t codeLength = static_cast<size_t>(codeBytes_);
  if (rest.size() < codeLength) return failBinary(at);
  group.code =
      codeLength == 1 ? static_cast<unsigned char>(rest[0]) : littleEndian<uint16_t>(rest.substr(0, 2));
  if (codeLength == 1 && group.code == 255) {
    if (rest.size() < 3) return failBinary(at);
    group.code = littleEndian<uint16_t>(rest.substr(1, 2));
    codeLength = 3;
  }
  const WireKind kind = wireKind(group.code);
  if (kind == WireKind::none) return failBinary(at);
  rest.remove_prefix(codeLength);
  const size_t length = binaryLength(kind, rest);
  if (length == std::string_view::npos) return failBinary(at);
  const bool isText = kind == WireKind::text || kind == WireKind::handle;
  group.binary = !isText;
  group.raw = rest.substr(0, length);
  group.place = at;
  if (kind == WireKind::chunk) group.raw.remove_prefix(1);
  offset_ = at + codeLength + length + (isText ? 1 : 0);
  return true;
}

bool looksLikeDxf(std::string_view bytes) {
  if (bytes.starts_with(binaryMark)) return true;
  FilingReport ignored;
  DxfTokens tokens(bytes, ignored);
  DxfGroup group;
  return tokens.next(group) && group.is(0, "SECTION") && ignored.count() == 0;
}

}  // namespace host
