#include "brx/db_polylines.h"
#include "host/database/fields.h"
#include "host/database/subentities.h"
#include "host/entities/path.h"

ACRX_DEFINE_MEMBERS(AcDb3dPolylineVertex)
ACRX_DEFINE_MEMBERS(AcDb3dPolyline)

template <class Visitor, class Self>
void AcDb3dPolylineVertex::fields(Visitor& v, Self& o) {
  v(10, o.position_), v(70, o.flags_);
}
HOST_FILING(AcDb3dPolylineVertex, AcDbVertex, fields)

Acad::ErrorStatus AcDb3dPolylineVertex::setPosition(const AcGePoint3d& position) {
  return assertWriteEnabled(), position_ = position, Acad::eOk;
}
bool AcDb3dPolylineVertex::subWorldDraw(AcGiWorldDraw*) { return true; }
Acad::ErrorStatus AcDb3dPolylineVertex::subTransformBy(const AcGeMatrix3d& matrix) {
  return assertWriteEnabled(), position_.transformBy(matrix), Acad::eOk;
}
Acad::ErrorStatus AcDb3dPolylineVertex::subGetGeomExtents(AcDbExtents& extents) const {
  return extents.addPoint(position_);
}
Acad::ErrorStatus AcDb3dPolylineVertex::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(position_), Acad::eOk;
}

template <class Visitor, class Self>
void AcDb3dPolyline::fields(Visitor& v, Self& o) {
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) v(66, Adesk::Int16{1}), v.height(10, 0);
  v(70, o.flags_), v(75, o.curveType_);
  host::visitSubentities(v, o.vertices_);
}
HOST_FILING(AcDb3dPolyline, AcDbEntity, fields)

AcDb3dPolyline::AcDb3dPolyline(AcDb::Poly3dType, const AcGePoint3dArray& points, bool closed)
    : flags_(closed ? 9 : 8) {
  for (const AcGePoint3d& each : points) appendVertex(new AcDb3dPolylineVertex(each));
}
Acad::ErrorStatus AcDb3dPolyline::makeClosed() {
  assertWriteEnabled();
  flags_ |= 1;
  return Acad::eOk;
}
Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDb3dPolylineVertex* vertex) {
  return host::appendSubentity(*this, vertex);
}
Acad::ErrorStatus AcDb3dPolyline::appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex) {
  const Acad::ErrorStatus status = host::appendSubentity(*this, vertex);
  if (status == Acad::eOk) id = vertex->objectId();
  return status;
}

host::Path host::pathOf(const AcDb3dPolyline& line) {
  AcGePoint3dArray points;
  host::forEachSubentity<AcDb3dPolylineVertex>(*host::subentitiesOf(line),
                                               [&](const AcDb3dPolylineVertex& vertex) {
                                                 if (!vertex.isFrame()) points.append(vertex.position());
                                               });
  host::Path path(line.isClosed());
  for (int i = 0; i + 1 < points.length(); ++i) path.add({points[i], points[i + 1]});
  if (line.isClosed() && points.length() > 1) path.add({points.last(), points[0]});
  return path;
}

HOST_FOLLOWS_PATH(AcDb3dPolyline)

bool AcDb3dPolyline::subWorldDraw(AcGiWorldDraw* draw) { return host::pathOf(*this).draw(*draw), true; }
Acad::ErrorStatus AcDb3dPolyline::subTransformBy(const AcGeMatrix3d& matrix) {
  assertWriteEnabled();
  return host::changeSubentities<AcDb3dPolylineVertex>(
      vertices_, [&](AcDb3dPolylineVertex& vertex, int) { vertex.setPosition(matrix * vertex.position()); });
}
Acad::ErrorStatus AcDb3dPolyline::subGetStretchPoints(AcGePoint3dArray& points) const {
  host::forEachSubentity<AcDb3dPolylineVertex>(
      vertices_, [&](const AcDb3dPolylineVertex& vertex) { points.append(vertex.position()); });
  return Acad::eOk;
}
Acad::ErrorStatus AcDb3dPolyline::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                         const AcGeVector3d& offset) {
  assertWriteEnabled();
  return host::changeSubentities<AcDb3dPolylineVertex>(vertices_,
                                                       [&](AcDb3dPolylineVertex& vertex, int index) {
                                                         if (indices.contains(index))
                                                           vertex.setPosition(vertex.position() + offset);
                                                       });
}
