#include "host/filing/dxf_sink.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

#include "platform/files/whole_file.h"
#include "platform/text/hex.h"

namespace host {

namespace {
constexpr size_t pieceSize = 1 << 20;
}

void DxfSink::code(int code) {
  char line[12] = "  ";
  const int blanks = code < 10 ? 2 : code < 100 ? 1 : 0;
  char* const end = std::to_chars(line + blanks, std::end(line), code).ptr;
  *end = '\n';
  buffer_.append(line, end + 1);
}

void DxfSink::endGroup() {
  buffer_ += '\n';
  if (file_ && buffer_.size() >= pieceSize) flush();
}

bool DxfSink::flush() {
  if (file_) {
    good_ = file_->write(buffer_) && good_;
    buffer_.clear();
  }
  return good_;
}

void DxfSink::text(int group, std::wstring_view value, Carets carets) {
  code(group);
  encodeDxfText(value, buffer_, carets);
  endGroup();
}

void DxfSink::word(int group, std::string_view value) {
  code(group);
  buffer_ += value;
  endGroup();
}

void DxfSink::real(int group, double value) {
  code(group);
  char digits[40];
  char* end = std::to_chars(digits, std::end(digits), std::isfinite(value) ? value : 0.0).ptr;
  if (std::none_of(digits, end, [](char c) { return c == '.' || c == 'e'; })) *end++ = '.', *end++ = '0';
  buffer_.append(digits, end);
  endGroup();
}

void DxfSink::integer(int group, Adesk::Int64 value) {
  code(group);
  char digits[24];
  const auto [end, problem] = std::to_chars(digits, digits + sizeof digits, value);
  buffer_.append(digits, static_cast<size_t>(end - digits));
  endGroup();
}

void DxfSink::handle(int group, Adesk::UInt64 value) {
  code(group);
  buffer_ += hexText<char>(value);
  endGroup();
}

void DxfSink::chunk(int group, std::string_view bytes) {
  // The format's own limit for one group.
  constexpr size_t most = 127;
  do {
    const std::string_view part = bytes.substr(0, most);
    code(group);
    for (const char c : part) appendHex(buffer_, static_cast<unsigned char>(c));
    endGroup();
    bytes.remove_prefix(part.size());
  } while (!bytes.empty());
}

}  // namespace host
