#pragma once

#include <vector>

#include "brx/db_curves.h"

/// A window of a paper space on model space.
class BRX_API AcDbViewport : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewport)
  AcGePoint3d centerPoint() const { return centre_; }
  double width() const { return width_; }
  double height() const { return height_; }
  Adesk::Int16 number() const { return number_; }
  bool isOn() const { return status_ != 0; }
  Acad::ErrorStatus setCenterPoint(const AcGePoint3d& centre);
  Acad::ErrorStatus setWidth(double width);
  Acad::ErrorStatus setHeight(double height);
  AcGePoint2d viewCenter() const { return {viewCentre_.x, viewCentre_.y}; }
  Acad::ErrorStatus setViewCenter(const AcGePoint2d& centre);
  double viewHeight() const { return viewHeight_; }
  Acad::ErrorStatus setViewHeight(double height);
  AcGeVector3d viewDirection() const { return viewDirection_; }
  AcGePoint3d viewTarget() const { return target_; }
  double twistAngle() const { return twist_; }

  /// Layers that aren't shown in here. `eInvalidInput` when an id isn't a layer of this drawing; then
  /// nothing is changed. An empty array is no error.
  Acad::ErrorStatus freezeLayersInViewport(const AcDbObjectIdArray& layers);
  Acad::ErrorStatus thawLayersInViewport(const AcDbObjectIdArray& layers);
  bool isLayerFrozenInViewport(const AcDbObjectId& layer) const;
  Acad::ErrorStatus getFrozenLayerList(AcDbObjectIdArray& layers) const;
  BRX_FILES_ITSELF
  BRX_DRAWS_ITSELF

 private:
  BRX_DECLARES_FIELDS
  Acad::ErrorStatus checkLayers(const AcDbObjectIdArray& layers) const;
  AcGePoint3d centre_, viewCentre_, target_;
  double width_ = 0, height_ = 0, viewHeight_ = 1, lens_ = 50, twist_ = 0;
  AcGeVector3d viewDirection_{0, 0, 1};
  Adesk::Int16 status_ = 1, number_ = 1;
  Adesk::Int32 viewFlags_ = 0;
  std::vector<AcDbObjectId> frozen_;
};
