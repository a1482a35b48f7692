#include <algorithm>

#include "brx/db_attributes.h"
#include "brx/lisp_calls.h"
#include "host/database/nested_visits.h"
#include "host/database/subentities.h"
#include "host/entities/block_extents.h"
#include "host/entities/transformed_copy.h"

ACRX_DEFINE_MEMBERS(AcDbBlockReference)

template <class Visitor, class Self>
void AcDbBlockReference::fields(Visitor& v, Self& o) {
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) {
    if (!o.attributes_.ids.empty()) v(66, Adesk::Int16{1});
  }
  v.template named<AcDbBlockTable>(2, o.record_), v.plane(10, o.position_, o.normal_), v(41, o.scale_.sx);
  v(42, o.scale_.sy), v(43, o.scale_.sz), v(50, o.rotation_), v(70, o.columns_), v(71, o.rows_);
  v(44, o.columnSpacing_), v(45, o.rowSpacing_), v(210, o.normal_);
  host::visitSubentities(v, o.attributes_);
}
HOST_FILING_MARKED(AcDbBlockReference, AcDbEntity, fields, L"AcDbBlockReference",
                   isGrid() ? L"AcDbMInsertBlock" : L"AcDbBlockReference")

Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbAttribute* attribute) {
  return host::appendSubentity(*this, attribute);
}
Acad::ErrorStatus AcDbBlockReference::appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute) {
  const Acad::ErrorStatus status = host::appendSubentity(*this, attribute);
  if (status == Acad::eOk) id = attribute->objectId();
  return status;
}
Acad::ErrorStatus AcDbBlockReference::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), normal_ = normal.normal(), Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::setPosition(const AcGePoint3d& position) {
  return assertWriteEnabled(), position_ = position, Acad::eOk;
}
Acad::ErrorStatus AcDbBlockReference::setBlockTableRecord(AcDbObjectId record) {
  return assertWriteEnabled(), record_ = record, Acad::eOk;
}
Acad::ErrorStatus AcDbBlockReference::setScaleFactors(const AcGeScale3d& scale) {
  return assertWriteEnabled(), scale_ = scale, Acad::eOk;
}
Acad::ErrorStatus AcDbBlockReference::setRotation(double rotation) {
  return assertWriteEnabled(), rotation_ = rotation, Acad::eOk;
}

AcGeMatrix3d AcDbBlockReference::blockTransform() const {
  AcDbObjectPointer<AcDbBlockTableRecord> record(record_);
  const AcGePoint3d origin = record.object() ? record->origin() : AcGePoint3d{};
  AcGeMatrix3d scaled;
  scaled(0, 0) = scale_.sx, scaled(1, 1) = scale_.sy, scaled(2, 2) = scale_.sz;
  return AcGeMatrix3d::translation(position_.asVector()) * AcGeMatrix3d::planeToWorld(normal_) *
         AcGeMatrix3d::rotation(rotation_, {0, 0, 1}) * scaled *
         AcGeMatrix3d::translation(-origin.asVector());
}

namespace {

/// Copies cost memory besides time.
enum Cost : size_t { drawn = 1, copied = 5 };

template <class Visit>
Acad::ErrorStatus forEachEntity(AcDbObjectId recordId, Cost cost, Visit visit) {
  const host::NestedDescent descent;
  if (!descent.isAllowed()) return Acad::eSelfReference;
  AcDbObjectPointer<AcDbBlockTableRecord> record(recordId);
  if (record.openStatus() != Acad::eOk) return record.openStatus();
  for (const AcDbObjectId& id : record->entityIds()) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity.object()) continue;
    if (!host::countNestedVisit(cost)) return Acad::eSelfReference;
    visit(*entity.object());
  }
  return Acad::eOk;
}

}  // namespace

/// Places of a grid, of which files may ask for more than could be drawn.
static int cellsOf(const AcDbBlockReference& reference) {
  constexpr int mostCells = 1'000'000;
  return std::min(std::max<int>(reference.columns(), 1) * std::max<int>(reference.rows(), 1), mostCells);
}
static AcGeMatrix3d shiftOf(const AcDbBlockReference& reference, int cell) {
  const int columns = std::max<int>(reference.columns(), 1);
  return host::cellShift(reference, cell % columns, cell / columns);
}

