#include "host/database/fields.h"
#include "host/geometry/curve_range.h"
#include "host/geometry/ellipse_arc.h"

ACRX_DEFINE_MEMBERS(AcDbArc)
ACRX_DEFINE_MEMBERS(AcDbCircle)

using host::EllipseArc;
using host::wrapped;

static constexpr double turn = host::fullTurn;

namespace {

/// Of the whole circle, for any parameter.
AcGePoint3d pointOnCircle(const AcDbArc& arc, double param) {
  const AcGeVector3d local{arc.radius() * std::cos(param), arc.radius() * std::sin(param), 0};
  return arc.center() + AcGeMatrix3d::planeToWorld(arc.normal()) * local;
}

/// In the direction of a point. Before the start, but nearer to it than to the end, below the start's.
double paramTowards(const AcDbArc& arc, const AcGePoint3d& point) {
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(arc.normal()) * (point - arc.center());
  double beyond = wrapped(std::atan2(local.y, local.x) - arc.startAngle());
  if (beyond - arc.sweep() > turn - beyond) beyond -= turn;
  return wrapped(arc.startAngle()) + beyond;
}

double nearestParam(const AcDbArc& arc, const AcGePoint3d& point) {
  const double start = wrapped(arc.startAngle());
  return std::clamp(paramTowards(arc, point), start, start + arc.sweep());
}

bool isWithin(const AcDbArc& arc, double& param) {
  const double start = wrapped(arc.startAngle());
  return host::within(param, start, start + arc.sweep());
}

}  // namespace

