#include "zarbo/drawing/path_intersections.h"

#include "zarbo/drawing/arc_path.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/list_builder.h"

namespace {

constexpr int32_t rightTurn = -1;

double optionalExtension(ArgCursor& cursor) {
  double extension = 0.0;
  getNumber(cursor, extension);
  return extension;
}

/// Pairs ("d" . distance) under construction.
struct Hits {
  LispList list;
  bool any = false;

  Hits() { beginList(list); }
  void add(double distance) {
    appendPair(list, L"d", distance);
    any = true;
  }
  /// Nil when nothing was hit.
  void returnAll() {
    if (any) endListAndReturn(list);
  }
};

double distanceOn(const AcDbCurve& piece, const AcGePoint3d& point) {
  double distance = 0;
  piece.getDistAtPoint(point, distance);
  return distance;
}

/// Points of one piece against the others, in order. The first that can't be intersected ends it.
AcGePoint3dArray meetings(const AcDbCurve& piece, const std::vector<const AcDbCurve*>& others) {
  AcGePoint3dArray points(0, 8);
  for (const AcDbCurve* each : others) {
    if (piece.intersectWith(each, AcDb::kOnBothOperands, points) != Acad::eOk) break;
  }
  return points;
}

/// Distances along the path from where its travel starts. The rules, also those of a right turn, whose
/// leads both leave from there, are what the application counts on.
void addHits(const ArcPath& path, const std::vector<const AcDbCurve*>& others, Hits& hits) {
  const bool right = path.direction == rightTurn;
  const auto stage = [&](const AcDbCurve& piece, auto distance) {
    for (const AcGePoint3d& each : meetings(piece, others)) hits.add(distance(distanceOn(piece, each)));
  };
  if (path.leadIn) stage(*path.leadIn, [&](double d) { return right ? path.length + d : -d; });
  if (path.hasArc) stage(path.arc, [&](double d) { return right ? path.length - d : d; });
  if (path.leadOut) stage(*path.leadOut, [&](double d) { return right ? -d : path.length + d; });
}

int returnHits(const ArcPath& path, const std::vector<const AcDbCurve*>& others) {
  Hits hits;
  addHits(path, others, hits);
  hits.returnAll();
  return done;
}

}  // namespace

int kvIntersectArcArc() {
  acedRetNil();
  LispArgs args;
  const double extension = optionalExtension(args.cursor);
  ArcPath path, other;
  if (!getArcPath(args.cursor, extension, path) || !getArcPath(args.cursor, extension, other)) return done;
  return returnHits(path, other.pieces());
}

int kvIntersectArcLine() {
  acedRetNil();
  LispArgs args;
  const double extension = optionalExtension(args.cursor);
  ArcPath path;
  AcDbLine line;
  if (!getArcPath(args.cursor, extension, path) || !getExtendedLine(args.cursor, extension, line))
    return done;
  return returnHits(path, {&line});
}

int kvIntersectLineArc() {
  acedRetNil();
  LispArgs args;
  const double extension = optionalExtension(args.cursor);
  AcDbLine line;
  ArcPath other;
  if (!getExtendedLine(args.cursor, extension, line) || !getArcPath(args.cursor, extension, other))
    return done;
  AcGePoint3dArray points(0, 8);
  for (const AcDbCurve* each : other.pieces()) {
    if (line.intersectWith(each, AcDb::kOnBothOperands, points) != Acad::eOk) return done;
  }
  Hits hits;
  for (const AcGePoint3d& each : points) hits.add(distanceOn(line, each) - extension);
  hits.returnAll();
  return done;
}
