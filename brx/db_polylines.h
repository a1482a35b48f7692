#pragma once

#include "brx/db_subentities.h"

/// Polylines whose vertices are entities of their own.

namespace AcDb {
enum Poly2dType { k2dSimplePoly = 0, k2dFitCurvePoly = 1, k2dQuadSplinePoly = 2, k2dCubicSplinePoly = 3 };
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
enum Vertex2dType { k2dVertex = 0, k2dSplineCtlVertex = 1, k2dSplineFitVertex = 2, k2dCurveFitVertex = 3 };
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };
}  // namespace AcDb

class BRX_API AcDbVertex : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbVertex)
  BRX_FILES_ITSELF
};

/// The position is in the plane's own system of the polyline.
class BRX_API AcDb2dVertex : public AcDbVertex {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dVertex)
  AcDb2dVertex() = default;
  explicit AcDb2dVertex(const AcGePoint3d& position, double bulge = 0, double startWidth = 0,
                        double endWidth = 0)
      : position_(position), startWidth_(startWidth), endWidth_(endWidth), bulge_(bulge) {}
  AcGePoint3d position() const { return position_; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  double bulge() const { return bulge_; }
  Acad::ErrorStatus setBulge(double bulge);
  double startWidth() const { return startWidth_; }
  double endWidth() const { return endWidth_; }
  void scaleWidths(double factor) { assertWriteEnabled(), startWidth_ *= factor, endWidth_ *= factor; }
  bool isTangentUsed() const { return flags_ & 2; }
  double tangent() const { return tangent_; }
  /// Direction of the curve that is fitted, radians in the plane's system.
  Acad::ErrorStatus setTangent(double angle);
  AcDb::Vertex2dType vertexType() const {
    return flags_ & 16  ? AcDb::k2dSplineCtlVertex
           : flags_ & 8 ? AcDb::k2dSplineFitVertex
           : flags_ & 1 ? AcDb::k2dCurveFitVertex
                        : AcDb::k2dVertex;
  }
  Acad::ErrorStatus setVertexType(AcDb::Vertex2dType type);
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d position_;
  double startWidth_ = 0, endWidth_ = 0, bulge_ = 0, tangent_ = 0;
  Adesk::Int16 flags_ = 0;
};

/// A polyline in the plane of its normal at its elevation. The parameter counts the segments drawn.
class BRX_API AcDb2dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb2dPolyline)
  AcDb2dPolyline() = default;
  /// Points are in the plane's own system.
  AcDb2dPolyline(AcDb::Poly2dType type, const AcGePoint3dArray& points, double elevation = 0,
                 bool closed = false);
  AcDb::Poly2dType polyType() const;
  bool isClosed() const override { return flags_ & 1; }
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus makeOpen();
  double elevation() const { return elevation_; }
  AcGeVector3d normal() const { return normal_; }
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  /// The polyline owns the vertex afterwards; in a database it stays open for write.
  Acad::ErrorStatus appendVertex(AcDb2dVertex* vertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb2dVertex* vertex);
  /// The caller deletes the iterator.
  AcDbObjectIterator* vertexIterator() const { return new AcDbObjectIterator(vertices_); }
  /// Takes fitted vertices, bulges and tangents away, so that straight lines join the given vertices.
  Acad::ErrorStatus straighten();
  /// A pair of arcs between every two vertices, tangent to each other and to their neighbours'.
  Acad::ErrorStatus curveFit();
  /// A B-spline on the vertices as its frame, by the drawing's SPLINETYPE and SPLINESEGS.
  Acad::ErrorStatus splineFit();
  Acad::ErrorStatus splineFit(AcDb::Poly2dType type, Adesk::Int16 segments);
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  friend struct HostAccess;
  BRX_DECLARES_FIELDS
  BrxSubentities vertices_;
  double elevation_ = 0, thickness_ = 0, startWidth_ = 0, endWidth_ = 0;
  AcGeVector3d normal_{0, 0, 1};
  Adesk::Int16 flags_ = 0, curveType_ = 0;
};

class BRX_API AcDb3dPolylineVertex : public AcDbVertex {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3dPolylineVertex)
  AcDb3dPolylineVertex() = default;
  explicit AcDb3dPolylineVertex(const AcGePoint3d& position) : position_(position) {}
  AcGePoint3d position() const { return position_; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  bool isFrame() const { return flags_ & 16; }
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d position_;
  Adesk::Int16 flags_ = 32;
};

/// Straight lines in space. The parameter counts segments.
class BRX_API AcDb3dPolyline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDb3dPolyline)
  AcDb3dPolyline() = default;
  AcDb3dPolyline(AcDb::Poly3dType type, const AcGePoint3dArray& points, bool closed = false);
  bool isClosed() const override { return flags_ & 1; }
  Acad::ErrorStatus makeClosed();
  Acad::ErrorStatus appendVertex(AcDb3dPolylineVertex* vertex);
  Acad::ErrorStatus appendVertex(AcDbObjectId& id, AcDb3dPolylineVertex* vertex);
  AcDbObjectIterator* vertexIterator() const { return new AcDbObjectIterator(vertices_); }
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  friend struct HostAccess;
  BRX_DECLARES_FIELDS
  BrxSubentities vertices_;
  Adesk::Int16 flags_ = 8, curveType_ = 0;
};
