#include "zarbo/drawing/named_records.h"

#include "brx/db_database.h"
#include "zarbo/support/current_drawing.h"

namespace {

template <class Table>
AcDbObjectId find(const std::wstring& name) {
  AcDbObjectId id;
  const AcDbDatabase* const drawing = currentDatabase();
  const AcDbObjectPointer<Table> table(drawing ? drawing->tableId(Table::desc()) : AcDbObjectId());
  if (table.object()) table->getAt(name.c_str(), id);
  return id;
}

}  // namespace

AcDbObjectId findTextStyle(const std::wstring& name) { return find<AcDbTextStyleTable>(name); }
AcDbObjectId findLayer(const std::wstring& name) { return find<AcDbLayerTable>(name); }
