#include <algorithm>
#include <cmath>

#include "host/drawing/fields.h"

namespace {

/// Points nearer than this count as one: the host's tolerance, and for large coordinates what the rounding
/// of a few sums and products of them leaves.
double reach(const AcGePoint3d& at) {
  constexpr double roundings = 16 * 2.3e-16;
  return std::max(AcGeContext::gTol.equalPoint(),
                  roundings * std::max({std::abs(at.x), std::abs(at.y), std::abs(at.z)}));
}

bool isOne(const AcGePoint3d& a, const AcGePoint3d& b) { return a.distanceTo(b) <= reach(a); }

struct Sides {
  const AcDbCurve &first, &second;
  bool extendFirst, extendSecond;
  AcGePoint3dArray& points;

  bool onPiece(const AcDbCurve& piece, const AcGePoint3d& point, bool extend) const {
    if (extend) return true;
    AcGePoint3d near;
    piece.getClosestPointTo(point, near);
    return isOne(near, point);
  }
  void keep(const AcGePoint3d& point) const {
    if (onPiece(first, point, extendFirst) && onPiece(second, point, extendSecond)) points.append(point);
  }
};

/// Nearest points of two lines in space; they meet where those are one.
void lineLine(const Sides& sides, const AcDbLine& a, const AcDbLine& b) {
  const AcGeVector3d u = a.endPoint() - a.startPoint(), v = b.endPoint() - b.startPoint();
  const AcGeVector3d across = u.crossProduct(v), apart = b.startPoint() - a.startPoint();
  const double size = across.lengthSqrd();
  if (std::sqrt(size) <= AcGeContext::gTol.equalVector() * u.length() * v.length()) return;
  const double s = apart.crossProduct(v).dotProduct(across) / size;
  const double t = apart.crossProduct(u).dotProduct(across) / size;
  const AcGePoint3d onA = a.startPoint() + u * s, onB = b.startPoint() + v * t;
  if (isOne(onA, onB)) sides.keep(onA);
}

/// Foot of the centre on the line, and half a chord to both sides of it.
void lineArc(const Sides& sides, const AcDbLine& line, const AcDbArc& arc) {
  const AcGeVector3d along = (line.endPoint() - line.startPoint()).normal();
  const double limit = reach(arc.center());
  if (std::abs((line.startPoint() - arc.center()).dotProduct(arc.normal())) > limit) return;
  if (std::abs(along.dotProduct(arc.normal())) > AcGeContext::gTol.equalVector()) return;
  const AcGePoint3d foot = line.startPoint() + along * (arc.center() - line.startPoint()).dotProduct(along);
  const double off = foot.distanceTo(arc.center());
  if (off > arc.radius() + limit) return;
  const double half = off >= arc.radius() - limit ? 0 : std::sqrt(arc.radius() * arc.radius() - off * off);
  sides.keep(foot - along * half);
  if (half > 0) sides.keep(foot + along * half);
}

/// The common chord stands on the line of centres at (d² + r² - R²) / 2d from the first centre.
void arcArc(const Sides& sides, const AcDbArc& a, const AcDbArc& b) {
  const AcGeVector3d between = b.center() - a.center();
  const double d = between.length(), r = a.radius(), limit = reach(a.center());
  const bool onePlane =
      a.normal().crossProduct(b.normal()).isZeroLength() && std::abs(between.dotProduct(a.normal())) <= limit;
  if (!onePlane || d <= limit || d > r + b.radius() + limit || d < std::abs(r - b.radius()) - limit) return;
  const double foot = (d * d + r * r - b.radius() * b.radius()) / (2 * d);
  const bool tangent =
      std::abs(d - r - b.radius()) <= limit || std::abs(d - std::abs(r - b.radius())) <= limit;
  const double half = tangent ? 0 : std::sqrt(std::max(0.0, r * r - foot * foot));
  const AcGeVector3d along = between * (1 / d), up = a.normal().crossProduct(along);
  sides.keep(a.center() + along * foot + up * half);
  if (half > 0) sides.keep(a.center() + along * foot - up * half);
}

/// Circles too: to the run-time classes they are no arcs.
const AcDbArc* asArc(const AcDbEntity& entity) { return dynamic_cast<const AcDbArc*>(&entity); }

bool isPiece(const AcDbEntity& entity) { return AcDbLine::cast(&entity) || asArc(entity); }

void meet(const Sides& sides) {
  const AcDbLine *l1 = AcDbLine::cast(&sides.first), *l2 = AcDbLine::cast(&sides.second);
  const AcDbArc *a1 = asArc(sides.first), *a2 = asArc(sides.second);
  if ((a1 && !(a1->radius() > 0)) || (a2 && !(a2->radius() > 0))) return;
  if (l1 && l2) lineLine(sides, *l1, *l2);
  if (l1 && a2) lineArc(sides, *l1, *a2);
  if (a1 && l2) lineArc(sides, *l2, *a1);
  if (a1 && a2) arcArc(sides, *a1, *a2);
}

/// Calls `visit` with each piece of what explodes; false when the entity doesn't.
template <class Visit>
bool forPieces(const AcDbEntity& entity, Visit visit) {
  AcDbVoidPtrArray pieces;
  if (entity.explode(pieces) != Acad::eOk) return false;
  for (void* each : pieces) {
    auto* const piece = static_cast<AcDbEntity*>(each);
    visit(*piece);
    delete piece;
  }
  return true;
}

}  // namespace

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                               AcGePoint3dArray& points, Adesk::Int64, Adesk::Int64) const {
  if (!other) return Acad::eNullEntityPointer;
  if (!isPiece(*this)) {
    forPieces(*this, [&](const AcDbEntity& piece) { piece.intersectWith(other, type, points); });
  } else if (!isPiece(*other)) {
    forPieces(*other, [&](const AcDbEntity& piece) { intersectWith(&piece, type, points); });
  } else {
    meet({static_cast<const AcDbCurve&>(*this), static_cast<const AcDbCurve&>(*other),
          (type & AcDb::kExtendThis) != 0, (type & AcDb::kExtendArg) != 0, points});
  }
  return Acad::eOk;
}

/// Intersections in space only: operands at different heights over the plane don't meet yet.
Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                               const AcGePlane&, AcGePoint3dArray& points,
                                               Adesk::Int64 thisMarker, Adesk::Int64 otherMarker) const {
  return subIntersectWith(other, type, points, thisMarker, otherMarker);
}
