#include "host/geometry/bspline.h"

#include <algorithm>

namespace host {

bool BSpline::isValid() const {
  if (degree < 1 || degree > 25 || points.size() <= static_cast<size_t>(degree)) return false;
  if (knots.size() != points.size() + static_cast<size_t>(degree) + 1) return false;
  if (!weights.empty() && weights.size() != points.size()) return false;
  if (std::any_of(weights.begin(), weights.end(), [](double w) { return !(w > 0); })) return false;
  return std::is_sorted(knots.begin(), knots.end()) && first() < last();
}

namespace {

/// A point times its weight, and the weight.
struct Weighted {
  AcGeVector3d sum;
  double weight = 1;
};

Weighted between(const Weighted& a, const Weighted& b, double share) {
  return {a.sum * (1 - share) + b.sum * share, a.weight * (1 - share) + b.weight * share};
}

}  // namespace

/// De Boor's scheme; the derivative comes from the last two points before the last step.
AcGePoint3d BSpline::evaluate(double t, AcGeVector3d* derivative) const {
  t = std::clamp(t, first(), last());
  const auto begin = knots.begin() + degree, end = knots.begin() + static_cast<long>(points.size());
  const auto above = std::upper_bound(begin, end, t);
  long span = above - knots.begin() - 1;
  while (span > degree && knots[static_cast<size_t>(span)] == knots[static_cast<size_t>(span) + 1]) --span;
  std::vector<Weighted> d;
  for (int j = 0; j <= degree; ++j) {
    const auto index = static_cast<size_t>(span - degree + j);
    const double weight = weights.empty() ? 1 : weights[index];
    d.push_back({points[index].asVector() * weight, weight});
  }
  Weighted rise{{}, 0};
  for (int r = 1; r <= degree; ++r) {
    for (int j = degree; j >= r; --j) {
      const double low = knots[static_cast<size_t>(span - degree + j)];
      const double high = knots[static_cast<size_t>(span + 1 + j - r)];
      const double width = high - low;
      const auto index = static_cast<size_t>(j);
      if (r == degree && width > 0) {
        const double factor = degree / width;
        rise = {(d[index].sum - d[index - 1].sum) * factor, (d[index].weight - d[index - 1].weight) * factor};
      }
      d[index] = between(d[index - 1], d[index], width > 0 ? (t - low) / width : 0);
    }
  }
  const Weighted& top = d[static_cast<size_t>(degree)];
  const AcGeVector3d place = top.sum * (1 / top.weight);
  // Quotient rule: (sum' - weight' place) / weight.
  if (derivative) *derivative = (rise.sum - place * rise.weight) * (1 / top.weight);
  return {place.x, place.y, place.z};
}

std::vector<double> BSpline::spans() const {
  std::vector<double> found(knots.begin() + degree, knots.begin() + static_cast<long>(points.size()) + 1);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

BSpline uniformSpline(std::vector<AcGePoint3d> frame, int degree, bool closed) {
  BSpline made;
  made.degree = std::min(degree, static_cast<int>(frame.size()) - 1);
  made.frameSegments = static_cast<int>(frame.size()) - (closed ? 0 : 1);
  if (closed) {
    for (int i = 0; i < made.degree; ++i) frame.push_back(AcGePoint3d(frame[static_cast<size_t>(i)]));
  }
  made.points = std::move(frame);
  const int count = static_cast<int>(made.points.size()), last = count - made.degree;
  for (int i = 0; i <= count + made.degree; ++i) {
    made.knots.push_back(closed ? i : std::clamp(i - made.degree, 0, last));
  }
  return made;
}

}  // namespace host
