#pragma once

#include <vector>

#include "host/filing/dxf_tokens.h"

namespace host {

/// The sections of a file, found before anything is read, since what stands early needs what stands
/// late.
struct DxfIndex {
  struct Section {
    std::string_view name;
    DxfTokens::Position start;  // behind the name
  };
  std::vector<Section> sections;
  AcDbHandle highestHandle = 0;

  /// Reports groups outside of sections and a missing end.
  void build(DxfTokens& tokens, FilingReport& report);
};

}  // namespace host
