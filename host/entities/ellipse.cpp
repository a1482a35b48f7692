#include "brx/db_ellipse.h"

#include "host/database/fields.h"
#include "host/entities/entity_pieces.h"
#include "host/geometry/curve_range.h"
#include "host/geometry/ellipse_arc.h"
#include "host/geometry/flatten.h"

ACRX_DEFINE_MEMBERS(AcDbEllipse)

template <class Visitor, class Self>
void AcDbEllipse::fields(Visitor& v, Self& o) {
  v(10, o.centre_), v(11, o.major_), v(210, o.normal_), v(40, o.ratio_), v(41, o.start_), v(42, o.end_);
}
HOST_FILING(AcDbEllipse, AcDbEntity, fields)

host::EllipseArc host::arcOf(const AcDbEllipse& e) {
  const double start = host::wrapped(e.startParam());
  const double sweep = host::wrapped(e.endParam() - e.startParam());
  return {e.center(), e.majorAxis(), e.minorAxis(), start, start + (sweep > 1e-12 ? sweep : host::fullTurn)};
}

Acad::ErrorStatus AcDbEllipse::set(const AcGePoint3d& centre, const AcGeVector3d& normal,
                                   const AcGeVector3d& majorAxis, double radiusRatio, double startParam,
                                   double endParam) {
  const double limit = 1e-9 * majorAxis.length();
  if (normal.isZeroLength() || majorAxis.isZeroLength() || !(radiusRatio > 0) || radiusRatio > 1 + 1e-12 ||
      std::abs(normal.normal().dotProduct(majorAxis)) > limit) {
    return Acad::eInvalidInput;
  }
  assertWriteEnabled();
  centre_ = centre, normal_ = normal.normal(), major_ = majorAxis, ratio_ = radiusRatio;
  start_ = startParam, end_ = endParam;
  return Acad::eOk;
}
bool AcDbEllipse::isClosed() const { return host::arcOf(*this).isFull(); }
Acad::ErrorStatus AcDbEllipse::getStartParam(double& param) const {
  return param = host::arcOf(*this).start, Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::getEndParam(double& param) const {
  return param = host::arcOf(*this).end, Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::getPointAtParam(double param, AcGePoint3d& point) const {
  const host::EllipseArc arc = host::arcOf(*this);
  if (!host::within(param, arc.start, arc.end)) return Acad::eInvalidInput;
  return point = arc.at(param), Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  const host::EllipseArc arc = host::arcOf(*this);
  param = arc.closestParam(point);
  return host::isOnCurve(point, arc.at(param)) ? Acad::eOk : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbEllipse::getDistAtParam(double param, double& distance) const {
  const host::EllipseArc arc = host::arcOf(*this);
  if (!host::within(param, arc.start, arc.end)) return Acad::eInvalidInput;
  return distance = arc.length(arc.start, param), Acad::eOk;
}
/// Newton's steps on the length, whose slope is the speed of the parameter.
Acad::ErrorStatus AcDbEllipse::getParamAtDist(double distance, double& param) const {
  const host::EllipseArc arc = host::arcOf(*this);
  const double whole = arc.length(arc.start, arc.end);
  if (!host::within(distance, 0, whole)) return Acad::eInvalidInput;
  double low = arc.start, high = arc.end;
  param = low + (high - low) * distance / whole;
  for (int i = 0; i < 60; ++i) {
    const double over = arc.length(arc.start, param) - distance;
    if (std::abs(over) <= 1e-13 * whole) break;
    (over > 0 ? high : low) = param;
    const double next = param - over / arc.derivative(param).length();
    param = next > low && next < high ? next : (low + high) / 2;
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::getFirstDeriv(double param, AcGeVector3d& derivative) const {
  const host::EllipseArc arc = host::arcOf(*this);
  if (!host::within(param, arc.start, arc.end)) return Acad::eInvalidInput;
  return derivative = arc.derivative(param), Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                                 bool extend) const {
  const host::EllipseArc arc = host::arcOf(*this);
  return closest = arc.at(arc.closestParam(given, nullptr, extend)), Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                 AcGePoint3d& closest, bool extend) const {
  const host::EllipseArc arc = host::arcOf(*this);
  return closest = arc.at(arc.closestParam(given, &direction, extend)), Acad::eOk;
}
/// Of the ellipse, or of what the arc and its chord enclose.
Acad::ErrorStatus AcDbEllipse::getArea(double& area) const {
  const host::EllipseArc arc = host::arcOf(*this);
  const double sweep = arc.end - arc.start, sector = sweep - (arc.isFull() ? 0 : std::sin(sweep));
  return area = major_.lengthSqrd() * ratio_ * sector / 2, Acad::eOk;
}
bool AcDbEllipse::subWorldDraw(AcGiWorldDraw* draw) {
  const host::EllipseArc arc = host::arcOf(*this);
  host::drawFlattened(*draw, arc.start, arc.end, 8, [&](double t) { return arc.at(t); });
  return true;
}
/// Any affine map takes an ellipse to an ellipse.
Acad::ErrorStatus AcDbEllipse::subTransformBy(const AcGeMatrix3d& matrix) {
  const host::EllipseArc moved = host::arcOf(*this).transformed(matrix).alongAxes();
  const double length = moved.u.length();
  if (!(moved.v.length() > 1e-12 * length)) return Acad::eDegenerateGeometry;
  assertWriteEnabled();
  centre_ = moved.centre, major_ = moved.u, ratio_ = moved.v.length() / length;
  normal_ = moved.normal(), start_ = moved.start, end_ = moved.end;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::subGetGeomExtents(AcDbExtents& extents) const {
  const host::EllipseArc arc = host::arcOf(*this);
  extents.addPoint(arc.at(arc.start)), extents.addPoint(arc.at(arc.end));
  for (const AcGeVector3d& axis : {AcGeVector3d{1, 0, 0}, AcGeVector3d{0, 1, 0}, AcGeVector3d{0, 0, 1}}) {
    for (const double t : arc.extremes(axis)) extents.addPoint(arc.at(t));
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::subGetStretchPoints(AcGePoint3dArray& points) const {
  const host::EllipseArc arc = host::arcOf(*this);
  points.append(centre_);
  if (!isClosed()) points.append(arc.at(arc.start)), points.append(arc.at(arc.end));
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEllipse::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick,
                                                 const AcGePoint3d& last, const AcGeMatrix3d&,
                                                 AcGePoint3dArray& points, AcDbIntArray&) const {
  const host::EllipseArc arc = host::arcOf(*this);
  switch (mode) {
    case AcDb::kOsModeCen:
      points.append(centre_);
      break;
    case AcDb::kOsModeEnd:
      if (!isClosed()) points.append(arc.at(arc.start)), points.append(arc.at(arc.end));
      break;
    case AcDb::kOsModeMid:
      if (!isClosed()) {
        double middle = 0;
        getParamAtDist(arc.length(arc.start, arc.end) / 2, middle);
        points.append(arc.at(middle));
      }
      break;
    case AcDb::kOsModeQuad:
      for (int quarter = 0; quarter < 4; ++quarter) {
        double t = quarter * host::fullTurn / 4;
        if (arc.reaches(t)) points.append(arc.at(t));
      }
      break;
    case AcDb::kOsModeNear:
      points.append(arc.at(arc.closestParam(pick)));
      break;
    case AcDb::kOsModePerp:
      points.append(arc.at(arc.closestParam(last)));
      break;
    default:
      break;
  }
  return Acad::eOk;
}
