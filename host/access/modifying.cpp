#include "host/access/modifying.h"

#include "brx/db_subentities.h"
#include "host/access/carried_values.h"
#include "host/access/group_checks.h"
#include "host/access/object_building.h"
#include "host/access/object_list.h"
#include "host/access/refusal.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "platform/text/letters.h"

namespace host {
namespace {

/// Records that the host finds by their names keep them.
void requireNameKept(const AcDbSymbolTableRecord& record, const ListGroups& groups) {
  const AcDbDatabase& drawing = *record.database();
  const auto* const block = AcDbBlockTableRecord::cast(&record);
  const AcDbObjectId id = record.objectId();
  const bool isFixed =
      (block && block->isLayout()) || id == drawing.byLayerLinetype() || id == drawing.byBlockLinetype();
  const std::wstring name = textGroup(groups, 2);
  require(!isFixed || name.empty() || name == record.getName(), Errno::invalidTableName);
}

/// Records that are refused a name keep their old one, and the current layer can't be frozen.
void requireTaken(const AcDbSymbolTableRecord& record, const ListGroups& groups) {
  const std::wstring name = textGroup(groups, 2);
  require(name.empty() || name == record.getName(), Errno::invalidTableName);
  const auto* const layer = AcDbLayerTableRecord::cast(&record);
  const bool isCurrent = record.objectId() == record.database()->clayer();
  require(!layer || !isCurrent || !layer->isFrozen(), Errno::badField);
}

/// Entities stay in their space.
void requireSpaceKept(const AcDbObject& object, const ListGroups& groups) {
  const AcDbObjectId block = AcDbEntity::cast(&object) ? blockOf(object) : AcDbObjectId();
  const std::wstring layout = layoutNameOf(block);
  if (layout.empty()) return;
  const std::wstring wanted = textGroup(groups, 410);
  require(wanted.empty() || upperCased(wanted) == upperCased(layout), Errno::badField);
  require((integerGroup(groups, 67, isPaperSpace(block)) != 0) == isPaperSpace(block), Errno::badField);
}

void requireSameType(const AcDbObject& object, const ListGroups& groups) {
  const std::wstring type = upperCased(textGroup(groups, 0));
  require(type.empty() || type == typeNameOf(object), Errno::changedType);
  require(!AcDbSequenceEnd::cast(&object), Errno::sequenceEnd);
}

}  // namespace

void modifyObject(AcDbDatabase& drawing, const lisp::Value& list) {
  ListGroups groups = groupsOf(list);
  const lisp::Value* const name = findGroup(groups, -1);
  require(name && name->isTrue(), Errno::invalidName);
  const AcDbObjectId id(reinterpret_cast<AcDbStub*>(name->entityName()));
  require(id.isValid() && id.database() == &drawing, Errno::invalidName);
  require(!id.isErased(), Errno::erased);
  requireSameType(*objectOf(id), groups);
  requireSpaceKept(*objectOf(id), groups);
  requireSuitable(typeNameOf(*objectOf(id)), groups, drawing);
  const auto* const record = AcDbSymbolTableRecord::cast(objectOf(id));
  if (record) requireNameKept(*record, groups);
  // What LISP sees of a block there follows from its contents.
  if (AcDbBlockTableRecord::cast(record))
    std::erase_if(groups, [](const ListGroup& each) { return each.code == 70; });
  Undoable change(drawing);
  if (AcDbEntity::cast(objectOf(id))) provideLayer(drawing, groups);
  AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite);
  require(object.openStatus());
  ListReader reader(drawing, groups);
  fillObject(*object.object(), reader);
  takeCarriedValues(*object.object(), groups);
  if (record) requireTaken(*record, groups);
  takeXdata(*object.object(), groups);
  change.keep();
}

}  // namespace host
