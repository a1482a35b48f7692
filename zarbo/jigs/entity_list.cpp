#include "zarbo/jigs/entity_list.h"

#include "platform/desktop/desktop.h"
#include "zarbo/jigs/block_drawing.h"

int entityList::setEntityList(const AcDbEntityPtrArray& entities) {
  constexpr int noEntities = 3;
  entities_ = entities;
  isSet_ = true;
  return entities_.isEmpty() ? noEntities : 0;
}

void entityList::deleteEntities() {
  for (AcDbEntity* const each : entities_) delete each;
  entities_.removeAll();
}

bool entityList::subWorldDraw(AcGiWorldDraw* draw) {
  for (AcDbEntity* const each : entities_) {
    if (const auto* const reference = AcDbBlockReference::cast(each)) {
      drawBlock(*reference, *draw, {}, false, AcGeMatrix3d::kIdentity);
    } else if (each) {
      draw->geometry().draw(each);
    }
  }
  return true;
}

entityList* dragImage(const entityList& list) {
  if (!list.isSet()) {
    platform::desktop().messageBox(
        {L"Korvane", L"Error - You must call setEntityList before calling multiBlockJig::drag()",
         platform::exclamationIcon});
  }
  return const_cast<entityList*>(&list);
}
