#include "host/database/standard_drawing.h"

#include "brx/db_dictionary.h"
#include "host/database/stubs.h"

namespace host {
namespace {

template <class Table, class Record>
AcDbObjectId ensure(AcDbDatabase& drawing, const ACHAR* name) {
  AcDbObjectPointer<Table> table(drawing.tableId(Table::desc()), AcDb::kForWrite);
  AcDbObjectId id;
  if (!table.object() || table->getAt(name, id) == Acad::eOk) return id;
  auto* const record = new Record;
  record->setName(name);
  if (table->add(id, record) == Acad::eOk) {
    record->close();
  } else {
    delete record;
  }
  return id;
}

void completeLinetypes(AcDbDatabase& drawing) {
  ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"ByBlock");
  ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"ByLayer");
  AcDbObjectPointer<AcDbLinetypeTableRecord> solid(
      ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"Continuous"), AcDb::kForWrite);
  if (solid.object() && solid->comments().empty()) solid->setPattern(L"Solid line", solid->dashes());
}

AcDbObjectId rootDictionary(AcDbDatabase& drawing) {
  AcDbObjectId& root = drawing.imp().namedObjects;
  if (root.isNull()) {
    auto* const made = new AcDbDictionary;
    drawing.addAcDbObject(root, made);
    made->close();
  }
  return root;
}

template <class Class>
AcDbObjectId ensureIn(AcDbObjectId dictionaryId, const ACHAR* name) {
  AcDbObjectPointer<AcDbDictionary> dictionary(dictionaryId, AcDb::kForWrite);
  AcDbObjectId id;
  if (!dictionary.object() || dictionary->getAt(name, id) == Acad::eOk) return id;
  auto* const made = new Class;
  if (dictionary->setAt(name, made, id) == Acad::eOk) {
    made->close();
  } else {
    delete made;
  }
  return id;
}

void completePlotStyles(AcDbObjectId root) {
  const AcDbObjectId styles = ensureIn<AcDbDictionaryWithDefault>(root, L"ACAD_PLOTSTYLENAME");
  const AcDbObjectId normal = ensureIn<AcDbPlaceHolder>(styles, L"Normal");
  AcDbObjectPointer<AcDbDictionaryWithDefault> dictionary(styles, AcDb::kForWrite);
  if (dictionary.object() && dictionary->defaultId().isNull()) dictionary->setDefaultId(normal);
}

void completeLayout(AcDbObjectId layouts, AcDbObjectId space, const ACHAR* name, Adesk::Int16 tab) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(space, AcDb::kForWrite);
  if (!record.object() || !record->getLayoutId().isNull()) return;
  AcDbObjectPointer<AcDbLayout> layout(ensureIn<AcDbLayout>(layouts, name), AcDb::kForWrite);
  if (!layout.object() || !layout->getBlockTableRecordId().isNull()) return;
  layout->setLayoutName(name);
  layout->setTabOrder(tab);
  layout->setBlockTableRecordId(space);
  record->setLayoutId(layout->objectId());
}

}  // namespace

void completeTables(AcDbDatabase& drawing) {
  completeLinetypes(drawing);
  AcDbObjectPointer<AcDbLayerTableRecord> zero(ensure<AcDbLayerTable, AcDbLayerTableRecord>(drawing, L"0"),
                                               AcDb::kForWrite);
  if (zero.object() && zero->linetypeObjectId().isNull()) {
    zero->setLinetypeObjectId(drawing.continuousLinetype());
  }
  zero.close();
  ensure<AcDbTextStyleTable, AcDbTextStyleTableRecord>(drawing, L"Standard");
  ensure<AcDbRegAppTable, AcDbRegAppTableRecord>(drawing, L"ACAD");
  ensure<AcDbDimStyleTable, AcDbDimStyleTableRecord>(drawing, L"Standard");
  ensure<AcDbBlockTable, AcDbBlockTableRecord>(drawing, ACDB_MODEL_SPACE);
  ensure<AcDbBlockTable, AcDbBlockTableRecord>(drawing, ACDB_PAPER_SPACE);
}

void completeDrawing(AcDbDatabase& drawing) {
  completeTables(drawing);
  const AcDbObjectId root = rootDictionary(drawing);
  ensureIn<AcDbDictionary>(root, L"ACAD_GROUP");
  completePlotStyles(root);
  const AcDbObjectId layouts = ensureIn<AcDbDictionary>(root, L"ACAD_LAYOUT");
  completeLayout(layouts, drawing.modelSpaceId(), L"Model", 0);
  completeLayout(layouts, drawing.paperSpaceId(), L"Layout1", 1);
}

}  // namespace host
