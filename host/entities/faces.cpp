#include "brx/db_faces.h"

#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbFace)
ACRX_DEFINE_MEMBERS(AcDbSolid)
ACRX_DEFINE_MEMBERS(AcDbTrace)

template <class Visitor, class Self>
void AcDbFace::fields(Visitor& v, Self& o) {
  for (int i = 0; i < 4; ++i) v(10 + i, o.corners_[i]);
  v(70, o.hiddenEdges_);
}
HOST_FILING(AcDbFace, AcDbEntity, fields)

template <class Visitor, class Self>
void AcDbSolid::fields(Visitor& v, Self& o) {
  for (int i = 0; i < 4; ++i) v.plane(10 + i, o.corners_[i], o.normal_);
  v(39, o.thickness_), v(210, o.normal_);
}
HOST_FILING_AS(AcDbSolid, AcDbEntity, fields, L"AcDbTrace")

namespace {

constexpr Adesk::UInt16 cornerCount = 4;

Acad::ErrorStatus addCorners(const AcGePoint3d (&corners)[4], AcDbExtents& extents) {
  for (const AcGePoint3d& each : corners) extents.addPoint(each);
  return Acad::eOk;
}
Acad::ErrorStatus appendCorners(const AcGePoint3d (&corners)[4], AcGePoint3dArray& points) {
  for (const AcGePoint3d& each : corners) points.append(each);
  return Acad::eOk;
}
void moveCorners(AcGePoint3d (&corners)[4], const AcDbIntArray& indices, const AcGeVector3d& offset) {
  for (int i = 0; i < cornerCount; ++i) {
    if (indices.contains(i)) corners[i] += offset;
  }
}

/// Edges from corner to corner in the order given, those of no length left out.
void appendEdges(const AcDbEntity& like, const AcGePoint3d (&corners)[4], const int (&order)[4], int hidden,
                 AcDbVoidPtrArray& entities) {
  for (int i = 0; i < cornerCount; ++i) {
    const AcGePoint3d &from = corners[order[i]], &to = corners[order[(i + 1) % cornerCount]];
    if ((hidden >> i & 1) || from.isEqualTo(to)) continue;
    auto* const edge = new AcDbLine(from, to);
    edge->setPropertiesFrom(&like);
    entities.append(static_cast<AcDbEntity*>(edge));
  }
}

Acad::ErrorStatus snapTo(const AcDbEntity& face, AcDb::OsnapMode mode, const AcGePoint3d& pick,
                         const AcGePoint3d& last, const AcGeMatrix3d& view, AcGePoint3dArray& points) {
  AcDbVoidPtrArray edges;
  AcDbIntArray ids;
  face.explode(edges);
  for (void* each : edges) {
    auto* const edge = static_cast<AcDbEntity*>(each);
    edge->getOsnapPoints(mode, 0, pick, last, view, points, ids);
    delete edge;
  }
  return Acad::eOk;
}

constexpr int around[] = {0, 1, 2, 3};
constexpr int crosswise[] = {0, 1, 3, 2};

}  // namespace

Acad::ErrorStatus AcDbFace::getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  return point = corners_[index], Acad::eOk;
}
Acad::ErrorStatus AcDbFace::setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point) {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  return assertWriteEnabled(), corners_[index] = point, Acad::eOk;
}
Acad::ErrorStatus AcDbFace::isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  return visible = !(hiddenEdges_ >> index & 1), Acad::eOk;
}
Acad::ErrorStatus AcDbFace::makeEdgeVisibleAt(Adesk::UInt16 index) {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  assertWriteEnabled();
  hiddenEdges_ = static_cast<Adesk::Int16>(hiddenEdges_ & ~(1 << index));
  return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::makeEdgeInvisibleAt(Adesk::UInt16 index) {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  assertWriteEnabled();
  hiddenEdges_ = static_cast<Adesk::Int16>(hiddenEdges_ | 1 << index);
  return Acad::eOk;
}
bool AcDbFace::subWorldDraw(AcGiWorldDraw* draw) {
  AcDbVoidPtrArray edges;
  subExplode(edges);
  for (void* each : edges) {
    auto* const edge = static_cast<AcDbLine*>(static_cast<AcDbEntity*>(each));
    edge->worldDraw(draw);
    delete edge;
  }
  return true;
}
Acad::ErrorStatus AcDbFace::subTransformBy(const AcGeMatrix3d& matrix) {
  assertWriteEnabled();
  for (AcGePoint3d& each : corners_) each.transformBy(matrix);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subGetGeomExtents(AcDbExtents& extents) const {
  return addCorners(corners_, extents);
}
Acad::ErrorStatus AcDbFace::subGetStretchPoints(AcGePoint3dArray& points) const {
  return appendCorners(corners_, points);
}
Acad::ErrorStatus AcDbFace::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return assertWriteEnabled(), moveCorners(corners_, indices, offset), Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subExplode(AcDbVoidPtrArray& entities) const {
  return appendEdges(*this, corners_, around, hiddenEdges_, entities), Acad::eOk;
}
Acad::ErrorStatus AcDbFace::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick,
                                              const AcGePoint3d& last, const AcGeMatrix3d& view,
                                              AcGePoint3dArray& points, AcDbIntArray&) const {
  return snapTo(*this, mode, pick, last, view, points);
}

Acad::ErrorStatus AcDbSolid::getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  return point = corners_[index], Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::setPointAt(Adesk::UInt16 index, const AcGePoint3d& point) {
  if (index >= cornerCount) return Acad::eInvalidIndex;
  return assertWriteEnabled(), corners_[index] = point, Acad::eOk;
}
bool AcDbSolid::subWorldDraw(AcGiWorldDraw* draw) {
  const AcGePoint3d outline[] = {corners_[0], corners_[1], corners_[3], corners_[2]};
  const bool isTriangle = corners_[2].isEqualTo(corners_[3]);
  draw->subEntityTraits().setFillType(kAcGiFillAlways);
  draw->geometry().polygon(isTriangle ? 3 : 4, outline);
  draw->subEntityTraits().setFillType(kAcGiFillNever);
  return true;
}
Acad::ErrorStatus AcDbSolid::subTransformBy(const AcGeMatrix3d& matrix) {
  assertWriteEnabled();
  for (AcGePoint3d& each : corners_) each.transformBy(matrix);
  normal_ = (matrix * normal_).normalize();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::subGetGeomExtents(AcDbExtents& extents) const {
  return addCorners(corners_, extents);
}
Acad::ErrorStatus AcDbSolid::subGetStretchPoints(AcGePoint3dArray& points) const {
  return appendCorners(corners_, points);
}
Acad::ErrorStatus AcDbSolid::subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return assertWriteEnabled(), moveCorners(corners_, indices, offset), Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::subExplode(AcDbVoidPtrArray& entities) const {
  return appendEdges(*this, corners_, crosswise, 0, entities), Acad::eOk;
}
Acad::ErrorStatus AcDbSolid::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick,
                                               const AcGePoint3d& last, const AcGeMatrix3d& view,
                                               AcGePoint3dArray& points, AcDbIntArray&) const {
  return snapTo(*this, mode, pick, last, view, points);
}
