#pragma once

#include "brx/adesk.h"

/// Tolerances of geometry: points nearer than `equalPoint` and unit vectors that differ by less than
/// `equalVector` count as equal.
class AcGeTol {
 public:
  double equalPoint() const { return point_; }
  double equalVector() const { return vector_; }
  AcGeTol& setEqualPoint(double value) { return point_ = value, *this; }
  AcGeTol& setEqualVector(double value) { return vector_ = value, *this; }

 private:
  double point_ = 1e-10, vector_ = 1e-10;
};

/// Above the rounding of coordinates of a drawing, below anything that is drawn.
struct BRX_API AcGeContext {
  static AcGeTol gTol;
};
