#include "host/filing/dxf_sink.h"

#include <charconv>
#include <cmath>

#include "platform/files/whole_file.h"
#include "platform/text/hex.h"

namespace host {

namespace {
constexpr size_t pieceSize = 1 << 20;
}

void DxfSink::code(int code) {
  char digits[8];
  const auto [end, problem] = std::to_chars(digits, digits + sizeof digits, code);
  const auto length = static_cast<size_t>(end - digits);
  if (length < 3) buffer_.append(3 - length, ' ');
  buffer_.append(digits, length);
  buffer_ += '\n';
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
  const auto [end, problem] =
      std::to_chars(digits, digits + sizeof digits, std::isfinite(value) ? value : 0.0);
  const std::string_view made(digits, static_cast<size_t>(end - digits));
  buffer_ += made;
  if (made.find_first_of(".e") == std::string_view::npos) buffer_ += ".0";
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
