#include <algorithm>
#include <map>
#include <utility>

#include "brx/db_faces.h"
#include "brx/lisp_calls.h"
#include "solid/boolean.h"
#include "solid/hvac_solid.h"
#include "solid/outline.h"

/// The entity in the drawing: how it shows, and what it answers.

using solid::Body;

BrxSolidBody HvacSolid::body(int index) const {
  const Body& body = bodies_.at(static_cast<size_t>(index));
  solid::Outline outline = solid::outlineOf(body);
  const solid::Measures measures = solid::measure(body);
  return {std::move(outline.points),
          std::move(outline.corners),
          std::move(outline.faceEnds),
          measures.volume,
          measures.area,
          measures.centre,
          measures.closed};
}

namespace {

void drawEdge(AcGiGeometry& geometry, const Body& body, const solid::Edge& edge) {
  const AcGePoint3d ends[] = {body.points[edge.from], body.points[edge.to]};
  geometry.polyline(2, ends, nullptr, -1);
}

/// All faces, filled, and those edges that stand out from any side.
void drawFaces(AcGiWorldDraw& draw, const Body& body) {
  const solid::Outline outline = solid::outlineOf(body);
  AcGiGeometry& geometry = draw.geometry();
  draw.subEntityTraits().setFillType(kAcGiFillAlways);
  std::vector<AcGePoint3d> corners;
  size_t begin = 0;
  for (const solid::Index end : outline.faceEnds) {
    corners.clear();
    for (; begin < end; ++begin) corners.push_back(outline.points[outline.corners[begin]]);
    geometry.polygon(static_cast<Adesk::UInt32>(corners.size()), corners.data());
  }
  draw.subEntityTraits().setFillType(kAcGiFillNever);
}

}  // namespace

/// Bodies that reach into each other are one to the eye: with an edge where they meet, and nothing inside.
std::vector<Body> HvacSolid::bodiesAsSeen() const {
  constexpr size_t mostTogether = 16;  // fittings have up to three; more would take long for every picture
  std::vector<Body> seen = bodies_;
  if (seen.size() > 1 && seen.size() <= mostTogether) solid::unite(seen);
  return seen;
}

bool HvacSolid::subWorldDraw(AcGiWorldDraw* draw) {
  const bool hides = draw->regenType() == kAcGiHideOrShadeCommand;
  const std::vector<Body> seen = hides ? bodiesAsSeen() : std::vector<Body>();
  for (const Body& body : hides ? seen : bodies_) {
    if (hides) drawFaces(*draw, body);
    for (const solid::Edge& edge : solid::edgesOf(body)) {
      // Quarter lines stand for round surfaces where nothing else shows them.
      const bool shows = edge.kind == solid::Edge::sharp || (!hides && edge.kind == solid::Edge::quarter);
      if (shows) drawEdge(draw->geometry(), body, edge);
    }
  }
  return !hides;
}

/// Where a smooth surface turns away from the one who looks.
void HvacSolid::subViewportDraw(AcGiViewportDraw* draw) {
  const AcGeVector3d towards = draw->viewDir();
  for (const Body& body : bodiesAsSeen()) {
    for (const solid::Edge& edge : solid::edgesOf(body)) {
      const bool round = edge.kind == solid::Edge::smooth || edge.kind == solid::Edge::quarter;
      if (round && (edge.left.dotProduct(towards) > 0) != (edge.right.dotProduct(towards) > 0)) {
        drawEdge(draw->geometry(), body, edge);
      }
    }
  }
}

Acad::ErrorStatus HvacSolid::subTransformBy(const AcGeMatrix3d& matrix) {
  std::vector<Body> moved = bodies_;
  for (Body& each : moved) {
    if (!solid::transform(each, matrix)) return Acad::eInvalidInput;
  }
  assertWriteEnabled();
  bodies_ = std::move(moved);
  return Acad::eOk;
}

namespace {

/// The faces of an outline as entities: longer ones in pieces of four corners.
class FaceMaker {
 public:
  explicit FaceMaker(const Body& body) : outline_(solid::outlineOf(body)) {
    size_t begin = 0;
    for (const solid::Index end : outline_.faceEnds) {
      const std::span loop(outline_.corners.data() + begin, end - begin);
      const AcGeVector3d area = solid::areaVector(outline_.points, loop);
      for (size_t i = 0; i < loop.size(); ++i) {
        normals_[{loop[i], loop[(i + 1) % loop.size()]}] = area / std::max(area.length(), 1e-300);
      }
      begin = end;
    }
  }

