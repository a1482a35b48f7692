#include "host/entities/entity_pieces.h"

namespace {

/// Pieces are met as they are, or as seen along a plane's normal; the points lie on the first entity.
void intersect(const AcDbEntity& first, const AcDbEntity& second, AcDb::Intersect type,
               const AcGePlane* plane, AcGePoint3dArray& points) {
  const auto own = host::piecesOf(first, (type & AcDb::kExtendThis) != 0);
  const auto others = host::piecesOf(second, (type & AcDb::kExtendArg) != 0);
  const auto seen = [&](const host::CurvePiece& piece) {
    return plane ? piece.projected(plane->pointOnPlane(), plane->normal().normal()) : piece;
  };
  std::vector<host::CurvePiece> seenOthers;
  for (const host::CurvePiece& each : others) seenOthers.push_back(seen(each));
  const int before = points.length();
  const auto add = [&](const AcGePoint3d& place) {
    // Where neighbouring pieces share an end they meet the other one twice.
    for (int i = before; i < points.length(); ++i) {
      if (points[i].distanceTo(place) <= 100 * host::sameWithin(place)) return;
    }
    points.append(place);
  };
  for (const host::CurvePiece& piece : own) {
    const host::CurvePiece view = seen(piece);
    for (const host::CurvePiece& other : seenOthers) {
      for (const double t : host::meetings(view, other)) add(piece.at(t));
    }
  }
}

}  // namespace

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                               AcGePoint3dArray& points, Adesk::Int64, Adesk::Int64) const {
  if (!other) return Acad::eNullEntityPointer;
  return intersect(*this, *other, type, nullptr, points), Acad::eOk;
}

Acad::ErrorStatus AcDbEntity::subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                               const AcGePlane& plane, AcGePoint3dArray& points, Adesk::Int64,
                                               Adesk::Int64) const {
  if (!other) return Acad::eNullEntityPointer;
  if (plane.normal().isZeroLength()) return Acad::eInvalidInput;
  return intersect(*this, *other, type, &plane, points), Acad::eOk;
}
