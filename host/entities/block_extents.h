#pragma once

#include <array>
#include <map>

#include "brx/db_entity.h"

class AcDbBlockReference;

namespace host {

/// Extents of blocks without their places, each worked out once for every way in which references turn and
/// scale it.
struct BlockExtents {
  using Turn = std::array<double, 9>;
  std::map<const AcDbStub*, std::map<Turn, AcDbExtents>> known;
  /// The drawing's count of changes up to which they hold.
  Adesk::UInt64 changes = 0;
};

/// Of all that a reference shows; empty when that is nothing. However deep blocks are nested, the work grows
/// with their entities alone: a block that is turned in more than a thousand ways has, from then on, the box
/// around its turned box.
AcDbExtents extentsOfReference(const AcDbBlockReference& reference);
/// The way from the first place of a reference's grid to another.
AcGeMatrix3d cellShift(const AcDbBlockReference& reference, int column, int row);

}  // namespace host
