#include "host/view/clip.h"

namespace host::view {

/// By parameters of the segment at which it crosses each side.
bool clipSegment(const PlaneBox& box, PlanePoint& from, PlanePoint& to) {
  const double dx = to.x - from.x, dy = to.y - from.y;
  double first = 0, last = 1;
  const auto side = [&](double towards, double room) {
    if (towards == 0) return room >= 0;
    const double at = room / towards;
    if (towards < 0) {
      if (at > first) first = at;
    } else if (at < last) {
      last = at;
    }
    return first <= last;
  };
  if (!side(-dx, from.x - box.left) || !side(dx, box.right - from.x) || !side(-dy, from.y - box.bottom) ||
      !side(dy, box.top - from.y)) {
    return false;
  }
  const PlanePoint start = from;
  if (last < 1) to = {start.x + last * dx, start.y + last * dy};
  if (first > 0) from = {start.x + first * dx, start.y + first * dy};
  return true;
}

std::vector<PlanePoint> clipPolygon(const PlaneBox& box, std::vector<PlanePoint> polygon) {
  const auto cut = [&polygon](double PlanePoint::*axis, double limit, double sign) {
    std::vector<PlanePoint> kept;
    for (size_t i = 0; i < polygon.size(); ++i) {
      const PlanePoint &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
      const double beyondA = sign * (a.*axis - limit), beyondB = sign * (b.*axis - limit);
      if (beyondA <= 0) kept.push_back(a);
      if ((beyondA < 0 && beyondB > 0) || (beyondA > 0 && beyondB < 0)) {
        const double share = beyondA / (beyondA - beyondB);
        kept.push_back({a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share});
      }
    }
    polygon = std::move(kept);
  };
  cut(&PlanePoint::x, box.right, 1), cut(&PlanePoint::x, box.left, -1);
  cut(&PlanePoint::y, box.top, 1), cut(&PlanePoint::y, box.bottom, -1);
  return polygon;
}

}  // namespace host::view
