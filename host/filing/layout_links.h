#pragma once

#include "brx/db_database.h"

namespace host {

/// Layouts and the blocks of their contents name one another. Where a file has one of the two ways only, or
/// neither, the other is made: by what the block names, by what the layout names, else by the names of the
/// blocks and the order of the tabs.
void linkLayouts(AcDbDatabase& drawing);

}  // namespace host
