#include "host/access/walk.h"

#include <algorithm>

#include "brx/db_calls.h"
#include "brx/lisp_calls.h"
#include "host/access/access_state.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "host/database/subentities.h"

namespace host {
namespace {

/// The first of the owner's that isn't erased from a place on; null at the end.
AcDbObjectId from(AcDbObjectId owner, const std::vector<AcDbObjectId>& ids, size_t place) {
  const size_t living = erasedRunsOf(owner).livingFrom(ids, place);
  return living < ids.size() ? ids[living] : AcDbObjectId{};
}

const std::vector<AcDbObjectId>* entitiesOf(AcDbObjectId block) {
  const auto* const record = AcDbBlockTableRecord::cast(objectOf(block));
  return record ? &record->entityIds() : nullptr;
}

/// Where `id` stands among its fellows.
size_t placeIn(const std::vector<AcDbObjectId>& ids, AcDbObjectId id) {
  const size_t place = id.stub()->position;
  return place < ids.size() && ids[place] == id ? place : ids.size();
}

/// From the space behind `block`, unless it is no space.
AcDbObjectId inNextSpace(AcDbObjectId block) {
  const std::vector<AcDbObjectId> spaces = spacesOf(*block.database());
  auto space = std::find(spaces.begin(), spaces.end(), block);
  if (space == spaces.end()) return {};
  while (++space != spaces.end()) {
    const AcDbObjectId first = from(*space, *entitiesOf(*space), 0);
    if (!first.isNull()) return first;
  }
  return {};
}

AcDbObjectId behindWhole(AcDbObjectId id) {
  const AcDbObjectId block(id.stub()->owner);
  const auto* const ids = entitiesOf(block);
  if (!ids) return {};
  const AcDbObjectId next = from(block, *ids, placeIn(*ids, id) + 1);
  return next.isNull() ? inNextSpace(block) : next;
}

/// The end of an owner's parts counts as a part.
AcDbObjectId amongParts(AcDbEntity& owner, size_t place) {
  const BrxSubentities& parts = *subentitiesOf(owner);
  const AcDbObjectId part = from(owner.objectId(), parts.ids, place);
  return part.isNull() ? sequenceEnd(owner) : part;
}

bool hasParts(const AcDbEntity& entity) {
  const BrxSubentities* const parts = subentitiesOf(entity);
  return parts && !from(entity.objectId(), parts->ids, 0).isNull();
}

}  // namespace

AcDbObjectId firstEntity(const AcDbDatabase& drawing) {
  const AcDbObjectId model = drawing.modelSpaceId();
  const AcDbObjectId first = nextEntity(model);
  return first.isNull() ? inNextSpace(model) : first;
}

AcDbObjectId nextEntity(AcDbObjectId after) {
  AcDbObject* const object = objectOf(after);
  if (!object) return {};
  if (const auto* const record = AcDbBlockTableRecord::cast(object))
    return from(after, record->entityIds(), 0);
  AcDbEntity* const entity = AcDbEntity::cast(object);
  if (!entity) return {};
  if (hasParts(*entity) && !after.isErased()) return amongParts(*entity, 0);
  AcDbEntity* const owner = AcDbEntity::cast(objectOf(AcDbObjectId(after.stub()->owner)));
  if (!owner) return behindWhole(after);
  const BrxSubentities& parts = *subentitiesOf(*owner);
  if (after == parts.end) return behindWhole(owner->objectId());
  return amongParts(*owner, placeIn(parts.ids, after) + 1);
}

AcDbObjectId lastEntity(const AcDbDatabase& drawing) {
  const AcDbObjectId space = currentSpace(drawing);
  const auto& ids = *entitiesOf(space);
  const size_t count = erasedRunsOf(space).livingUpTo(ids);
  return count == 0 ? AcDbObjectId{} : ids[count - 1];
}

}  // namespace host

namespace {

int answer(AcDbObjectId found, ads_name name) {
  return acdbGetAdsName(name, found) == Acad::eOk ? RTNORM : RTERROR;
}

}  // namespace

int acdbEntNext(const ads_name after, ads_name name) {
  const AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing) return RTERROR;
  if (!after || ads_name_nil(after)) return answer(host::firstEntity(*drawing), name);
  AcDbObjectId id;
  if (acdbGetObjectId(id, after) != Acad::eOk) return RTERROR;
  return answer(host::nextEntity(id), name);
}

int acdbEntLast(ads_name name) {
  const AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? answer(host::lastEntity(*drawing), name) : RTERROR;
}
