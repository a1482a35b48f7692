#include "brx/db_viewport.h"

#include "host/database/fields.h"

ACRX_DEFINE_MEMBERS(AcDbViewport)

template <class Visitor, class Self>
void AcDbViewport::fields(Visitor& v, Self& o) {
  v(10, o.centre_), v(40, o.width_), v(41, o.height_), v(68, o.status_), v(69, o.number_);
  v(12, o.viewCentre_), v(16, o.viewDirection_), v(17, o.target_), v(42, o.lens_), v(45, o.viewHeight_);
  v(51, o.twist_), v.list(331, o.frozen_), v(90, o.viewFlags_);
}
HOST_FILING(AcDbViewport, AcDbEntity, fields)

Acad::ErrorStatus AcDbViewport::setCenterPoint(const AcGePoint3d& centre) {
  return assertWriteEnabled(), centre_ = centre, Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::setWidth(double width) {
  if (!(width > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), width_ = width, Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::setHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), height_ = height, Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::setViewCenter(const AcGePoint2d& centre) {
  return assertWriteEnabled(), viewCentre_ = {centre.x, centre.y, 0}, Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::setViewHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), viewHeight_ = height, Acad::eOk;
}

Acad::ErrorStatus AcDbViewport::checkLayers(const AcDbObjectIdArray& layers) const {
  for (const AcDbObjectId& id : layers) {
    if (!AcDbLayerTableRecord::cast(host::objectOf(id)) || id.isErased()) return Acad::eInvalidInput;
    if (database() && id.database() != database()) return Acad::eWrongDatabase;
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::freezeLayersInViewport(const AcDbObjectIdArray& layers) {
  const Acad::ErrorStatus status = checkLayers(layers);
  if (status != Acad::eOk) return status;
  assertWriteEnabled();
  for (const AcDbObjectId& id : layers) {
    if (!isLayerFrozenInViewport(id)) frozen_.push_back(id);
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::thawLayersInViewport(const AcDbObjectIdArray& layers) {
  const Acad::ErrorStatus status = checkLayers(layers);
  if (status != Acad::eOk) return status;
  assertWriteEnabled();
  std::erase_if(frozen_, [&](const AcDbObjectId& id) { return layers.contains(id); });
  return Acad::eOk;
}
bool AcDbViewport::isLayerFrozenInViewport(const AcDbObjectId& layer) const {
  return std::find(frozen_.begin(), frozen_.end(), layer) != frozen_.end();
}
Acad::ErrorStatus AcDbViewport::getFrozenLayerList(AcDbObjectIdArray& layers) const {
  for (const AcDbObjectId& each : frozen_) layers.append(each);
  return Acad::eOk;
}

bool AcDbViewport::subWorldDraw(AcGiWorldDraw* draw) {
  AcGePoint3dArray corners;
  subGetStretchPoints(corners);
  corners.append(AcGePoint3d(corners[0]));
  draw->geometry().polyline(5, &corners[0]);
  return true;
}
Acad::ErrorStatus AcDbViewport::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  centre_.transformBy(matrix);
  width_ *= matrix.scale(), height_ *= matrix.scale();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::subGetGeomExtents(AcDbExtents& extents) const {
  AcGePoint3dArray corners;
  subGetStretchPoints(corners);
  for (const AcGePoint3d& each : corners) extents.addPoint(each);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbViewport::subGetStretchPoints(AcGePoint3dArray& points) const {
  for (const auto& [x, y] : {std::pair(-0.5, -0.5), {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}}) {
    points.append(centre_ + AcGeVector3d{x * width_, y * height_, 0});
  }
  return Acad::eOk;
}
