#include "host/view/depth_buffer.h"

#include <algorithm>
#include <cmath>

#include "host/view/clip.h"

namespace host::view {
namespace {

constexpr float nothing = -3e38f;
/// Light from above, in front and a little to the left; what it doesn't reach is half as bright.
constexpr AcGeVector3d light{-0.22, -0.5, 0.84};
constexpr double leastLight = 0.42;
/// Faces are paler than the lines of their colour, so that these stand out.
constexpr double paleness = 0.35;

std::uint32_t shade(std::uint32_t rgb, double brightness) {
  const auto channel = [&](int shift) {
    const double pale = (rgb >> shift & 0xFF) * (1 - paleness) + 255 * paleness;
    return static_cast<std::uint32_t>(std::clamp(pale * brightness, 0.0, 255.0)) << shift;
  };
  return 0xFF000000u | channel(16) | channel(8) | channel(0);
}

AcGeVector3d normalOf(const AcGePoint3d* corners, std::uint32_t count) {
  AcGeVector3d sum;
  for (std::uint32_t i = 1; i + 1 < count; ++i) {
    sum += (corners[i] - corners[0]).crossProduct(corners[i + 1] - corners[0]);
  }
  return sum;
}

}  // namespace

DepthBuffer::DepthBuffer(int width, int height, const PlaneBox& window, const Projection& projection)
    : width_(width),
      height_(height),
      window_(window),
      projection_(projection),
      towards_(projection.towards()),
      scale_(width / (window.right - window.left)) {
  const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
  nearest_.assign(count, nothing);
  hiding_.assign(count, nothing);
  pixels_.assign(count, 0);
}

DepthBuffer::Spot DepthBuffer::spot(const AcGePoint3d& point) const {
  const PlanePoint p = projection_(point);
  return {(p.x - window_.left) * scale_, (window_.top - p.y) * scale_,
          (point.asVector().dotProduct(towards_) - ground_) * scale_};
}

void DepthBuffer::addFace(const AcGePoint3d* corners, std::uint32_t count, std::uint32_t rgb) {
  if (count < 3) return;
  // Heights count from the first face, so that far coordinates keep their digits.
  if (!hasGround_) ground_ = corners[0].asVector().dotProduct(towards_), hasGround_ = true;
  AcGeVector3d normal = normalOf(corners, count);
  const double length = normal.length();
  if (!(length > 0)) return;
  normal = normal / length;
  if (normal.dotProduct(towards_) < 0) normal = -normal;
  const double reached = std::max(0.0, normal.dotProduct(light)) / light.z;
  const std::uint32_t argb = shade(rgb, leastLight + (1 - leastLight) * std::min(1.0, reached));
  const Spot first = spot(corners[0]);
  for (std::uint32_t i = 1; i + 1 < count; ++i) fill({first, spot(corners[i]), spot(corners[i + 1])}, argb);
}

void DepthBuffer::fill(const Spot (&c)[3], std::uint32_t argb) {
  const double area = (c[1].x - c[0].x) * (c[2].y - c[0].y) - (c[2].x - c[0].x) * (c[1].y - c[0].y);
  if (!(std::abs(area) > 1e-9)) return;
  const double rise = ((c[1].z - c[0].z) * (c[2].y - c[0].y) - (c[2].z - c[0].z) * (c[1].y - c[0].y)) / area;
  const double fall = ((c[2].z - c[0].z) * (c[1].x - c[0].x) - (c[1].z - c[0].z) * (c[2].x - c[0].x)) / area;
  const double slack = std::abs(rise) + std::abs(fall) + 0.01;
  const double top = std::min({c[0].y, c[1].y, c[2].y}), bottom = std::max({c[0].y, c[1].y, c[2].y});
  const int firstRow = static_cast<int>(std::max(0.0, std::ceil(top - 0.5)));
  const int lastRow = static_cast<int>(std::min(height_ - 1.0, std::floor(bottom - 0.5)));
  for (int row = firstRow; row <= lastRow; ++row) {
    const double y = row + 0.5;
    double left = 1e300, right = -1e300;
    for (int i = 0; i < 3; ++i) {
      const Spot &a = c[i], &b = c[(i + 1) % 3];
      if ((a.y > y) == (b.y > y)) continue;
      const double x = a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y);
      left = std::min(left, x), right = std::max(right, x);
    }
    const int firstColumn = static_cast<int>(std::max(0.0, std::ceil(left - 0.5)));
    const int lastColumn = static_cast<int>(std::min(width_ - 1.0, std::ceil(right - 0.5) - 1));
    for (int column = firstColumn; column <= lastColumn; ++column) {
      const auto at = static_cast<size_t>(row) * static_cast<size_t>(width_) + static_cast<size_t>(column);
      const double z = c[0].z + rise * (column + 0.5 - c[0].x) + fall * (y - c[0].y);
      if (static_cast<float>(z) >= nearest_[at]) nearest_[at] = static_cast<float>(z), pixels_[at] = argb;
      hiding_[at] = std::max(hiding_[at], static_cast<float>(z - slack));
    }
  }
}

bool DepthBuffer::isHidden(const Spot& s) const {
  if (!(s.x >= 0 && s.y >= 0 && s.x < width_ && s.y < height_)) return false;
  const auto at = static_cast<size_t>(s.y) * static_cast<size_t>(width_) + static_cast<size_t>(s.x);
  return static_cast<float>(s.z) < hiding_[at];
}

bool DepthBuffer::isVisible(const AcGePoint3d& point) const { return !isHidden(spot(point)); }

std::vector<std::pair<double, double>> DepthBuffer::visibleParts(const AcGePoint3d& from,
                                                                 const AcGePoint3d& to) const {
  const Spot a = spot(from), b = spot(to);
  PlanePoint start{a.x, a.y}, end{b.x, b.y};
  const double length = std::hypot(b.x - a.x, b.y - a.y);
  if (!clipSegment({0, 0, static_cast<double>(width_), static_cast<double>(height_)}, start, end)) return {};
  if (length < 1e-9)
    return isHidden(a) ? std::vector<std::pair<double, double>>{} : std::vector{std::pair(0.0, 1.0)};
  const double begin = std::hypot(start.x - a.x, start.y - a.y) / length;
  const double finish = std::hypot(end.x - a.x, end.y - a.y) / length;
  const int steps = std::max(2, static_cast<int>(std::ceil((finish - begin) * length * 1.5)));
  /// Shorter pieces are the rounding of pixels where a line passes behind an outline.
  const double shortest = std::min(2.5 / length, (finish - begin) / 2);
  std::vector<std::pair<double, double>> parts;
  double since = -1;
  const auto close = [&](double until) {
    if (since >= 0 && until - since > shortest) parts.emplace_back(since, until);
    since = -1;
  };
  for (int i = 0; i < steps; ++i) {
    const double t0 = begin + (finish - begin) * i / steps, t1 = begin + (finish - begin) * (i + 1) / steps;
    const double t = (t0 + t1) / 2;
    if (isHidden({a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.z + (b.z - a.z) * t})) {
      close(t0);
    } else if (since < 0) {
      since = t0;
    }
  }
  close(finish);
  return parts;
}

}  // namespace host::view
