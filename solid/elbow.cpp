#include "solid/elbow.h"

#include <algorithm>
#include <cmath>

#include "solid/chain.h"
#include "solid/prism.h"

namespace solid {
namespace {

/// Sizes and directions that differ by less are one.
constexpr double same = 1e-6;
constexpr double turn = 6.283185307179586477;
/// Of the size in the plane of the bend.
constexpr double smallestRadius = 0.501;

bool isSame(double a, double b) { return std::abs(a - b) <= same * std::max(a, b); }

bool isUsableEnd(const SectionEnd& end) {
  if (!isUsable(end.centre) || !isUsable(end.width) || !isUsable(end.height)) return false;
  for (const Vector& axis : end.axes) {
    if (!isUsable(axis) || !(axis.lengthSqrd() > 0)) return false;
  }
  return end.width > 0 && end.height > 0;
}

/// Where the lines come nearest to each other; they aren't parallel.
void nearest(const Point& p, const Vector& u, const Point& q, const Vector& v, Point& onFirst,
             Point& onSecond) {
  const Vector between = q - p;
  const double uv = u.dotProduct(v), uu = u.dotProduct(u), vv = v.dotProduct(v);
  const double bu = between.dotProduct(u), bv = between.dotProduct(v), det = uu * vv - uv * uv;
  onFirst = p + u * ((bu * vv - bv * uv) / det);
  onSecond = q + v * ((bu * uv - bv * uu) / det);
}

/// A turn about an axis of length 1.
class Turn {
 public:
  Turn(double angle, const Vector& axis) : axis_(axis), cosine_(std::cos(angle)), sine_(std::sin(angle)) {}
  Vector operator*(const Vector& v) const {
    return v * cosine_ + axis_.crossProduct(v) * sine_ + axis_ * (axis_.dotProduct(v) * (1 - cosine_));
  }

