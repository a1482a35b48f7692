#include <array>
#include <cmath>
#include <numbers>

#include "host/lisp/builtins.h"

namespace lisp {
namespace {

struct Point {
  std::array<double, 3> at{};
  bool flat = true;
};

constexpr double fullTurn = 2 * std::numbers::pi;
// Lines that turn against each other by less have no crossing that could be told from none.
constexpr double parallel = 1e-14;

Point point(const Call& call, size_t place) {
  const Value& value = call[place];
  Point made;
  size_t count = 0;
  for (const Value* at = &value; at->isCons() && count < 3; at = &cdr(*at), ++count) {
    if (!car(*at).isNumber()) failType(L"point:", value);
    made.at[count] = car(*at).number();
  }
  if (count < 2) failType(L"point:", value);
  made.flat = count == 2;
  return made;
}

Value listOf(const Point& point) {
  ListBuilder list;
  for (size_t i = 0; i < (point.flat ? 2 : 3); ++i) list.add(point.at[i]);
  return list.take();
}

Value distance(const Call& call) {
  const Point a = point(call, 0), b = point(call, 1);
  const double z = a.flat || b.flat ? 0.0 : b.at[2] - a.at[2];
  return std::hypot(b.at[0] - a.at[0], b.at[1] - a.at[1], z);
}

// In the plane, from 0 up to a full turn.
Value angle(const Call& call) {
  const Point a = point(call, 0), b = point(call, 1);
  const double turn = std::atan2(b.at[1] - a.at[1], b.at[0] - a.at[0]);
  return turn < 0.0 ? turn + fullTurn : turn;
}

Value polar(const Call& call) {
  Point moved = point(call, 0);
  moved.at[0] += call.number(2) * std::cos(call.number(1));
  moved.at[1] += call.number(2) * std::sin(call.number(1));
  return listOf(moved);
}

// Crossing of the lines 1-2 and 3-4, by the ratio of the triangles' areas; on both of them unless a
// fifth argument is nil.
Value inters(const Call& call) {
  const Point a = point(call, 0), b = point(call, 1), c = point(call, 2), d = point(call, 3);
  const bool onBoth = !call.has(4) || call[4].isTrue();
  const double rx = b.at[0] - a.at[0], ry = b.at[1] - a.at[1], sx = d.at[0] - c.at[0], sy = d.at[1] - c.at[1];
  const double turn = rx * sy - ry * sx;
  if (std::abs(turn) <= parallel * std::hypot(rx, ry) * std::hypot(sx, sy)) return {};
  const double dx = c.at[0] - a.at[0], dy = c.at[1] - a.at[1];
  const double along = (dx * sy - dy * sx) / turn, across = (dx * ry - dy * rx) / turn;
  const auto within = [](double part) { return part >= -1e-10 && part <= 1.0 + 1e-10; };
  if (onBoth && (!within(along) || !within(across))) return {};
  Point crossing;
  crossing.flat = a.flat || b.flat || c.flat || d.flat;
  for (size_t i = 0; i < 3; ++i) crossing.at[i] = a.at[i] + along * (b.at[i] - a.at[i]);
  if (!crossing.flat) {
    const double other = c.at[2] + across * (d.at[2] - c.at[2]);
    if (std::abs(other - crossing.at[2]) > 1e-8) return {};
  }
  return listOf(crossing);
}

}  // namespace

std::span<const Builtin> geometryBuiltins() {
  static const Builtin table[] = {
      {L"DISTANCE", distance, 2, 2},
      {L"ANGLE", angle, 2, 2},
      {L"POLAR", polar, 3, 3},
      {L"INTERS", inters, 4, 5},
  };
  return table;
}

}  // namespace lisp
