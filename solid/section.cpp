#include "solid/section.h"

#include <algorithm>
#include <cmath>

namespace solid {
namespace {

constexpr int standardDetail = 3, largestDetail = 256, facetsOfDetail = 8;
constexpr double turn = 6.283185307179586477;
/// Directions that differ less than this are one: the right angle of the callers is a literal.
constexpr double sameDirection = 1e-6;
/// Sizes that differ by less of themselves make a circle.
constexpr double sameSize = 1e-9;

struct OutlinePoint {
  double x, y;
};

void addRectangle(double w, double h, std::vector<OutlinePoint>& outline,
                  std::vector<std::int32_t>& quarters) {
  outline = {{-w / 2, -h / 2}, {w / 2, -h / 2}, {w / 2, h / 2}, {-w / 2, h / 2}};
  quarters.assign(4, flat);
}

/// A point of the unit circle; those on the axes and the diagonals of symmetry are exact.
OutlinePoint onCircle(int step, int facets) {
  const int quarter = facets / 4, index = step % quarter;
  const double angle = turn * index / facets;
  const double c = index == 0 ? 1 : std::cos(angle), s = index == 0 ? 0 : std::sin(angle);
  switch (step / quarter % 4) {
    case 0:
      return {c, s};
    case 1:
      return {-s, c};
    case 2:
      return {-c, -s};
    default:
      return {s, -c};
  }
}

/// Each quarter has its own centre; between two that differ there is a straight side.
void addOval(double w, double h, int facets, std::vector<OutlinePoint>& outline,
             std::vector<std::int32_t>& quarters) {
  const double least = std::min(w, h), radius = least / 2;
  const double x = w - least > sameSize * w ? (w - least) / 2 : 0;
  const double y = h - least > sameSize * h ? (h - least) / 2 : 0;
  const auto centre = [&](int q) { return OutlinePoint{q == 0 || q == 3 ? x : -x, q < 2 ? y : -y}; };
  const auto add = [&](int q, int step, std::int32_t surface) {
    const OutlinePoint p = onCircle(step, facets), c = centre(q);
    outline.push_back({c.x + p.x * radius, c.y + p.y * radius});
    quarters.push_back(surface);
  };
  const int steps = facets / 4;
  // A side shorter than a facet can't be told from one.
  const double facet = 2 * radius * std::sin(turn / 2 / facets);
  for (int q = 0; q < 4; ++q) {
    for (int i = 0; i < steps; ++i) add(q, q * steps + i, q);
    const OutlinePoint here = centre(q), next = centre((q + 1) % 4);
    const double side = std::abs(here.x - next.x) + std::abs(here.y - next.y);
    if (side > 0) add(q, (q + 1) * steps, side > facet ? flat : q);
  }
}

}  // namespace

int facetsOf(int detail) {
  return facetsOfDetail * (detail <= 0 ? standardDetail : std::min(detail, largestDetail));
}

Ring ringOf(const SectionEnd& end, int detail) {
  const bool usable = isUsable(end.width) && isUsable(end.height) && isUsable(end.centre) &&
                      std::all_of(std::begin(end.axes), std::end(end.axes),
                                  [](const Vector& axis) { return isUsable(axis); });
  if (!usable || !(end.width > 0) || !(end.height > 0)) return {};
  std::vector<OutlinePoint> outline;
  Ring ring;
  if (end.rectangular) {
    addRectangle(end.width, end.height, outline, ring.quarters);
  } else {
    addOval(end.width, end.height, facetsOf(detail), outline, ring.quarters);
  }
  for (const OutlinePoint& p : outline) {
    ring.points.push_back(end.centre + end.axes[1] * p.x + end.axes[2] * p.y);
  }
  return ring;
}

double sizeAlong(const SectionEnd& end, const Vector& direction) {
  double x = std::abs(end.axes[1].dotProduct(direction)), y = std::abs(end.axes[2].dotProduct(direction));
  if (x < sameDirection) x = 0, y = 1;
  if (y < sameDirection) y = 0, x = 1;
  if (end.rectangular) return end.width * x + end.height * y;
  const double least = std::min(end.width, end.height);
  return least * std::hypot(x, y) + (end.width - least) * x + (end.height - least) * y;
}

}  // namespace solid
