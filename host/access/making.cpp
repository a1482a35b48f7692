#include "host/access/making.h"

#include "brx/db_block.h"
#include "brx/db_polylines.h"
#include "host/access/group_checks.h"
#include "host/access/object_building.h"
#include "host/access/record_tables.h"
#include "host/access/refusal.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "host/database/subentities.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using lisp::Value;

template <class T>
std::unique_ptr<T> as(std::unique_ptr<AcDbObject> object) {
  T* const suited = T::cast(object.get());
  if (suited) object.release();
  return std::unique_ptr<T>(suited);
}

/// The space that the list names, else the current one.
AcDbObjectId spaceOf(const AcDbDatabase& drawing, const ListGroups& groups) {
  if (const Value* const layout = findGroup(groups, 410)) {
    const AcDbObjectId found = spaceOfLayout(drawing, layout->text());
    require(!found.isNull(), Errno::badField);
    return found;
  }
  return integerGroup(groups, 67, 0) ? drawing.paperSpaceId() : currentSpace(drawing);
}

/// Parts follow a polyline always, a block reference by its flag.
bool beginsSequence(const AcDbEntity& entity, const ListGroups& groups) {
  if (AcDb2dPolyline::cast(&entity) || AcDb3dPolyline::cast(&entity)) return true;
  return AcDbBlockReference::cast(&entity) && integerGroup(groups, 66, 0) == 1;
}

Made append(std::unique_ptr<AcDbEntity> entity, AcDbObjectId space) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(space, AcDb::kForWrite);
  require(record.openStatus());
  AcDbObjectId id;
  const Acad::ErrorStatus status = record->appendAcDbEntity(id, entity.get());
  // An object that has entered the drawing is the drawing's, also when its parts were refused.
  if (entity->database()) entity.release()->close();
  require(status);
  return {id, {}};
}

Made addRecord(AcDbDatabase& drawing, std::unique_ptr<AcDbSymbolTableRecord> record) {
  AcDbObjectPointer<AcDbSymbolTable> table(tableOfRecord(drawing, *record->isA()), AcDb::kForWrite);
  require(table.openStatus());
  AcDbObjectId id;
  require(table->add(id, record.get()));
  record.release()->close();
  return {id, {}};
}

/// Objects that stand in no dictionary yet.
Made addLoose(AcDbDatabase& drawing, std::unique_ptr<AcDbObject> object) {
  AcDbObjectId id;
  require(drawing.addAcDbObject(id, object.get()));
  object.release()->close();
  return {id, {}};
}

std::wstring freeAnonymousName(const AcDbDatabase& drawing, std::wstring_view given) {
  AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId());
  require(table.openStatus());
  const std::wstring letter(1, given.size() > 1 ? upperLetter(given[1]) : L'U');
  for (int number = 1;; ++number) {
    std::wstring name = L"*" + letter + std::to_wstring(number);
    if (!table->has(name.c_str())) return name;
  }
}

/// The record of the name, emptied, or a new one.
AcDbObjectId provideBlock(AcDbDatabase& drawing, const std::wstring& name) {
  AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
  require(table.openStatus());
  AcDbObjectId id;
  if (table->getAt(name.c_str(), id) != Acad::eOk) {
    auto record = std::make_unique<AcDbBlockTableRecord>();
    require(record->setName(name.c_str()) == Acad::eOk, Errno::badBlockName);
    require(table->add(id, record.get()));
    record.release()->close();
    return id;
  }
  AcDbObjectPointer<AcDbBlockTableRecord> record(id);
  require(record.openStatus());
  for (const AcDbObjectId& each : record->entityIds()) {
    if (!each.isErased()) markErased(*each.stub(), true);
  }
  return id;
}

}  // namespace

void ObjectMaker::cancel() {
  sequence_.reset();
  block_.reset();
}

Made ObjectMaker::make(const Value& list) {
  const ListGroups groups = groupsOf(list);
  const std::wstring type = upperCased(textGroup(groups, 0));
  require(!type.empty(), Errno::badType);
  Undoable change(drawing_);
  Made made;
  if (sequence_) {
    made = continueSequence(type, groups);
  } else if (type == L"BLOCK") {
    beginBlock(groups);
  } else if (type == L"ENDBLK") {
    made = endBlock();
  } else {
    made = makeObject(type, groups);
  }
  change.keep();
  return made;
}

Made ObjectMaker::continueSequence(std::wstring_view type, const ListGroups& groups) {
  std::unique_ptr<AcDbEntity> owner = std::move(sequence_);
  if (type == L"SEQEND") return makeEntity(std::move(owner), sequenceSpace_);
  const bool isInsert = AcDbBlockReference::cast(owner.get());
  require(type == (isInsert ? L"ATTRIB" : L"VERTEX"), Errno::badSequence);
  auto part = as<AcDbEntity>(buildObject(drawing_, type, groups, owner.get()));
  require(appendSubentity(*owner, part.get()));
  part.release();
  sequence_ = std::move(owner);
  return {};
}

void ObjectMaker::beginBlock(const ListGroups& groups) {
  const bool isNested = block_ != nullptr;
  block_.reset();
  require(!isNested, Errno::badSequence);
  requireNeeded(L"BLOCK", groups);
  enum : int { anonymous = 1, external = 4 | 8 | 16 | 32 };
  const int flags = integerGroup(groups, 70, 0);
  require((flags & external) == 0, Errno::badField);
  auto begun = std::make_unique<Block>();
  begun->name = textGroup(groups, 2);
  if (flags & anonymous || begun->name.starts_with(L"*")) {
    begun->name = freeAnonymousName(drawing_, begun->name);
    begun->flags = anonymous;
  }
  begun->comments = textGroup(groups, 4);
  for (const ListGroup& each : groups) {
    std::string unused;
    if (each.code == 10) begun->origin = asPnt3d(bufferOf(each, unused).resval.rpoint);
  }
  block_ = std::move(begun);
}

Made ObjectMaker::endBlock() {
  require(block_ != nullptr, Errno::badSequence);
  const std::unique_ptr<Block> done = std::move(block_);
  const AcDbObjectId id = provideBlock(drawing_, done->name);
  {
    AcDbObjectPointer<AcDbBlockTableRecord> record(id, AcDb::kForWrite);
    require(record.openStatus());
    HostAccess::setBlock(*record.object(), done->origin, done->flags, L"", done->comments);
  }
  for (auto& each : done->contents) append(std::move(each), id);
  return {id, done->name};
}

Made ObjectMaker::makeObject(std::wstring_view type, const ListGroups& groups) {
  require(type != L"ATTRIB" && type != L"VERTEX" && type != L"SEQEND", Errno::badSequence);
  std::unique_ptr<AcDbObject> object = buildObject(drawing_, type, groups);
  if (AcDbSymbolTableRecord::cast(object.get())) {
    return addRecord(drawing_, as<AcDbSymbolTableRecord>(std::move(object)));
  }
  if (!AcDbEntity::cast(object.get())) return addLoose(drawing_, std::move(object));
  auto entity = as<AcDbEntity>(std::move(object));
  const AcDbObjectId space = spaceOf(drawing_, groups);
  if (!beginsSequence(*entity, groups)) return makeEntity(std::move(entity), space);
  sequence_ = std::move(entity);
  sequenceSpace_ = space;
  return {};
}

Made ObjectMaker::makeEntity(std::unique_ptr<AcDbEntity> entity, AcDbObjectId space) {
  if (!block_) return append(std::move(entity), space);
  block_->contents.push_back(std::move(entity));
  return {};
}

}  // namespace host
