#include "host/entities/entity_pieces.h"

#include "brx/db_ellipse.h"
#include "brx/db_leader.h"
#include "brx/db_polylines.h"
#include "brx/db_spline.h"
#include "host/entities/path.h"

namespace host {
namespace {

constexpr double unbounded = 1e300;

CurvePiece whole(CurvePiece piece) {
  if (piece.kind == CurvePiece::Kind::line) piece.low = -unbounded, piece.high = unbounded;
  if (piece.kind == CurvePiece::Kind::conic) piece.high = piece.arc.end = piece.arc.start + fullTurn;
  return piece;
}

CurvePiece pieceOf(const Segment& segment) {
  if (segment.bulge == 0) return CurvePiece::lineOf(segment.start, segment.end);
  return CurvePiece::conicOf(arcOf(segment));
}

void addPath(const Path& path, bool closed, bool extend, std::vector<CurvePiece>& pieces) {
  const auto& segments = path.segments();
  for (size_t i = 0; i < segments.size(); ++i) {
    CurvePiece piece = pieceOf(segments[i]);
    const bool isFirst = i == 0, isLast = i + 1 == segments.size();
    if (extend && !closed && (isFirst || isLast)) {
      const CurvePiece free = whole(piece);
      if (piece.kind == CurvePiece::Kind::conic) piece = free;
      if (isFirst) piece.low = free.low;
      if (isLast) piece.high = free.high;
    }
    pieces.push_back(std::move(piece));
  }
}

bool addFollower(const AcDbEntity& entity, bool extend, std::vector<CurvePiece>& pieces) {
  if (const auto* line = AcDbPolyline::cast(&entity)) {
    addPath(pathOf(*line), line->isClosed(), extend, pieces);
  } else if (const auto* line2d = AcDb2dPolyline::cast(&entity)) {
    addPath(pathOf(*line2d), line2d->isClosed(), extend, pieces);
  } else if (const auto* line3d = AcDb3dPolyline::cast(&entity)) {
    addPath(pathOf(*line3d), line3d->isClosed(), extend, pieces);
  } else if (const auto* leader = AcDbLeader::cast(&entity)) {
    addPath(pathOf(*leader), false, extend, pieces);
  } else {
    return false;
  }
  return true;
}

bool addSimple(const AcDbEntity& entity, bool extend, std::vector<CurvePiece>& pieces) {
  const auto add = [&](CurvePiece piece) { pieces.push_back(extend ? whole(std::move(piece)) : piece); };
  // Circles too: to the run-time classes they are no arcs.
  const AcDbArc* const arc =
      AcDbArc::cast(&entity) || AcDbCircle::cast(&entity) ? static_cast<const AcDbArc*>(&entity) : nullptr;
  if (const auto* line = AcDbLine::cast(&entity)) {
    add(CurvePiece::lineOf(line->startPoint(), line->endPoint()));
  } else if (arc) {
    const double start = wrapped(arc->startAngle());
    add(CurvePiece::conicOf(
        EllipseArc::circle(arc->center(), arc->normal(), arc->radius(), start, start + arc->sweep())));
  } else if (const auto* ellipse = AcDbEllipse::cast(&entity)) {
    add(CurvePiece::conicOf(arcOf(*ellipse)));
  } else if (const auto* spline = AcDbSpline::cast(&entity)) {
    CurvePiece piece;
    piece.kind = CurvePiece::Kind::spline;
    piece.spline = spline->curve();
    if (!piece.spline.isValid()) return true;
    piece.low = piece.spline.first(), piece.high = piece.spline.last();
    pieces.push_back(std::move(piece));
  } else {
    return false;
  }
  return true;
}

void addPieces(const AcDbEntity& entity, bool extend, int depth, std::vector<CurvePiece>& pieces) {
  if (addSimple(entity, extend, pieces) || addFollower(entity, extend, pieces) || depth <= 0) return;
  AcDbVoidPtrArray exploded;
  entity.explode(exploded);
  for (void* each : exploded) {
    auto* const part = static_cast<AcDbEntity*>(each);
    addPieces(*part, extend, depth - 1, pieces);
    delete part;
  }
}

}  // namespace

std::vector<CurvePiece> piecesOf(const AcDbEntity& entity, bool extend) {
  constexpr int deepest = 64;
  std::vector<CurvePiece> pieces;
  addPieces(entity, extend, deepest, pieces);
  return pieces;
}

}  // namespace host
