#pragma once

#include "brx/db_database.h"
#include "host/filing/report.h"

namespace host {

/// Erases, with a message, the references by which blocks contain themselves.
void breakBlockCycles(AcDbDatabase& drawing, FilingReport& report);

}  // namespace host
