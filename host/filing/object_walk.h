#pragma once

#include <algorithm>
#include <vector>

#include "host/database/stubs.h"
#include "host/database/subentities.h"

namespace host {

/// Objects without opening them. None of these calls change a drawing, nor do they stop at objects
/// that are open elsewhere.

inline AcDbObjectExtras& extrasOf(AcDbObject& object) {
  AcDbObjectExtras*& extras = HostAccess::extras(object);
  if (!extras) extras = new AcDbObjectExtras;
  return *extras;
}

inline bool isLiving(const AcDbObjectId& id) { return id.isValid() && !id.isErased(); }

/// Calls `visit(AcDbSymbolTable&)`.
template <class Visit>
void forEachTable(const AcDbDatabase& drawing, Visit visit) {
  for (const auto& [type, stub] : drawing.imp().tables) visit(static_cast<AcDbSymbolTable&>(*stub->object));
}

/// Calls `visit(Record&)` for each record of a table that isn't erased.
template <class Record = AcDbSymbolTableRecord, class Visit>
void forEachRecord(const AcDbSymbolTable& table, Visit visit) {
  for (const AcDbObjectId& id : table.recordIds()) {
    if (isLiving(id)) visit(static_cast<Record&>(*id.stub()->object));
  }
}

/// Calls `visit(AcDbEntity&)` for each entity of a block, not for subentities.
template <class Visit>
void forEachEntity(const AcDbBlockTableRecord& block, Visit visit) {
  for (const AcDbObjectId& id : block.entityIds()) {
    if (isLiving(id)) visit(static_cast<AcDbEntity&>(*id.stub()->object));
  }
}

/// Calls `visit(AcDbEntity&)` for vertices, attributes and the end of their sequence.
template <class Visit>
void forEachFiledSubentity(const AcDbEntity& entity, Visit visit) {
  const BrxSubentities* const list = subentitiesOf(entity);
  if (!list) return;
  for (const AcDbObjectId& id : list->ids) {
    if (isLiving(id)) visit(static_cast<AcDbEntity&>(*id.stub()->object));
  }
  if (isLiving(list->end)) visit(static_cast<AcDbEntity&>(*list->end.stub()->object));
}

inline bool isPlainObject(const AcDbObject& object) {
  return !object.isKindOf(AcDbEntity::desc()) && !object.isKindOf(AcDbSymbolTable::desc()) &&
         !object.isKindOf(AcDbSymbolTableRecord::desc());
}

/// Calls `visit(AcDbObject&)` for dictionaries and all else that is neither table, record nor entity:
/// the root dictionary first, the others by their handles.
template <class Visit>
void forEachPlainObject(const AcDbDatabase& drawing, Visit visit) {
  const AcDbObjectId root = drawing.namedObjectsDictionaryId();
  std::vector<AcDbStub*> found;
  for (AcDbStub& stub : drawing.imp().stubs) {
    const bool isPlain = stub.object && !stub.erased && isPlainObject(*stub.object);
    if (isPlain && &stub != root.stub()) found.push_back(&stub);
  }
  std::sort(found.begin(), found.end(),
            [](const AcDbStub* a, const AcDbStub* b) { return a->handle < b->handle; });
  if (isLiving(root)) visit(*root.stub()->object);
  for (AcDbStub* const each : found) visit(*each->object);
}

/// Calls `visit(AcDbObject&)` for all, owners before what they own, but for dictionaries.
template <class Visit>
void forEachFiledObject(const AcDbDatabase& drawing, Visit visit) {
  forEachTable(drawing, visit);
  forEachTable(drawing, [&](AcDbSymbolTable& table) { forEachRecord(table, visit); });
  const AcDbStub* const blocks = drawing.tableId(AcDbBlockTable::desc()).stub();
  forEachRecord<AcDbBlockTableRecord>(static_cast<AcDbSymbolTable&>(*blocks->object),
                                      [&](AcDbBlockTableRecord& block) {
                                        forEachEntity(block, [&](AcDbEntity& entity) {
                                          visit(entity);
                                          forEachFiledSubentity(entity, visit);
                                        });
                                      });
  forEachPlainObject(drawing, visit);
}

}  // namespace host