 private:
  Vector axis_;
  double cosine_, sine_;
};

}  // namespace

bool findCorner(const SectionEnd& head, const SectionEnd& tail, Corner& corner) {
  if (!isUsableEnd(head) || !isUsableEnd(tail) || head.rectangular != tail.rectangular) return false;
  const Vector &a = head.axes[0], &b = tail.axes[0];
  const Vector axis = a.crossProduct(b);
  const double sine = axis.length() / (a.length() * b.length());
  if (!(sine > same)) return false;
  corner.axis = axis / axis.length();
  corner.angle = std::atan2(sine, a.dotProduct(b) / (a.length() * b.length()));
  nearest(head.centre, a, tail.centre, b, corner.onHead, corner.onTail);
  corner.gap = corner.onHead.distanceTo(corner.onTail);
  const auto sideways = [&](const Vector& along) {
    const Vector side = corner.axis.crossProduct(along);
    return side / side.length();
  };
  corner.headSize = sizeAlong(head, sideways(a));
  corner.tailSize = sizeAlong(tail, sideways(b));
  corner.across = sizeAlong(head, corner.axis);
  if (!isSame(corner.across, sizeAlong(tail, corner.axis))) return false;
  if (!(corner.gap <= corner.across / 2 * (1 + same))) return false;
  if (corner.gap <= same * corner.across) corner.onTail = corner.onHead;
  return isUsable(corner.onHead) && isUsable(corner.onTail);
}

namespace {

struct MitrePlane {
  Point origin;
  Vector normal;
};

/// Along the limb's axis into the plane.
Point projected(const Point& p, const Vector& along, const MitrePlane& plane) {
  return p + along * ((plane.origin - p).dotProduct(plane.normal) / along.dotProduct(plane.normal));
}

void cornersOf(const SectionEnd& end, const MitrePlane& plane, Point (&corners)[8]) {
  constexpr double w[] = {-0.5, 0.5, 0.5, -0.5}, h[] = {-0.5, -0.5, 0.5, 0.5};
  for (int i = 0; i < 4; ++i) {
    corners[i] = end.centre + end.axes[1] * (w[i] * end.width) + end.axes[2] * (h[i] * end.height);
    corners[i + 4] = projected(corners[i], end.axes[0], plane);
  }
}

bool isAlong(const Vector& axis, const Vector& direction) {
  return axis.crossProduct(direction).length() <= same * axis.length();
}

/// Sections whose sides stand askew to the bend meet on the mitre only when they are one section.
bool fitsOnMitre(const SectionEnd& head, const SectionEnd& tail, const Corner& corner) {
  const bool square = isAlong(head.axes[1], corner.axis) || isAlong(head.axes[2], corner.axis);
  const bool equal = isSame(head.width, tail.width) && isSame(head.height, tail.height);
  if (head.rectangular) return square || equal;
  return isSame(corner.headSize, corner.tailSize) && (square || equal);
}

}  // namespace

bool prepareSquareElbow(SectionEnd& head, SectionEnd& tail, double collar, Mitre& mitre) {
  Corner corner;
  if (!isUsable(collar) || collar < 0 || !findCorner(head, tail, corner) ||
      !fitsOnMitre(head, tail, corner)) {
    return false;
  }
  const Vector a = head.axes[0] / head.axes[0].length(), b = tail.axes[0] / tail.axes[0].length();
  const double c = std::cos(corner.angle), s = std::sin(corner.angle);
  // How far the inner corner lies before the meeting point on the head, and behind it on the tail.
  const double x = (corner.headSize * c - corner.tailSize) / (2 * s);
  const double y = (corner.headSize - corner.tailSize * c) / (2 * s);
  const Vector left = corner.axis.crossProduct(a);
  const Vector toInner = a * x + left * (corner.headSize / 2);
  SectionEnd movedHead = head, movedTail = tail;
  movedHead.centre = corner.onHead - a * (std::abs(x) + collar);
  movedTail.centre = corner.onTail + b * (std::abs(y) + collar);
  Vector normal = toInner.crossProduct(corner.axis);
  normal = normal / normal.length();
  if (normal.dotProduct(a) < 0) normal = -normal;
  const MitrePlane plane{corner.onHead, normal};
  if (!isUsable(movedHead.centre) || !isUsable(movedTail.centre)) return false;
  if (!(normal.dotProduct(a) > same) || !(std::abs(normal.dotProduct(b)) > same)) return false;
  cornersOf(movedHead, plane, mitre.head);
  cornersOf(movedTail, plane, mitre.tail);
  mitre.meet = corner.onHead;
  mitre.inner = corner.onHead + toInner, mitre.outer = corner.onHead - toInner;
  mitre.along = movedHead.centre + normal;
  head = movedHead, tail = movedTail;
  return true;
}

Body squareElbow(const SectionEnd& head, const SectionEnd& tail, const Point (&headCorners)[8], int detail) {
  if (!isUsableEnd(head) || !isUsableEnd(tail)) return {};
  for (const Point& p : headCorners) {
    if (!isUsable(p)) return {};
  }
  const Vector area = (headCorners[5] - headCorners[4]).crossProduct(headCorners[7] - headCorners[4]);
  const double length = area.length();
  if (!(length > 0)) return {};
  const MitrePlane plane{headCorners[4], area / length};
  if (!(std::abs(plane.normal.dotProduct(head.axes[0])) > same * head.axes[0].length())) return {};
  const Ring start = ringOf(head, detail), end = ringOf(tail, detail);
  Ring middle = start;
  for (Point& p : middle.points) p = projected(p, head.axes[0], plane);
  Chain chain;
  const int first = chain.add(start), second = chain.add(middle), third = chain.add(end);
  if (!chain.join(first, second, 0) || !chain.join(second, third, 1)) return {};
  Body body = chain.take();
  body.ends = {head.centre, tail.centre};
  return body;
}

namespace {

/// Steps of a bend: as fine as the facets of a circle.
int stepsOf(double angle, int detail) {
  return std::max(1, static_cast<int>(std::ceil(facetsOf(detail) * angle / turn - same)));
}

/// The sides of a rectangle that the bend makes round are smooth along it; those in the bend's plane are
/// flat.
void nameSides(Ring& ring, const SectionEnd& end, const Corner& corner) {
  if (!end.rectangular) {
    // The straight sides of an oval are a surface of their own.
    std::int32_t side = quartersOfSurface;
    for (std::int32_t& each : ring.quarters) {
      if (each == flat) each = side++;
    }
    return;
  }
  const bool widthTurns = isAlong(end.axes[2], corner.axis);
  if (!widthTurns && !isAlong(end.axes[1], corner.axis)) {
    // All four bend: each side is a surface of its own, for which the quarters of one will do.
    for (int i = 0; i < 4; ++i) ring.quarters[static_cast<size_t>(i)] = i;
    return;
  }
  // Edges run along +width, +height, -width, -height.
  ring.quarters[widthTurns ? 1 : 0] = 0;
  ring.quarters[widthTurns ? 3 : 2] = 2;
}

/// Lines that miss each other are joined by a bend that climbs evenly.
Ring turned(const Ring& ring, const Point& centre, const Turn& by, const Vector& climb) {
  Ring made = ring;
  for (Point& p : made.points) p = centre + by * (p - centre) + climb;
  return made;
}

/// The bend as a chain of rings about the centre of the radius.
Body bend(const SectionEnd& head, const Corner& corner, double radius, int detail) {
  const Vector a = head.axes[0] / head.axes[0].length();
  const Point centre = head.centre + corner.axis.crossProduct(a) * radius;
  const int steps = stepsOf(corner.angle, detail);
  Ring ring = ringOf(head, detail);
  if (ring.points.empty()) return {};
  nameSides(ring, head, corner);
  const Vector climb = corner.onTail - corner.onHead;
  Chain chain;
  int last = chain.add(ring);
  for (int i = 1; i <= steps; ++i) {
    const double share = static_cast<double>(i) / steps;
    const int next = chain.add(turned(ring, centre, Turn(corner.angle * share, corner.axis), climb * share));
    if (!chain.join(last, next)) return {};
    last = next;
  }
  return chain.take();
}

}  // namespace

bool radiusElbow(SectionEnd& head, SectionEnd& tail, double radius, int detail, Body* result) {
  Corner corner;
  if (!isUsable(radius) || !(radius > 0) || !findCorner(head, tail, corner)) return false;
  if (!isSame(corner.headSize, corner.tailSize)) return false;
  radius = std::max(radius, smallestRadius * corner.headSize);
  const Vector a = head.axes[0] / head.axes[0].length(), b = tail.axes[0] / tail.axes[0].length();
  const double back = radius * std::tan(corner.angle / 2);
  SectionEnd movedHead = head, movedTail = tail;
  movedHead.centre = corner.onHead - a * back;
  movedTail.centre = corner.onTail + b * back;
  if (!isUsable(movedHead.centre) || !isUsable(movedTail.centre)) return false;
  if (result) {
    Body made = bend(movedHead, corner, radius, detail);
    if (made.empty()) return false;
    made.ends = {movedHead.centre, movedTail.centre};
    *result = std::move(made);
  }
  head = movedHead, tail = movedTail;
  return true;
}

Body trayElbow(const SectionEnd& head, const SectionEnd& tail, double radius, int detail) {
  Corner corner;
  if (!isUsable(radius) || !(radius > 0) || !findCorner(head, tail, corner)) return {};
  const double width = corner.headSize, inner = std::max(radius, smallestRadius * width) - width / 2;
  if (!isSame(width, corner.tailSize)) return {};
  const Vector a = head.axes[0] / head.axes[0].length(), b = tail.axes[0] / tail.axes[0].length();
  const Vector left = corner.axis.crossProduct(a), tailLeft = corner.axis.crossProduct(b);
  const double half = width / 2, tangent = std::tan(corner.angle / 2);
  const Vector down = corner.axis * (-corner.across / 2);
  const Point meet = corner.onHead + down;
  // Both ends stand where the arc begins; the ends of the runs may not lie nearer to the corner.
  const double back = (inner + half) * tangent;
  const Point start = meet - a * back, end = meet + b * back;
  const Point centre = start + left * (inner + half);
  PlanShape shape;
  shape.outline = {start - left * half, meet - left * half + a * (half * tangent), end - tailLeft * half};
  shape.surfaces = {flat, flat, flat};
  const int steps = stepsOf(corner.angle, detail);
  const Vector spoke = left * -inner;
  for (int i = steps; i >= 0; --i) {
    shape.outline.push_back(centre + Turn(corner.angle * i / steps, corner.axis) * spoke);
    shape.surfaces.push_back(i > 0 ? 0 : flat);
  }
  // A fan from the outer corner.
  const auto count = static_cast<Index>(shape.outline.size());
  for (Index i = 2; i + 1 < count; ++i) shape.pieces.push_back({1, i, i + 1});
  shape.pieces.push_back({1, count - 1, 0});
  Body body = prisms(shape, corner.axis * corner.across);
  body.ends = {start - down, end - down};
  return body;
}

}  // namespace solid
