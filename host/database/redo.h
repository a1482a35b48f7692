#pragma once

#include <memory>

#include "brx/db_database.h"

namespace host {

/// What an undo took back, to be made again.
struct TakenBack;
using TakenBackPointer = std::shared_ptr<TakenBack>;

/// Takes back all changes behind a mark and ends it, as `undoTo`, and keeps them.
TakenBackPointer takeBack(AcDbDatabase& drawing, size_t mark);
/// Makes the changes again, which are recorded behind the marks that are open. The drawing must be as it was
/// left by `takeBack`.
void makeAgain(AcDbDatabase& drawing, TakenBack& changes);
/// Grows whenever the drawing is no longer as it was left.
Adesk::UInt64 changeCount(const AcDbDatabase& drawing);

}  // namespace host
