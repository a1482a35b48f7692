#include "host/access/coordinate_systems.h"

#include "host/documents/variables.h"

namespace host {
namespace {

AcGePoint3d pointVariable(const wchar_t* name, const AcGePoint3d& missing) {
  const auto value = getVariable(name);
  const Point* const point = value ? std::get_if<Point>(&*value) : nullptr;
  return point ? AcGePoint3d{point->x, point->y, point->z} : missing;
}

}  // namespace

AcGeMatrix3d userSystem() {
  const AcGeVector3d x = pointVariable(L"UCSXDIR", {1, 0, 0}).asVector();
  const AcGeVector3d y = pointVariable(L"UCSYDIR", {0, 1, 0}).asVector();
  AcGeMatrix3d system;
  return system.setToCoordSystem(pointVariable(L"UCSORG", {}), x, y, x.crossProduct(y));
}

AcGeMatrix3d displaySystem() {
  const AcGeVector3d direction = userSystem() * pointVariable(L"VIEWDIR", {0, 0, 1}).asVector();
  const auto twist = getVariable(L"VIEWTWIST");
  const double angle = twist && std::holds_alternative<double>(*twist) ? std::get<double>(*twist) : 0;
  return AcGeMatrix3d::translation(pointVariable(L"TARGET", {}).asVector()) *
         AcGeMatrix3d::planeToWorld(direction.normal()) * AcGeMatrix3d::rotation(-angle, {0, 0, 1});
}

}  // namespace host
