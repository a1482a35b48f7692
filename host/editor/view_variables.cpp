#include "host/editor/view_variables.h"

#include <cmath>

#include "host/access/coordinate_systems.h"
#include "host/documents/variables.h"
#include "host/view/camera.h"

namespace host {
namespace {

Point pointOf(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }

/// That of a new drawing where none is open.
const view::Camera& currentCamera() {
  static const view::Camera none;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? view::Camera::of(*drawing) : none;
}

/// From the axes that belong to the direction of view by themselves.
double twistOf(const view::View& view) {
  const AcGeMatrix3d plain = AcGeMatrix3d::planeToWorld(view.towards);
  const AcGeVector3d right = view.projection().right;
  return std::atan2(-right.dotProduct(plain.column(1)), right.dotProduct(plain.column(0))) + 0.0;
}

}  // namespace

void defineViewVariables() {
  defineComputedVariable(L"VIEWCTR", [] {
    return pointOf((userSystem().inverse() * currentCamera().view().centre).asVector());
  });
  defineComputedVariable(L"VIEWSIZE", [] { return currentCamera().view().height; });
  defineComputedVariable(L"VIEWDIR",
                         [] { return pointOf(userSystem().inverse() * currentCamera().view().towards); });
  defineComputedVariable(L"VIEWTWIST", [] { return twistOf(currentCamera().view()); });
  defineComputedVariable(L"SCREENSIZE", [] {
    return Point{static_cast<double>(currentCamera().width()), static_cast<double>(currentCamera().height()),
                 0};
  });
}

}  // namespace host
