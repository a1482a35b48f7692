#pragma once

#include "brx/arrays.h"
#include "brx/rx_object.h"

/// Drawing: what entities are given to draw themselves with.

class AcDbObjectId;
class AcDbDatabase;
class AcGiWorldDraw;

/// Anything that draws itself. `worldDraw` answers whether the drawing is complete without a view.
class BRX_API AcGiDrawable : public AcRxObject {
 public:
  bool worldDraw(AcGiWorldDraw* draw) { return subWorldDraw(draw); }

 protected:
  virtual bool subWorldDraw(AcGiWorldDraw* draw) = 0;
};

/// How a line of text looks. Angles are radians. The font's name is not copied.
class AcGiTextStyle {
 public:
  AcGiTextStyle() = default;
  AcGiTextStyle(const ACHAR* fileName, double textSize, double xScale = 1, double obliquingAngle = 0)
      : fileName_(fileName), textSize_(textSize), xScale_(xScale), oblique_(obliquingAngle) {}
  /// File of a stroke font or name of a type face; "" for the usual one.
  const ACHAR* fileName() const { return fileName_ ? fileName_ : L""; }
  void setFileName(const ACHAR* name) { fileName_ = name; }
  /// Height of the capitals.
  double textSize() const { return textSize_; }
  void setTextSize(double size) { textSize_ = size; }
  double xScale() const { return xScale_; }
  void setXScale(double scale) { xScale_ = scale; }
  /// To the right from upright.
  double obliquingAngle() const { return oblique_; }
  void setObliquingAngle(double angle) { oblique_ = angle; }
  /// Factor on the distance from letter to letter.
  double trackingPercent() const { return tracking_; }
  void setTrackingPercent(double factor) { tracking_ = factor; }
  bool isBold() const { return bold_; }
  bool isItalic() const { return italic_; }
  void setFace(bool bold, bool italic) { bold_ = bold, italic_ = italic; }

 private:
  const ACHAR* fileName_ = nullptr;
  double textSize_ = 1, xScale_ = 1, oblique_ = 0, tracking_ = 1;
  bool bold_ = false, italic_ = false;
};

enum AcGiFillType { kAcGiFillAlways = 1, kAcGiFillNever = 2 };
enum AcGiRegenType {
  eAcGiRegenTypeInvalid = 0,
  kAcGiStandardDisplay = 2,
  kAcGiHideOrShadeCommand = 3,
  kAcGiRenderCommand = 4,
  kAcGiForExplode = 5,
  kAcGiSaveWorldDrawForProxy = 6,
};

/// Traits of what is drawn next. A new entity starts with its own.
class BRX_API AcGiSubEntityTraits {
 public:
  virtual ~AcGiSubEntityTraits() = default;
  /// Colour index: 0 by block, 1 to 255, 256 by layer, 257 the ground of the picture.
  virtual Adesk::UInt16 color() const = 0;
  virtual void setColor(Adesk::UInt16 index) = 0;
  /// Exact colour, 0xRRGGBB.
  virtual void setTrueColor(Adesk::UInt32 rgb) = 0;
  virtual AcDbObjectId layerId() const = 0;
  virtual void setLayer(const AcDbObjectId& layer) = 0;
  virtual void setLineType(const AcDbObjectId& linetype) = 0;
  virtual void setLineTypeScale(double scale) = 0;
  /// Hundredths of a millimetre; -1 by layer, -2 by block, -3 default.
  virtual void setLineWeight(int weight) = 0;
  /// Polygons and circles are outlines until it is set to `kAcGiFillAlways`.
  virtual void setFillType(AcGiFillType type) = 0;
};

/// Points are in the model system of the transforms pushed. Calls answer true when drawing must stop.
class BRX_API AcGiGeometry {
 public:
  virtual ~AcGiGeometry() = default;
  virtual bool polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d* normal = nullptr,
                        Adesk::Int64 marker = -1) = 0;
  /// Filled as the fill type tells.
  virtual bool polygon(Adesk::UInt32 count, const AcGePoint3d* points) = 0;
  virtual bool circle(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal) = 0;
  /// From the direction `start`, `sweep` radians to the left about `normal`.
  virtual bool circularArc(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal,
                           const AcGeVector3d& start, double sweep) = 0;
  /// One line of text from the left end of its base line, which runs along `direction`. `length` -1 for
  /// a text that ends at its NUL. Raw text has no codes of percent signs.
  virtual bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                    const ACHAR* text, Adesk::Int32 length, bool raw, const AcGiTextStyle& style) = 0;
  /// Draws another object with its own traits; the traits of the caller stand again afterwards.
  virtual bool draw(AcGiDrawable* drawable) = 0;
  virtual void pushModelTransform(const AcGeMatrix3d& matrix) = 0;
  virtual void popModelTransform() = 0;
};

class BRX_API AcGiWorldDraw {
 public:
  virtual ~AcGiWorldDraw() = default;
  virtual AcGiGeometry& geometry() const = 0;
  virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
  virtual AcGiRegenType regenType() const { return kAcGiStandardDisplay; }
  virtual bool isDragging() const { return false; }
  /// Largest distance between a curve and the chords drawn for it, drawing units.
  virtual double deviation() const { return 0.01; }
};
