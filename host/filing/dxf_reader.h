#pragma once

#include <string_view>

#include "brx/db_database.h"
#include "host/filing/report.h"

namespace host {

/// Fills an empty drawing from a drawing exchange file: text or binary, from AC1009 on. What is
/// damaged is left out or mended and reported; what the host doesn't know is kept. `eFilerError` when
/// nothing of a drawing can be made out.
Acad::ErrorStatus readDxf(std::string_view bytes, AcDbDatabase& drawing, FilingReport& report);

}  // namespace host
