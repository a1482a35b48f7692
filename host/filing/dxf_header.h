#pragma once

#include <string>

#include "host/filing/dxf_objects.h"
#include "host/filing/dxf_sink.h"

namespace host {

/// What must be known of the header before anything else is read.
struct DxfVersion {
  std::string version = "AC1009";  // where the file doesn't tell
  std::string codePage = "ANSI_1252";
  AcDbHandle handleSeed = 0;
  /// From AC1021 on files are in UTF-8.
  bool isUtf8() const { return version >= "AC1021"; }
};
DxfVersion readDxfVersion(DxfTokens& tokens, const DxfTokens::Position& header);

/// Sets the drawing's variables; those that it doesn't have are kept.
void readDxfHeader(DxfTokens& tokens, const DxfTokens::Position& header, DxfObjects& objects);
void writeDxfHeader(const AcDbDatabase& drawing, DxfSink& sink);

/// The version in which a drawing is written: the one in which it came, but at least the first that is
/// in UTF-8.
std::string dxfVersionOf(const AcDbDatabase& drawing);

}  // namespace host
