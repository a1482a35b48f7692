#include "host/editor/plane_shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace host {
namespace {

constexpr double fullTurn = 2 * std::numbers::pi;

/// Above the rounding of coordinates of that size, far below what can be drawn.
double toleranceOf(const PlaneBox& box) {
  const double size =
      std::max({1.0, std::abs(box.low.x), std::abs(box.low.y), std::abs(box.high.x), std::abs(box.high.y)});
  return 1e-10 * size;
}

double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

/// The part of the segment nearest to the point, from 0 to 1.
double nearestPart(const PlaneSegment& segment, const AcGePoint2d& point) {
  const AcGeVector2d way = segment.to - segment.from;
  const double square = way.dotProduct(way);
  return square == 0 ? 0 : std::clamp((point - segment.from).dotProduct(way) / square, 0.0, 1.0);
}

bool isOn(const PlaneSegment& segment, const AcGePoint2d& point, double tolerance) {
  return pointAt(segment, nearestPart(segment, point)).distanceTo(point) <= tolerance;
}

void addCrossings(const PlaneSegment& piece, const PlaneSegment& edge, double tolerance,
                  std::vector<double>& parts) {
  const AcGeVector2d along = piece.to - piece.from, way = edge.to - edge.from;
  const double turn = cross(along, way);
  // Nearly parallel segments meet where an end of one lies on the other.
  for (const AcGePoint2d& end : {edge.from, edge.to}) {
    if (isOn(piece, end, tolerance)) parts.push_back(nearestPart(piece, end));
  }
  if (isOn(edge, piece.from, tolerance)) parts.push_back(0);
  if (isOn(edge, piece.to, tolerance)) parts.push_back(1);
  if (turn == 0) return;
  const AcGeVector2d between = edge.from - piece.from;
  const double part = cross(between, way) / turn, edgePart = cross(between, along) / turn;
  if (part >= 0 && part <= 1 && edgePart >= 0 && edgePart <= 1) parts.push_back(part);
}

/// The part of the arc in the direction of the point, when it is on the arc.
std::optional<double> partOf(const PlaneArc& arc, const AcGePoint2d& point, double tolerance) {
  double turned = std::fmod((point - arc.centre).angle() - arc.start, fullTurn);
  if (turned < 0) turned += fullTurn;
  const double slack = arc.radius > 0 ? tolerance / arc.radius : fullTurn;
  if (turned <= arc.sweep) return turned / arc.sweep;
  if (turned - arc.sweep <= slack) return 1.0;
  if (fullTurn - turned <= slack) return 0.0;
  return std::nullopt;
}

void addCrossings(const PlaneArc& piece, const PlaneSegment& edge, double tolerance,
                  std::vector<double>& parts) {
  const AcGeVector2d way = edge.to - edge.from;
  const double length = way.length();
  if (length == 0) {
    if (std::abs(edge.from.distanceTo(piece.centre) - piece.radius) > tolerance) return;
    if (const auto part = partOf(piece, edge.from, tolerance)) parts.push_back(*part);
    return;
  }
  const AcGeVector2d unit = way * (1 / length), toCentre = piece.centre - edge.from;
  const double foot = toCentre.dotProduct(unit), off = std::abs(cross(unit, toCentre));
  if (off > piece.radius + tolerance) return;
  const double half = std::sqrt(std::max(0.0, piece.radius * piece.radius - off * off));
  for (const double at : {foot - half, foot + half}) {
    if (at < -tolerance || at > length + tolerance) continue;
    if (const auto part = partOf(piece, edge.from + unit * at, tolerance)) parts.push_back(*part);
  }
}

bool isInside(const std::vector<AcGePoint2d>& corners, const AcGePoint2d& point) {
  bool inside = false;
  for (size_t i = 0, before = corners.size() - 1; i < corners.size(); before = i++) {
    const AcGePoint2d &a = corners[i], &b = corners[before];
    if ((a.y > point.y) == (b.y > point.y)) continue;
    if (point.x < (b.x - a.x) * (point.y - a.y) / (b.y - a.y) + a.x) inside = !inside;
  }
  return inside;
}

template <class Visit>
void forEachSide(const PlaneArea& area, Visit visit) {
  for (size_t i = 0; i < area.corners.size(); ++i) {
    visit(PlaneSegment{area.corners[i], area.corners[(i + 1) % area.corners.size()]});
  }
}

}  // namespace

