#pragma once

#include <string>

#include "brx/db_object.h"

/// Entities and curves.

/// Colour by block, by layer, by index or exact.
class BRX_API AcCmColor {
 public:
  /// Of an exact colour the one that stands beside it in files: the nearest, unless a file told another.
  Adesk::UInt16 colorIndex() const { return exact_ && index_ == notTold ? nearestIndex() : index_; }
  bool isByLayer() const { return !exact_ && index_ == 256; }
  bool isByBlock() const { return !exact_ && index_ == 0; }
  bool isByColor() const { return exact_; }
  Adesk::UInt8 red() const { return static_cast<Adesk::UInt8>(rgb_ >> 16); }
  Adesk::UInt8 green() const { return static_cast<Adesk::UInt8>(rgb_ >> 8); }
  Adesk::UInt8 blue() const { return static_cast<Adesk::UInt8>(rgb_); }
  Adesk::UInt32 rgb() const { return rgb_; }
  Acad::ErrorStatus setRGB(Adesk::UInt8 r, Adesk::UInt8 g, Adesk::UInt8 b) {
    rgb_ = static_cast<Adesk::UInt32>(r << 16 | g << 8 | b);
    exact_ = true, index_ = notTold;
    return Acad::eOk;
  }
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 index) {
    if (index > 257) return Acad::eInvalidInput;
    index_ = index;
    exact_ = false;
    return Acad::eOk;
  }
  /// The index beside an exact colour; ignored for others.
  void setIndexBeside(Adesk::UInt16 index) {
    if (exact_ && index <= 257) index_ = index;
  }

 private:
  static constexpr Adesk::UInt16 notTold = 0xFFFF;
  Adesk::UInt16 nearestIndex() const;
  Adesk::UInt32 rgb_ = 0;
  Adesk::UInt16 index_ = 256;
  bool exact_ = false;
};

/// A box along the axes; empty until a point is added.
class AcDbExtents {
 public:
  AcGePoint3d minPoint() const { return min_; }
  AcGePoint3d maxPoint() const { return max_; }
  bool isEmpty() const { return min_.x > max_.x; }
  Acad::ErrorStatus addPoint(const AcGePoint3d& p) {
    min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
    max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
    return Acad::eOk;
  }
  void addExt(const AcDbExtents& other) {
    if (!other.isEmpty()) addPoint(other.min_), addPoint(other.max_);
  }

 private:
  AcGePoint3d min_{1e300, 1e300, 1e300}, max_{-1e300, -1e300, -1e300};
};

