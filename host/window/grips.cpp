#include "host/window/grips.h"

#include "brx/db_database.h"
#include "brx/db_entity.h"
#include "host/access/coordinate_systems.h"
#include "host/commands/undo_steps.h"
#include "host/console/command_line.h"
#include "host/editor/acquisition.h"

namespace host {

std::vector<Grip> gripsOf(AcDbObjectId id) {
  std::vector<Grip> grips;
  const AcDbObjectPointer<AcDbEntity> entity(id);
  AcGePoint3dArray points;
  AcDbIntArray unusedModes, unusedIds;
  if (!entity.object() || entity->getGripPoints(points, unusedModes, unusedIds) != Acad::eOk) return grips;
  int index = 0;
  for (const AcGePoint3d& each : points) grips.push_back({id, index++, each});
  return grips;
}

void moveGrip(const Grip& grip) {
  const AcGeMatrix3d user = userSystem();
  Request request;
  request.prompt = L"\nSpecify stretch point: ";
  request.base = user.inverse() * grip.point;
  const Answer answer = ask(std::move(request));
  if (!answer.given()) return;
  DrawingState* const state = currentState();
  if (state) beginUndoStep(*state);
  AcDbObjectPointer<AcDbEntity> entity(grip.entity, AcDb::kForWrite);
  AcDbIntArray indices;
  indices.append(grip.index);
  const bool moved =
      entity.object() && entity->moveGripPointsAt(indices, user * answer.point - grip.point) == Acad::eOk;
  if (!moved) commandLine().print(L"\nThe grip could not be moved.");
}

}  // namespace host
