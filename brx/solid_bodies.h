#pragma once

#include <vector>

#include "brx/arrays.h"

/// What an entity made of solid bodies tells those who measure it or hand it on.

enum class BrxSolidKind : Adesk::Int16 {
  other = 0,
  segment = 1,
  transition = 2,
  elbow = 3,
  wye = 4,
  takeoff = 5,
  hanger = 6,
};
constexpr Adesk::Int16 brxSolidKinds = 7;

/// The boundary of a body: flat convex faces whose corners run to the left as seen from outside.
/// Lengths in drawing units.
struct BrxSolidBody {
  std::vector<AcGePoint3d> points;
  std::vector<Adesk::UInt32> corners;
  /// Where in `corners` each face ends.
  std::vector<Adesk::UInt32> faceEnds;
  double volume = 0, area = 0;
  AcGePoint3d centre;
  /// Every edge has a face at both sides.
  bool closed = false;
};

/// A second base of such entities, found by `dynamic_cast`.
class BRX_API BrxSolidBodies {
 public:
  virtual ~BrxSolidBodies() = default;
  virtual BrxSolidKind kind() const = 0;
  virtual int bodyCount() const = 0;
  virtual BrxSolidBody body(int index) const = 0;
};
