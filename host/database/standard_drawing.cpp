#include "host/database/standard_drawing.h"

#include <cmath>

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

/// A view of the standard limits from above; other programs open a drawing with it.
GroupList standardView() {
  GroupList groups;
  resbuf item{};
  const auto point = [&](int code, double x, double y, double z = std::nan("")) {
    item = {}, item.restype = static_cast<Adesk::Int16>(code);
    item.resval.rpoint[0] = x, item.resval.rpoint[1] = y, item.resval.rpoint[2] = z;
    groups.append(item);
  };
  const auto real = [&](int code, double value) {
    item = {}, item.restype = static_cast<Adesk::Int16>(code), item.resval.rreal = value;
    groups.append(item);
  };
  const auto integer = [&](int code, Adesk::Int16 value) {
    item = {}, item.restype = static_cast<Adesk::Int16>(code), item.resval.rint = value;
    groups.append(item);
  };
  point(10, 0, 0), point(11, 1, 1), point(12, 6, 4.5), point(13, 0, 0), point(14, 0.5, 0.5);
  point(15, 0.5, 0.5), point(16, 0, 0, 1), point(17, 0, 0, 0);
  real(40, 9), real(41, 4.0 / 3), real(42, 50), real(43, 0), real(44, 0), real(50, 0), real(51, 0);
  integer(71, 0), integer(72, 1000), integer(73, 1), integer(74, 3);
  for (const int code : {75, 76, 77, 78}) integer(code, 0);
  return groups;
}

void completeView(AcDbDatabase& drawing) {
  AcDbObjectPointer<AcDbViewportTableRecord> view(
      ensure<AcDbViewportTable, AcDbViewportTableRecord>(drawing, L"*Active"), AcDb::kForWrite);
  if (view.object() && view->groups().empty()) view->setGroups(standardView());
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

void completeLinetypes(AcDbDatabase& drawing) {
  ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"ByBlock");
  ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"ByLayer");
  AcDbObjectPointer<AcDbLinetypeTableRecord> solid(
      ensure<AcDbLinetypeTable, AcDbLinetypeTableRecord>(drawing, L"Continuous"), AcDb::kForWrite);
  if (solid.object() && solid->comments().empty()) solid->setPattern(L"Solid line", solid->dashes());
}

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
  completeView(drawing);
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
