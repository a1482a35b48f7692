#include "host/editor/entity_pick.h"

#include "brx/db_database.h"
#include "host/access/coordinate_systems.h"
#include "host/documents/variables.h"

namespace host {
namespace {

constexpr int errorOfMissedPick = 7;
constexpr int errorOfEnter = 52;

Pick failed(int error) {
  setVariable(L"ERRNO", error);
  return {RTERROR, {}, {}};
}

/// Where a person might have picked an entity that was only named.
AcGePoint3d pointOn(const AcDbEntity& entity) {
  AcGePoint3d point;
  const auto* const curve = AcDbCurve::cast(&entity);
  if (curve && curve->getStartPoint(point) == Acad::eOk) return point;
  AcDbExtents extents;
  if (entity.getGeomExtents(extents) != Acad::eOk || extents.isEmpty()) return {};
  return extents.minPoint() + (extents.maxPoint() - extents.minPoint()) * 0.5;
}

Pick namedEntity(const Answer& answer) {
  AcDbObjectPointer<AcDbEntity> entity(answer.entity);
  if (!entity.object()) return failed(errorOfMissedPick);
  const AcGePoint3d point = answer.pointGiven ? answer.point : pointOn(*entity);
  return {RTNORM, point, {answer.entity, {answer.entity, {}, {}}}};
}

}  // namespace

Pick pickAt(const AcGePoint3d& point) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  const auto hit = drawing ? entityAt(*drawing, userSystem() * point) : std::nullopt;
  return hit ? Pick{RTNORM, point, *hit} : failed(errorOfMissedPick);
}

Pick pickEntity(std::wstring prompt) {
  Request request;
  request.wanted = Wanted::entity;
  request.prompt = std::move(prompt);
  request.rules = takePromptRules();
  const Answer answer = ask(std::move(request));
  if (answer.status == RTNONE) return failed(errorOfEnter);
  if (!answer.given()) return {answer.status, {}, {}};
  return answer.entity.isNull() ? pickAt(answer.point) : namedEntity(answer);
}

}  // namespace host
