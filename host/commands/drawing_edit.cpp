#include "host/commands/drawing_edit.h"

namespace host {

AcDbObjectId currentSpace() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? drawing->modelSpaceId() : AcDbObjectId();
}

AcDbObjectId appendTo(AcDbObjectId block, std::unique_ptr<AcDbEntity> entity) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
  AcDbObjectId id;
  if (!record.object() || record->appendAcDbEntity(id, entity.get()) != Acad::eOk) return {};
  entity.release()->close();
  return id;
}

AcDbObjectId addEntity(std::unique_ptr<AcDbEntity> entity) {
  entity->setDatabaseDefaults(acdbHostWorkingDatabase());
  return appendTo(currentSpace(), std::move(entity));
}

void eraseAll(const Entities& entities) {
  changeEach(entities, [](AcDbEntity& entity) { entity.erase(); });
}

void transformAll(const Entities& entities, const AcGeMatrix3d& matrix) {
  changeEach(entities, [&](AcDbEntity& entity) { entity.transformBy(matrix); });
}

Entities copyAll(const Entities& entities, AcDbObjectId block) {
  AcDbObjectIdArray originals, copies;
  for (const AcDbObjectId& id : entities) {
    if (id.isValid() && !id.isErased()) originals.append(id);
  }
  acdbHostWorkingDatabase()->deepCloneObjects(originals, block, copies);
  return {copies.begin(), copies.end()};
}

}  // namespace host
