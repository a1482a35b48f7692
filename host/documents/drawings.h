#pragma once

#include <functional>
#include <memory>
#include <string>

#include "brx/acad_status.h"

class AcDbDatabase;

namespace host {

/// The seam between documents and drawing databases: who makes, reads and writes them.

using DrawingPointer = std::unique_ptr<AcDbDatabase, void (*)(AcDbDatabase*)>;

DrawingPointer newDrawing();
/// Null with `problem` set when the file can't be read as a drawing.
DrawingPointer openDrawing(const std::wstring& path, std::wstring& problem);
/// The file at `path` is replaced only by a whole new one. `problem` tells why not.
Acad::ErrorStatus saveDrawing(AcDbDatabase& drawing, const std::wstring& path, std::wstring& problem);

}  // namespace host
