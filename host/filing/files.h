#pragma once

#include <string>

#include "brx/db_database.h"
#include "host/filing/report.h"

namespace host {

/// Drawing files by path: what a file is, its first bytes tell; what is written, the ending of the name:
/// ".dxf" is a drawing exchange file, all else a snapshot.

/// Fills an empty drawing. `eFileNotFound`, `eFileAccessErr`, `eNotImplementedYet` for a kind of file
/// that can't be read here, `eFilerError` for one that is damaged beyond reading, `eNotApplicable` when
/// the drawing isn't empty; the last message tells why, and the drawing stays empty.
Acad::ErrorStatus readDrawingFile(AcDbDatabase& drawing, const std::wstring& path, FilingReport& report);
/// `eFileAccessErr` when the file can't be written; what stood under the name before is then still there.
Acad::ErrorStatus writeDrawingFile(AcDbDatabase& drawing, const std::wstring& path);
/// "can't be written", with the system's reason; right behind a failure.
std::wstring writingProblem();

}  // namespace host
