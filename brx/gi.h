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
  /// Colour index: 0 by block, 1 to 255, 256 by layer.
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
  /// One line of text without codes from the left end of its base line. `direction` is the base
  /// line's, `oblique` radians to the right from upright.
  virtual bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                    double height, double widthFactor, double oblique, const ACHAR* text,
                    const AcDbObjectId& style) = 0;
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
