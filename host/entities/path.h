#pragma once

#include <memory>
#include <vector>

#include "brx/db_curves.h"
#include "host/geometry/ellipse_arc.h"

class AcDb2dPolyline;
class AcDb3dPolyline;
class AcDbLeader;

namespace host {

/// A line, or the arc that a bulge makes of it. Shares run from 0 at the start to 1 at the end, in
/// proportion to the length.
struct Segment {
  AcGePoint3d start, end;
  double bulge = 0;  // tangent of a quarter of the sweep, above 0 to the left about the normal
  AcGeVector3d normal{0, 0, 1};
  /// Of the band that is drawn along it.
  double startWidth = 0, endWidth = 0;

  double length() const;
  AcGePoint3d at(double share) const;
  /// With respect to the share; its length is that of the segment.
  AcGeVector3d derivative(double share) const;
  /// Of the nearest point as seen along `direction`, or in space with a null one.
  double closestShare(const AcGePoint3d& point, const AcGeVector3d* direction = nullptr) const;
  /// The line or arc. Arcs run to the left: `reversed` tells that this is against the segment.
  std::unique_ptr<AcDbCurve> curve(bool& reversed) const;
};

/// The arc of a segment with a bulge, from its start; its normal is turned over where it runs to the
/// right.
EllipseArc arcOf(const Segment& segment);

/// What polylines and leaders are made of; the parameter counts segments.
class Path {
 public:
  explicit Path(bool closed = false) : closed_(closed) {}
  void add(const Segment& segment) { segments_.push_back(segment); }
  const std::vector<Segment>& segments() const { return segments_; }

  double endParam() const { return static_cast<double>(segments_.size()); }
  Acad::ErrorStatus pointAt(double param, AcGePoint3d& point) const;
  Acad::ErrorStatus derivativeAt(double param, AcGeVector3d& derivative) const;
  Acad::ErrorStatus distanceAt(double param, double& distance) const;
  Acad::ErrorStatus paramAtDistance(double distance, double& param) const;
  /// `eInvalidInput` for a point that isn't on the curve.
  Acad::ErrorStatus paramOf(const AcGePoint3d& point, double& param) const;
  /// With `extend` an open path goes on beyond its ends as the end segments do.
  Acad::ErrorStatus closest(const AcGePoint3d& given, const AcGeVector3d* direction, bool extend,
                            AcGePoint3d& found, double* param = nullptr) const;

  void draw(AcGiWorldDraw& draw) const;
  Acad::ErrorStatus addTo(AcDbExtents& extents) const;
  /// Lines and arcs with the properties of `like`, the caller's.
  Acad::ErrorStatus explode(const AcDbEntity& like, AcDbVoidPtrArray& entities) const;
  Acad::ErrorStatus osnap(AcDb::OsnapMode mode, const AcGePoint3d& pick, const AcGePoint3d& last,
                          const AcGeMatrix3d& view, AcGePoint3dArray& points) const;

 private:
  bool place(double param, size_t& index, double& share) const;
  std::vector<Segment> segments_;
  bool closed_;
};

Path pathOf(const AcDbPolyline& line);
Path pathOf(const AcDb2dPolyline& line);
Path pathOf(const AcDb3dPolyline& line);
Path pathOf(const AcDbLeader& leader);

}  // namespace host

/// Defines the curve queries, drawing, extents and explosion of `Class` by its
/// path.
#define HOST_FOLLOWS_PATH(Class)                                                                          \
  Acad::ErrorStatus Class::getEndParam(double& param) const {                                             \
    return param = host::pathOf(*this).endParam(), Acad::eOk;                                             \
  }                                                                                                       \
  Acad::ErrorStatus Class::getPointAtParam(double param, AcGePoint3d& point) const {                      \
    return host::pathOf(*this).pointAt(param, point);                                                     \
  }                                                                                                       \
  Acad::ErrorStatus Class::getParamAtPoint(const AcGePoint3d& point, double& param) const {               \
    return host::pathOf(*this).paramOf(point, param);                                                     \
  }                                                                                                       \
  Acad::ErrorStatus Class::getDistAtParam(double param, double& distance) const {                         \
    return host::pathOf(*this).distanceAt(param, distance);                                               \
  }                                                                                                       \
  Acad::ErrorStatus Class::getParamAtDist(double distance, double& param) const {                         \
    return host::pathOf(*this).paramAtDistance(distance, param);                                          \
  }                                                                                                       \
  Acad::ErrorStatus Class::getFirstDeriv(double param, AcGeVector3d& derivative) const {                  \
    return host::pathOf(*this).derivativeAt(param, derivative);                                           \
  }                                                                                                       \
  Acad::ErrorStatus Class::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest, bool extend) \
      const {                                                                                             \
    return host::pathOf(*this).closest(given, nullptr, extend, closest);                                  \
  }                                                                                                       \
  Acad::ErrorStatus Class::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,     \
                                             AcGePoint3d& closest, bool extend) const {                   \
    return host::pathOf(*this).closest(given, &direction, extend, closest);                               \
  }                                                                                                       \
  Acad::ErrorStatus Class::subGetGeomExtents(AcDbExtents& extents) const {                                \
    return host::pathOf(*this).addTo(extents);                                                            \
  }                                                                                                       \
  Acad::ErrorStatus Class::subExplode(AcDbVoidPtrArray& entities) const {                                 \
    return host::pathOf(*this).explode(*this, entities);                                                  \
  }                                                                                                       \
  Acad::ErrorStatus Class::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick, \
                                             const AcGePoint3d& last, const AcGeMatrix3d& view,           \
                                             AcGePoint3dArray& points, AcDbIntArray&) const {             \
    return host::pathOf(*this).osnap(mode, pick, last, view, points);                                     \
  }
