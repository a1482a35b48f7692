#pragma once

#include <vector>

#include "brx/db_entity.h"

/// Line, arc, circle, light polyline, point.

#define BRX_FILES_ITSELF                                              \
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;        \
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override; \
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;        \
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
#define BRX_DRAWS_ITSELF                                                    \
 protected:                                                                 \
  bool subWorldDraw(AcGiWorldDraw* draw) override;                          \
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;    \
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override; \
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
#define BRX_SNAPS_ITSELF                                                                                  \
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker, const AcGePoint3d& pick, \
                                      const AcGePoint3d& last, const AcGeMatrix3d& view,                  \
                                      AcGePoint3dArray& points, AcDbIntArray& geometryIds) const override;
#define BRX_STRETCHES_ITSELF \
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
#define BRX_ANSWERS_CURVE_QUERIES                                                                          \
  Acad::ErrorStatus getEndParam(double& param) const override;                                             \
  Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;                      \
  Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;               \
  Acad::ErrorStatus getDistAtParam(double param, double& distance) const override;                         \
  Acad::ErrorStatus getParamAtDist(double distance, double& param) const override;                         \
  Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const override;                  \
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest, bool extend = false) \
      const override;                                                                                      \
  Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,             \
                                      AcGePoint3d& closest, bool extend = false) const override;           \
  using AcDbCurve::getFirstDeriv;
/// The fields that are filed, declared once; the host visits them in each way of filing.
#define BRX_DECLARES_FIELDS            \
  template <class Visitor, class Self> \
  static void fields(Visitor& v, Self& o);

/// The parameter is the distance from the start point.
class BRX_API AcDbLine : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLine)
  AcDbLine() = default;
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : start_(start), end_(end) {}
  AcGePoint3d startPoint() const { return start_; }
  AcGePoint3d endPoint() const { return end_; }
  Acad::ErrorStatus setStartPoint(const AcGePoint3d& point);
  Acad::ErrorStatus setEndPoint(const AcGePoint3d& point);
  double thickness() const { return thickness_; }
  AcGeVector3d normal() const { return normal_; }
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d start_, end_;
  double thickness_ = 0;
  AcGeVector3d normal_{0, 0, 1};
};

/// Runs to the left about the normal from start to end angle; the parameter is the angle in the
/// plane's own system. The centre is in the world's system.
class BRX_API AcDbArc : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbArc)
  AcDbArc() = default;
  AcDbArc(const AcGePoint3d& centre, double radius, double startAngle, double endAngle)
      : centre_(centre), radius_(radius), startAngle_(startAngle), endAngle_(endAngle) {}
  AcDbArc(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius, double startAngle,
          double endAngle)
      : centre_(centre), normal_(normal), radius_(radius), startAngle_(startAngle), endAngle_(endAngle) {}
  AcGePoint3d center() const { return centre_; }
  AcGeVector3d normal() const { return normal_; }
  double radius() const { return radius_; }
  double startAngle() const { return startAngle_; }
  double endAngle() const { return endAngle_; }
  Acad::ErrorStatus setCenter(const AcGePoint3d& centre);
  Acad::ErrorStatus setRadius(double radius);
  Acad::ErrorStatus setStartAngle(double angle);
  Acad::ErrorStatus setEndAngle(double angle);
  /// Above 0, at most a full turn.
  double sweep() const;
  double length() const { return radius_ * sweep(); }
  BRX_FILES_ITSELF
  Acad::ErrorStatus getStartParam(double& param) const override;
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d centre_;
  AcGeVector3d normal_{0, 0, 1};
  double radius_ = 0, startAngle_ = 0, endAngle_ = 6.283185307179586477;
};

class BRX_API AcDbCircle : public AcDbArc {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCircle)
  AcDbCircle() = default;
  AcDbCircle(const AcGePoint3d& centre, const AcGeVector3d& normal, double radius)
      : AcDbArc(centre, normal, radius, 0, 6.283185307179586477) {}
  bool isClosed() const override { return true; }
  bool isPeriodic() const override { return true; }
  Acad::ErrorStatus getArea(double& area) const override;
};

/// Light polyline in the plane of its normal at its elevation; the parameter counts segments.
class BRX_API AcDbPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPolyline)
  struct Vertex {
    AcGePoint2d point;
    double bulge = 0, startWidth = 0, endWidth = 0;
  };
  unsigned numVerts() const { return static_cast<unsigned>(vertices_.size()); }
  Acad::ErrorStatus addVertexAt(unsigned index, const AcGePoint2d& point, double bulge = 0,
                                double startWidth = -1, double endWidth = -1);
  Acad::ErrorStatus removeVertexAt(unsigned index);
  Acad::ErrorStatus setPointAt(unsigned index, const AcGePoint2d& point);
  Acad::ErrorStatus getPointAt(unsigned index, AcGePoint3d& point) const;
  /// In the plane's own system.
  Acad::ErrorStatus getPointAt(unsigned index, AcGePoint2d& point) const;
  Acad::ErrorStatus getBulgeAt(unsigned index, double& bulge) const;
  const std::vector<Vertex>& vertices() const { return vertices_; }
  bool isClosed() const override { return closed_; }
  void setClosed(bool closed);
  double elevation() const { return elevation_; }
  AcGeVector3d normal() const { return normal_; }
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  std::vector<Vertex> vertices_;
  AcGeVector3d normal_{0, 0, 1};
  double elevation_ = 0;
  bool closed_ = false;
};

class BRX_API AcDbPoint : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPoint)
  AcDbPoint() = default;
  explicit AcDbPoint(const AcGePoint3d& position) : position_(position) {}
  AcGePoint3d position() const { return position_; }
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d position_;
};
