#pragma once

#include "brx/db_curves.h"

/// Text of one line, and text with formatting codes.

namespace AcDb {
enum TextHorzMode { kTextLeft, kTextCenter, kTextRight, kTextAlign, kTextMid, kTextFit };
enum TextVertMode { kTextBase, kTextBottom, kTextVertMid, kTextTop };
}  // namespace AcDb

class BRX_API AcDbText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbText)
  AcDbText() = default;
  AcDbText(const AcGePoint3d& position, const ACHAR* text, AcDbObjectId style = {}, double height = 0,
           double rotation = 0)
      : position_(position), text_(text), style_(style), height_(height), rotation_(rotation) {}
  AcGePoint3d position() const { return position_; }
  AcGePoint3d alignmentPoint() const { return alignment_; }
  const ACHAR* textString() const { return text_.c_str(); }
  AcDbObjectId textStyle() const { return style_; }
  double height() const { return height_; }
  double rotation() const { return rotation_; }
  double widthFactor() const { return widthFactor_; }
  double oblique() const { return oblique_; }
  AcGeVector3d normal() const { return normal_; }
  AcDb::TextHorzMode horizontalMode() const { return static_cast<AcDb::TextHorzMode>(horizontal_); }
  AcDb::TextVertMode verticalMode() const { return static_cast<AcDb::TextVertMode>(vertical_); }
  Acad::ErrorStatus setTextString(const ACHAR* text);
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  Acad::ErrorStatus setHeight(double height);
  Acad::ErrorStatus setRotation(double rotation);
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF

 private:
  friend struct HostAccess;
  AcGePoint3d position_, alignment_;
  std::wstring text_;
  AcDbObjectId style_;
  double height_ = 0, rotation_ = 0, widthFactor_ = 1, oblique_ = 0;
  AcGeVector3d normal_{0, 0, 1};
  Adesk::Int16 horizontal_ = 0, vertical_ = 0;
};

class BRX_API AcDbMText : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbMText)
  enum AttachmentPoint {
    kTopLeft = 1,
    kTopCenter,
    kTopRight,
    kMiddleLeft,
    kMiddleCenter,
    kMiddleRight,
    kBottomLeft,
    kBottomCenter,
    kBottomRight
  };
  const ACHAR* contents() const { return contents_.c_str(); }
  AcGePoint3d location() const { return location_; }
  AcGeVector3d normal() const { return normal_; }
  AcGeVector3d direction() const { return direction_; }
  double width() const { return width_; }
  double textHeight() const { return textHeight_; }
  AcDbObjectId textStyle() const { return style_; }
  AttachmentPoint attachment() const { return static_cast<AttachmentPoint>(attachment_); }
  Acad::ErrorStatus setContents(const ACHAR* contents);
  Acad::ErrorStatus setLocation(const AcGePoint3d& location);
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
  Acad::ErrorStatus setRotation(double rotation);
  Acad::ErrorStatus setWidth(double width);
  Acad::ErrorStatus setTextHeight(double height);
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF

 private:
  friend struct HostAccess;
  std::wstring contents_;
  AcGePoint3d location_;
  AcGeVector3d normal_{0, 0, 1}, direction_{1, 0, 0};
  AcDbObjectId style_;
  double width_ = 0, textHeight_ = 0.2, lineSpacing_ = 1;
  Adesk::Int16 attachment_ = kTopLeft;
};
