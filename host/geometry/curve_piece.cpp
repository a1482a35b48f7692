#include "host/geometry/curve_piece.h"

namespace host {

CurvePiece CurvePiece::lineOf(const AcGePoint3d& from, const AcGePoint3d& to) {
  CurvePiece made;
  made.origin = from, made.along = to - from;
  return made;
}
CurvePiece CurvePiece::conicOf(const EllipseArc& arc) {
  CurvePiece made;
  made.kind = Kind::conic;
  made.arc = arc, made.low = arc.start, made.high = arc.end;
  return made;
}
AcGePoint3d CurvePiece::at(double t) const {
  if (kind == Kind::line) return origin + along * t;
  return kind == Kind::conic ? arc.at(t) : spline.at(t);
}
AcGeVector3d CurvePiece::derivative(double t) const {
  if (kind == Kind::line) return along;
  if (kind == Kind::conic) return arc.derivative(t);
  AcGeVector3d found;
  spline.evaluate(t, &found);
  return found;
}
CurvePiece CurvePiece::projected(const AcGePoint3d& base, const AcGeVector3d& view) const {
  const auto point = [&](const AcGePoint3d& p) { return p - view * (p - base).dotProduct(view); };
  const auto vector = [&](const AcGeVector3d& v) { return v - view * v.dotProduct(view); };
  CurvePiece made = *this;
  made.origin = point(origin), made.along = vector(along);
  made.arc.centre = point(arc.centre), made.arc.u = vector(arc.u), made.arc.v = vector(arc.v);
  for (AcGePoint3d& each : made.spline.points) each = point(each);
  return made;
}

}  // namespace host
