#pragma once

#include "brx/db_curves.h"

/// Text of one line, and text with formatting codes. Lengths are drawing units, angles radians.

namespace AcDb {
enum TextHorzMode { kTextLeft, kTextCenter, kTextRight, kTextAlign, kTextMid, kTextFit };
enum TextVertMode { kTextBase, kTextBottom, kTextVertMid, kTextTop };
}  // namespace AcDb

/// A text that is not left on its base line stands at its alignment point; its position, the left end
/// of the base line, follows from the font.
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
  bool isMirroredInX() const { return (generation_ & 2) != 0; }
  bool isMirroredInY() const { return (generation_ & 4) != 0; }
  AcDb::TextHorzMode horizontalMode() const { return static_cast<AcDb::TextHorzMode>(horizontal_); }
  AcDb::TextVertMode verticalMode() const { return static_cast<AcDb::TextVertMode>(vertical_); }
  bool isDefaultAlignment() const { return horizontal_ == AcDb::kTextLeft && vertical_ == AcDb::kTextBase; }
  Acad::ErrorStatus setTextString(const ACHAR* text);
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  Acad::ErrorStatus setAlignmentPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  Acad::ErrorStatus setHeight(double height);
  Acad::ErrorStatus setRotation(double rotation);
  Acad::ErrorStatus setWidthFactor(double factor);
  /// At most 85 degrees to either side.
  Acad::ErrorStatus setOblique(double angle);
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  Acad::ErrorStatus mirrorInX(bool mirrored);
  Acad::ErrorStatus mirrorInY(bool mirrored);
  Acad::ErrorStatus setHorizontalMode(AcDb::TextHorzMode mode);
  Acad::ErrorStatus setVerticalMode(AcDb::TextVertMode mode);
  /// Sets the position of an aligned text by the font's measures, and the height or width factor of one
  /// that fills the way between two points. Setters do it themselves.
  Acad::ErrorStatus adjustAlignment(const AcDbDatabase* database = nullptr);
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  void subList() const override;

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d position_, alignment_;
  std::wstring text_;
  AcDbObjectId style_;
  double height_ = 0, rotation_ = 0, widthFactor_ = 1, oblique_ = 0;
  AcGeVector3d normal_{0, 0, 1};
  Adesk::Int16 horizontal_ = 0, generation_ = 0;

 protected:
  /// Files have it among the fields of each class derived from this one.
  Adesk::Int16 vertical_ = 0;
};

/// Codes in the contents break paragraphs and change the format; lines are broken at the width.
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
  /// Of the direction in the plane of the normal.
  double rotation() const;
  /// 0 when lines are broken by codes alone.
  double width() const { return width_; }
  double textHeight() const { return textHeight_; }
  AcDbObjectId textStyle() const { return style_; }
  AttachmentPoint attachment() const { return static_cast<AttachmentPoint>(attachment_); }
  double lineSpacingFactor() const { return lineSpacing_; }
  /// Of the widest line.
  double actualWidth() const;
  /// From the top of the capitals in the first line to the last base line; 0 without contents.
  double actualHeight() const;
  /// Of what is drawn above the first base line, and below the last.
  double ascent() const;
  double descent() const;
  bool backgroundFillOn() const { return (background_ & 1) != 0; }
  bool useBackgroundColorOn() const { return (background_ & 2) != 0; }
  AcCmColor getBackgroundFillColor() const { return backgroundColor_; }
  /// The fill reaches this less 1 in text heights beyond the text.
  double getBackgroundScaleFactor() const { return backgroundScale_; }
  Acad::ErrorStatus setContents(const ACHAR* contents);
  Acad::ErrorStatus setLocation(const AcGePoint3d& location);
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  Acad::ErrorStatus setDirection(const AcGeVector3d& direction);
  Acad::ErrorStatus setRotation(double rotation);
  Acad::ErrorStatus setWidth(double width);
  Acad::ErrorStatus setTextHeight(double height);
  Acad::ErrorStatus setTextStyle(AcDbObjectId style);
  Acad::ErrorStatus setAttachment(AttachmentPoint attachment);
  /// From 0.25 to 4.
  Acad::ErrorStatus setLineSpacingFactor(double factor);
  Acad::ErrorStatus setBackgroundFill(bool enable);
  Acad::ErrorStatus setBackgroundFillColor(const AcCmColor& color);
  /// From 1 to 5.
  Acad::ErrorStatus setBackgroundScaleFactor(double factor);
  /// Fills with the ground of the picture instead of the fill colour.
  Acad::ErrorStatus setUseBackgroundColor(bool enable);
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  void subList() const override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  BRX_DECLARES_FIELDS
  void settle();
  std::wstring contents_;
  AcGePoint3d location_;
  AcGeVector3d normal_{0, 0, 1}, direction_{1, 0, 0};
  AcDbObjectId style_;
  double width_ = 0, textHeight_ = 0.2, lineSpacing_ = 1, backgroundScale_ = 1.5;
  AcCmColor backgroundColor_;
  Adesk::Int16 attachment_ = kTopLeft, flow_ = 1, spacingStyle_ = 1, background_ = 0;
};
