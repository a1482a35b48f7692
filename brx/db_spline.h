#pragma once

#include <memory>

#include "brx/db_curves.h"

namespace host {
struct BSpline;
}

/// A B-spline in space; the parameter is that of its knots.
class BRX_API AcDbSpline : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSpline)
  AcDbSpline();
  ~AcDbSpline() override;
  /// By the control points; of a spline without them, through the fit points.
  const host::BSpline& curve() const;
  int degree() const;
  int numControlPoints() const;
  int numFitPoints() const { return static_cast<int>(fitPoints_.size()); }
  Acad::ErrorStatus getControlPointAt(int index, AcGePoint3d& point) const;
  /// `eInvalidInput` when the numbers of knots, points and weights (none or one for each point) don't
  /// fit together or the knots fall.
  Acad::ErrorStatus setNurbsData(int degree, const AcGeDoubleArray& knots, const AcGePoint3dArray& points,
                                 const AcGeDoubleArray& weights);
  bool isClosed() const override;
  Acad::ErrorStatus getStartParam(double& param) const override;
  BRX_FILES_ITSELF
  BRX_ANSWERS_CURVE_QUERIES
  BRX_DRAWS_ITSELF
  BRX_SNAPS_ITSELF

 private:
  friend struct HostAccess;
  BRX_DECLARES_FIELDS
  std::unique_ptr<host::BSpline> curve_;
  std::vector<AcGePoint3d> fitPoints_;
  /// The curve through fit points, and those through which it has been laid.
  mutable std::unique_ptr<host::BSpline> through_;
  mutable std::vector<AcGePoint3d> throughPoints_;
  AcGeVector3d normal_{0, 0, 1};
  Adesk::Int16 flags_ = 8;
};
