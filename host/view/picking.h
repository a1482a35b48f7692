#pragma once

#include "host/view/camera.h"
#include "host/view/scene.h"

namespace host::view {

/// Entities whose boxes meet a box of a view's plane, in the order of drawing: for those who then look closer
/// (`entityAt`, `entitiesIn` and `snapAt` of the editor). The scene is brought up to date first. What is
/// hidden or erased is left out.
std::vector<AcDbObjectId> entitiesNear(Scene& scene, const Projection& projection, const PlaneBox& box);

}  // namespace host::view
