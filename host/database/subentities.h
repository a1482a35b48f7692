#pragma once

#include "host/database/fields.h"

namespace host {

/// Vertices of a polyline, attributes of a block reference; null for entities that have none.
BrxSubentities* subentitiesOf(const AcDbEntity& entity);

/// Gives a subentity to its owner. In a database it enters it, under the handle if that isn't 0, and
/// stays open for write. `eIllegalEntityType` when the owner has no such ones.
Acad::ErrorStatus appendSubentity(AcDbEntity& owner, AcDbEntity* subentity, AcDbHandle handle = 0);
/// Takes the loose ones of an owner that has entered a database after it.
Acad::ErrorStatus enterSubentities(AcDbEntity& owner);
/// The object that ends the sequence in files, made on demand; null for an owner without subentities.
AcDbObjectId sequenceEnd(AcDbEntity& owner);
void eraseSubentities(AcDbEntity& owner, bool erasing);

/// Calls `visit(T&)` for each subentity of that class that isn't erased, without opening it.
template <class T, class Visit>
void forEachSubentity(const BrxSubentities& list, Visit visit) {
  const auto each = [&](AcDbEntity* entity) {
    if (T* const suited = T::cast(entity)) visit(*suited);
  };
  for (const auto& loose : list.loose) each(loose.get());
  for (AcDbObjectIterator walk(list); !walk.done(); walk.step()) {
    if (!walk.objectId().isNull()) each(static_cast<AcDbEntity*>(objectOf(walk.objectId())));
  }
}

/// Calls `change(T&, index)` with each, open for write, so that each is recorded for undo by itself.
template <class T, class Change>
Acad::ErrorStatus changeSubentities(const BrxSubentities& list, Change change) {
  int index = 0;
  for (AcDbObjectIterator walk(list); !walk.done(); walk.step()) {
    if (T* const loose = T::cast(walk.entity())) {
      change(*loose, index++);
      continue;
    }
    AcDbObjectPointer<T> resident(walk.objectId(), AcDb::kForWrite);
    if (resident.openStatus() == Acad::eNotThatKindOfClass) continue;
    if (!resident.object()) return resident.openStatus();
    change(*resident.object(), index++);
  }
  return Acad::eOk;
}

/// Puts each behind the subentity of the same index that isn't erased; null ones are left out.
Acad::ErrorStatus interleave(AcDbEntity& owner, const std::vector<AcDbEntity*>& followers);
/// Calls `make(T&, index)` with each, open for write, and puts what it answers behind it.
template <class T, class Make>
Acad::ErrorStatus insertSubentities(AcDbEntity& owner, Make make) {
  BrxSubentities& list = *subentitiesOf(owner);
  std::vector<AcDbEntity*> made;
  const Acad::ErrorStatus status = changeSubentities<T>(
      list, [&](T& each, int index) { made.push_back(make(each, static_cast<size_t>(index))); });
  return status == Acad::eOk ? interleave(owner, made) : status;
}

/// Part of the filing of an owner: copies take their subentities along; in files and for undo they
/// stand for themselves.
void copySubentitiesOut(AcDbDwgFiler& filer, const BrxSubentities& list);
void copySubentitiesIn(AcDbDwgFiler& filer, BrxSubentities& list);
template <class Visitor, class List>
void visitSubentities(Visitor& visitor, List& list) {
  if constexpr (std::is_same_v<Visitor, DwgWriter>) copySubentitiesOut(visitor.filer, list);
  if constexpr (std::is_same_v<Visitor, DwgReader>) copySubentitiesIn(visitor.filer, list);
}

}  // namespace host
