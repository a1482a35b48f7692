#pragma once

#include <vector>

#include "brx/db_ids.h"
#include "brx/ge_point.h"

namespace host {

/// Where a person takes hold of an entity.
struct Grip {
  AcDbObjectId entity;
  int index = 0;
  /// World coordinates.
  AcGePoint3d point;
};

std::vector<Grip> gripsOf(AcDbObjectId entity);
/// Asks where the grip shall be, and moves it there, as one step for UNDO.
void moveGrip(const Grip& grip);

}  // namespace host
