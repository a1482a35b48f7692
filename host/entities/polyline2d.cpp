#include "brx/db_polylines.h"
#include "host/database/fields.h"
#include "host/database/subentities.h"
#include "host/entities/path.h"

ACRX_DEFINE_MEMBERS(AcDbVertex)
ACRX_DEFINE_MEMBERS(AcDb2dVertex)
ACRX_DEFINE_MEMBERS(AcDb2dPolyline)

static constexpr auto noFields = [](auto&, auto&) {};
HOST_FILING(AcDbVertex, AcDbEntity, noFields)

template <class Visitor, class Self>
void AcDb2dVertex::fields(Visitor& v, Self& o) {
  v(10, o.position_), v(40, o.startWidth_), v(41, o.endWidth_), v(42, o.bulge_), v(70, o.flags_);
  v(50, o.tangent_);
}
HOST_FILING(AcDb2dVertex, AcDbVertex, fields)

Acad::ErrorStatus AcDb2dVertex::setPosition(const AcGePoint3d& position) {
  return assertWriteEnabled(), position_ = position, Acad::eOk;
}
Acad::ErrorStatus AcDb2dVertex::setBulge(double bulge) {
  return assertWriteEnabled(), bulge_ = bulge, Acad::eOk;
}
Acad::ErrorStatus AcDb2dVertex::setTangent(double angle) {
  assertWriteEnabled();
  tangent_ = angle, flags_ |= 2;
  return Acad::eOk;
}
Acad::ErrorStatus AcDb2dVertex::setVertexType(AcDb::Vertex2dType type) {
  assertWriteEnabled();
  constexpr Adesk::Int16 kinds[] = {0, 16, 8, 1};
  flags_ = static_cast<Adesk::Int16>((flags_ & ~(16 | 8 | 1)) | kinds[type]);
  return Acad::eOk;
}
bool AcDb2dVertex::subWorldDraw(AcGiWorldDraw*) { return true; }
Acad::ErrorStatus AcDb2dVertex::subTransformBy(const AcGeMatrix3d& matrix) {
  return assertWriteEnabled(), position_.transformBy(matrix), Acad::eOk;
}
Acad::ErrorStatus AcDb2dVertex::subGetGeomExtents(AcDbExtents& extents) const {
  return extents.addPoint(position_);
}
Acad::ErrorStatus AcDb2dVertex::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(position_), Acad::eOk;
}

namespace {

/// What the flags of a polyline tell.
enum : Adesk::Int16 { isClosedFlag = 1, isCurveFit = 2, isSplineFit = 4 };
/// What stands in the type of smoothing.
enum : Adesk::Int16 { quadratic = 5, cubic = 6 };

}  // namespace

template <class Visitor, class Self>
void AcDb2dPolyline::fields(Visitor& v, Self& o) {
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) v(66, Adesk::Int16{1});
  v.height(10, o.elevation_), v(39, o.thickness_), v(70, o.flags_), v(40, o.startWidth_);
  v(41, o.endWidth_), v(75, o.curveType_), v(210, o.normal_);
  host::visitSubentities(v, o.vertices_);
}
HOST_FILING(AcDb2dPolyline, AcDbEntity, fields)

AcDb2dPolyline::AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& points, double elevation,
                               bool closed)
    : elevation_(elevation), flags_(closed ? isClosedFlag : 0) {
  for (const AcGePoint3d& each : points) appendVertex(new AcDb2dVertex(each));
  if (type == AcDb::k2dFitCurvePoly) curveFit();
  if (type == AcDb::k2dQuadSplinePoly || type == AcDb::k2dCubicSplinePoly) splineFit(type, 8);
}
AcDb::Poly2dType AcDb2dPolyline::polyType() const {
  if (flags_ & isCurveFit) return AcDb::k2dFitCurvePoly;
  if (!(flags_ & isSplineFit)) return AcDb::k2dSimplePoly;
  return curveType_ == quadratic ? AcDb::k2dQuadSplinePoly : AcDb::k2dCubicSplinePoly;
}
Acad::ErrorStatus AcDb2dPolyline::makeClosed() {
  assertWriteEnabled();
  flags_ |= isClosedFlag;
  return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::makeOpen() {
  assertWriteEnabled();
  flags_ = static_cast<Adesk::Int16>(flags_ & ~isClosedFlag);
  return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), normal_ = normal.normal(), Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDb2dVertex* vertex) {
  return host::appendSubentity(*this, vertex);
}
Acad::ErrorStatus AcDb2dPolyline::appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex) {
  const Acad::ErrorStatus status = host::appendSubentity(*this, vertex);
  if (status == Acad::eOk) id = vertex->objectId();
  return status;
}

host::Path host::pathOf(const AcDb2dPolyline& line) {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(line.normal());
  host::Path path(line.isClosed());
  host::Segment segment;
  segment.normal = line.normal();
  AcGePoint3d first;
  bool any = false;
  host::forEachSubentity<AcDb2dVertex>(*host::subentitiesOf(line), [&](const AcDb2dVertex& vertex) {
    if (vertex.vertexType() == AcDb::k2dSplineCtlVertex) return;  // the frame isn't drawn
    segment.end = plane * AcGePoint3d{vertex.position().x, vertex.position().y, line.elevation()};
    if (any) path.add(segment);
    if (!any) first = segment.end, any = true;
    segment.start = segment.end;
    segment.bulge = vertex.bulge();
    segment.startWidth = vertex.startWidth(), segment.endWidth = vertex.endWidth();
  });
  segment.end = first;
  if (line.isClosed() && !path.segments().empty()) path.add(segment);
  return path;
}

HOST_FOLLOWS_PATH(AcDb2dPolyline)

bool AcDb2dPolyline::subWorldDraw(AcGiWorldDraw* draw) { return host::pathOf(*this).draw(*draw), true; }

Acad::ErrorStatus AcDb2dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal_);
  const double height = elevation_;
  // Seen from the normal that is turned over, a mirrored bulge keeps its side.
  normal_ = (matrix * normal_).normalize() * (matrix.det() < 0 ? -1 : 1);
  const AcGeMatrix3d moved = AcGeMatrix3d::worldToPlane(normal_) * matrix * plane;
  elevation_ = (moved * AcGePoint3d{0, 0, height}).z;
  return host::changeSubentities<AcDb2dVertex>(vertices_, [&](AcDb2dVertex& vertex, int) {
    const AcGePoint3d own = vertex.position();
    vertex.setPosition(moved * AcGePoint3d{own.x, own.y, height});
    vertex.scaleWidths(matrix.scale());
  });
}
Acad::ErrorStatus AcDb2dPolyline::subGetStretchPoints(AcGePoint3dArray& points) const {
  const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal_);
  host::forEachSubentity<AcDb2dVertex>(vertices_, [&](const AcDb2dVertex& vertex) {
    points.append(plane * AcGePoint3d{vertex.position().x, vertex.position().y, elevation_});
  });
  return Acad::eOk;
}
Acad::ErrorStatus AcDb2dPolyline::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                         const AcGeVector3d& offset) {
  assertWriteEnabled();
  const AcGeVector3d own = AcGeMatrix3d::worldToPlane(normal_) * offset;
  return host::changeSubentities<AcDb2dVertex>(vertices_, [&](AcDb2dVertex& vertex, int index) {
    if (indices.contains(index)) vertex.setPosition(vertex.position() + AcGeVector3d{own.x, own.y, 0});
  });
}
