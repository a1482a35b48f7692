#include "brx/db_leader.h"

#include "host/database/fields.h"
#include "host/database/header_variables.h"
#include "host/entities/path.h"

ACRX_DEFINE_MEMBERS(AcDbLeader)

template <class Visitor, class Self>
void AcDbLeader::fields(Visitor& v, Self& o) {
  v.template named<AcDbDimStyleTable>(3, o.style_), v(71, o.arrow_), v(72, o.path_), v(73, o.creation_);
  v(74, o.hookSide_), v(75, o.hook_), v(40, o.annotationHeight_), v(41, o.annotationWidth_);
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) {
    v(76, static_cast<Adesk::Int16>(o.vertices_.size()));
  }
  v.list(10, o.vertices_), v.soft(340, o.annotation_), v(210, o.normal_), v(211, o.horizontal_);
}
HOST_FILING(AcDbLeader, AcDbEntity, fields)

host::Path host::pathOf(const AcDbLeader& leader) {
  host::Path path;
  for (int i = 0; i + 1 < leader.numVertices(); ++i) {
    path.add({leader.vertexAt(i), leader.vertexAt(i + 1), 0, leader.normal()});
  }
  return path;
}
HOST_FOLLOWS_PATH(AcDbLeader)

/// Readers of drawing files refuse a leader without a dimension style.
void AcDbLeader::subSetDatabaseDefaults(AcDbDatabase& database) {
  if (style_.isNull()) style_ = database.dimstyle();
}

bool AcDbLeader::appendVertex(const AcGePoint3d& vertex) {
  AcGePoint3d placed = vertex;
  if (vertices_.size() >= 2) {
    const AcGeVector3d first = vertices_[1] - vertices_[0];
    const AcGeVector3d across = first.crossProduct(vertex - vertices_[0]);
    const bool free = numVertices() == 2;
    if (free && across.length() > AcGeContext::gTol.equalVector() * (1 + first.length())) {
      assertWriteEnabled();
      normal_ = across.normal();
      if (normal_.z < 0) normal_ = -normal_;
    }
    placed = vertex - normal_ * (vertex - vertices_[0]).dotProduct(normal_);
  }
  if (!vertices_.empty() && vertices_.back().isEqualTo(placed)) return false;
  assertWriteEnabled();
  vertices_.push_back(placed);
  return true;
}
void AcDbLeader::removeLastVertex() {
  assertWriteEnabled();
  if (!vertices_.empty()) vertices_.pop_back();
}
AcGePoint3d AcDbLeader::vertexAt(int index) const {
  return index >= 0 && index < numVertices() ? vertices_[static_cast<size_t>(index)] : AcGePoint3d();
}
bool AcDbLeader::setVertexAt(int index, const AcGePoint3d& vertex) {
  if (index < 0 || index >= numVertices()) return false;
  assertWriteEnabled();
  vertices_[static_cast<size_t>(index)] = vertex;
  return true;
}
Acad::ErrorStatus AcDbLeader::attachAnnotation(AcDbObjectId annotation) {
  if (annotation.isNull()) return Acad::eNullObjectId;
  assertWriteEnabled();
  annotation_ = annotation, creation_ = 0;
  return Acad::eOk;
}

/// Of the drawing's dimension variables.
double AcDbLeader::arrowSize() const {
  const AcDbDatabase* const drawing = database() ? database() : acdbHostWorkingDatabase();
  if (!drawing) return 0;
  const double size = std::get<double>(host::headerValue(*drawing, *host::findHeaderVariable(L"DIMASZ")));
  const double scale = drawing->dimscale();
  return size * (scale > 0 ? scale : 1);
}

/// The arrow head is three times as long as it is wide.
bool AcDbLeader::subWorldDraw(AcGiWorldDraw* draw) {
  if (vertices_.size() < 2) return true;
  draw->geometry().polyline(static_cast<Adesk::UInt32>(vertices_.size()), vertices_.data(), &normal_);
  const AcGeVector3d first = vertices_[1] - vertices_[0];
  const double size = arrowSize();
  if (!arrow_ || first.length() < 2 * size || size <= 0) return true;
  const AcGeVector3d along = first.normal() * size, side = normal_.crossProduct(along) * (1.0 / 6);
  const AcGePoint3d head[] = {vertices_[0], vertices_[0] + along + side, vertices_[0] + along - side};
  draw->subEntityTraits().setFillType(kAcGiFillAlways);
  draw->geometry().polygon(3, head);
  draw->subEntityTraits().setFillType(kAcGiFillNever);
  return true;
}
Acad::ErrorStatus AcDbLeader::subTransformBy(const AcGeMatrix3d& matrix) {
  assertWriteEnabled();
  for (AcGePoint3d& each : vertices_) each.transformBy(matrix);
  normal_ = (matrix * normal_).normalize(), horizontal_ = (matrix * horizontal_).normalize();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::subGetStretchPoints(AcGePoint3dArray& points) const {
  for (const AcGePoint3d& each : vertices_) points.append(each);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbLeader::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                     const AcGeVector3d& offset) {
  assertWriteEnabled();
  for (int i = 0; i < numVertices(); ++i) {
    if (indices.contains(i)) vertices_[static_cast<size_t>(i)] += offset;
  }
  return Acad::eOk;
}
