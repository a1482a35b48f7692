#pragma once

#include "brx/db_curves.h"

/// An ellipse or a part of it; the parameter is that of centre + cos t · major + sin t · minor axis.
class BRX_API AcDbEllipse : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbEllipse)
  AcDbEllipse() = default;
  AcDbEllipse(const AcGePoint3d& centre, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
              double radiusRatio, double startParam = 0, double endParam = 6.283185307179586477)
      : centre_(centre),
        normal_(normal),
        major_(majorAxis),
        ratio_(radiusRatio),
        start_(startParam),
        end_(endParam) {}
  AcGePoint3d center() const { return centre_; }
  AcGeVector3d normal() const { return normal_; }
  AcGeVector3d majorAxis() const { return major_; }
  AcGeVector3d minorAxis() const { return normal_.normal().crossProduct(major_) * ratio_; }
  double radiusRatio() const { return ratio_; }
  double startParam() const { return start_; }
  double endParam() const { return end_; }
  /// `eInvalidInput` for a major axis of no length or that doesn't lie across the normal, and for a
  /// ratio that isn't above 0 and at most 1.
  Acad::ErrorStatus set(const AcGePoint3d& centre, const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                        double radiusRatio, double startParam = 0, double endParam = 6.283185307179586477);
  bool isClosed() const override;
  bool isPeriodic() const override { return true; }
  Acad::ErrorStatus getStartParam(double& param) const override;
  Acad::ErrorStatus getArea(double& area) const override;
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF

 private:
  BRX_DECLARES_FIELDS
  AcGePoint3d centre_;
  AcGeVector3d normal_{0, 0, 1}, major_{1, 0, 0};
  double ratio_ = 1, start_ = 0, end_ = 6.283185307179586477;
};
