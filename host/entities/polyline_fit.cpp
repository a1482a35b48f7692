#include "brx/db_polylines.h"
#include "host/database/header_variables.h"
#include "host/database/subentities.h"
#include "host/geometry/bspline.h"

/// Smoothing of 2D polylines. What it adds are vertices of their own kinds, which `straighten` takes
/// away again.

namespace {

enum : Adesk::Int16 { curveFitFlag = 2, splineFitFlag = 4 };
enum : Adesk::Int16 { quadraticType = 5, cubicType = 6 };

AcGeVector2d unit(const AcGeVector2d& v) {
  const double length = v.length();
  return length > 0 ? v * (1 / length) : v;
}
/// Signed, from -pi to pi, to the left from `a` to `b`.
double turnFrom(const AcGeVector2d& a, const AcGeVector2d& b) {
  return std::atan2(a.x * b.y - a.y * b.x, a.dotProduct(b));
}

struct Knot {
  AcGePoint2d point;
  AcGeVector2d tangent;
  bool given = false;
};

/// Tangent at the middle one of three points of the circle through them.
AcGeVector2d circleTangent(const AcGePoint2d& before, const AcGePoint2d& at, const AcGePoint2d& after) {
  const AcGeVector2d a = at - before, b = after - at;
  const double aa = a.dotProduct(a), bb = b.dotProduct(b);
  if (!(aa > 0) || !(bb > 0)) return unit(after - before);
  const AcGeVector2d sum = a * (1 / aa) + b * (1 / bb);
  // Back along the same way: the turn is half a circle to the left.
  return sum.length() > 1e-12 / std::sqrt(aa) ? unit(sum) : unit({-a.y, a.x});
}

/// A circle leaves a chord at the angle at which it came to it.
AcGeVector2d reflected(const AcGeVector2d& tangent, const AcGeVector2d& chord) {
  const AcGeVector2d c = unit(chord);
  return c * (2 * c.dotProduct(tangent)) - tangent;
}

void findTangents(std::vector<Knot>& knots, bool closed) {
  const size_t count = knots.size();
  const auto at = [&](size_t index) -> Knot& { return knots[index % count]; };
  for (size_t i = 0; i < count; ++i) {
    const bool isEnd = !closed && (i == 0 || i + 1 == count);
    if (at(i).given || isEnd) continue;
    at(i).tangent = circleTangent(at(i + count - 1).point, at(i).point, at(i + 1).point);
  }
  if (closed) return;
  Knot &first = knots.front(), &last = knots.back();
  if (!first.given) {
    const AcGeVector2d chord = knots[1].point - first.point;
    first.tangent = count > 2 || knots[1].given ? reflected(knots[1].tangent, chord) : unit(chord);
  }
  if (!last.given) {
    const Knot& before = knots[count - 2];
    last.tangent = reflected(before.tangent, last.point - before.point);
  }
}

/// Two arcs from `a` to `b` that leave and arrive along the tangents and meet smoothly: their joint is
/// the middle between the points that lie the same length along the tangents, which makes the line
/// between those twice as long.
struct ArcPair {
  AcGePoint2d joint;
  double first = 0, second = 0;  // bulges
};

ArcPair arcPair(const Knot& a, const Knot& b) {
  const AcGeVector2d v = b.point - a.point, t = a.tangent + b.tangent;
  const double along = v.dotProduct(t), denominator = 2 * (1 - a.tangent.dotProduct(b.tangent));
  const double vv = v.dotProduct(v);
  double reach = 0;
  if (denominator > 1e-12) {
    reach = (std::sqrt(along * along + denominator * vv) - along) / denominator;
  } else if (std::abs(along) > 1e-12 * vv) {
    reach = vv / (2 * along);
  }
  ArcPair made;
  const AcGePoint2d from = a.point + a.tangent * reach, to = b.point + b.tangent * -reach;
  made.joint = {(from.x + to.x) / 2, (from.y + to.y) / 2};
  made.first = std::tan(turnFrom(a.tangent, made.joint - a.point) / 2);
  made.second = std::tan(turnFrom(b.point - made.joint, b.tangent) / 2);
  return made;
}

bool isAdded(const AcDb2dVertex& vertex) {
  return vertex.vertexType() == AcDb::k2dCurveFitVertex || vertex.vertexType() == AcDb::k2dSplineFitVertex;
}

}  // namespace

