#include "host/database/subentities.h"

#include <utility>

#include "brx/db_attributes.h"
#include "brx/db_polylines.h"
#include "host/database/fields.h"
#include "host/rx/registry.h"

ACRX_DEFINE_MEMBERS(AcDbSequenceEnd)

AcDbObjectIterator::AcDbObjectIterator(const BrxSubentities& list, bool skipDeleted) : list_(list) {
  if (skipDeleted && !done() && objectId().isErased()) step();
}
void AcDbObjectIterator::step(bool backwards, bool skipDeleted) {
  do {
    index_ = backwards ? index_ - 1 : index_ + 1;
  } while (!done() && skipDeleted && objectId().isErased());
}
AcDbObjectId AcDbObjectIterator::objectId() const {
  return index_ < list_.ids.size() ? list_.ids[index_] : AcDbObjectId();
}
AcDbEntity* AcDbObjectIterator::entity() const {
  return index_ < list_.ids.size() || done() ? nullptr : list_.loose[index_ - list_.ids.size()].get();
}

BrxSubentities* HostAccess::subentities(AcDbEntity& entity) {
  if (auto* const line = AcDb2dPolyline::cast(&entity)) return &line->vertices_;
  if (auto* const line = AcDb3dPolyline::cast(&entity)) return &line->vertices_;
  if (auto* const reference = AcDbBlockReference::cast(&entity)) return &reference->attributes_;
  return nullptr;
}

namespace host {

BrxSubentities* subentitiesOf(const AcDbEntity& entity) {
  return HostAccess::subentities(const_cast<AcDbEntity&>(entity));
}

namespace {

bool suits(const AcDbEntity& owner, const AcDbEntity& subentity) {
  if (AcDb2dPolyline::cast(&owner)) return AcDb2dVertex::cast(&subentity);
  if (AcDb3dPolyline::cast(&owner)) return AcDb3dPolylineVertex::cast(&subentity);
  return AcDbBlockReference::cast(&owner) && AcDbAttribute::cast(&subentity);
}

Acad::ErrorStatus enter(AcDbEntity& owner, AcDbEntity* subentity, AcDbHandle handle) {
  if (subentity->layerId().isNull()) subentity->setPropertiesFrom(&owner);
  AcDbObjectId id;
  const Acad::ErrorStatus status = owner.database()->addAcDbObject(id, subentity, owner.objectId(), handle);
  if (status == Acad::eOk) {
    BrxSubentities& list = *subentitiesOf(owner);
    HostAccess::setPosition(id.stub(), list.ids.size());
    list.ids.push_back(id);
  }
  return status;
}

}  // namespace

Acad::ErrorStatus appendSubentity(AcDbEntity& owner, AcDbEntity* subentity, AcDbHandle handle) {
  if (!subentity) return Acad::eNullEntityPointer;
  if (!suits(owner, *subentity)) return Acad::eIllegalEntityType;
  if (subentity->database()) return Acad::eAlreadyInDb;
  owner.assertWriteEnabled(false);
  if (owner.database()) return enter(owner, subentity, handle);
  subentitiesOf(owner)->loose.emplace_back(subentity);
  return Acad::eOk;
}

Acad::ErrorStatus enterSubentities(AcDbEntity& owner) {
  BrxSubentities* const list = subentitiesOf(owner);
  if (!list) return Acad::eOk;
  for (auto& loose : std::exchange(list->loose, {})) {
    AcDbEntity* const subentity = loose.release();
    const Acad::ErrorStatus status = enter(owner, subentity, 0);
    if (status != Acad::eOk) return status;
    subentity->close();
  }
  return Acad::eOk;
}

Acad::ErrorStatus interleave(AcDbEntity& owner, const std::vector<AcDbEntity*>& followers) {
  BrxSubentities& list = *subentitiesOf(owner);
  if (!owner.database()) {
    auto own = std::exchange(list.loose, {});
    for (size_t i = 0; i < own.size(); ++i) {
      list.loose.push_back(std::move(own[i]));
      if (i < followers.size() && followers[i]) list.loose.emplace_back(followers[i]);
    }
    return Acad::eOk;
  }
  const std::vector<AcDbObjectId> own = std::exchange(list.ids, {});
  ++owner.database()->imp().revivals;
  size_t living = 0;
  Acad::ErrorStatus status = Acad::eOk;
  for (const AcDbObjectId& id : own) {
    HostAccess::setPosition(id.stub(), list.ids.size());
    list.ids.push_back(id);
    if (id.isErased() || living >= followers.size()) continue;
    AcDbEntity* const follower = followers[living++];
    if (!follower) continue;
    const Acad::ErrorStatus entered = enter(owner, follower, 0);
    if (entered == Acad::eOk) {
      follower->close();
    } else {
      delete follower;
      status = entered;
    }
  }
  return status;
}

AcDbObjectId sequenceEnd(AcDbEntity& owner) {
  BrxSubentities* const list = subentitiesOf(owner);
  if (!list || !owner.database()) return {};
  if (list->end.isNull()) {
    auto* const end = new AcDbSequenceEnd;
    end->setPropertiesFrom(&owner);
    owner.database()->addAcDbObject(list->end, end, owner.objectId());
    end->close();
  }
  return list->end;
}

namespace {

bool takesSubentities(AcDb::FilerType type) {
  return type == AcDb::kCopyFiler || type == AcDb::kDeepCloneFiler || type == AcDb::kWblockCloneFiler;
}

}  // namespace

void copySubentitiesOut(AcDbDwgFiler& filer, const BrxSubentities& list) {
  if (!takesSubentities(filer.filerType())) return;
  std::vector<const AcDbEntity*> all;
  forEachSubentity<AcDbEntity>(list, [&](const AcDbEntity& each) { all.push_back(&each); });
  filer.writeInt32(static_cast<Adesk::Int32>(all.size()));
  for (const AcDbEntity* each : all) {
    filer.writeString(each->isA()->name());
    each->dwgOutFields(&filer);
  }
}

void copySubentitiesIn(AcDbDwgFiler& filer, BrxSubentities& list) {
  if (!takesSubentities(filer.filerType())) return;
  Adesk::Int32 count = 0;
  filer.readInt32(&count);
  list.loose.clear();
  for (; count > 0 && filer.filerStatus() == Acad::eOk; --count) {
    std::wstring name;
    DwgReader{filer}(0, name);
    const AcRxClass* const known = findClass(name);
    std::unique_ptr<AcRxObject> made(known ? known->create() : nullptr);
    AcDbEntity* const entity = AcDbEntity::cast(made.get());
    if (!entity) return filer.setFilerStatus(Acad::eFilerError);
    entity->dwgInFields(&filer);
    made.release();
    list.loose.emplace_back(entity);
  }
}

void eraseSubentities(AcDbEntity& owner, bool erasing) {
  const BrxSubentities* const list = subentitiesOf(owner);
  if (!list) return;
  for (const AcDbObjectId& id : list->ids) {
    AcDbStub& stub = *id.stub();
    if (erasing == stub.erased || (!erasing && !stub.erasedWithOwner)) continue;
    markErased(stub, erasing);
    stub.erasedWithOwner = erasing;
  }
}

}  // namespace host
