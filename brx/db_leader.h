#pragma once

#include "brx/db_curves.h"

/// An arrow line along its vertices, which the first one points at.
class BRX_API AcDbLeader : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLeader)
  /// The first vertex fixes nothing; the first three that don't lie on a line fix the plane, and
  /// later ones are taken into it.
  bool appendVertex(const AcGePoint3d& vertex);
  void removeLastVertex();
  int numVertices() const { return static_cast<int>(vertices_.size()); }
  AcGePoint3d vertexAt(int index) const;
  bool setVertexAt(int index, const AcGePoint3d& vertex);
  AcGePoint3d firstVertex() const { return vertexAt(0); }
  AcGePoint3d lastVertex() const { return vertexAt(numVertices() - 1); }
  bool hasArrowHead() const { return arrow_; }
  void setHasArrowHead(bool has) { assertWriteEnabled(), arrow_ = has; }
  bool isSplined() const { return path_ == 1; }
  AcGeVector3d normal() const { return normal_; }
  AcDbObjectId annotationObjId() const { return annotation_; }
  Acad::ErrorStatus attachAnnotation(AcDbObjectId annotation);
  AcDbObjectId dimensionStyle() const { return style_; }
  void setDimensionStyle(AcDbObjectId style) { assertWriteEnabled(), style_ = style; }
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF
  BRX_STRETCHES_ITSELF
  void subSetDatabaseDefaults(AcDbDatabase& database) override;
  Acad::ErrorStatus subExplode(AcDbVoidPtrArray& entities) const override;

 private:
  BRX_DECLARES_FIELDS
  double arrowSize() const;
  std::vector<AcGePoint3d> vertices_;
  AcDbObjectId style_, annotation_;
  AcGeVector3d normal_{0, 0, 1}, horizontal_{1, 0, 0};
  double annotationHeight_ = 0, annotationWidth_ = 0;
  Adesk::Int16 path_ = 0, creation_ = 3, hookSide_ = 1;
  bool arrow_ = true, hook_ = false;
};
