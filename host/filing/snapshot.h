#pragma once

#include <string_view>

#include "brx/db_database.h"
#include "host/filing/report.h"

namespace platform {
class WholeFile;
}

namespace host {

/// The host's own drawing file: chunks with a tag, their length and a checksum, in which each object
/// stands as its `dwgOutFields` writes it. Handles are kept.

bool looksLikeSnapshot(std::string_view bytes);
/// False when a write has failed; the file is then not to be committed.
bool writeSnapshot(AcDbDatabase& drawing, platform::WholeFile& file);
/// Fills an empty drawing. `eFilerError` with a message when the file is damaged, before anything is
/// filled in; `eInvalidDwgVersion` for a format that is newer than this.
Acad::ErrorStatus readSnapshot(std::string_view bytes, AcDbDatabase& drawing, FilingReport& report);

}  // namespace host