Acad::ErrorStatus AcDb2dPolyline::straighten() {
  assertWriteEnabled();
  std::erase_if(vertices_.loose, [](const auto& each) {
    const AcDb2dVertex* const vertex = AcDb2dVertex::cast(each.get());
    return vertex && isAdded(*vertex);
  });
  flags_ = static_cast<Adesk::Int16>(flags_ & ~(curveFitFlag | splineFitFlag));
  curveType_ = 0;
  return host::changeSubentities<AcDb2dVertex>(vertices_, [](AcDb2dVertex& vertex, int) {
    if (isAdded(vertex)) {
      vertex.erase();
      return;
    }
    if (vertex.bulge() != 0) vertex.setBulge(0);
    if (vertex.vertexType() == AcDb::k2dSplineCtlVertex) vertex.setVertexType(AcDb::k2dVertex);
  });
}

Acad::ErrorStatus AcDb2dPolyline::curveFit() {
  const Acad::ErrorStatus status = straighten();
  if (status != Acad::eOk) return status;
  std::vector<Knot> knots;
  host::forEachSubentity<AcDb2dVertex>(vertices_, [&](const AcDb2dVertex& vertex) {
    const AcGePoint2d place = vertex.position().convert2d();
    const double angle = vertex.tangent();
    knots.push_back({place, {std::cos(angle), std::sin(angle)}, vertex.isTangentUsed()});
  });
  if (knots.size() < 2) return Acad::eDegenerateGeometry;
  findTangents(knots, isClosed());
  std::vector<ArcPair> pairs;
  for (size_t i = 0; i + (isClosed() ? 0 : 1) < knots.size(); ++i) {
    pairs.push_back(arcPair(knots[i], knots[(i + 1) % knots.size()]));
  }
  flags_ |= curveFitFlag;
  return host::insertSubentities<AcDb2dVertex>(*this, [&](AcDb2dVertex& vertex, size_t index) -> AcDbEntity* {
    if (index >= pairs.size()) return nullptr;
    const ArcPair& pair = pairs[index];
    vertex.setBulge(pair.first);
    auto* const joint = new AcDb2dVertex({pair.joint.x, pair.joint.y, vertex.position().z}, pair.second,
                                         vertex.endWidth(), vertex.endWidth());
    joint->setVertexType(AcDb::k2dCurveFitVertex);
    return joint;
  });
}

Acad::ErrorStatus AcDb2dPolyline::splineFit() {
  const AcDbDatabase* const drawing = database() ? database() : acdbHostWorkingDatabase();
  int type = cubicType, segments = 8;
  if (drawing) {
    type = std::get<int>(host::headerValue(*drawing, *host::findHeaderVariable(L"SPLINETYPE")));
    segments = std::get<int>(host::headerValue(*drawing, *host::findHeaderVariable(L"SPLINESEGS")));
  }
  return splineFit(type == quadraticType ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly,
                   static_cast<Adesk::Int16>(std::clamp(std::abs(segments), 1, 32767)));
}

Acad::ErrorStatus AcDb2dPolyline::splineFit(AcDb::Poly2dType type, Adesk::Int16 segments) {
  if (segments < 1 || (type != AcDb::k2dQuadSplinePoly && type != AcDb::k2dCubicSplinePoly)) {
    return Acad::eInvalidInput;
  }
  const Acad::ErrorStatus status = straighten();
  if (status != Acad::eOk) return status;
  std::vector<AcGePoint3d> frame;
  host::forEachSubentity<AcDb2dVertex>(vertices_,
                                       [&](const AcDb2dVertex& each) { frame.push_back(each.position()); });
  const int degree = type == AcDb::k2dQuadSplinePoly ? 2 : 3;
  if (frame.size() < 3) return Acad::eDegenerateGeometry;
  const host::BSpline curve = host::uniformSpline(std::move(frame), degree, isClosed());
  host::changeSubentities<AcDb2dVertex>(
      vertices_, [](AcDb2dVertex& vertex, int) { vertex.setVertexType(AcDb::k2dSplineCtlVertex); });
  flags_ |= splineFitFlag;
  curveType_ = type == AcDb::k2dQuadSplinePoly ? quadraticType : cubicType;
  const int count = segments * curve.frameSegments;
  for (int i = 0; i < count + (isClosed() ? 0 : 1); ++i) {
    auto* const fitted =
        new AcDb2dVertex(curve.at(curve.first() + (curve.last() - curve.first()) * i / count));
    fitted->setVertexType(AcDb::k2dSplineFitVertex);
    const Acad::ErrorStatus appended = appendVertex(fitted);
    if (appended != Acad::eOk) return delete fitted, appended;
    if (database()) fitted->close();
  }
  return Acad::eOk;
}
