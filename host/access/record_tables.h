#pragma once

#include <string>

#include "brx/db_database.h"

namespace host {

/// The table of a record's class or of a name that LISP has for it ("LAYER", "BLOCK"); null for none.
AcDbObjectId tableOfRecord(const AcDbDatabase& drawing, const AcRxClass& recordClass);
AcDbObjectId tableNamed(const AcDbDatabase& drawing, const std::wstring& name);

}  // namespace host
