#include "zarbo/drawing/arc_path.h"

#include <cmath>

#include "zarbo/support/plane_geometry.h"
#include "zarbo/support/utilities.h"

namespace {

AcGePoint3d flat(AcGePoint3d point) {
  point.z = 0;
  return point;
}

AcGePoint3d polarFrom(AcGePoint3d point, double angle, double distance) {
  return polarPoint(point, angle, distance);
}

bool getFlatPoint(ArgCursor& cursor, AcGePoint3d& point) {
  if (!getPoint3d(cursor, point)) return false;
  point = flat(point);
  return true;
}

// The lead-out leaves the arc's own end, which for a right turn is the start of the travel: the distances
// that callers get are made for that.
void addLeads(ArcPath& path, const AcGePoint3d& start, double tangent, double extension) {
  path.leadIn.emplace(start, polarFrom(start, tangent, -extension));
  AcGePoint3d end;
  AcGeVector3d along;
  path.arc.getEndPoint(end);
  path.arc.getFirstDeriv(end, along);
  path.leadOut.emplace(end, end + along.normal(AcGeContext::gTol) * extension);
}

}  // namespace

std::vector<const AcDbCurve*> ArcPath::pieces() const {
  std::vector<const AcDbCurve*> present;
  if (leadIn) present.push_back(&*leadIn);
  if (hasArc) present.push_back(&arc);
  if (leadOut) present.push_back(&*leadOut);
  return present;
}

bool getArcPath(ArgCursor& cursor, double extension, ArcPath& path) {
  AcGePoint3d start;
  double tangent, radius, sweep;
  if (!getFlatPoint(cursor, start) || !getReal(cursor, tangent) || !getLong(cursor, path.direction) ||
      !getReal(cursor, radius) || !getReal(cursor, sweep))
    return false;
  path.length = radius * sweep;
  const double fullTurn = 4 * rightAngle;
  path.hasArc = std::abs(sweep) > fullTurn / 2 || std::abs(path.length) > AcGeContext::gTol.equalPoint();
  const AcGePoint3d centre = polarFrom(start, tangent + rightAngle * path.direction, radius);
  const double angle = angleOfPoints(centre, start);
  path.arc.setCenter(centre);
  path.arc.setRadius(radius);
  path.arc.setStartAngle(path.direction == 1 ? angle : angle - sweep);
  path.arc.setEndAngle(path.direction == 1 ? angle + sweep : angle);
  if (extension != 0.0) addLeads(path, start, tangent, extension);
  return true;
}

bool getExtendedLine(ArgCursor& cursor, double extension, AcDbLine& line) {
  AcGePoint3d start, end;
  if (!getFlatPoint(cursor, start) || !getFlatPoint(cursor, end)) return false;
  line.setStartPoint(polarFrom(start, angleOfPoints(end, start), extension));
  line.setEndPoint(polarFrom(end, angleOfPoints(start, end), extension));
  return true;
}
