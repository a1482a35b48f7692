#pragma once

#include "brx/db_curves.h"

/// A placed block.
class BRX_API AcDbBlockReference : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbBlockReference)
  AcDbBlockReference() = default;
  AcDbBlockReference(const AcGePoint3d& position, AcDbObjectId record)
      : position_(position), record_(record) {}
  AcGePoint3d position() const { return position_; }
  AcDbObjectId blockTableRecord() const { return record_; }
  AcGeScale3d scaleFactors() const { return scale_; }
  double rotation() const { return rotation_; }
  AcGeVector3d normal() const { return normal_; }
  Acad::ErrorStatus setPosition(const AcGePoint3d& position);
  Acad::ErrorStatus setBlockTableRecord(AcDbObjectId record);
  Acad::ErrorStatus setScaleFactors(const AcGeScale3d& scale);
  Acad::ErrorStatus setRotation(double rotation);
  /// From the block's system to the world's, the block's origin taken to the position.
  AcGeMatrix3d blockTransform() const;
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;
  BRX_SNAPS_ITSELF
  void subList() const override;

 private:
  friend struct HostAccess;
  AcGePoint3d position_;
  AcDbObjectId record_;
  AcGeScale3d scale_;
  double rotation_ = 0;
  AcGeVector3d normal_{0, 0, 1};
};
