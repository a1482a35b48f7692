#include "host/database/spaces.h"

#include "brx/db_dictionary.h"
#include "host/database/fields.h"
#include "host/database/header_variables.h"
#include "host/database/stubs.h"
#include "platform/text/letters.h"

namespace host {
namespace {

const AcDbBlockTableRecord* recordOf(AcDbObjectId block) {
  return AcDbBlockTableRecord::cast(objectOf(block));
}

size_t tileMode() {
  static const size_t index = findHeaderVariable(L"TILEMODE").value();
  return index;
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
  return std::get<int>(headerValue(drawing, tileMode())) ? drawing.modelSpaceId() : drawing.paperSpaceId();
}

namespace {

void rename(AcDbObjectId block, const std::wstring& name) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
  if (record.object()) record->setName(name.c_str());
}

/// Files know the paper space of the current layout by its name.
void makeCurrentPaper(AcDbDatabase& drawing, AcDbObjectId space) {
  const AcDbObjectId former = drawing.paperSpaceId();
  if (former == space) return;
  const std::wstring name = nameOfRecord(space);
  rename(space, L"*Paper_Space_changing");
  rename(former, name);
  rename(space, ACDB_PAPER_SPACE);
}

}  // namespace

bool switchToLayout(AcDbDatabase& drawing, const std::wstring& layout) {
  const AcDbObjectId space = spaceOfLayout(drawing, layout);
  if (space.isNull()) return false;
  const bool isModel = space == drawing.modelSpaceId();
  if (!isModel) makeCurrentPaper(drawing, space);
  return setHeaderValue(drawing, tileMode(), isModel ? 1 : 0) == Acad::eOk;
}

}  // namespace host
