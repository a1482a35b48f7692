#include "zarbo/support/plane_geometry.h"

#include <cmath>

#include "zarbo/support/utilities.h"

AcGePoint3d polarPoint(AcGePoint3d& point, double angle, double distance) {
  point.x += distance * std::cos(angle);
  point.y += distance * std::sin(angle);
  return point;
}

double angleOfPoints(const AcGePoint3d& from, const AcGePoint3d& to) {
  return (toPoint2d(to) - toPoint2d(from)).angle();
}

double flatDistance(const AcGePoint3d& a, const AcGePoint3d& b) {
  return toPoint2d(a).distanceTo(toPoint2d(b));
}

std::array<double, 4> perpendicularAngles(const AcGePoint3d& from, const AcGePoint3d& to) {
  const double first = angleOfPoints(from, to);
  return {first, first + rightAngle, first + 2 * rightAngle, first + 3 * rightAngle};
}
