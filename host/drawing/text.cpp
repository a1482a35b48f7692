#include "host/drawing/fields.h"

ACRX_DEFINE_MEMBERS(AcDbText)
ACRX_DEFINE_MEMBERS(AcDbMText)
static constexpr auto textFields = [](auto& v, auto& o) { HostAccess::text(v, o); };
static constexpr auto mtextFields = [](auto& v, auto& o) { HostAccess::mtext(v, o); };
HOST_FILING(AcDbText, AcDbEntity, textFields)
HOST_FILING(AcDbMText, AcDbEntity, mtextFields)

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
  return assertWriteEnabled(), text_ = text ? text : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
  return assertWriteEnabled(), position_ = position, Acad::eOk;
}
Acad::ErrorStatus AcDbText::setHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), height_ = height, Acad::eOk;
}
Acad::ErrorStatus AcDbText::setRotation(double rotation) {
  return assertWriteEnabled(), rotation_ = rotation, Acad::eOk;
}
bool AcDbText::subWorldDraw(AcGiWorldDraw* draw) {
  const AcGeVector3d along =
      AcGeMatrix3d::planeToWorld(normal_) * AcGeVector3d{std::cos(rotation_), std::sin(rotation_), 0};
  draw->geometry().text(position_, normal_, along, height_, widthFactor_, oblique_, text_.c_str(), style_);
  return true;
}
Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const AcGeVector3d along = matrix * (AcGeMatrix3d::planeToWorld(normal_) *
                                       AcGeVector3d{std::cos(rotation_), std::sin(rotation_), 0});
  normal_ = (matrix * normal_).normalize();
  rotation_ = (AcGeMatrix3d::worldToPlane(normal_) * along).convert2d().angle();
  position_.transformBy(matrix), alignment_.transformBy(matrix);
  height_ *= matrix.scale();
  return Acad::eOk;
}
/// Without a font's measures the base point alone is known.
Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
  return extents.addPoint(position_);
}
Acad::ErrorStatus AcDbText::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(position_), Acad::eOk;
}

Acad::ErrorStatus AcDbMText::setContents(const ACHAR* contents) {
  return assertWriteEnabled(), contents_ = contents ? contents : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& location) {
  return assertWriteEnabled(), location_ = location, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), normal_ = normal.normal(), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
  if (direction.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), direction_ = direction.normal(), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setRotation(double rotation) {
  return setDirection(AcGeMatrix3d::planeToWorld(normal_) *
                      AcGeVector3d{std::cos(rotation), std::sin(rotation), 0});
}
Acad::ErrorStatus AcDbMText::setWidth(double width) {
  if (!(width >= 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), width_ = width, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), textHeight_ = height, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
  return assertWriteEnabled(), style_ = style, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
  if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eInvalidInput;
  return assertWriteEnabled(), attachment_ = static_cast<Adesk::Int16>(attachment), Acad::eOk;
}
/// Drawn as it stands, codes and all, in one line.
bool AcDbMText::subWorldDraw(AcGiWorldDraw* draw) {
  draw->geometry().text(location_, normal_, direction_, textHeight_, 1, 0, contents_.c_str(), style_);
  return true;
}
Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  location_.transformBy(matrix);
  direction_ = (matrix * direction_).normalize(), normal_ = (matrix * normal_).normalize();
  textHeight_ *= matrix.scale(), width_ *= matrix.scale();
  return Acad::eOk;
}
Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
  return extents.addPoint(location_);
}
Acad::ErrorStatus AcDbMText::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(location_), Acad::eOk;
}
