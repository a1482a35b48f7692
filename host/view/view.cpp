#include "host/view/view.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host::view {

void PlaneBox::add(const PlanePoint& p) {
  left = std::min(left, p.x), right = std::max(right, p.x);
  bottom = std::min(bottom, p.y), top = std::max(top, p.y);
}
void PlaneBox::join(const PlaneBox& other) {
  left = std::min(left, other.left), right = std::max(right, other.right);
  bottom = std::min(bottom, other.bottom), top = std::max(top, other.top);
}

Projection Projection::isometric() {
  const double half = std::sqrt(0.5), sixth = std::sqrt(1.0 / 6);
  return {{half, -half, 0}, {sixth, sixth, 2 * sixth}};
}

LettersInk inkOf(const Letters& letters) {
  LettersInk ink{0, 1e300, 1e300, -1e300, -1e300};
  for (const wchar_t letter : letters.letters) {
    const text::Glyph& glyph = letters.font->glyph(letter);
    if (!glyph.blank()) {
      ink.left = std::min(ink.left, ink.advance + glyph.left);
      ink.right = std::max(ink.right, ink.advance + glyph.right);
      ink.bottom = std::min<double>(ink.bottom, glyph.bottom), ink.top = std::max<double>(ink.top, glyph.top);
    }
    ink.advance += glyph.advance * letters.tracking;
  }
  return ink;
}

namespace {

constexpr double turn = 2 * std::numbers::pi;

/// Ends, and the points where the curve turns back along an axis of the plane.
PlaneBox boxOfArc(const Arc& arc, const Projection& projection) {
  const PlanePoint centre = projection(arc.centre), u = projection(arc.u), v = projection(arc.v);
  PlaneBox box;
  const auto add = [&](double t) {
    box.add(
        {centre.x + u.x * std::cos(t) + v.x * std::sin(t), centre.y + u.y * std::cos(t) + v.y * std::sin(t)});
  };
  const double sweep = std::abs(arc.sweep), sign = arc.sweep < 0 ? -1 : 1;
  add(0), add(arc.sweep);
  for (const double extreme : {std::atan2(sign * v.x, u.x), std::atan2(sign * v.y, u.y)}) {
    for (int half = -1; half <= 2; ++half) {
      const double t = extreme + half * turn / 2;
      if (t >= 0 && (t <= sweep || sweep >= turn)) add(sign * t);
    }
  }
  return box;
}

PlaneBox boxOfLetters(const Letters& letters, const Projection& projection) {
  const LettersInk ink = inkOf(letters);
  PlaneBox box;
  if (ink.left > ink.right) return box;
  for (const double x : {ink.left, ink.right}) {
    for (const double y : {ink.bottom, ink.top})
      box.add(projection(letters.origin + letters.x * x + letters.y * y));
  }
  return box;
}

}  // namespace

PlaneBox boxOf(const DisplayList& list, const Item& item, const Projection& projection) {
  if (item.kind == Item::arc) return boxOfArc(list.arcs[item.first], projection);
  if (item.kind == Item::letters) return boxOfLetters(list.letters[item.first], projection);
  PlaneBox box;
  for (std::uint32_t i = 0; i < item.count; ++i) box.add(projection(list.points[item.first + i]));
  return box;
}

PlaneBox boxOf(const DisplayList& list, const Projection& projection) {
  PlaneBox box;
  for (const Item& each : list.items) box.join(boxOf(list, each, projection));
  return box;
}

}  // namespace host::view
