#pragma once

#include <memory>

#include "brx/db_block.h"
#include "brx/db_database.h"
#include "host/commands/command_input.h"
#include "host/editor/request.h"

namespace host {

/// What commands do to the current drawing.

AcDbObjectId currentSpace();
/// Adds to the current space with the drawing's current properties; null on failure.
AcDbObjectId addEntity(std::unique_ptr<AcDbEntity> entity);
/// Adds with the properties that the entity has.
AcDbObjectId appendTo(AcDbObjectId block, std::unique_ptr<AcDbEntity> entity);

/// Opens each entity for write in turn; one that can't be is left out.
template <class Change>
void changeEach(const Entities& entities, Change change) {
  for (const AcDbObjectId& id : entities) {
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (entity.object()) change(*entity.object());
  }
}

void eraseAll(const Entities& entities);
/// Says how many can't be transformed, and leaves them as they are.
void transformAll(CommandInput& input, const Entities& entities, const AcGeMatrix3d& matrix);
/// Makes transformed copies in the current space, and gives them; nothing is left of those that can't be
/// transformed.
Entities transformCopies(CommandInput& input, const Entities& entities, const AcGeMatrix3d& matrix);
/// Copies in a block, in the same order.
Entities copyAll(const Entities& entities, AcDbObjectId block);

}  // namespace host