/// Public operations call the virtual ones that begin with `sub`.
class BRX_API AcDbEntity : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEntity)
  AcDbObjectId blockId() const { return ownerId(); }
  AcDbObjectId layerId() const { return layer_; }
  std::wstring layer() const;
  virtual Acad::ErrorStatus setLayer(AcDbObjectId layer, bool doSubents = true,
                                     bool allowHiddenLayer = false);
  Acad::ErrorStatus setLayer(const ACHAR* name, bool doSubents = true, bool allowHiddenLayer = false);
  AcDbObjectId linetypeId() const { return linetype_; }
  Acad::ErrorStatus setLinetype(AcDbObjectId linetype, bool doSubents = true);
  double linetypeScale() const { return linetypeScale_; }
  Acad::ErrorStatus setLinetypeScale(double scale);
  AcCmColor color() const { return color_; }
  Adesk::UInt16 colorIndex() const { return color_.colorIndex(); }
  Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true);
  Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);
  int lineWeight() const { return lineWeight_; }
  Acad::ErrorStatus setLineWeight(int weight, bool doSubents = true);
  AcDb::Visibility visibility() const { return invisible_ ? AcDb::kInvisible : AcDb::kVisible; }
  Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, bool doSubents = true);
  /// Current layer, colour and linetype of the database (the working one with null).
  void setDatabaseDefaults(AcDbDatabase* database = nullptr);
  void setPropertiesFrom(const AcDbEntity* other);

  Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix) { return subTransformBy(matrix); }
  /// Appends new entities outside any database; they are the caller's.
  Acad::ErrorStatus explode(AcDbVoidPtrArray& entities) const { return subExplode(entities); }
  void list() const { subList(); }
  Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const { return subGetGeomExtents(extents); }
  Acad::ErrorStatus getOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker, const AcGePoint3d& pick,
                                   const AcGePoint3d& last, const AcGeMatrix3d& view,
                                   AcGePoint3dArray& points, AcDbIntArray& geometryIds) const {
    return subGetOsnapPoints(mode, marker, pick, last, view, points, geometryIds);
  }
  Acad::ErrorStatus getGripPoints(AcGePoint3dArray& points, AcDbIntArray& osnapModes,
                                  AcDbIntArray& geometryIds) const {
    return subGetGripPoints(points, osnapModes, geometryIds);
  }
  Acad::ErrorStatus moveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    return subMoveGripPointsAt(indices, offset);
  }
  Acad::ErrorStatus getStretchPoints(AcGePoint3dArray& points) const { return subGetStretchPoints(points); }
  Acad::ErrorStatus moveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) {
    return subMoveStretchPointsAt(indices, offset);
  }
  Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type, AcGePoint3dArray& points,
                                  Adesk::Int64 thisMarker = 0, Adesk::Int64 otherMarker = 0) const {
    return subIntersectWith(other, type, points, thisMarker, otherMarker);
  }
  Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type, const AcGePlane& plane,
                                  AcGePoint3dArray& points, Adesk::Int64 thisMarker = 0,
                                  Adesk::Int64 otherMarker = 0) const {
    return subIntersectWith(other, type, plane, points, thisMarker, otherMarker);
  }

  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

 protected:
  /// What a class has of the database's defaults besides those of every entity.
  virtual void subSetDatabaseDefaults(AcDbDatabase&) {}
  virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix);
  virtual Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const;
  virtual void subList() const;
  virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
  virtual Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker,
                                              const AcGePoint3d& pick, const AcGePoint3d& last,
                                              const AcGeMatrix3d& view, AcGePoint3dArray& points,
                                              AcDbIntArray& geometryIds) const;
  virtual Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcDbIntArray& osnapModes,
                                             AcDbIntArray& geometryIds) const;
  virtual Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
  virtual Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const;
  virtual Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset);
  virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                             AcGePoint3dArray& points, Adesk::Int64 thisMarker,
                                             Adesk::Int64 otherMarker) const;
  virtual Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                             const AcGePlane& plane, AcGePoint3dArray& points,
                                             Adesk::Int64 thisMarker, Adesk::Int64 otherMarker) const;

 private:
  AcDbObjectId layer_, linetype_;
  double linetypeScale_ = 1;
  AcCmColor color_;
  Adesk::Int16 lineWeight_ = -1;
  bool invisible_ = false;
};

/// Parameters and distances count from the start point; distances are drawing units.
class BRX_API AcDbCurve : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCurve)
  /// Companion for classes that modules derive from this one.
  static void* createOdObjectImp(const ACHAR* className);
  virtual bool isClosed() const { return false; }
  virtual bool isPeriodic() const { return false; }
  virtual Acad::ErrorStatus getStartParam(double& param) const;
  virtual Acad::ErrorStatus getEndParam(double& param) const;
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const;
  virtual Acad::ErrorStatus getDistAtParam(double param, double& distance) const;
  virtual Acad::ErrorStatus getParamAtDist(double distance, double& param) const;
  virtual Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& distance) const;
  virtual Acad::ErrorStatus getPointAtDist(double distance, AcGePoint3d& point) const;
  virtual Acad::ErrorStatus getFirstDeriv(double param, AcGeVector3d& derivative) const;
  Acad::ErrorStatus getFirstDeriv(const AcGePoint3d& point, AcGeVector3d& derivative) const;
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest,
                                              bool extend = false) const;
  /// The closest point as seen along `direction`.
  virtual Acad::ErrorStatus getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                              AcGePoint3d& closest, bool extend = false) const;
  virtual Acad::ErrorStatus getArea(double& area) const;
};
