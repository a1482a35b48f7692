#include "host/commands/polyline_drawing.h"

#include <cmath>
#include <numbers>

#include "host/commands/drawing_edit.h"

namespace host {
namespace {

constexpr int noNull = 1, noNegative = 4;

AcGePoint2d flat(const AcGePoint3d& point) { return {point.x, point.y}; }

/// A polyline on its way: vertices, and the direction in which the segment to each ends.
struct Path {
  std::vector<AcDbPolyline::Vertex> vertices;
  std::vector<double> directions = {0};
  double startWidth = 0, endWidth = 0;
  double elevation = 0;

  void begin(const AcGePoint3d& point) {
    elevation = point.z;
    vertices.push_back({flat(point)});
  }
  AcGePoint3d last() const { return {vertices.back().point.x, vertices.back().point.y, elevation}; }
  AcGePoint3d first() const { return {vertices.front().point.x, vertices.front().point.y, elevation}; }

  void lineTo(const AcGePoint3d& point) { add(point, 0, (flat(point) - vertices.back().point).angle()); }
  /// An arc that leaves in the direction of the last segment: it turns by twice the angle between that and
  /// its chord, and its bulge is the tangent of a quarter of the turn.
  void arcTo(const AcGePoint3d& point) {
    constexpr double fullTurn = 2 * std::numbers::pi;
    const double direction = directions.back();
    const double half = std::remainder((flat(point) - vertices.back().point).angle() - direction, fullTurn);
    // Straight back there is no arc.
    if (std::abs(half) > fullTurn / 2 - 1e-9) return lineTo(point);
    add(point, std::tan(half / 2), direction + 2 * half);
  }
  void add(const AcGePoint3d& point, double bulge, double direction) {
    directions.push_back(direction);
    vertices.back().bulge = bulge;
    vertices.back().startWidth = startWidth, vertices.back().endWidth = endWidth;
    vertices.push_back({flat(point)});
    startWidth = endWidth;
  }
  void takeBack() {
    if (vertices.size() > 1) vertices.pop_back(), directions.pop_back();
  }
};

void addPolyline(const std::vector<AcDbPolyline::Vertex>& vertices, bool closed, double elevation) {
  if (vertices.size() < 2) return;
  auto made = std::make_unique<AcDbPolyline>();
  for (const AcDbPolyline::Vertex& each : vertices) {
    made->addVertexAt(made->numVerts(), each.point, each.bulge, each.startWidth, each.endWidth);
  }
  made->setClosed(closed);
  made->transformBy(AcGeMatrix3d::translation({0, 0, elevation}));
  addEntity(std::move(made));
}

Task<> askWidth(CommandInput& input, Path& path, double factor) {
  const Answer start =
      co_await input.number(Wanted::distance, L"\nSpecify starting width: ", path.last(), {}, noNegative);
  if (start.given()) path.startWidth = start.real * factor;
  const Answer end =
      co_await input.number(Wanted::distance, L"\nSpecify ending width: ", path.last(), {}, noNegative);
  path.endWidth = end.given() ? end.real * factor : path.startWidth;
}

}  // namespace

Task<> drawPolyline(CommandInput& input) {
  const Answer start = co_await input.point(L"\nSpecify start point: ");
  if (!start.given()) co_return;
  Path path;
  path.begin(start.point);
  bool drawsArcs = false, closed = false;
  while (!closed) {
    const Answer next = co_await input.point(
        drawsArcs ? L"\nSpecify endpoint of arc or [CLose/Halfwidth/Line/Undo/Width]: "
                  : L"\nSpecify next point or [Arc/Close/Halfwidth/Undo/Width]: ",
        path.last(), drawsArcs ? L"CLose Halfwidth Line Undo Width" : L"Arc Close Halfwidth Undo Width");
    if (next.given()) {
      if (drawsArcs) {
        path.arcTo(next.point);
      } else {
        path.lineTo(next.point);
      }
    } else if (next.status != RTKWORD) {
      break;
    } else if (next.text == L"Arc" || next.text == L"Line") {
      drawsArcs = next.text == L"Arc";
    } else if (next.text == L"Undo") {
      path.takeBack();
    } else if (next.text == L"Width") {
      co_await askWidth(input, path, 1);
    } else if (next.text == L"Halfwidth") {
      co_await askWidth(input, path, 2);
    } else {
      closed = path.vertices.size() > 1;
      // The closing segment belongs to the last vertex.
      if (closed && drawsArcs) path.arcTo(path.first()), path.vertices.pop_back();
    }
  }
  addPolyline(path.vertices, closed, path.elevation);
}

Task<> drawRectangle(CommandInput& input) {
  const Answer a = co_await input.point(L"\nSpecify first corner point: ", {}, {}, noNull);
  const Answer b = co_await input.point(L"\nSpecify other corner point: ", a.point, {}, noNull);
  addPolyline({{flat(a.point)}, {{b.point.x, a.point.y}}, {flat(b.point)}, {{a.point.x, b.point.y}}}, true,
              a.point.z);
}

}  // namespace host