  void appendTo(AcDbVoidPtrArray& entities, const AcDbEntity& like) const {
    size_t begin = 0;
    for (const solid::Index end : outline_.faceEnds) {
      const std::span loop(outline_.corners.data() + begin, end - begin);
      begin = end;
      for (size_t first = 1; first + 1 < loop.size(); first += 2) {
        AcDbFace* const face = make(loop, first, std::min(first + 2, loop.size() - 1));
        face->setPropertiesFrom(&like);
        entities.append(static_cast<AcDbEntity*>(face));
      }
    }
  }

 private:
  using Loop = std::span<const solid::Index>;

  /// A fan's piece: the first corner, and those from `first` to `last`. Edges within a plane don't show.
  AcDbFace* make(Loop loop, size_t first, size_t last) const {
    const size_t corners[] = {0, first, first + 1, last};
    const auto at = [&](size_t i) { return outline_.points[loop[corners[i]]]; };
    auto* const face = new AcDbFace(at(0), at(1), at(2), at(3));
    for (Adesk::UInt16 edge = 0; edge < 4; ++edge) {
      const size_t from = corners[edge], to = corners[(edge + 1) % 4];
      if (from != to && isWithinPlane(loop, from, to)) face->makeEdgeInvisibleAt(edge);
    }
    return face;
  }
  bool isWithinPlane(Loop loop, size_t from, size_t to) const {
    if (to != (from + 1) % loop.size()) return true;
    const auto own = normals_.find({loop[from], loop[to]}), other = normals_.find({loop[to], loop[from]});
    return own != normals_.end() && other != normals_.end() && (own->second - other->second).length() < 1e-6;
  }

  solid::Outline outline_;
  std::map<std::pair<solid::Index, solid::Index>, AcGeVector3d> normals_;  // by edge
};

}  // namespace

Acad::ErrorStatus HvacSolid::subExplode(AcDbVoidPtrArray& entities) const {
  for (const Body& body : bodies_) FaceMaker(body).appendTo(entities, *this);
  return Acad::eOk;
}

void HvacSolid::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"                   Bodies = %d\n", bodyCount());
  for (int i = 0; i < bodyCount(); ++i) {
    const BrxSolidBody each = body(i);
    acutPrintf(L"                   Body %d: %s, %d faces, volume = %f, area = %f\n", i + 1,
               each.closed ? L"closed" : L"open", static_cast<int>(each.faceEnds.size()), each.volume,
               each.area);
    acutPrintf(L"                   Centre = %f, %f, %f\n", each.centre.x, each.centre.y, each.centre.z);
  }
}

Acad::ErrorStatus HvacSolid::subGetGeomExtents(AcDbExtents& extents) const {
  if (bodies_.empty()) return Acad::eInvalidExtents;
  for (const Body& body : bodies_) {
    for (const AcGePoint3d& p : body.points) extents.addPoint(p);
  }
  return Acad::eOk;
}

Acad::ErrorStatus HvacSolid::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& points, AcDbIntArray&) const {
  if (mode == AcDb::kOsModeCen || mode == AcDb::kOsModeNode) return subGetStretchPoints(points);
  if (mode != AcDb::kOsModeEnd && mode != AcDb::kOsModeMid) return Acad::eOk;
  for (const Body& body : bodies_) {
    std::vector<char> given(body.points.size(), 0);
    for (const solid::Edge& edge : solid::edgesOf(body)) {
      if (edge.kind != solid::Edge::sharp) continue;
      const AcGePoint3d &from = body.points[edge.from], &to = body.points[edge.to];
      if (mode == AcDb::kOsModeMid) {
        points.append(from + (to - from) * 0.5);
        continue;
      }
      for (const solid::Index end : {edge.from, edge.to}) {
        if (!std::exchange(given[end], 1)) points.append(body.points[end]);
      }
    }
  }
  return Acad::eOk;
}

Acad::ErrorStatus HvacSolid::subGetStretchPoints(AcGePoint3dArray& points) const {
  for (const Body& body : bodies_) {
    for (const AcGePoint3d& each : body.ends) points.append(each);
  }
  return Acad::eOk;
}
