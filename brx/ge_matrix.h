#pragma once

#include "brx/ge_point.h"

/// Affine map of points, `entry[row][column]`, applied to columns: the translation is column 3.
class BRX_API AcGeMatrix3d {
 public:
  static const AcGeMatrix3d kIdentity;
  double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

  double operator()(unsigned row, unsigned column) const { return entry[row][column]; }
  double& operator()(unsigned row, unsigned column) { return entry[row][column]; }
  /// The right matrix works first.
  AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
  AcGeMatrix3d inverse() const;
  double det() const;
  AcGeVector3d column(unsigned index) const { return {entry[0][index], entry[1][index], entry[2][index]}; }
  AcGeVector3d translation() const { return column(3); }
  /// Length by which the X axis grows; for matrices of uniform scale.
  double scale() const { return column(0).length(); }
  bool isUniScaledOrtho(const AcGeTol& tol = AcGeContext::gTol) const;
  AcGeMatrix3d& setToCoordSystem(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y,
                                 const AcGeVector3d& z);
  static AcGeMatrix3d translation(const AcGeVector3d& by);
  static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                               const AcGePoint3d& centre = AcGePoint3d::kOrigin);
  static AcGeMatrix3d scaling(double factor, const AcGePoint3d& centre = AcGePoint3d::kOrigin);
  /// From the plane system of a normal, as entities use it (arbitrary axis rule), to the world.
  static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
  static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal) { return planeToWorld(normal).inverse(); }
};

inline AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
  return AcGePoint3d(p).transformBy(m);
}
inline AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
  return AcGeVector3d(v).transformBy(m);
}

class AcGePlane {
 public:
  AcGePlane() = default;
  AcGePlane(const AcGePoint3d& origin, const AcGeVector3d& normal) : origin_(origin), normal_(normal) {}
  const AcGePoint3d& pointOnPlane() const { return origin_; }
  const AcGeVector3d& normal() const { return normal_; }

 private:
  AcGePoint3d origin_;
  AcGeVector3d normal_{0, 0, 1};
};
