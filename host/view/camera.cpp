#include "host/view/camera.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "host/database/kept_for_drawing.h"
#include "host/database/spaces.h"

namespace host::view {
namespace {

constexpr size_t mostSteps = 100;

bool isFinite(const AcGeVector3d& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

/// The way up in the picture of one who looks from there: north where it is a plan, else the world's z.
AcGeVector3d upOf(const AcGeVector3d& towards) {
  constexpr double nearlyUpright = 1e-9;
  const AcGeVector3d reference =
      std::hypot(towards.x, towards.y) < nearlyUpright ? AcGeVector3d{0, 1, 0} : AcGeVector3d{0, 0, 1};
  return (reference - towards * reference.dotProduct(towards)).normal();
}

AcGeVector3d turned(const AcGeVector3d& v, const AcGeVector3d& axis, double angle) {
  return v * std::cos(angle) + axis.crossProduct(v) * std::sin(angle) +
         axis * (axis.dotProduct(v) * (1 - std::cos(angle)));
}

struct Cameras {
  std::map<const AcDbStub*, Camera> ofSpaces;
};

}  // namespace

Camera& Camera::of(AcDbDatabase& drawing) { return of(drawing, currentSpace(drawing)); }
Camera& Camera::of(AcDbDatabase& drawing, AcDbObjectId space) {
  return keptFor<Cameras>(drawing).ofSpaces[space.stub()];
}

bool Camera::setSize(int width, int height) {
  width = std::clamp(width, 1, mostPixels), height = std::clamp(height, 1, mostPixels);
  if (width == width_ && height == height_) return false;
  width_ = width, height_ = height;
  ++moment_;
  return true;
}

PlaneBox Camera::window() const {
  const PlanePoint centre = projection()(view_.centre);
  const double up = view_.height / 2, across = up * width_ / height_;
  return {centre.x - across, centre.y - up, centre.x + across, centre.y + up};
}

bool Camera::set(View view, bool isMotion) {
  if (!isFinite(view.centre.asVector()) || !isFinite(view.towards) || !isFinite(view.up)) return false;
  if (!(view.height > 0) || !std::isfinite(view.height)) return false;
  const AcGeVector3d towards = view.towards.normal();
  const AcGeVector3d up = view.up - towards * view.up.dotProduct(towards);
  if (!(towards.length() > 0.5)) return false;
  view.towards = towards;
  view.up = up.length() > 1e-6 ? up.normal() : upOf(towards);
  view.height = std::clamp(view.height, lowest, highest);
  for (double* each : {&view.centre.x, &view.centre.y, &view.centre.z})
    *each = std::clamp(*each, -farthest, farthest);
  if (view == view_) return false;
  if (!isMotion || !moving_) {
    before_.push_back(view_);
    if (before_.size() > mostSteps) before_.pop_front();
    after_.clear();
  }
  moving_ = isMotion;
  view_ = view;
  ++moment_;
  return true;
}

bool Camera::show(const View& view) { return set(view, false); }
bool Camera::show(const AcGePoint3d& centre, double height) {
  View view = view_;
  view.centre = centre, view.height = height;
  return set(view, false);
}

bool Camera::fit(const PlaneBox& box, double margin) {
  if (box.empty() || !(margin >= 0 && margin < 0.5)) return false;
  const double shape = static_cast<double>(width_) / height_;
  const double height = std::max(box.top - box.bottom, (box.right - box.left) / shape) / (1 - 2 * margin);
  const Projection plane = projection();
  const PlanePoint centre{(box.left + box.right) / 2, (box.bottom + box.top) / 2};
  View view = view_;
  view.centre = AcGePoint3d{} + plane.right * centre.x + plane.up * centre.y +
                view_.towards * view_.centre.asVector().dotProduct(view_.towards);
  if (height > 0) view.height = height;
  return set(view, false);
}
bool Camera::fit(const AcDbExtents& box, double margin) {
  if (box.isEmpty()) return false;
  const Projection plane = projection();
  const AcGePoint3d low = box.minPoint(), high = box.maxPoint();
  PlaneBox seen;
  for (int corner = 0; corner < 8; ++corner) {
    seen.add(plane(
        AcGePoint3d{corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y, corner & 4 ? high.z : low.z}));
  }
  return fit(seen, margin);
}

bool Camera::lookFrom(const AcGeVector3d& towards) {
  if (!isFinite(towards) || !(towards.length() > 0)) return false;
  View view = view_;
  view.towards = towards.normal(), view.up = upOf(view.towards);
  return set(view, false);
}
bool Camera::look(StandardView from) {
  switch (from) {
    case StandardView::top:
      return lookFrom({0, 0, 1});
    case StandardView::bottom:
      return lookFrom({0, 0, -1});
    case StandardView::front:
      return lookFrom({0, -1, 0});
    case StandardView::back:
      return lookFrom({0, 1, 0});
    case StandardView::left:
      return lookFrom({-1, 0, 0});
    case StandardView::right:
      return lookFrom({1, 0, 0});
    case StandardView::southWest:
      return lookFrom({-1, -1, 1});
    case StandardView::southEast:
      return lookFrom({1, -1, 1});
    case StandardView::northEast:
      return lookFrom({1, 1, 1});
    case StandardView::northWest:
      return lookFrom({-1, 1, 1});
  }
  return false;
}

bool Camera::pan(double right, double down) {
  const Projection plane = projection();
  View view = view_;
  view.centre = view.centre - plane.right * (right * pixel()) + plane.up * (down * pixel());
  return set(view, true);
}

bool Camera::zoom(double factor, const PixelPoint& cursor) {
  if (!(factor > 0) || !std::isfinite(factor)) return false;
  View view = view_;
  view.height = std::clamp(view.height / factor, lowest, highest);
  const AcGePoint3d fixed = toWorld(cursor);
  view.centre = fixed + (view_.centre - fixed) * (view.height / view_.height);
  return set(view, true);
}

bool Camera::orbit(double right, double down, const AcGePoint3d* pivot) {
  if (!std::isfinite(right) || !std::isfinite(down)) return false;
  const AcGePoint3d about = pivot ? *pivot : view_.centre;
  // A hand to the right takes the near side along, so that the one who looks goes to the left.
  const AcGeVector3d across = projection().right;
  const auto turn = [&](const AcGeVector3d& v) { return turned(turned(v, across, -down), view_.up, -right); };
  View view = view_;
  view.towards = turn(view_.towards), view.up = turn(view_.up);
  view.centre = about + turn(view_.centre - about);
  return set(view, true);
}

bool Camera::previous() {
  if (before_.empty()) return false;
  after_.push_back(view_);
  view_ = before_.back(), before_.pop_back();
  moving_ = false;
  ++moment_;
  return true;
}
bool Camera::next() {
  if (after_.empty()) return false;
  before_.push_back(view_);
  view_ = after_.back(), after_.pop_back();
  moving_ = false;
  ++moment_;
  return true;
}

PixelPoint Camera::toPixel(const AcGePoint3d& point) const {
  const Projection plane = projection();
  const PlanePoint way = plane(point - view_.centre);
  return {width_ / 2.0 + way.x / pixel(), height_ / 2.0 - way.y / pixel()};
}
AcGePoint3d Camera::toWorld(const PixelPoint& at) const {
  const Projection plane = projection();
  return view_.centre + plane.right * ((at.x - width_ / 2.0) * pixel()) +
         plane.up * ((height_ / 2.0 - at.y) * pixel());
}
Ray Camera::rayAt(const PixelPoint& at) const { return {toWorld(at), -view_.towards}; }

AcGePoint3d Camera::onPlane(const PixelPoint& at, const AcGePoint3d& origin,
                            const AcGeVector3d& normal) const {
  const Ray ray = rayAt(at);
  const double slope = ray.direction.dotProduct(normal);
  constexpr double alongPlane = 1e-9;
  if (!(std::abs(slope) > alongPlane * normal.length())) return ray.origin;
  return ray.origin + ray.direction * ((origin - ray.origin).dotProduct(normal) / slope);
}

}  // namespace host::view
