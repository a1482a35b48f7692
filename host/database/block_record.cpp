#include <set>

#include "brx/db_attributes.h"
#include "host/database/record_fields.h"
#include "host/database/subentities.h"

using host::symbolKey;

ACRX_DEFINE_MEMBERS(AcDbBlockTableRecord)

/// The record alone: origin, path and comments stand in the block that files have beside it, and under 70 the
/// block's units.
template <class Visitor, class Self>
void AcDbBlockTableRecord::fields(Visitor& v, Self& o) {
  v.name(2, o), v.hidden(o.origin_), v.soft(340, o.layout_), v.hidden(o.path_), v.hidden(o.comments_);
  v(70, o.units_), v(280, o.explodable_), v(281, o.scaling_);
}
HOST_FILING(AcDbBlockTableRecord, AcDbSymbolTableRecord, fields)

Acad::ErrorStatus AcDbBlockTableRecord::setLayoutId(AcDbObjectId layout) {
  return assertWriteEnabled(), layout_ = layout, Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecord::setComments(const ACHAR* text) {
  return assertWriteEnabled(), comments_ = text ? text : L"", Acad::eOk;
}
bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
  return std::any_of(entities_.begin(), entities_.end(), [](const AcDbObjectId& id) {
    return !id.isErased() && AcDbAttributeDefinition::cast(host::objectOf(id));
  });
}
Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
  assertWriteEnabled();
  origin_ = origin;
  return Acad::eOk;
}
bool AcDbBlockTableRecord::isLayout() const {
  const std::wstring key = symbolKey(getName().c_str());
  return key.starts_with(L"*MODEL_SPACE") || key.starts_with(L"*PAPER_SPACE");
}

namespace {

/// Whether the contents of `from` lead to `target`. Each record is looked into once.
bool leadsTo(AcDbObjectId from, AcDbObjectId target, std::set<AcDbObjectId>& seen) {
  if (from == target) return true;
  if (!seen.insert(from).second) return false;
  const AcDbBlockTableRecord* const record = AcDbBlockTableRecord::cast(host::objectOf(from));
  if (!record) return false;
  return std::any_of(record->entityIds().begin(), record->entityIds().end(), [&](const AcDbObjectId& id) {
    const AcDbBlockReference* const nested = AcDbBlockReference::cast(host::objectOf(id));
    return nested && !id.isErased() && leadsTo(nested->blockTableRecord(), target, seen);
  });
}

}  // namespace

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
  if (!entity) return Acad::eNullEntityPointer;
  if (entity->database()) return Acad::eAlreadyInDb;
  assertWriteEnabled(false);
  if (!database()) return Acad::eNoDatabase;
  const AcDbBlockReference* const reference = AcDbBlockReference::cast(entity);
  std::set<AcDbObjectId> seen;
  if (reference && !isLayout() && leadsTo(reference->blockTableRecord(), objectId(), seen))
    return Acad::eSelfReference;
  if (entity->layerId().isNull()) entity->setDatabaseDefaults(database());
  const Acad::ErrorStatus status = database()->addAcDbObject(id, entity, objectId());
  if (status != Acad::eOk) return status;
  HostAccess::addEntity(*this, id);
  return host::enterSubentities(*entity);
}
Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
  AcDbObjectId id;
  return appendAcDbEntity(id, entity);
}
Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool,
                                                    bool skipDeleted) const {
  iterator = new AcDbBlockTableRecordIterator(*this, skipDeleted);
  return Acad::eOk;
}

namespace {

constexpr Adesk::Int16 externalFlag = 4;

}  // namespace

void HostAccess::setBlock(AcDbBlockTableRecord& record, const AcGePoint3d& origin, Adesk::Int16 flags,
                          const std::wstring& path, const std::wstring& comments) {
  record.assertWriteEnabled();
  record.origin_ = origin, record.path_ = path, record.comments_ = comments;
  record.flags_ = static_cast<Adesk::Int16>(path.empty() ? flags & ~externalFlag : flags);
}

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& record,
                                                           bool skipDeleted)
    : record_(record) {
  start(true, skipDeleted);
}
void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
  const auto& ids = record_.entityIds();
  index_ = atBeginning || ids.empty() ? 0 : ids.size() - 1;
  if (skipDeleted && !done() && ids[index_].isErased()) step(atBeginning, true);
}
/// Going back from the first wraps below 0, to an index that counts as done.
void AcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted) {
  do {
    index_ = forward ? index_ + 1 : index_ - 1;
  } while (skipDeleted && !done() && record_.entityIds()[index_].isErased());
}
Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
  if (done()) return Acad::eInvalidIndex;
  id = record_.entityIds()[index_];
  return Acad::eOk;
}
Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
  AcDbObjectId id;
  const Acad::ErrorStatus status = getEntityId(id);
  return status == Acad::eOk ? acdbOpenObject(entity, id, mode, openErased) : status;
}
