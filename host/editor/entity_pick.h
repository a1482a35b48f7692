#pragma once

#include "host/editor/acquisition.h"
#include "host/editor/search.h"

namespace host {

struct Pick {
  /// `RTERROR` for a miss (the variable ERRNO is 7 then) and for a bare Enter (52).
  int status = 0;
  AcGePoint3d point;
  Hit hit;
};

/// Asks the user for one entity.
Pick pickEntity(std::wstring prompt);
/// The same at a point that is known.
Pick pickAt(const AcGePoint3d& point);

}  // namespace host
