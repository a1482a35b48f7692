#pragma once

#include <string>
#include <string_view>

#include "brx/adesk.h"
#include "host/filing/dxf_text.h"

namespace platform {
class WholeFile;
}

namespace host {

/// Writes the groups of a drawing exchange file as UTF-8 text: into a file in large pieces, or all into
/// memory.
class DxfSink {
 public:
  DxfSink() = default;
  explicit DxfSink(platform::WholeFile& file) : file_(&file) {}

  void text(int code, std::wstring_view value, Carets carets = Carets::marks);
  /// Bytes that need no encoding: names of the format itself.
  void word(int code, std::string_view value);
  /// The shortest decimal that reads back as the same value; what is not finite is written as 0.
  void real(int code, double value);
  void integer(int code, Adesk::Int64 value);
  void handle(int code, Adesk::UInt64 value);
  /// Hexadecimal digits, in as many groups as are needed.
  void chunk(int code, std::string_view bytes);

  /// False when a write has failed.
  bool flush();
  const std::string& bytes() const { return buffer_; }

 private:
  void code(int code);
  void endGroup();

  platform::WholeFile* file_ = nullptr;
  std::string buffer_;
  bool good_ = true;
};

}  // namespace host
