#include "host/editor/snaps.h"

#include <cmath>

#include "host/database/nested_visits.h"
#include "host/editor/search.h"
#include "host/view/camera.h"

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

/// The nearest of the points that it is given, as the view shows them; of those that stand behind one another
/// there, the nearest in space.
class Nearest {
 public:
  Nearest(AcDbDatabase& drawing, const AcGePoint3d& cursor)
      : projection_(view::Camera::of(drawing).projection()),
        cursor_(cursor),
        seenCursor_(seen(cursor)),
        same_(view::Camera::of(drawing).pixel() * 1e-6) {}
  void offer(const Snap& snap) {
    const Offer offer{snap, seen(snap.point).distanceTo(seenCursor_), snap.point.distanceTo(cursor_)};
    std::optional<Offer>& kept = snap.mode == snapNearest ? near_ : exact_;
    if (!kept || isNearer(offer, *kept)) kept = offer;
  }
  std::optional<Snap> found() const {
    const std::optional<Offer>& best = exact_ ? exact_ : near_;
    return best ? std::optional(best->snap) : std::nullopt;
  }

 private:
  struct Offer {
    Snap snap;
    double seenDistance, distance;
  };
  bool isNearer(const Offer& offer, const Offer& kept) const {
    const double gain = kept.seenDistance - offer.seenDistance;
    return std::abs(gain) > same_ ? gain > 0 : offer.distance < kept.distance;
  }
  AcGePoint2d seen(const AcGePoint3d& point) const {
    const view::PlanePoint at = projection_(point);
    return {at.x, at.y};
  }

  view::Projection projection_;
  AcGePoint3d cursor_;
  AcGePoint2d seenCursor_;
  double same_;  // drawing units
  std::optional<Offer> exact_, near_;
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
