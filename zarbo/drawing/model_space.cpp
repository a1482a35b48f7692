#include "zarbo/drawing/model_space.h"

#include "brx/db_database.h"
#include "brx/lisp_calls.h"
#include "zarbo/support/current_drawing.h"

namespace {

/// Model space of the current drawing, open for write; null after an alert.
AcDbBlockTableRecord* openModelSpace() {
  AcDbDatabase* const drawing = currentDatabase();
  AcDbBlockTable* table = nullptr;
  if (!drawing || drawing->getBlockTable(table, AcDb::kForRead) != Acad::eOk) {
    acedAlert(L"Failed to get block table!");
    return nullptr;
  }
  AcDbBlockTableRecord* space = nullptr;
  const Acad::ErrorStatus status = table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForWrite);
  table->close();
  if (status == Acad::eOk) return space;
  acedAlert(L"Failed to get block table record!");
  acutPrintf(L"\n%d", static_cast<int>(status));
  return nullptr;
}

}  // namespace

bool appendToModelSpace(AcDbEntity* entity) {
  AcDbBlockTableRecord* const space = openModelSpace();
  Acad::ErrorStatus status = Acad::eNoDatabase;
  if (space) {
    status = space->appendAcDbEntity(entity);
    space->close();
    if (status != Acad::eOk) acedAlert(L"Failed to append entity!");
  }
  if (status != Acad::eOk) delete entity;
  return status == Acad::eOk;
}

bool appendAndClose(AcDbEntity* entity) {
  if (!entity || !appendToModelSpace(entity)) return false;
  entity->close();
  return true;
}
