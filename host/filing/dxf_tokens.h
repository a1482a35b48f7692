#pragma once

#include <cstdint>
#include <string_view>

#include "host/filing/report.h"
#include "host/filing/wire_kind.h"

namespace host {

/// One group of a drawing exchange file. The value stays in the file's bytes until it is asked for.
struct DxfGroup {
  int code = 0;
  bool binary = false;
  std::string_view raw;  // a line without its end, or the value's bytes
  size_t place = 0;      // line of the value; byte in a binary file

  bool is(int wanted, std::string_view text) const { return code == wanted && raw == text; }
  /// Numbers: false when the value is none, or not finite; the value is then 0.
  bool real(double& value) const;
  bool integer(int64_t& value) const;
  bool handle(uint64_t& value) const;
};

/// Walks the groups of a text or binary file. Damage is reported; the walk goes on at the next object
/// that can be made out. Comments (code 999) are passed over.
class DxfTokens {
 public:
  DxfTokens(std::string_view bytes, FilingReport& report);
  /// False at the end.
  bool next(DxfGroup& group);
  bool isBinary() const { return codeBytes_ != 0; }

  /// A place to which `goTo` comes back.
  struct Position {
    size_t offset = 0, line = 0;
  };
  Position position() const { return {offset_, line_}; }
  void goTo(const Position& position) { offset_ = position.offset, line_ = position.line; }

 private:
  bool nextText(DxfGroup& group);
  bool nextBinary(DxfGroup& group);
  std::string_view takeLine();
  bool resynchronise();
  bool failBinary(size_t at);

  std::string_view bytes_;
  FilingReport& report_;
  size_t offset_ = 0, line_ = 0;
  int codeBytes_ = 0;  // of a group code in a binary file
};

/// Whether the bytes may be a drawing exchange file, text or binary.
bool looksLikeDxf(std::string_view bytes);

}  // namespace host
