#pragma once

#include <string>

#include "brx/db_database.h"

namespace host {

/// Whether the ending names a format for solids: .ifc, .step, .stp, .stl, .glb.
bool isSolidFormat(const std::string& file);

/// Writes the solids that model space shows, whole or not at all; false with `problem` set, also for a
/// drawing without any. The path is UTF-8.
bool exportSolids(AcDbDatabase& drawing, const std::string& file, std::string& problem);

}  // namespace host
