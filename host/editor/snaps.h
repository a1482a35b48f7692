#pragma once

#include <optional>
#include <vector>

#include "brx/db_database.h"

namespace host {

/// Object snaps: exact points of entities near a place in the current view.

/// Bits of OSMODE.
enum SnapMode : int {
  snapEnd = 1,
  snapMiddle = 2,
  snapCentre = 4,
  snapNode = 8,
  snapQuadrant = 16,
  snapIntersection = 32,
  snapInsertion = 64,
  snapPerpendicular = 128,
  snapTangent = 256,
  snapNearest = 512,
  snapsOff = 16384
};

struct Snap {
  AcGePoint3d point;
  SnapMode mode = snapEnd;
  AcDbObjectId entity;
};

/// The nearest point that the modes give of the entities in the aperture around `cursor`; one that is merely
/// near a curve counts when there is no other. `last` is the point that perpendicular and tangent ones start
/// from. Nothing where there is none, or with `snapsOff`.
std::optional<Snap> snapAt(AcDbDatabase& drawing, const AcGePoint3d& cursor, int modes,
                           const AcGePoint3d& last);

}  // namespace host
