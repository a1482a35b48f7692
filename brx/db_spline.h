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
  /// By control points, or through the fit points of one that has only them. Not valid without either.
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
  BRX_DECLARES_FIELDS
  std::unique_ptr<host::BSpline> curve_;
  mutable std::unique_ptr<host::BSpline> fitted_;  // made when it is asked for
  std::vector<AcGePoint3d> fitPoints_;
  AcGeVector3d startTangent_, endTangent_;
  AcGeVector3d normal_{0, 0, 1};
  Adesk::Int16 flags_ = 8;
};
