#include <array>

#include "brx/db_attributes.h"
#include "brx/lisp_calls.h"
#include "host/database/subentities.h"
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

/// Files may hold cycles; no real drawing nests as deep.
constexpr int deepest = 64;
thread_local int depth = 0;
struct Descent {
  Descent() { ++depth; }
  ~Descent() { --depth; }
  bool tooDeep() const { return depth > deepest; }
  bool isOutermost() const { return depth == 1; }
};

/// Parts that are looked at for the extents of one reference; blocks that hold one another twice at each
/// level would have no end.
constexpr int mostMeasured = 2'000'000;
thread_local int measured = 0;

template <class Visit>
Acad::ErrorStatus forEachEntity(AcDbObjectId recordId, Visit visit) {
  const Descent descent;
  if (descent.tooDeep()) return Acad::eSelfReference;
  AcDbObjectPointer<AcDbBlockTableRecord> record(recordId);
  if (record.openStatus() != Acad::eOk) return record.openStatus();
  for (const AcDbObjectId& id : record->entityIds()) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity.object()) visit(*entity.object());
  }
  return Acad::eOk;
}

}  // namespace

namespace {

/// Places of a grid, of which files may ask for more than could be drawn.
class Grid {
 public:
  explicit Grid(const AcDbBlockReference& reference)
      : turned_(AcGeMatrix3d::planeToWorld(reference.normal()) *
                AcGeMatrix3d::rotation(reference.rotation(), {0, 0, 1})),
        columns_(std::max<int>(reference.columns(), 1)),
        rows_(std::max<int>(reference.rows(), 1)),
        columnSpacing_(reference.columnSpacing()),
        rowSpacing_(reference.rowSpacing()) {}
  int cells() const { return std::min(columns_ * rows_, mostCells); }
  /// From the first place.
  AcGeVector3d shift(int cell) const {
    return turned_ * AcGeVector3d{cell % columns_ * columnSpacing_, cell / columns_ * rowSpacing_, 0};
  }
  std::array<AcGeVector3d, 4> corners() const {
    const int right = columns_ - 1, top = (rows_ - 1) * columns_;
    return {shift(0), shift(right), shift(top), shift(top + right)};
  }

 private:
  static constexpr int mostCells = 1'000'000;
  AcGeMatrix3d turned_;
  int columns_, rows_;
  double columnSpacing_, rowSpacing_;
};

}  // namespace

/// The block in each place of the grid, and the attributes, which stand for the block's definitions of
/// them.
bool AcDbBlockReference::subWorldDraw(AcGiWorldDraw* draw) {
  AcGiGeometry& geometry = draw->geometry();
  const AcGeMatrix3d first = blockTransform();
  const Grid grid(*this);
  const int cells = grid.cells();
  bool stopped = false;
  const auto drawOne = [&](AcDbEntity& entity) {
    const AcDbAttributeDefinition* const definition = AcDbAttributeDefinition::cast(&entity);
    if (!stopped && (!definition || definition->isConstant())) stopped = geometry.draw(&entity);
  };
  for (int cell = 0; cell < cells && !stopped; ++cell) {
    const AcGeMatrix3d shifted = AcGeMatrix3d::translation(grid.shift(cell));
    geometry.pushModelTransform(shifted * first);
    if (forEachEntity(record_, drawOne) != Acad::eOk) stopped = true;
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

namespace {

Acad::ErrorStatus appendParts(AcDbObjectId block, const AcGeMatrix3d& matrix, AcDbVoidPtrArray& parts) {
  Acad::ErrorStatus result = Acad::eOk;
  const Acad::ErrorStatus status = forEachEntity(block, [&](AcDbEntity& entity) {
    const Acad::ErrorStatus moved = host::appendTransformed(entity, matrix, parts);
    if (moved != Acad::eOk) result = moved;
  });
  return status == Acad::eOk ? result : status;
}

}  // namespace

/// Of all places of a grid. A reference to no block has no parts.
Acad::ErrorStatus AcDbBlockReference::subExplode(AcDbVoidPtrArray& entities) const {
  if (record_.isNull()) return Acad::eOk;
  const Grid grid(*this);
  const AcGeMatrix3d first = blockTransform();
  Acad::ErrorStatus result = Acad::eOk;
  for (int cell = 0; cell < grid.cells(); ++cell) {
    const AcGeMatrix3d shifted = AcGeMatrix3d::translation(grid.shift(cell)) * first;
    const Acad::ErrorStatus status = appendParts(record_, shifted, entities);
    if (status != Acad::eOk) result = status;
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
  Pieces pieces;
  const Descent descent;
  if (descent.isOutermost()) measured = 0;
  if (descent.tooDeep() || measured > mostMeasured) return Acad::eSelfReference;
  appendParts(record_, blockTransform(), pieces.list);
  measured += pieces.list.length();
  AcDbExtents first;
  for (void* each : pieces.list) static_cast<AcDbEntity*>(each)->getGeomExtents(first);
  if (first.isEmpty()) return Acad::eInvalidExtents;
  for (const AcGeVector3d& shift : Grid(*this).corners()) {
    extents.addPoint(first.minPoint() + shift), extents.addPoint(first.maxPoint() + shift);
  }
  return Acad::eOk;
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
  const Descent descent;
  if (descent.tooDeep()) return Acad::eOk;
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
