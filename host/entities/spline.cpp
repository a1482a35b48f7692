#include "brx/db_spline.h"

#include "host/database/fields.h"
#include "host/geometry/bspline.h"
#include "host/geometry/curve_range.h"
#include "host/geometry/flatten.h"
#include "host/geometry/quadrature.h"

ACRX_DEFINE_MEMBERS(AcDbSpline)

AcDbSpline::AcDbSpline() : curve_(std::make_unique<host::BSpline>()) {}
AcDbSpline::~AcDbSpline() = default;

namespace {

enum : Adesk::Int16 { closedFlag = 1, rationalFlag = 4 };

}  // namespace

template <class Visitor, class Self>
void AcDbSpline::fields(Visitor& v, Self& o) {
  Adesk::Int16 degree = static_cast<Adesk::Int16>(o.curve_->degree);
  v(210, o.normal_), v(70, o.flags_), v(71, degree);
  if constexpr (!std::is_const_v<Self>) o.curve_->degree = degree;
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) {
    v(72, static_cast<Adesk::Int16>(o.curve_->knots.size()));
    v(73, static_cast<Adesk::Int16>(o.curve_->points.size()));
    v(74, static_cast<Adesk::Int16>(o.fitPoints_.size()));
  }
  v.list(40, o.curve_->knots), v.list(41, o.curve_->weights), v.list(10, o.curve_->points);
  v.list(11, o.fitPoints_), v.optional(12, o.startTangent_), v.optional(13, o.endTangent_);
  if constexpr (!std::is_const_v<Self>) o.fitted_.reset();
}
HOST_FILING(AcDbSpline, AcDbEntity, fields)