/// The block in each place of the grid, and the attributes, which stand for the block's definitions of
/// them.
bool AcDbBlockReference::subWorldDraw(AcGiWorldDraw* draw) {
  AcGiGeometry& geometry = draw->geometry();
  const AcGeMatrix3d first = blockTransform();
  const int cells = cellsOf(*this);
  bool stopped = false;
  const auto drawOne = [&](AcDbEntity& entity) {
    const AcDbAttributeDefinition* const definition = AcDbAttributeDefinition::cast(&entity);
    if (!stopped && (!definition || definition->isConstant())) stopped = geometry.draw(&entity);
  };
  for (int cell = 0; cell < cells && !stopped; ++cell) {
    const AcGeMatrix3d shifted = shiftOf(*this, cell);
    geometry.pushModelTransform(shifted * first);
    if (forEachEntity(record_, drawn, drawOne) != Acad::eOk) stopped = true;
    geometry.popModelTransform();
    if (attributes_.ids.empty()) continue;
    if (cell) geometry.pushModelTransform(shifted);
    host::forEachSubentity<AcDbAttribute>(attributes_, [&](AcDbAttribute& each) { geometry.draw(&each); });
    if (cell) geometry.popModelTransform();
  }
  return true;
}

/// Rotation and scales are read off the transformed axes; a shear can't be held.
Acad::ErrorStatus AcDbBlockReference::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGeVector3d x = matrix * (AcGeMatrix3d::planeToWorld(normal_) *
                                   AcGeVector3d{std::cos(rotation_), std::sin(rotation_), 0});
  normal_ = (matrix * normal_).normalize();
  const AcGeVector3d local = AcGeMatrix3d::worldToPlane(normal_) * x;
  rotation_ = local.convert2d().angle();
  position_.transformBy(matrix);
  const double factor = matrix.scale();
  const double upFactor = matrix.det() < 0 ? -factor : factor;
  scale_ = {scale_.sx * factor, scale_.sy * upFactor, scale_.sz * factor};
  columnSpacing_ *= factor, rowSpacing_ *= upFactor;
  return host::changeSubentities<AcDbAttribute>(attributes_,
                                                [&](AcDbAttribute& each, int) { each.transformBy(matrix); });
}

/// Of all places of a grid. A reference to no block has no parts. Parts that can't be transformed are left
/// out, and the status tells of them.
Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& entities) const {
  if (record_.isNull()) return Acad::eOk;
  const host::NestedOperation operation;
  const AcGeMatrix3d first = blockTransform();
  const int cells = cellsOf(*this);
  Acad::ErrorStatus result = Acad::eOk;
  for (int cell = 0; cell < cells; ++cell) {
    const AcGeMatrix3d placed = shiftOf(*this, cell) * first;
    const Acad::ErrorStatus status = forEachEntity(record_, copied, [&](AcDbEntity& entity) {
      const Acad::ErrorStatus moved = host::appendTransformed(entity, placed, entities);
      if (moved != Acad::eOk) result = moved;
    });
    if (status != Acad::eOk) return status;
  }
  return result;
}

namespace {

/// The exploded pieces, deleted at the end.
struct Pieces {
  AcDbVoidPtrArray list;
  ~Pieces() {
    for (void* each : list) delete static_cast<AcDbEntity*>(each);
  }
};

}  // namespace

Acad::ErrorStatus AcDbBlockReference::subGetGeomExtents(AcDbExtents& extents) const {
  const AcDbExtents own = host::extentsOfReference(*this);
  if (own.isEmpty()) return Acad::eInvalidExtents;
  return extents.addExt(own), Acad::eOk;
}
Acad::ErrorStatus AcDbBlockReference::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(position_), Acad::eOk;
}
Acad::ErrorStatus AcDbBlockReference::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker,
                                                        const AcGePoint3d& pick, const AcGePoint3d& last,
                                                        const AcGeMatrix3d& view, AcGePoint3dArray& points,
                                                        AcDbIntArray& geometryIds) const {
  if (mode == AcDb::kOsModeIns) return points.append(position_), Acad::eOk;
  Pieces pieces;
  const host::NestedDescent descent;
  if (!descent.isAllowed()) return Acad::eOk;
  subExplode(pieces.list);
  for (void* each : pieces.list) {
    static_cast<AcDbEntity*>(each)->getOsnapPoints(mode, marker, pick, last, view, points, geometryIds);
  }
  return Acad::eOk;
}
void AcDbBlockReference::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"                   Block Name: \"%s\"\n", host::nameOfRecord(record_).c_str());
  acutPrintf(L"                   at point = %f, %f, %f\n", position_.x, position_.y, position_.z);
}
