#pragma once

#include "brx/db_proxy.h"
#include "host/database/group_list.h"

namespace host {

/// How a transformation looks in the plane of an entity, before and behind it.
struct PlaneChange {
  PlaneChange(const AcGeMatrix3d& matrix, const AcGeVector3d& normal);
  AcGeVector3d normalBehind;
  AcGeMatrix3d local;  // from coordinates of the plane before to those of the plane behind
  double scale, turn;
  bool mirrored;
  double angle(double before) const { return mirrored ? turn - before : turn + before; }
};

/// The groups of a hatch: its boundary, pattern and seeds. False when they don't follow the format.
bool transformHatch(GroupList& groups, const AcGeMatrix3d& matrix);
/// The groups of a leader of many lines, by a matrix that keeps angles and doesn't mirror. False when they
/// don't follow the format.
bool transformMultileader(GroupList& groups, const AcGeMatrix3d& matrix);

}  // namespace host
