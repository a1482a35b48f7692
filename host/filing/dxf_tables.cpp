#include "host/filing/dxf_tables.h"

#include <algorithm>
#include <string_view>

#include "host/filing/handles.h"
#include "host/filing/table_names.h"
#include "platform/text/utf.h"

namespace host {
namespace {

DxfTableTurn turnOf(std::string_view name) {
  if (name == "APPID") return DxfTableTurn::applications;
  return name == "LTYPE" || name == "STYLE" ? DxfTableTurn::referredTo : DxfTableTurn::others;
}

const TableName* findTable(std::string_view name) {
  const auto all = tableNames();
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const TableName& each) { return name == each.name; });
  return found == all.end() ? nullptr : &*found;
}

/// A viewport configuration has several records of one name; shape files are styles without one.
bool mayRepeat(const TableName& table, const std::wstring& name) {
  return std::string_view(table.name) == "VPORT" || (std::string_view(table.name) == "STYLE" && name.empty());
}

void readRecord(const DxfRecord& record, const TableName& type, AcDbSymbolTable& table, DxfObjects& objects) {
  const bool isBlock = std::string_view(type.name) == "BLOCK_RECORD";
  std::wstring name = objects.text(record, 2);
  if (isBlock) name = blockName(name);
  const bool repeats = mayRepeat(type, name);
  if (name.empty() && !repeats) return objects.complain(record, L"a record without a name is left out");
  if (!repeats && table.has(name.c_str())) {
    return objects.complain(record, L"the second record of the name '" + name + L"' is left out");
  }
  auto* const made = static_cast<AcDbSymbolTableRecord*>(type.record()->create());
  HostAccess::setName(*made, name);
  const AcDbObjectId id = objects.add(made, table.objectId(), record);
  if (made->isKindOf(AcDbLayerTableRecord::desc())) objects.ensureLinetype(record);
  id.stub()->writing = true;
  objects.readFields(*made, record);
  id.stub()->writing = false;
  HostAccess::addRecord(table, symbolKey(name.c_str()), id);
}

AcDbSymbolTable& openTable(const TableName& type, const DxfRecord& record, DxfObjects& objects) {
  const AcDbObjectId id = objects.drawing().tableId(type.table());
  if (record.handle && !giveHandle(objects.drawing(), id, record.handle)) {
    objects.complain(record, L"another object has this handle; it gets a new one");
  }
  auto& table = static_cast<AcDbSymbolTable&>(*id.stub()->object);
  id.stub()->writing = true;
  objects.readTableHead(table, record);
  id.stub()->writing = false;
  return table;
}

void keepTable(DxfWalk& walk, DxfObjects& objects) {
  GroupList& kept = objects.drawing().imp().kept.tables;
  do {
    objects.keepRecord(walk.record, kept);
  } while (walk.record.name != "ENDTAB" && walk.next());
}

}  // namespace

std::wstring blockName(const std::wstring& nameInFile) {
  const std::wstring key = symbolKey(nameInFile.c_str());
  if (key == L"$MODEL_SPACE" || key == L"*MODEL_SPACE") return ACDB_MODEL_SPACE;
  if (key == L"$PAPER_SPACE" || key == L"*PAPER_SPACE") return ACDB_PAPER_SPACE;
  return nameInFile;
}

void readDxfTables(DxfWalk& walk, DxfObjects& objects, DxfTableTurn turn) {
  AcDbSymbolTable* table = nullptr;
  const TableName* type = nullptr;
  while (walk.next()) {
    const DxfRecord& record = walk.record;
    if (record.name == "TABLE") {
      const DxfGroup* const name = record.find(2);
      type = name ? findTable(name->raw) : nullptr;
      const bool isTurn = turn == turnOf(name ? name->raw : "");
      table = type && isTurn ? &openTable(*type, record, objects) : nullptr;
      if (!type && isTurn) keepTable(walk, objects);
    } else if (record.name == "ENDTAB") {
      table = nullptr;
    } else if (table && record.name == type->name) {
      readRecord(record, *type, *table, objects);
    } else if (table) {
      objects.complain(record, L"has no place in this table and is left out");
    }
  }
}

}  // namespace host
