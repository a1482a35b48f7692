#pragma once

#include <functional>

#include "host/editor/outline.h"

namespace host {

/// Entities of the current space by where they are in its current view. Regions are in the view's plane.

enum class Lies { wholly, partly };

/// In the order of drawing. What a person can't see is left out: erased and invisible entities, and layers
/// that are off or frozen.
std::vector<AcDbObjectId> entitiesIn(AcDbDatabase& drawing, const Region& region, Lies lies);

/// Where a point is in the plane of the current view; from above, its x and y.
AcGePoint2d inViewPlane(AcDbDatabase& drawing, const AcGePoint3d& point);
/// The aperture of a pick around a point, or of an object snap: so many pixels to each side.
enum class Aperture { pick, snap };
Region apertureAt(AcDbDatabase& drawing, const AcGePoint3d& point, Aperture kind = Aperture::pick);

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
