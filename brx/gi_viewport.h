#pragma once

#include "brx/gi.h"

/// Drawing for one view.
class BRX_API AcGiViewportDraw {
 public:
  virtual ~AcGiViewportDraw() = default;
  virtual AcGiGeometry& geometry() const = 0;
  virtual AcGiSubEntityTraits& subEntityTraits() const = 0;
  /// From what is seen towards the one who looks, in the model system of the transforms pushed.
  virtual AcGeVector3d viewDir() const = 0;
};

/// A second base of what looks different from each side, found by `dynamic_cast` where `worldDraw` has
/// answered that the drawing isn't complete without a view.
class BRX_API AcGiViewDependent {
 public:
  virtual ~AcGiViewDependent() = default;
  void viewportDraw(AcGiViewportDraw* draw) { subViewportDraw(draw); }

 protected:
  virtual void subViewportDraw(AcGiViewportDraw* draw) = 0;
};