const host::BSpline& AcDbSpline::curve() const {
  if (curve_->isValid() || fitPoints_.size() < 2) return *curve_;
  if (!fitted_) {
    fitted_ = std::make_unique<host::BSpline>(
        host::splineThrough(fitPoints_, startTangent_, endTangent_, (flags_ & closedFlag) != 0));
  }
  return *fitted_;
}
int AcDbSpline::degree() const { return curve_->degree; }
int AcDbSpline::numControlPoints() const { return static_cast<int>(curve_->points.size()); }
Acad::ErrorStatus AcDbSpline::getControlPointAt(int index, AcGePoint3d& point) const {
  if (index < 0 || index >= numControlPoints()) return Acad::eInvalidIndex;
  return point = curve_->points[static_cast<size_t>(index)], Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::setNurbsData(int degree, const AcGeDoubleArray& knots,
                                           const AcGePoint3dArray& points, const AcGeDoubleArray& weights) {
  host::BSpline made;
  made.degree = degree;
  made.knots.assign(knots.begin(), knots.end());
  made.points.assign(points.begin(), points.end());
  made.weights.assign(weights.begin(), weights.end());
  if (!made.isValid()) return Acad::eInvalidInput;
  assertWriteEnabled();
  *curve_ = std::move(made);
  fitPoints_.clear(), startTangent_ = endTangent_ = {};
  flags_ = static_cast<Adesk::Int16>(weights.isEmpty() ? flags_ & ~rationalFlag : flags_ | rationalFlag);
  return Acad::eOk;
}

namespace {

double lengthOf(const host::BSpline& curve, double from, double to) {
  double sum = 0;
  const auto speed = [&](double t) {
    AcGeVector3d derivative;
    curve.evaluate(t, &derivative);
    return derivative.length();
  };
  const std::vector<double> spans = curve.spans();
  for (size_t i = 0; i + 1 < spans.size(); ++i) {
    const double low = std::max(from, spans[i]), high = std::min(to, spans[i + 1]);
    if (low < high) sum += host::integral(low, high, speed);
  }
  return sum;
}

/// The nearest of the points where the way to the curve stands square on it, found between samples that
/// are closer than a span bends, and of the ends.
double closestParam(const host::BSpline& curve, const AcGePoint3d& given, const AcGeVector3d* direction) {
  const AcGeVector3d view = direction ? direction->normal() : AcGeVector3d{};
  const auto slope = [&](double t, double* distance) {
    AcGeVector3d derivative;
    AcGeVector3d away = curve.evaluate(t, &derivative) - given;
    away = away - view * away.dotProduct(view);
    if (distance) *distance = away.lengthSqrd();
    return away.dotProduct(derivative);
  };
  double best = curve.first(), least = 0;
  slope(best, &least);
  const auto consider = [&](double t) {
    double distance = 0;
    slope(t, &distance);
    if (distance < least) least = distance, best = t;
  };
  consider(curve.last());
  const std::vector<double> spans = curve.spans();
  const int samples = 4 * curve.degree;
  for (size_t i = 0; i + 1 < spans.size(); ++i) {
    for (int k = 0; k < samples; ++k) {
      double low = spans[i] + (spans[i + 1] - spans[i]) * k / samples;
      double high = spans[i] + (spans[i + 1] - spans[i]) * (k + 1) / samples;
      if (!(slope(low, nullptr) <= 0 && slope(high, nullptr) >= 0)) continue;
      for (int step = 0; step < 100 && low < high; ++step) {
        const double middle = (low + high) / 2;
        if (middle <= low || middle >= high) break;
        (slope(middle, nullptr) <= 0 ? low : high) = middle;
      }
      consider((low + high) / 2);
    }
  }
  return best;
}

}  // namespace

#define HOST_NEEDS_CURVE              \
  const host::BSpline& own = curve(); \
  if (!own.isValid()) return Acad::eDegenerateGeometry

bool AcDbSpline::isClosed() const {
  const host::BSpline& own = curve();
  return (flags_ & closedFlag) || (own.isValid() && own.at(own.first()) == own.at(own.last()));
}
Acad::ErrorStatus AcDbSpline::getStartParam(double& param) const {
  HOST_NEEDS_CURVE;
  return param = own.first(), Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getEndParam(double& param) const {
  HOST_NEEDS_CURVE;
  return param = own.last(), Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getPointAtParam(double param, AcGePoint3d& point) const {
  HOST_NEEDS_CURVE;
  if (!host::within(param, own.first(), own.last())) return Acad::eInvalidInput;
  return point = own.at(param), Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getParamAtPoint(const AcGePoint3d& point, double& param) const {
  HOST_NEEDS_CURVE;
  param = closestParam(own, point, nullptr);
  return host::isOnCurve(point, own.at(param)) ? Acad::eOk : Acad::eInvalidInput;
}
Acad::ErrorStatus AcDbSpline::getDistAtParam(double param, double& distance) const {
  HOST_NEEDS_CURVE;
  if (!host::within(param, own.first(), own.last())) return Acad::eInvalidInput;
  return distance = lengthOf(own, own.first(), param), Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getParamAtDist(double distance, double& param) const {
  HOST_NEEDS_CURVE;
  const double whole = lengthOf(own, own.first(), own.last());
  if (!host::within(distance, 0, whole)) return Acad::eInvalidInput;
  double low = own.first(), high = own.last();
  for (int step = 0; step < 60 && low < high; ++step) {
    param = (low + high) / 2;
    (lengthOf(own, own.first(), param) < distance ? low : high) = param;
  }
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getFirstDeriv(double param, AcGeVector3d& derivative) const {
  HOST_NEEDS_CURVE;
  if (!host::within(param, own.first(), own.last())) return Acad::eInvalidInput;
  return own.evaluate(param, &derivative), Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getClosestPointTo(const AcGePoint3d& given, AcGePoint3d& closest, bool) const {
  HOST_NEEDS_CURVE;
  return closest = own.at(closestParam(own, given, nullptr)), Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::getClosestPointTo(const AcGePoint3d& given, const AcGeVector3d& direction,
                                                AcGePoint3d& closest, bool) const {
  HOST_NEEDS_CURVE;
  return closest = own.at(closestParam(own, given, &direction)), Acad::eOk;
}
bool AcDbSpline::subWorldDraw(AcGiWorldDraw* draw) {
  const host::BSpline& own = curve();
  if (!own.isValid()) return true;
  const std::vector<double> spans = own.spans();
  std::vector<AcGePoint3d> points;
  for (size_t i = 0; i + 1 < spans.size(); ++i) {
    const auto piece =
        host::flattened(spans[i], spans[i + 1], 2, draw->deviation(), [&](double t) { return own.at(t); });
    points.insert(points.end(), piece.begin() + (i ? 1 : 0), piece.end());
  }
  draw->geometry().polyline(static_cast<Adesk::UInt32>(points.size()), points.data());
  return true;
}
Acad::ErrorStatus AcDbSpline::subTransformBy(const AcGeMatrix3d& matrix) {
  assertWriteEnabled();
  for (AcGePoint3d& each : curve_->points) each.transformBy(matrix);
  for (AcGePoint3d& each : fitPoints_) each.transformBy(matrix);
  startTangent_.transformBy(matrix), endTangent_.transformBy(matrix);
  fitted_.reset();
  normal_ = (matrix * normal_).normalize();
  return Acad::eOk;
}
/// Extremes lie where the derivative along an axis changes its sign.
Acad::ErrorStatus AcDbSpline::subGetGeomExtents(AcDbExtents& extents) const {
  const host::BSpline& own = curve();
  if (!own.isValid()) return Acad::eInvalidExtents;
  const std::vector<double> spans = own.spans();
  const int samples = 4 * own.degree;
  for (const AcGeVector3d& axis : {AcGeVector3d{1, 0, 0}, AcGeVector3d{0, 1, 0}, AcGeVector3d{0, 0, 1}}) {
    const auto rise = [&](double t) {
      AcGeVector3d derivative;
      own.evaluate(t, &derivative);
      return derivative.dotProduct(axis);
    };
    for (size_t i = 0; i + 1 < spans.size(); ++i) {
      for (int k = 0; k < samples; ++k) {
        double low = spans[i] + (spans[i + 1] - spans[i]) * k / samples;
        double high = spans[i] + (spans[i + 1] - spans[i]) * (k + 1) / samples;
        const bool rising = rise(low) > 0;
        if (rising == (rise(high) > 0)) continue;
        for (int step = 0; step < 60; ++step) {
          const double middle = (low + high) / 2;
          ((rise(middle) > 0) == rising ? low : high) = middle;
        }
        extents.addPoint(own.at(low));
      }
    }
  }
  extents.addPoint(own.at(own.first()));
  return extents.addPoint(own.at(own.last()));
}
Acad::ErrorStatus AcDbSpline::subGetStretchPoints(AcGePoint3dArray& points) const {
  const bool isFitted = !curve_->isValid();
  for (const AcGePoint3d& each : isFitted ? fitPoints_ : curve_->points) points.append(each);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbSpline::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d& pick,
                                                const AcGePoint3d& last, const AcGeMatrix3d&,
                                                AcGePoint3dArray& points, AcDbIntArray&) const {
  const host::BSpline& own = curve();
  if (!own.isValid()) return Acad::eOk;
  if (mode == AcDb::kOsModeEnd) {
    points.append(own.at(own.first())), points.append(own.at(own.last()));
  } else if (mode == AcDb::kOsModeNear || mode == AcDb::kOsModePerp) {
    points.append(own.at(closestParam(own, mode == AcDb::kOsModeNear ? pick : last, nullptr)));
  }
  return Acad::eOk;
}
