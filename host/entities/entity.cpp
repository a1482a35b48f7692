#include "brx/lisp_calls.h"
#include "host/database/fields.h"
#include "host/rx/registry.h"

ACRX_DEFINE_MEMBERS(AcDbEntity)
ACRX_DEFINE_MEMBERS(AcDbCurve)

std::wstring AcDbEntity::layer() const { return host::nameOfRecord(layer_); }

Acad::ErrorStatus AcDbEntity::setLayer(AcDbObjectId layer, bool, bool) {
  if (layer.isNull()) return Acad::eNullObjectId;
  if (layer.isErased()) return Acad::eWasErased;
  if (!AcDbLayerTableRecord::cast(host::objectOf(layer))) return Acad::eNotThatKindOfClass;
  if (database() && database() != layer.database()) return Acad::eWrongDatabase;
  assertWriteEnabled();
  layer_ = layer;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::setLayer(const ACHAR* name, bool doSubents, bool allowHiddenLayer) {
  AcDbDatabase* const drawing = database() ? database() : acdbHostWorkingDatabase();
  if (!drawing) return Acad::eNoDatabase;
  AcDbObjectId id;
  {
    AcDbObjectPointer<AcDbLayerTable> table(drawing->tableId(AcDbLayerTable::desc()));
    const Acad::ErrorStatus status = table.object() ? table->getAt(name, id) : table.openStatus();
    if (status != Acad::eOk) return status;
  }
  return setLayer(id, doSubents, allowHiddenLayer);
}
Acad::ErrorStatus AcDbEntity::setLinetype(AcDbObjectId linetype, bool) {
  assertWriteEnabled();
  linetype_ = linetype;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::setLinetypeScale(double scale) {
  if (!(scale > 0)) return Acad::eInvalidInput;
  assertWriteEnabled();
  linetypeScale_ = scale;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::setColor(const AcCmColor& color, bool) {
  assertWriteEnabled();
  color_ = color;
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::setColorIndex(Adesk::UInt16 index, bool) {
  assertWriteEnabled();
  return color_.setColorIndex(index);
}
Acad::ErrorStatus AcDbEntity::setLineWeight(int weight, bool) {
  if ((weight < -3 || weight > -1) && !host::isLineWeight(weight)) return Acad::eInvalidInput;
  assertWriteEnabled();
  lineWeight_ = static_cast<Adesk::Int16>(weight);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::setVisibility(AcDb::Visibility visibility, bool) {
  assertWriteEnabled();
  invisible_ = visibility == AcDb::kInvisible;
  return Acad::eOk;
}
void AcDbEntity::setDatabaseDefaults(AcDbDatabase* database) {
  if (!database) database = acdbHostWorkingDatabase();
  if (!database) return;
  assertWriteEnabled();
  layer_ = database->clayer();
  linetype_ = database->celtype();
  linetypeScale_ = database->celtscale();
  color_ = database->cecolor();
  subSetDatabaseDefaults(*database);
}
void AcDbEntity::setPropertiesFrom(const AcDbEntity* other) {
  assertWriteEnabled();
  layer_ = other->layer_, linetype_ = other->linetype_, linetypeScale_ = other->linetypeScale_;
  color_ = other->color_, lineWeight_ = other->lineWeight_, invisible_ = other->invisible_;
}

Acad::ErrorStatus AcDbEntity::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbObject::dwgOutFields(filer);
  filer->writeHardPointerId(layer_);
  filer->writeHardPointerId(linetype_);
  filer->writeDouble(linetypeScale_);
  host::putColour(*filer, color_);
  filer->writeInt16(lineWeight_);
  return filer->writeBool(invisible_);
}

AcCmColor host::exactColour(Adesk::Int32 rgb) {
  AcCmColor made;
  made.setRGB(static_cast<Adesk::UInt8>(rgb >> 16), static_cast<Adesk::UInt8>(rgb >> 8),
              static_cast<Adesk::UInt8>(rgb));
  return made;
}

namespace {

/// What stands before a colour in filed fields. Snapshots of the first format have no index beside an
/// exact colour.
enum : Adesk::UInt8 { anIndex = 0, exactAlone = 1, exactWithIndex = 2 };

}  // namespace

void host::putColour(AcDbDwgFiler& filer, const AcCmColor& colour) {
  filer.writeUInt8(colour.isByColor() ? exactWithIndex : anIndex);
  filer.writeInt32(static_cast<Adesk::Int32>(colour.isByColor() ? colour.rgb() : colour.colorIndex()));
  if (colour.isByColor()) filer.writeInt16(static_cast<Adesk::Int16>(colour.colorIndex()));
}
AcCmColor host::getColour(AcDbDwgFiler& filer) {
  Adesk::UInt8 kind = anIndex;
  Adesk::Int32 value = 256;
  Adesk::Int16 index = 0;
  filer.readUInt8(&kind);
  filer.readInt32(&value);
  AcCmColor colour;
  if (kind == anIndex) return colour.setColorIndex(static_cast<Adesk::UInt16>(value)), colour;
  colour = exactColour(value);
  if (kind == exactWithIndex && filer.readInt16(&index) == Acad::eOk) {
    colour.setIndexBeside(static_cast<Adesk::UInt16>(index));
  }
  return colour;
}

Acad::ErrorStatus AcDbEntity::dwgInFields(AcDbDwgFiler* filer) {
  AcDbObject::dwgInFields(filer);
  host::DwgReader reader{*filer};
  reader.named<AcDbLayerTable>(8, layer_);
  reader.named<AcDbLinetypeTable>(6, linetype_);
  filer->readDouble(&linetypeScale_);
  color_ = host::getColour(*filer);
  filer->readInt16(&lineWeight_);
  return filer->readBool(&invisible_);
}

Acad::ErrorStatus AcDbEntity::dxfOutFields(AcDbDxfFiler* filer) const {
  filer->writeSubclass(L"AcDbEntity");
  filer->writeString(8, layer_.isNull() ? L"0" : layer().c_str());
  if (!linetype_.isNull() && !(database() && linetype_ == database()->byLayerLinetype())) {
    filer->writeString(6, host::nameOfRecord(linetype_).c_str());
  }
  host::DxfWriter{*filer}.colour(62, 420, color_);
  if (lineWeight_ != -1) filer->writeInt16(370, lineWeight_);
  if (linetypeScale_ != 1) filer->writeDouble(48, linetypeScale_);
  if (invisible_) filer->writeInt16(60, 1);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbEntity::dxfInFields(AcDbDxfFiler* filer) {
  if (!filer->atSubclassData(L"AcDbEntity")) return Acad::eBadDxfSequence;
  resbuf item{};
  host::DxfReader reader{*filer, item};
  while (filer->readItem(&item) == Acad::eOk) {
    reader.named<AcDbLayerTable>(8, layer_);
    reader.named<AcDbLinetypeTable>(6, linetype_);
    if (reader.status != Acad::eOk) return reader.status;
    reader(48, linetypeScale_), reader(370, lineWeight_), reader(60, invisible_);
    reader.colour(62, 420, color_);
  }
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbEntity::subTransformBy(const AcGeMatrix3d&) { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::subExplode(AcDbVoidPtrArray&) const { return Acad::eNotApplicable; }
void AcDbEntity::subList() const {
  const ACHAR* const name = isA()->dxfName() ? isA()->dxfName() : isA()->name();
  acutPrintf(L"                  %s      Layer: \"%s\"\n", name, layer().c_str());
  if (database()) acutPrintf(L"                   Handle = %llx\n", handle());
}
Acad::ErrorStatus AcDbEntity::subGetGeomExtents(AcDbExtents&) const { return Acad::eInvalidExtents; }
Acad::ErrorStatus AcDbEntity::subGetOsnapPoints(AcDb::OsnapMode, Adesk::Int64, const AcGePoint3d&,
                                                const AcGePoint3d&, const AcGeMatrix3d&, AcGePoint3dArray&,
                                                AcDbIntArray&) const {
  return Acad::eOk;
}
Acad::ErrorStatus AcDbEntity::subGetGripPoints(AcGePoint3dArray& points, AcDbIntArray&, AcDbIntArray&) const {
  return subGetStretchPoints(points);
}
Acad::ErrorStatus AcDbEntity::subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
  return subMoveStretchPointsAt(indices, offset);
}
Acad::ErrorStatus AcDbEntity::subGetStretchPoints(AcGePoint3dArray&) const { return Acad::eNotApplicable; }
Acad::ErrorStatus AcDbEntity::subMoveStretchPointsAt(const AcDbIntArray& indices,
                                                     const AcGeVector3d& offset) {
  return indices.isEmpty() ? Acad::eOk : subTransformBy(AcGeMatrix3d::translation(offset));
}

void* AcDbCurve::createOdObjectImp(const ACHAR* className) { return host::findClass(className); }
Acad::ErrorStatus AcDbCurve::getStartParam(double& param) const { return param = 0, Acad::eOk; }
Acad::ErrorStatus AcDbCurve::getEndParam(double&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d& point) const {
  double param = 0;
  const Acad::ErrorStatus status = getStartParam(param);
  return status == Acad::eOk ? getPointAtParam(param, point) : status;
}
Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d& point) const {
  double param = 0;
  const Acad::ErrorStatus status = getEndParam(param);
  return status == Acad::eOk ? getPointAtParam(param, point) : status;
}
Acad::ErrorStatus AcDbCurve::getPointAtParam(double, AcGePoint3d&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getParamAtPoint(const AcGePoint3d&, double&) const {
  return Acad::eNotImplementedYet;
}
Acad::ErrorStatus AcDbCurve::getDistAtParam(double, double&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getParamAtDist(double, double&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getDistAtPoint(const AcGePoint3d& point, double& distance) const {
  double param = 0;
  const Acad::ErrorStatus status = getParamAtPoint(point, param);
  return status == Acad::eOk ? getDistAtParam(param, distance) : status;
}
Acad::ErrorStatus AcDbCurve::getPointAtDist(double distance, AcGePoint3d& point) const {
  double param = 0;
  const Acad::ErrorStatus status = getParamAtDist(distance, param);
  return status == Acad::eOk ? getPointAtParam(param, point) : status;
}
Acad::ErrorStatus AcDbCurve::getFirstDeriv(double, AcGeVector3d&) const { return Acad::eNotImplementedYet; }
Acad::ErrorStatus AcDbCurve::getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const {
  double param = 0;
  const Acad::ErrorStatus status = getParamAtPoint(point, param);
  return status == Acad::eOk ? getFirstDeriv(param, derivative) : status;
}
Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d&, AcGePoint3d&, bool) const {
  return Acad::eNotImplementedYet;
}
/// For directions along the plane's normal the view changes nothing but the height of the given point.
Acad::ErrorStatus AcDbCurve::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                               AcGePoint3d& closest, bool extend) const {
  AcGePoint3d start;
  const Acad::ErrorStatus status = getStartPoint(start);
  if (status != Acad::eOk) return status;
  const AcGeVector3d along = direction.normal();
  return getClosestPointTo(given + along * (start - given).dotProduct(along), closest, extend);
}
Acad::ErrorStatus AcDbCurve::getArea(double&) const { return Acad::eNotApplicable; }
