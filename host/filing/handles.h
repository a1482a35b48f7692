#pragma once

#include "brx/db_database.h"

namespace host {

/// Handles at and above this are refused in files, so that new ones can always be given.
inline constexpr AcDbHandle handleLimit = AcDbHandle{1} << 62;

/// Moves the objects of a drawing that a file is going to fill to handles from `first` on, out of the
/// way of the file's own.
void moveHandles(AcDbDatabase& drawing, AcDbHandle first);
/// Sets the next new handle behind all that the drawing has, and at least to `seed`.
void settleNextHandle(AcDbDatabase& drawing, AcDbHandle seed);
/// False, and nothing changed, when another object has the handle.
bool giveHandle(AcDbDatabase& drawing, AcDbObjectId id, AcDbHandle handle);
/// Adds an object under its handle, or under a new one where that is 0, taken or beyond the limit. The
/// object is closed.
AcDbObjectId addWithHandle(AcDbDatabase& drawing, AcDbObject* object, AcDbObjectId owner, AcDbHandle handle);

}  // namespace host
