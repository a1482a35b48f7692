#include "brx/db_dictionary.h"
#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbGroup)

std::wstring AcDbGroup::getName() const {
  AcDbObjectPointer<AcDbDictionary> dictionary(ownerId());
  std::wstring name;
  if (dictionary.object()) dictionary->nameAt(objectId(), name);
  return name;
}
Acad::ErrorStatus AcDbGroup::setDescription(const ACHAR* text) {
  return assertWriteEnabled(), description_ = text ? text : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbGroup::setSelectable(bool selectable) {
  return assertWriteEnabled(), selectable_ = selectable, Acad::eOk;
}
Acad::ErrorStatus AcDbGroup::setAnonymous() { return assertWriteEnabled(), anonymous_ = true, Acad::eOk; }
Acad::ErrorStatus AcDbGroup::append(AcDbObjectId id) {
  if (id.isNull()) return Acad::eNullObjectId;
  if (id.isErased()) return Acad::eWasErased;
  if (!AcDbEntity::cast(host::objectOf(id))) return Acad::eIllegalEntityType;
  if (database() && id.database() != database()) return Acad::eWrongDatabase;
  if (std::find(entities_.begin(), entities_.end(), id) != entities_.end()) return Acad::eDuplicateKey;
  assertWriteEnabled();
  entities_.push_back(id);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbGroup::remove(AcDbObjectId id) {
  const auto found = std::find(entities_.begin(), entities_.end(), id);
  if (found == entities_.end()) return Acad::eKeyNotFound;
  assertWriteEnabled();
  entities_.erase(found);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbGroup::clear() { return assertWriteEnabled(), entities_.clear(), Acad::eOk; }
bool AcDbGroup::has(const AcDbEntity* entity) const {
  return entity && !entity->isErased() &&
         std::find(entities_.begin(), entities_.end(), entity->objectId()) != entities_.end();
}
Adesk::UInt32 AcDbGroup::numEntities() const {
  return static_cast<Adesk::UInt32>(std::count_if(entities_.begin(), entities_.end(),
                                                  [](const AcDbObjectId& each) { return !each.isErased(); }));
}
AcDbGroupIterator* AcDbGroup::newIterator() const { return new AcDbGroupIterator(*this); }

AcDbGroupIterator::AcDbGroupIterator(const AcDbGroup& group) {
  for (const AcDbObjectId& each : group.entityIds()) {
    if (!each.isErased()) ids_.push_back(each);
  }
}
bool AcDbGroupIterator::next() {
  if (!done()) ++index_;
  return !done();
}

template <class Visitor, class Self>
void AcDbGroup::fields(Visitor& v, Self& o) {
  v(300, o.description_), v(70, o.anonymous_), v(71, o.selectable_), v.list(340, o.entities_);
}
HOST_FILING(AcDbGroup, AcDbObject, fields)
