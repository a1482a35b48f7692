#include "host/editor/snaps.h"

#include "host/database/nested_visits.h"
#include "host/editor/search.h"

namespace host {
namespace {

/// Of those under the aperture, drawn last: what a person points at is no heap.
constexpr size_t mostAsked = 200, mostCrossed = 32;

constexpr std::pair<SnapMode, AcDb::OsnapMode> modes[] = {
    {snapEnd, AcDb::kOsModeEnd},
    {snapMiddle, AcDb::kOsModeMid},
    {snapCentre, AcDb::kOsModeCen},
    {snapNode, AcDb::kOsModeNode},
    {snapQuadrant, AcDb::kOsModeQuad},
    {snapInsertion, AcDb::kOsModeIns},
    {snapPerpendicular, AcDb::kOsModePerp},
    {snapTangent, AcDb::kOsModeTan},
    {snapNearest, AcDb::kOsModeNear},
};

/// The nearest of the points that it is given, as the view shows them.
class Nearest {
 public:
  Nearest(AcDbDatabase& drawing, const AcGePoint3d& cursor)
      : drawing_(drawing), cursor_(inViewPlane(drawing, cursor)) {}
  void offer(const Snap& snap) {
    const double distance = inViewPlane(drawing_, snap.point).distanceTo(cursor_);
    std::optional<Snap>& kept = snap.mode == snapNearest ? near_ : exact_;
    double& keptDistance = snap.mode == snapNearest ? nearDistance_ : exactDistance_;
    if (kept && !(distance < keptDistance)) return;
    kept = snap, keptDistance = distance;
  }
  std::optional<Snap> found() const { return exact_ ? exact_ : near_; }

 private:
  AcDbDatabase& drawing_;
  AcGePoint2d cursor_;
  std::optional<Snap> exact_, near_;
  double exactDistance_ = 0, nearDistance_ = 0;
};

}  // namespace

std::optional<Snap> snapAt(AcDbDatabase& drawing, const AcGePoint3d& cursor, int wanted,
                           const AcGePoint3d& last) {
  if (wanted & snapsOff) return std::nullopt;
  std::vector<AcDbObjectId> ids =
      entitiesIn(drawing, apertureAt(drawing, cursor, Aperture::snap), Lies::partly);
  if (ids.size() > mostAsked) ids.erase(ids.begin(), ids.end() - mostAsked);
  const NestedOperation operation;
  Nearest nearest(drawing, cursor);
  for (size_t i = 0; i < ids.size(); ++i) {
    const AcDbObjectPointer<AcDbEntity> entity(ids[i]);
    if (!entity.object()) continue;
    for (const auto& [mode, kind] : modes) {
      if (!(wanted & mode)) continue;
      AcGePoint3dArray points;
      AcDbIntArray unused;
      entity->getOsnapPoints(kind, 0, cursor, last, AcGeMatrix3d::kIdentity, points, unused);
      for (const AcGePoint3d& each : points) nearest.offer({each, mode, ids[i]});
    }
    if (!(wanted & snapIntersection) || i + mostCrossed < ids.size()) continue;
    for (size_t j = i + 1; j < ids.size(); ++j) {
      const AcDbObjectPointer<AcDbEntity> other(ids[j]);
      AcGePoint3dArray points;
      if (other.object()) entity->intersectWith(other.object(), AcDb::kOnBothOperands, points);
      for (const AcGePoint3d& each : points) nearest.offer({each, snapIntersection, ids[i]});
    }
  }
  return nearest.found();
}

}  // namespace host
