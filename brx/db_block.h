#pragma once

#include "brx/db_subentities.h"

class AcDbAttribute;

/// A placed block, or a rectangular grid of it.
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
  Acad::ErrorStatus setNormal(const AcGeVector3d& normal);
  Adesk::Int16 columns() const { return columns_; }
  Adesk::Int16 rows() const { return rows_; }
  bool isGrid() const { return columns_ > 1 || rows_ > 1; }
  double columnSpacing() const { return columnSpacing_; }
  double rowSpacing() const { return rowSpacing_; }
  /// The reference owns the attribute afterwards; in a database it stays open for write.
  Acad::ErrorStatus appendAttribute(AcDbAttribute* attribute);
  Acad::ErrorStatus appendAttribute(AcDbObjectId& id, AcDbAttribute* attribute);
  /// The caller deletes the iterator.
  AcDbObjectIterator* attributeIterator() const { return new AcDbObjectIterator(attributes_); }
  /// From the block's system to the world's, the block's origin taken to the position.
  AcGeMatrix3d blockTransform() const;
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;
  BRX_SNAPS_ITSELF
  void subList() const override;

 private:
  friend struct HostAccess;
  BRX_DECLARES_FIELDS
  AcGePoint3d position_;
  AcDbObjectId record_;
  AcGeScale3d scale_;
  double rotation_ = 0;
  AcGeVector3d normal_{0, 0, 1};
  double columnSpacing_ = 0, rowSpacing_ = 0;
  Adesk::Int16 columns_ = 1, rows_ = 1;
  BrxSubentities attributes_;
};