void PlaneBox::add(const AcGePoint2d& point) {
  low = {std::min(low.x, point.x), std::min(low.y, point.y)};
  high = {std::max(high.x, point.x), std::max(high.y, point.y)};
}
bool PlaneBox::contains(const PlaneBox& other) const {
  return low.x <= other.low.x && low.y <= other.low.y && high.x >= other.high.x && high.y >= other.high.y;
}
bool PlaneBox::meets(const PlaneBox& other) const {
  return low.x <= other.high.x && low.y <= other.high.y && high.x >= other.low.x && high.y >= other.low.y;
}

AcGePoint2d pointAt(const PlaneSegment& piece, double part) {
  return piece.from + (piece.to - piece.from) * part;
}
AcGePoint2d pointAt(const PlaneArc& piece, double part) {
  const double angle = piece.start + piece.sweep * part;
  return {piece.centre.x + piece.radius * std::cos(angle), piece.centre.y + piece.radius * std::sin(angle)};
}

Region::Region(Kind kind, std::vector<AcGePoint2d> corners) : kind_(kind), corners_(std::move(corners)) {
  for (const AcGePoint2d& each : corners_) bounds_.add(each);
  tolerance_ = toleranceOf(bounds_);
}

Region Region::box(const AcGePoint2d& a, const AcGePoint2d& b) {
  return Region(Kind::polygon, {a, {b.x, a.y}, b, {a.x, b.y}});
}

template <class Visit>
void Region::forEachEdge(Visit visit) const {
  for (size_t i = 0; i + 1 < corners_.size(); ++i) visit(PlaneSegment{corners_[i], corners_[i + 1]});
  if (kind_ == Kind::polygon && corners_.size() > 1) visit(PlaneSegment{corners_.back(), corners_.front()});
}

bool Region::contains(const AcGePoint2d& point) const {
  if (kind_ == Kind::fence || corners_.size() < 2) return false;
  bool onBorder = false;
  forEachEdge([&](const PlaneSegment& edge) { onBorder = onBorder || isOn(edge, point, tolerance_); });
  return onBorder || isInside(corners_, point);
}

template <class Piece>
std::vector<double> Region::crossings(const Piece& piece) const {
  std::vector<double> parts;
  forEachEdge([&](const PlaneSegment& edge) { addCrossings(piece, edge, tolerance_, parts); });
  return parts;
}

template <class Piece>
bool Region::touches(const Piece& piece) const {
  return contains(pointAt(piece, 0)) || !crossings(piece).empty();
}

bool Region::touches(const PlaneArea& area) const {
  bool met = false;
  forEachSide(area, [&](const PlaneSegment& side) { met = met || touches(side); });
  return met || (!corners_.empty() && isInside(area.corners, corners_.front()));
}

/// Between two meetings with the border a piece is all inside or all outside.
template <class Piece>
bool Region::holds(const Piece& piece) const {
  std::vector<double> parts = crossings(piece);
  parts.push_back(0), parts.push_back(1);
  std::sort(parts.begin(), parts.end());
  for (size_t i = 0; i + 1 < parts.size(); ++i) {
    if (!contains(pointAt(piece, (parts[i] + parts[i + 1]) / 2))) return false;
  }
  return contains(pointAt(piece, 0)) && contains(pointAt(piece, 1));
}

bool Region::holds(const PlaneArea& area) const {
  bool held = true;
  forEachSide(area, [&](const PlaneSegment& side) { held = held && holds(side); });
  return held;
}

template bool Region::touches(const PlaneSegment&) const;
template bool Region::touches(const PlaneArc&) const;
template bool Region::holds(const PlaneSegment&) const;
template bool Region::holds(const PlaneArc&) const;

}  // namespace host
