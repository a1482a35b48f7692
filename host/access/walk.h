#pragma once

#include "brx/db_database.h"

namespace host {

/// The entities of a drawing in the order in which LISP walks them: model space, then paper spaces, each
/// entity followed by its vertices or attributes and what ends them. Erased ones are passed over. Null at the
/// end.
AcDbObjectId firstEntity(const AcDbDatabase& drawing);
/// Behind an entity of a space, of a block (to the block's end), a part of an entity, or behind a block
/// record, whose first entity it is. An erased entity has a next one too.
AcDbObjectId nextEntity(AcDbObjectId after);
/// The entity that was made last of those that aren't erased, in the current space.
AcDbObjectId lastEntity(const AcDbDatabase& drawing);

}  // namespace host
