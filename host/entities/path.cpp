#include "host/entities/path.h"

#include "host/entities/wide_path.h"
#include "host/geometry/curve_range.h"
namespace host {

EllipseArc arcOf(const Segment& s) {
  // The centre lies across the chord's middle; the bulge is the tangent of a quarter of the sweep.
  const AcGeVector3d chord = s.end - s.start, left = s.normal.normal().crossProduct(chord);
  const AcGePoint3d centre = s.start + chord * 0.5 + left * ((1 - s.bulge * s.bulge) / (4 * s.bulge));
  const AcGeVector3d from = s.start - centre;
  const AcGeVector3d side = s.normal.normal().crossProduct(from) * (s.bulge < 0 ? -1 : 1);
  return {centre, from, side, 0, 4 * std::atan(std::abs(s.bulge))};
}

double Segment::length() const {
  if (bulge == 0) return start.distanceTo(end);
  const EllipseArc arc = arcOf(*this);
  return arc.u.length() * arc.end;
}
AcGePoint3d Segment::at(double share) const {
  if (bulge == 0) return start + (end - start) * share;
  const EllipseArc arc = arcOf(*this);
  return arc.at(arc.end * share);
}
AcGeVector3d Segment::derivative(double share) const {
  if (bulge == 0) return end - start;
  const EllipseArc arc = arcOf(*this);
  return arc.derivative(arc.end * share) * arc.end;
}
double Segment::closestShare(const AcGePoint3d& point, const AcGeVector3d* direction) const {
  if (bulge != 0) {
    const EllipseArc arc = arcOf(*this);
    return arc.closestParam(point, direction) / arc.end;
  }
  AcGeVector3d along = end - start, away = point - start;
  if (direction && !direction->isZeroLength()) {
    const AcGeVector3d view = direction->normal();
    along = along - view * along.dotProduct(view), away = away - view * away.dotProduct(view);
  }
  const double size = along.lengthSqrd();
  return size > 0 ? away.dotProduct(along) / size : 0;
}
std::unique_ptr<AcDbCurve> Segment::curve(bool& reversed) const {
  reversed = bulge < 0;
  if (bulge == 0) return std::make_unique<AcDbLine>(start, end);
  const EllipseArc arc = arcOf(*this);
  const AcGeMatrix3d local = AcGeMatrix3d::worldToPlane(normal);
  const AcGeVector3d from = local * (start - arc.centre), to = local * (end - arc.centre);
  const double first = std::atan2(from.y, from.x), last = std::atan2(to.y, to.x);
  return std::make_unique<AcDbArc>(arc.centre, normal, arc.u.length(), reversed ? last : first,
                                   reversed ? first : last);
}

bool Path::place(double param, size_t& index, double& share) const {
  if (segments_.empty() || !within(param, 0, endParam())) return false;
  index = std::min(static_cast<size_t>(param), segments_.size() - 1);
  share = param - static_cast<double>(index);
  return true;
}
Acad::ErrorStatus Path::pointAt(double param, AcGePoint3d& point) const {
  size_t index = 0;
  double share = 0;
  if (!place(param, index, share)) return Acad::eInvalidInput;
  return point = segments_[index].at(share), Acad::eOk;
}
Acad::ErrorStatus Path::derivativeAt(double param, AcGeVector3d& derivative) const {
  size_t index = 0;
  double share = 0;
  if (!place(param, index, share)) return Acad::eInvalidInput;
  return derivative = segments_[index].derivative(share), Acad::eOk;
}
Acad::ErrorStatus Path::distanceAt(double param, double& distance) const {
  size_t index = 0;
  double share = 0;
  if (!place(param, index, share)) return Acad::eInvalidInput;
  distance = segments_[index].length() * share;
  for (size_t i = 0; i < index; ++i) distance += segments_[i].length();
  return Acad::eOk;
}
Acad::ErrorStatus Path::paramAtDistance(double distance, double& param) const {
  double whole = 0;
  for (const Segment& each : segments_) whole += each.length();
  if (!within(distance, 0, whole)) return Acad::eInvalidInput;
  for (size_t i = 0; i < segments_.size(); ++i) {
    const double length = segments_[i].length();
    if (length > 0 && distance <= length)
      return param = static_cast<double>(i) + distance / length, Acad::eOk;
    distance -= length;
  }
  return segments_.empty() ? Acad::eInvalidInput : (param = endParam(), Acad::eOk);
}
Acad::ErrorStatus Path::closest(const AcGePoint3d& given, const AcGeVector3d* direction, bool extend,
                                AcGePoint3d& found, double* param) const {
  double best = 1e300;
  const AcGeVector3d view = direction ? direction->normal() : AcGeVector3d{};
  for (size_t i = 0; i < segments_.size(); ++i) {
    const Segment& segment = segments_[i];
    const bool open = extend && !closed_ && segment.bulge == 0;
    const double lowest = open && i == 0 ? -1e300 : 0;
    const double highest = open && i + 1 == segments_.size() ? 1e300 : 1;
    const double share = std::clamp(segment.closestShare(given, direction), lowest, highest);
    const AcGePoint3d candidate = segment.at(share);
    const AcGeVector3d away = given - candidate;
    const double distance = (away - view * away.dotProduct(view)).lengthSqrd();
    if (!(distance < best)) continue;
    best = distance, found = candidate;
    if (param) *param = static_cast<double>(i) + share;
  }
  return best < 1e300 ? Acad::eOk : Acad::eDegenerateGeometry;
}
Acad::ErrorStatus Path::paramOf(const AcGePoint3d& point, double& param) const {
  AcGePoint3d near;
  const Acad::ErrorStatus status = closest(point, nullptr, false, near, &param);
  if (status != Acad::eOk) return status;
  return isOnCurve(point, near) ? Acad::eOk : Acad::eInvalidInput;
}

void Path::draw(AcGiWorldDraw& draw) const {
  bool reversed = false;
  for (size_t i = 0; i < segments_.size(); ++i) {
    const Segment& each = segments_[i];
    if (each.startWidth == 0 && each.endWidth == 0) {
      each.curve(reversed)->worldDraw(&draw);
    } else {
      drawBand(draw, segments_, i, closed_);
    }
  }
}
Acad::ErrorStatus Path::addTo(AcDbExtents& extents) const {
  if (segments_.empty()) return Acad::eInvalidExtents;
  for (const Segment& each : segments_) {
    extents.addPoint(each.start), extents.addPoint(each.end);
    if (each.bulge == 0) continue;
    const EllipseArc arc = arcOf(each);
    for (const AcGeVector3d& axis : {AcGeVector3d{1, 0, 0}, AcGeVector3d{0, 1, 0}, AcGeVector3d{0, 0, 1}}) {
      for (const double t : arc.extremes(axis)) extents.addPoint(arc.at(t));
    }
  }
  return Acad::eOk;
}
Acad::ErrorStatus Path::explode(const AcDbEntity& like, AcDbVoidPtrArray& entities) const {
  bool reversed = false;
  for (const Segment& each : segments_) {
    AcDbCurve* const piece = each.curve(reversed).release();
    piece->setPropertiesFrom(&like);
    entities.append(static_cast<AcDbEntity*>(piece));
  }
  return Acad::eOk;
}
Acad::ErrorStatus Path::osnap(AcDb::OsnapMode mode, const AcGePoint3d& pick, const AcGePoint3d& last,
                              const AcGeMatrix3d& view, AcGePoint3dArray& points) const {
  if (mode == AcDb::kOsModeEnd) {
    for (const Segment& each : segments_) points.append(each.start);
    if (!segments_.empty() && !closed_) points.append(segments_.back().end);
    return Acad::eOk;
  }
  AcDbIntArray ids;
  bool reversed = false;
  for (const Segment& each : segments_)
    each.curve(reversed)->getOsnapPoints(mode, 0, pick, last, view, points, ids);
  return Acad::eOk;
}

}  // namespace host
