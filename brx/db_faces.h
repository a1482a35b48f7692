#pragma once

#include "brx/db_curves.h"

/// Filled areas of three or four corners.

/// A face in space; a third corner that is repeated makes it a triangle.
class BRX_API AcDbFace : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbFace)
  AcDbFace() = default;
  AcDbFace(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, const AcGePoint3d& d)
      : corners_{a, b, c, d} {}
  /// `eInvalidIndex` for an index beyond 3.
  Acad::ErrorStatus getVertexAt(Adesk::UInt16 index, AcGePoint3d& point) const;
  Acad::ErrorStatus setVertexAt(Adesk::UInt16 index, const AcGePoint3d& point);
  Acad::ErrorStatus isEdgeVisibleAt(Adesk::UInt16 index, bool& visible) const;
  Acad::ErrorStatus makeEdgeVisibleAt(Adesk::UInt16 index);
  Acad::ErrorStatus makeEdgeInvisibleAt(Adesk::UInt16 index);
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF
  /// The visible edges, so that intersections are those of the drawn lines.
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d corners_[4];
  Adesk::Int16 hiddenEdges_ = 0;
};

/// A filled area in its plane; the corners run first, second, fourth, third around it.
class BRX_API AcDbSolid : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSolid)
  AcDbSolid() = default;
  AcDbSolid(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c, const AcGePoint3d& d)
      : corners_{a, b, c, d} {}
  Acad::ErrorStatus getPointAt(Adesk::UInt16 index, AcGePoint3d& point) const;
  Acad::ErrorStatus setPointAt(Adesk::UInt16 index, const AcGePoint3d& point);
  AcGeVector3d normal() const { return normal_; }
  double thickness() const { return thickness_; }
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d corners_[4];
  double thickness_ = 0;
  AcGeVector3d normal_{0, 0, 1};
};

/// Filed as a solid under a name of its own.
class BRX_API AcDbTrace : public AcDbSolid {
 public:
  ACRX_DECLARE_MEMBERS(AcDbTrace)
  using AcDbSolid::AcDbSolid;
};
