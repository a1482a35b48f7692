#include "host/access/spaces.h"

#include "brx/db_dictionary.h"
#include "host/database/header_variables.h"
#include "host/database/stubs.h"
#include "host/rx/registry.h"
#include "platform/text/letters.h"

namespace host {
namespace {

const AcDbBlockTableRecord* recordOf(AcDbObjectId block) {
  return AcDbBlockTableRecord::cast(objectOf(block));
}

}  // namespace

AcDbObjectId blockOf(const AcDbObject& object) {
  AcDbStub* stub = object.ownerId().stub();
  while (stub && stub->object && AcDbEntity::cast(stub->object)) stub = stub->owner;
  return AcDbObjectId(stub);
}

bool isPaperSpace(AcDbObjectId block) {
  const AcDbBlockTableRecord* const record = recordOf(block);
  return record && record->isLayout() && !(block == block.database()->modelSpaceId());
}

std::wstring layoutNameOf(AcDbObjectId block) {
  const AcDbBlockTableRecord* const record = recordOf(block);
  if (!record || !record->isLayout()) return {};
  if (const AcDbLayout* const layout = AcDbLayout::cast(objectOf(record->getLayoutId()))) {
    return layout->getLayoutName();
  }
  return isPaperSpace(block) ? L"Layout1" : L"Model";
}

std::vector<AcDbObjectId> spacesOf(const AcDbDatabase& drawing) {
  std::vector<AcDbObjectId> spaces = {drawing.modelSpaceId()};
  const AcDbBlockTable* const table = AcDbBlockTable::cast(objectOf(drawing.blockTableId()));
  for (const AcDbObjectId& each : table->recordIds()) {
    if (!each.isErased() && isPaperSpace(each)) spaces.push_back(each);
  }
  return spaces;
}

AcDbObjectId spaceOfLayout(const AcDbDatabase& drawing, const std::wstring& layout) {
  for (const AcDbObjectId& each : spacesOf(drawing)) {
    if (upperCased(layoutNameOf(each)) == upperCased(layout)) return each;
  }
  return {};
}

AcDbObjectId currentSpace(const AcDbDatabase& drawing) {
  static const size_t tileMode = findHeaderVariable(L"TILEMODE").value();
  return std::get<int>(headerValue(drawing, tileMode)) ? drawing.modelSpaceId() : drawing.paperSpaceId();
}

AcDbObjectId tableOfRecord(const AcDbDatabase& drawing, const AcRxClass& recordClass) {
  constexpr std::wstring_view suffix = L"Record";
  std::wstring name = recordClass.name();
  if (!name.ends_with(suffix)) return {};
  name.erase(name.size() - suffix.size());
  const AcRxClass* const table = findClass(name);
  return table ? drawing.tableId(table) : AcDbObjectId{};
}

AcDbObjectId tableNamed(const AcDbDatabase& drawing, const std::wstring& name) {
  std::wstring type = upperCased(name);
  if (type == L"BLOCK") type = L"BLOCK_RECORD";
  const AcRxClass* const record = findClassByDxfName(type);
  return record ? tableOfRecord(drawing, *record) : AcDbObjectId{};
}

}  // namespace host
