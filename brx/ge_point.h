#pragma once

#include <cmath>

#include "brx/ge_tol.h"

/// Points and vectors. Angles are radians, counted to the left from +X, from 0 below a full turn.

class AcGeMatrix3d;

struct AcGeVector2d {
  double x = 0, y = 0;
  double angle() const {
    const double found = std::atan2(y, x);
    return found < 0 ? found + 6.283185307179586477 : found;
  }
  double length() const { return std::hypot(x, y); }
  double dotProduct(const AcGeVector2d& o) const { return x * o.x + y * o.y; }
  AcGeVector2d operator+(const AcGeVector2d& o) const { return {x + o.x, y + o.y}; }
  AcGeVector2d operator-(const AcGeVector2d& o) const { return {x - o.x, y - o.y}; }
  AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
};

struct AcGePoint2d {
  double x = 0, y = 0;
  AcGeVector2d operator-(const AcGePoint2d& o) const { return {x - o.x, y - o.y}; }
  AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  double distanceTo(const AcGePoint2d& o) const { return (*this - o).length(); }
  bool isEqualTo(const AcGePoint2d& o, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(o) <= tol.equalPoint();
  }
  bool operator==(const AcGePoint2d& o) const { return isEqualTo(o); }
};

struct BRX_API AcGeVector3d {
  double x = 0, y = 0, z = 0;
  static const AcGeVector3d kXAxis, kYAxis, kZAxis, kIdentity;

  double length() const { return std::sqrt(lengthSqrd()); }
  double lengthSqrd() const { return x * x + y * y + z * z; }
  bool isZeroLength(const AcGeTol& tol = AcGeContext::gTol) const { return length() <= tol.equalVector(); }
  /// A vector that counts as zero stays as it is.
  AcGeVector3d& normalize(const AcGeTol& tol = AcGeContext::gTol) {
    if (!isZeroLength(tol)) *this = *this * (1 / length());
    return *this;
  }
  AcGeVector3d normal(const AcGeTol& tol = AcGeContext::gTol) const {
    return AcGeVector3d(*this).normalize(tol);
  }
  double dotProduct(const AcGeVector3d& o) const { return x * o.x + y * o.y + z * o.z; }
  AcGeVector3d crossProduct(const AcGeVector3d& o) const {
    return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
  }
  AcGeVector3d perpVector() const;
  /// From 0 to pi.
  double angleTo(const AcGeVector3d& o) const { return std::atan2(crossProduct(o).length(), dotProduct(o)); }
  /// From 0 below a full turn, to the left about `axis`.
  double angleTo(const AcGeVector3d& o, const AcGeVector3d& axis) const;
  AcGeVector3d& rotateBy(double angle, const AcGeVector3d& axis);
  AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
  AcGeVector3d operator+(const AcGeVector3d& o) const { return {x + o.x, y + o.y, z + o.z}; }
  AcGeVector3d operator-(const AcGeVector3d& o) const { return {x - o.x, y - o.y, z - o.z}; }
  AcGeVector3d operator-() const { return {-x, -y, -z}; }
  AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
  AcGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
  AcGeVector3d& operator+=(const AcGeVector3d& o) { return *this = *this + o; }
  AcGeVector3d& operator*=(double s) { return *this = *this * s; }
  bool isEqualTo(const AcGeVector3d& o, const AcGeTol& tol = AcGeContext::gTol) const {
    return (*this - o).length() <= tol.equalVector();
  }
  bool operator==(const AcGeVector3d& o) const { return isEqualTo(o); }
  AcGeVector2d convert2d() const { return {x, y}; }
};
inline AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }

struct BRX_API AcGePoint3d {
  double x = 0, y = 0, z = 0;
  static const AcGePoint3d kOrigin;

  AcGeVector3d asVector() const { return {x, y, z}; }
  AcGeVector3d operator-(const AcGePoint3d& o) const { return {x - o.x, y - o.y, z - o.z}; }
  AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
  AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
  AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
  AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);
  AcGePoint3d& set(double a, double b, double c) { return x = a, y = b, z = c, *this; }
  double distanceTo(const AcGePoint3d& o) const { return (*this - o).length(); }
  bool isEqualTo(const AcGePoint3d& o, const AcGeTol& tol = AcGeContext::gTol) const {
    return distanceTo(o) <= tol.equalPoint();
  }
  bool operator==(const AcGePoint3d& o) const { return isEqualTo(o); }
  AcGePoint2d convert2d() const { return {x, y}; }
};

inline AcGePoint3d asPnt3d(const ads_point p) { return {p[0], p[1], p[2]}; }
inline double* asDblArray(AcGePoint3d& p) { return &p.x; }
inline const double* asDblArray(const AcGePoint3d& p) { return &p.x; }

/// Scale factors along the axes.
struct AcGeScale3d {
  double sx = 1, sy = 1, sz = 1;
};
