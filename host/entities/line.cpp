#include "host/database/fields.h"
#include "host/entities/path.h"
#include "host/geometry/curve_range.h"

ACRX_DEFINE_MEMBERS(AcDbLine)
ACRX_DEFINE_MEMBERS(AcDbPoint)

template <class Visitor, class Self>
void AcDbLine::fields(Visitor& v, Self& o) {
  v(39, o.thickness_), v(10, o.start_), v(11, o.end_), v(210, o.normal_);
}
HOST_FILING(AcDbLine, AcDbEntity, fields)

template <class Visitor, class Self>
void AcDbPoint::fields(Visitor& v, Self& o) {
  v(10, o.position_);
}
HOST_FILING(AcDbPoint, AcDbEntity, fields)

Acad::ErrorStatus AcDbLine::setStartPoint(const AcGePoint3d& point) {
  return assertWriteEnabled(), start_ = point, Acad::eOk;
}
Acad::ErrorStatus AcDbLine::setEndPoint(const AcGePoint3d& point) {
  return assertWriteEnabled(), end_ = point, Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getEndParam(double& param) const {
  return param = start_.distanceTo(end_), Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getPointAtParam(double param, AcGePoint3d& point) const {
  if (!host::within(param, 0, start_.distanceTo(end_))) return Acad::eInvalidInput;
  return point = start_ + (end_ - start_).normal() * param, Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  AcGePoint3d nearest;
  getClosestPointTo(point, nearest);
  if (!host::isOnCurve(point, nearest)) return Acad::eInvalidInput;
  return param = start_.distanceTo(nearest), Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getDistAtParam(double param, double& distance) const {
  if (!host::within(param, 0, start_.distanceTo(end_))) return Acad::eInvalidInput;
  return distance = param, Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getParamAtDist(double distance, double& param) const {
  return getDistAtParam(distance, param);
}
Acad::ErrorStatus AcDbLine::getFirstDeriv(double param, AcGeVector3d& derivative) const {
  if (!host::within(param, 0, start_.distanceTo(end_))) return Acad::eInvalidInput;
  return derivative = (end_ - start_).normal(), Acad::eOk;
}
Acad::ErrorStatus AcDbLine::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                              bool extend) const {
  return getClosestPointTo(given, AcGeVector3d{}, closest, extend);
}
Acad::ErrorStatus AcDbLine::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                              AcGePoint3d& closest, bool extend) const {
  const double share = host::Segment{start_, end_}.closestShare(given, &direction);
  closest = start_ + (end_ - start_) * (extend ? share : std::clamp(share, 0.0, 1.0));
  return Acad::eOk;
}
bool AcDbLine::subWorldDraw(AcGiWorldDraw* draw) {
  const AcGePoint3d ends[] = {start_, end_};
  draw->geometry().polyline(2, ends);
  return true;
}
Acad::ErrorStatus AcDbLine::subTransformBy(const AcGeMatrix3d& matrix) {
  assertWriteEnabled();
  start_.transformBy(matrix);
  end_.transformBy(matrix);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::subGetGeomExtents(AcDbExtents& extents) const {
  return extents.addPoint(start_), extents.addPoint(end_);
}
Acad::ErrorStatus AcDbLine::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(start_), points.append(end_), Acad::eOk;
}
Acad::ErrorStatus AcDbLine::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  assertWriteEnabled();
  if (indices.contains(0)) start_ += offset;
  if (indices.contains(1)) end_ += offset;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbLine::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick,
                                              const AcGePoint3d& last, const AcGeMatrix3d&,
                                              AcGePoint3dArray& points, AcDbIntArray&) const {
  AcGePoint3d found;
  switch (mode) {
    case AcDb::kOsModeEnd:
      return subGetStretchPoints(points);
    case AcDb::kOsModeMid:
      points.append(start_ + (end_ - start_) * 0.5);
      break;
    case AcDb::kOsModeNear:
      getClosestPointTo(pick, found), points.append(found);
      break;
    case AcDb::kOsModePerp:
      getClosestPointTo(last, found, true), points.append(found);
      break;
    default:
      break;
  }
  return Acad::eOk;
}

bool AcDbPoint::subWorldDraw(AcGiWorldDraw* draw) {
  const AcGePoint3d ends[] = {position_, position_};
  draw->geometry().polyline(2, ends);
  return true;
}
Acad::ErrorStatus AcDbPoint::subTransformBy(const AcGeMatrix3d& matrix) {
  return assertWriteEnabled(), position_.transformBy(matrix), Acad::eOk;
}
Acad::ErrorStatus AcDbPoint::subGetGeomExtents(AcDbExtents& extents) const {
  return extents.addPoint(position_);
}
Acad::ErrorStatus AcDbPoint::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(position_), Acad::eOk;
}
