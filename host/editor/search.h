#pragma once

#include <functional>

#include "host/editor/outline.h"

namespace host {

/// Entities of the current space by where they are.

enum class Lies { wholly, partly };

/// In the order of drawing. What a person can't see is left out: erased and invisible entities, and layers
/// that are off or frozen.
std::vector<AcDbObjectId> entitiesIn(AcDbDatabase& drawing, const Region& region, Lies lies);

/// A pick's aperture around a point, as large as the pick box in the current view.
Region apertureAt(const AcGePoint3d& point);

struct Hit {
  AcDbObjectId entity;
  /// The innermost entity under the pick, and where it stands.
  OutlineSource innermost;
};
/// The entity drawn last of those that have a part in the aperture.
std::optional<Hit> entityAt(AcDbDatabase& drawing, const AcGePoint3d& point);

/// All entities of the current space, or of all spaces, that aren't erased, with their layers' states.
enum class Spaces { current, all };
void forEachEntity(AcDbDatabase& drawing, Spaces spaces,
                   const std::function<void(AcDbEntity&, VisibleLayers::State)>& visit);

}  // namespace host
