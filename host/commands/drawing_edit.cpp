#include "host/commands/drawing_edit.h"

#include "host/database/spaces.h"

namespace host {

AcDbObjectId currentSpace() {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? currentSpace(*drawing) : AcDbObjectId();
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

namespace {

/// Those that were not transformed.
Entities transformed(const Entities& entities, const AcGeMatrix3d& matrix) {
  Entities refused;
  changeEach(entities, [&](AcDbEntity& entity) {
    if (entity.transformBy(matrix) != Acad::eOk) refused.push_back(entity.objectId());
  });
  return refused;
}

void sayRefused(CommandInput& input, size_t count) {
  if (count == 0) return;
  input.tell(L"\n" + std::to_wstring(count) + (count == 1 ? L" was" : L" were") +
             L" not changed: entities of this kind can't be transformed so.");
}

}  // namespace

void transformAll(CommandInput& input, const Entities& entities, const AcGeMatrix3d& matrix) {
  sayRefused(input, transformed(entities, matrix).size());
}

Entities transformCopies(CommandInput& input, const Entities& entities, const AcGeMatrix3d& matrix) {
  Entities copies = copyAll(entities, currentSpace());
  const Entities refused = transformed(copies, matrix);
  eraseAll(refused);
  sayRefused(input, refused.size());
  for (const AcDbObjectId& each : refused) std::erase(copies, each);
  return copies;
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
