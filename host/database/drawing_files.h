#pragma once

#include <string>

#include "brx/acad_status.h"

class AcDbDatabase;

namespace host {

/// The seam to what reads and writes drawing files; whoever does it registers itself at the start.
struct DrawingFiles {
  /// Fills an empty drawing. `problem` says what was wrong, also where reading could go on.
  Acad::ErrorStatus (*read)(AcDbDatabase& drawing, const std::wstring& path, std::wstring& problem);
  /// The file at `path` is replaced only by a whole new one.
  Acad::ErrorStatus (*write)(AcDbDatabase& drawing, const std::wstring& path, std::wstring& problem);
};
void setDrawingFiles(DrawingFiles files);
/// Members are null before anybody registered.
const DrawingFiles& drawingFiles();

}  // namespace host
