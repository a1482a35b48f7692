#pragma once

#include "host/filing/dxf_record.h"

namespace host {

/// Walks the records of one section.
class DxfWalk {
 public:
  DxfWalk(DxfTokens& tokens, const DxfTokens::Position& start) : tokens_(tokens) {
    tokens_.goTo(start);
    // What stands before the section's first object belongs to none.
    while ((more_ = tokens_.next(next_)) && next_.code != 0) {
    }
  }
  /// False at the section's end.
  bool next() {
    if (!more_ || next_.raw == "ENDSEC" || next_.raw == "SECTION" || next_.raw == "EOF") return false;
    more_ = record.read(tokens_, next_);
    return true;
  }
  /// Name of the record that comes next; empty at the section's end.
  std::string_view comes() const { return more_ ? next_.raw : std::string_view(); }

  DxfRecord record;

 private:
  DxfTokens& tokens_;
  DxfGroup next_;
  bool more_ = false;
};

}  // namespace host
