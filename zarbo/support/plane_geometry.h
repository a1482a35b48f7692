#pragma once

#include <array>

#include "brx/ge_point.h"

/// Points as seen in plan view. Angles are radians, counted to the left from +X.

/// Moves the point by `distance` along the angle, z unchanged; the moved point is also the result.
AcGePoint3d polarPoint(AcGePoint3d& point, double angle, double distance);
/// From `from` to `to`; from 0 below a full turn.
double angleOfPoints(const AcGePoint3d& from, const AcGePoint3d& to);
double flatDistance(const AcGePoint3d& a, const AcGePoint3d& b);
inline AcGePoint2d toPoint2d(const AcGePoint3d& point) { return {point.x, point.y}; }
inline AcGePoint3d toPoint3d(const AcGePoint2d& point, double z = 0.0) { return {point.x, point.y, z}; }
/// The angle of the points, and the three that follow it a right angle apart.
std::array<double, 4> perpendicularAngles(const AcGePoint3d& from, const AcGePoint3d& to);