/// Arcs have their angles behind a mark of their own, and circles none in exchange files.
template <class Visitor, class Self>
void AcDbArc::fields(Visitor& v, Self& o) {
  v.plane(10, o.centre_, o.normal_), v(40, o.radius_), v(210, o.normal_);
  if (Visitor::isDxf && o.isA() == AcDbCircle::desc()) return;
  v.subclass(L"AcDbArc");
  v(50, o.startAngle_), v(51, o.endAngle_);
}
HOST_FILING_AS(AcDbArc, AcDbEntity, fields, L"AcDbCircle")

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& centre) {
  return assertWriteEnabled(), centre_ = centre, Acad::eOk;
}
Acad::ErrorStatus AcDbArc::setRadius(double radius) {
  if (!(radius > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), radius_ = radius, Acad::eOk;
}
Acad::ErrorStatus AcDbArc::setStartAngle(double angle) {
  return assertWriteEnabled(), startAngle_ = angle, Acad::eOk;
}
Acad::ErrorStatus AcDbArc::setEndAngle(double angle) {
  return assertWriteEnabled(), endAngle_ = angle, Acad::eOk;
}
double AcDbArc::sweep() const {
  const double found = wrapped(endAngle_ - startAngle_);
  return found > 0 ? found : turn;
}
Acad::ErrorStatus AcDbArc::getStartParam(double& param) const {
  return param = wrapped(startAngle_), Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getEndParam(double& param) const {
  return param = wrapped(startAngle_) + sweep(), Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getPointAtParam(double param, AcGePoint3d& point) const {
  if (!isWithin(*this, param)) return Acad::eInvalidInput;
  return point = pointOnCircle(*this, param), Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  const double found = nearestParam(*this, point);
  if (!host::isOnCurve(point, pointOnCircle(*this, found))) return Acad::eInvalidInput;
  return param = found, Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getDistAtParam(double param, double& distance) const {
  if (!isWithin(*this, param)) return Acad::eInvalidInput;
  return distance = (param - wrapped(startAngle_)) * radius_, Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getParamAtDist(double distance, double& param) const {
  if (!(radius_ > 0)) return Acad::eDegenerateGeometry;
  if (!host::within(distance, 0, sweep() * radius_)) return Acad::eInvalidInput;
  return param = wrapped(startAngle_) + distance / radius_, Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getFirstDeriv(double param, AcGeVector3d& derivative) const {
  if (!isWithin(*this, param)) return Acad::eInvalidInput;
  derivative = AcGeMatrix3d::planeToWorld(normal_) *
               AcGeVector3d{-radius_ * std::sin(param), radius_ * std::cos(param), 0};
  return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                             bool extend) const {
  const double param = extend ? paramTowards(*this, given) : nearestParam(*this, given);
  return closest = pointOnCircle(*this, param), Acad::eOk;
}
Acad::ErrorStatus AcDbArc::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                             AcGePoint3d& closest, bool extend) const {
  const double start = wrapped(startAngle_);
  const EllipseArc arc = EllipseArc::circle(centre_, normal_, radius_, start, start + sweep());
  closest = arc.at(arc.closestParam(given, &direction, extend));
  return Acad::eOk;
}
Acad::ErrorStatus AcDbCircle::getArea(double& area) const {
  return area = turn / 2 * radius() * radius(), Acad::eOk;
}
bool AcDbArc::subWorldDraw(AcGiWorldDraw* draw) {
  const AcGeVector3d start =
      AcGeMatrix3d::planeToWorld(normal_) * AcGeVector3d{std::cos(startAngle_), std::sin(startAngle_), 0};
  if (isClosed()) {
    draw->geometry().circle(centre_, radius_, normal_);
  } else {
    draw->geometry().circularArc(centre_, radius_, normal_, start, sweep());
  }
  return true;
}
Acad::ErrorStatus AcDbArc::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGePoint3d start = pointOnCircle(*this, startAngle_);
  const double swept = sweep();
  // A mirrored arc would run to the right; its normal turned over, it runs to the left again.
  normal_ = (matrix * normal_ * (matrix.det() < 0 ? -1 : 1)).normalize();
  centre_.transformBy(matrix);
  radius_ *= matrix.scale();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(normal_) * (matrix * start - centre_);
  if (isClosed()) return Acad::eOk;
  startAngle_ = wrapped(std::atan2(local.y, local.x));
  endAngle_ = wrapped(startAngle_ + swept);
  return Acad::eOk;
}
/// Ends, and the points where the tangent lies across an axis of the world.
Acad::ErrorStatus AcDbArc::subGetGeomExtents(AcDbExtents& extents) const {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal_);
  const auto add = [&](double param) { extents.addPoint(pointOnCircle(*this, param)); };
  if (!isClosed()) add(startAngle_), add(endAngle_);
  for (int axis = 0; axis < 3; ++axis) {
    const double extreme = std::atan2(plane(axis, 1), plane(axis, 0));
    for (const double param : {extreme, extreme + turn / 2}) {
      if (isClosed() || wrapped(param - startAngle_) <= sweep()) add(param);
    }
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbArc::subGetStretchPoints(AcGePoint3dArray& points) const {
  AcGePoint3d start, end;
  getStartPoint(start);
  getEndPoint(end);
  if (isClosed()) return points.append(centre_), Acad::eOk;
  return points.append(start), points.append(end), Acad::eOk;
}
Acad::ErrorStatus AcDbArc::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick,
                                             const AcGePoint3d&, const AcGeMatrix3d&,
                                             AcGePoint3dArray& points, AcDbIntArray&) const {
  AcGePoint3d found;
  switch (mode) {
    case AcDb::kOsModeCen:
      points.append(centre_);
      break;
    case AcDb::kOsModeEnd:
      return isClosed() ? Acad::eOk : subGetStretchPoints(points);
    case AcDb::kOsModeMid:
      if (!isClosed()) points.append(pointOnCircle(*this, startAngle_ + sweep() / 2));
      break;
    case AcDb::kOsModeNear:
      getClosestPointTo(pick, found), points.append(found);
      break;
    case AcDb::kOsModeQuad:
      for (int quarter = 0; quarter < 4; ++quarter) {
        const double param = quarter * turn / 4;
        if (!isClosed() && wrapped(param - startAngle_) > sweep()) continue;
        points.append(pointOnCircle(*this, param));
      }
      break;
    default:
      break;
  }
  return Acad::eOk;
}
