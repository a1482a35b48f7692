#pragma once

#include "brx/db_database.h"
#include "host/view/display_list.h"

namespace host::view {

/// Records the entities of a block, model space for a null id, in their draw order. Layers that are off
/// or frozen are left out.
DisplayList record(AcDbDatabase& drawing, AcDbObjectId block = {});

}  // namespace host::view
