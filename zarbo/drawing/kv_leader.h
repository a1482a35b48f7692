#pragma once

#include <string>

#include "brx/db_block.h"

/// A leader of two straight legs with a block at its end. As a curve it is the chord from start to end
/// point, by length: the elbow plays no part there.
///
/// The block reference is never in a database: it is a value of the leader's, kept in step with the
/// points (position, rotation in plan view), the offset (its scale on all axes) and the block.
class KVLeader : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(KVLeader)
  /// Registers the class with the host; once is enough. `rxRemove` makes proxies of its objects.
  static void rxInit();
  static void rxRemove();

  KVLeader() = default;
  /// `offset` in drawing units. A layer that can't be set leaves the leader without one.
  KVLeader(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end, double offset,
           const AcDbObjectId& block, const AcDbObjectId& layer);

  void setPoints(const AcGePoint3d& start, const AcGePoint3d& middle, const AcGePoint3d& end);
  void getPoints(AcGePoint3d& start, AcGePoint3d& middle, AcGePoint3d& end) const;
  void setStartPoint(const AcGePoint3d& point);
  void setMiddlePoint(const AcGePoint3d& point);
  void setEndPoint(const AcGePoint3d& point);
  /// Looks the block up by name, also on the search path; false, and no change, when it isn't there.
  bool setBlock(const std::wstring& name);
  /// Scale of the block, and the distance by which the second leg stops short of the end point.
  void setOffset(double offset);

  /// Appends two lines and a block reference to model space, in the leader's linetype, and their closed
  /// pointers to the list. The leader stays as it is.
  void explode(AcDbEntityPtrArray& entities, const AcDbObjectId& layer) const;
  void explode(AcDbEntityPtrArray& entities) const { explode(entities, layerId()); }
  using AcDbEntity::explode;

  Acad::ErrorStatus audit(AcDbAuditInfo* info) override;
  Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
  Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
  Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
  Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;
  using AcDbEntity::setLayer;
  Acad::ErrorStatus setLayer(AcDbObjectId layer, bool doSubents = true,
                             bool allowHiddenLayer = false) override;

  Acad::ErrorStatus getStartParam(double& param) const override;
  Acad::ErrorStatus getEndParam(double& param) const override;
  Acad::ErrorStatus getStartPoint(AcGePoint3d& point) const override;
  Acad::ErrorStatus getEndPoint(AcGePoint3d& point) const override;
  Acad::ErrorStatus getPointAtParam(double param, AcGePoint3d& point) const override;
  Acad::ErrorStatus getParamAtPoint(const AcGePoint3d& point, double& param) const override;
  Acad::ErrorStatus getDistAtParam(double param, double& distance) const override;
  Acad::ErrorStatus getParamAtDist(double distance, double& param) const override;
  Acad::ErrorStatus getDistAtPoint(const AcGePoint3d& point, double& distance) const override;
  Acad::ErrorStatus getPointAtDist(double distance, AcGePoint3d& point) const override;

 protected:
  bool subWorldDraw(AcGiWorldDraw* draw) override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;
  void subList() const override;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64 marker, const AcGePoint3d& pick,
                                      const AcGePoint3d& last, const AcGeMatrix3d& view,
                                      AcGePoint3dArray& points, AcDbIntArray& geometryIds) const override;
  Acad::ErrorStatus subGetGripPoints(AcGePoint3dArray& points, AcDbIntArray& osnapModes,
                                     AcDbIntArray& geometryIds) const override;
  Acad::ErrorStatus subMoveGripPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subGetStretchPoints(AcGePoint3dArray& points) const override;
  Acad::ErrorStatus subMoveStretchPointsAt(const AcDbIntArray& indices, const AcGeVector3d& offset) override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type, AcGePoint3dArray& points,
                                     Adesk::Int64 thisMarker, Adesk::Int64 otherMarker) const override;
  Acad::ErrorStatus subIntersectWith(const AcDbEntity* other, AcDb::Intersect type, const AcGePlane& plane,
                                     AcGePoint3dArray& points, Adesk::Int64 thisMarker,
                                     Adesk::Int64 otherMarker) const override;

 private:
  /// Where the second leg stops: the offset away from the end point towards the middle point in plan
  /// view, at the end point's height.
  AcGePoint3d secondLegEnd() const;
  AcGeVector3d unitChord() const;
  /// Position and rotation of the block reference from the points.
  void updateReference();
  /// Asks both legs and then the block; the first status that isn't `eOk` ends it.
  template <class Ask>
  Acad::ErrorStatus askParts(Ask ask) const;
  Acad::ErrorStatus readVersion1(AcDbDwgFiler* filer);
  Acad::ErrorStatus readVersion2(AcDbDwgFiler* filer);
  Acad::ErrorStatus readPointsAndOffset(AcDbDwgFiler* filer);
  Acad::ErrorStatus readBlock(AcDbDwgFiler* filer);

  AcGePoint3d start_, middle_, end_;
  AcDbHardPointerId block_;
  AcDbBlockReference reference_;
  double offset_ = 0;
};
