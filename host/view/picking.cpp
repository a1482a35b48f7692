#include "host/view/picking.h"

namespace host::view {

std::vector<AcDbObjectId> entitiesNear(Scene& scene, const Projection& projection, const PlaneBox& box) {
  scene.index();
  std::vector<AcDbObjectId> found;
  for (const std::uint32_t number : scene.entriesIn(projection, box)) {
    const AcDbObjectId entity = scene.entry(number).entity;
    if (!entity.isErased()) found.push_back(entity);
  }
  return found;
}

}  // namespace host::view
