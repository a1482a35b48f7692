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

namespace {

/// Rows of a system of which each meets its neighbours alone; solved in place.
struct ThreeBands {
  std::vector<double> below, middle, above;
  explicit ThreeBands(size_t rows) : below(rows), middle(rows), above(rows) {}

  template <class T>
  std::vector<T> solve(std::vector<T> right) const {
    std::vector<double> factor(middle.size());
    double pivot = middle[0];
    right[0] = right[0] * (1 / pivot);
    for (size_t i = 1; i < middle.size(); ++i) {
      factor[i] = above[i - 1] / pivot;
      pivot = middle[i] - below[i] * factor[i];
      right[i] = (right[i] - right[i - 1] * below[i]) * (1 / pivot);
    }
    for (size_t i = middle.size() - 1; i-- > 0;) right[i] = right[i] - right[i + 1] * factor[i + 1];
    return right;
  }
};

/// Derivatives at the points, so that the second ones don't jump. `chords` has one less than `points`, or
/// as many for a closed curve.
std::vector<AcGeVector3d> derivativesAt(const std::vector<AcGePoint3d>& points,
                                        const std::vector<double>& chords, bool closed) {
  const size_t count = points.size();
  ThreeBands bands(count);
  std::vector<AcGeVector3d> right(count);
  const auto chord = [&](size_t i) { return chords[(i + count) % count]; };
  for (size_t i = 0; i < count; ++i) {
    const bool before = closed || i > 0, behind = closed || i + 1 < count;
    if (before) {
      const double h = chord(i + count - 1);
      bands.below[i] = 1 / h, bands.middle[i] += 2 / h;
      right[i] = right[i] + (points[i] - points[(i + count - 1) % count]) * (3 / (h * h));
    }
    if (behind) {
      const double h = chord(i);
      bands.above[i] = 1 / h, bands.middle[i] += 2 / h;
      right[i] = right[i] + (points[(i + 1) % count] - points[i]) * (3 / (h * h));
    }
  }
  if (!closed) return bands.solve(right);
  // The two corners of the system are taken out and put back (Sherman and Morrison).
  const double corner = bands.below[0], gamma = -bands.middle[0];
  bands.middle[0] -= gamma, bands.middle[count - 1] -= corner * corner / gamma;
  std::vector<double> along(count);
  along[0] = gamma, along[count - 1] = corner;
  std::vector<AcGeVector3d> found = bands.solve(right);
  const std::vector<double> z = bands.solve(along);
  const double share = corner / gamma;
  const AcGeVector3d factor = (found[0] + found[count - 1] * share) * (1 / (1 + z[0] + z[count - 1] * share));
  for (size_t i = 0; i < count; ++i) found[i] = found[i] - factor * z[i];
  return found;
}

}  // namespace

BSpline interpolatingSpline(std::vector<AcGePoint3d> points, bool closed) {
  BSpline made;
  const auto same = [](const AcGePoint3d& a, const AcGePoint3d& b) { return !(a.distanceTo(b) > 0); };
  points.erase(std::unique(points.begin(), points.end(), same), points.end());
  if (closed && points.size() > 1 && same(points.front(), points.back())) points.pop_back();
  if (points.size() < 2) return made;
  closed = closed && points.size() > 2;
  const size_t pieces = points.size() - (closed ? 0 : 1);
  std::vector<double> chords;
  for (size_t i = 0; i < pieces; ++i) chords.push_back(points[i].distanceTo(points[(i + 1) % points.size()]));
  const std::vector<AcGeVector3d> derivatives = derivativesAt(points, chords, closed);
  // Each piece has its own control points, so that every inner knot is threefold.
  double at = 0;
  made.knots = {0};
  for (size_t i = 0; i < pieces; ++i) {
    const size_t next = (i + 1) % points.size();
    const double third = chords[i] / 3;
    made.points.insert(made.points.end(), {points[i], points[i] + derivatives[i] * third,
                                           points[next] - derivatives[next] * third});
    made.knots.insert(made.knots.end(), 3, at);
    at += chords[i];
  }
  made.points.push_back(closed ? points.front() : points.back());
  made.knots.insert(made.knots.end(), 4, at);
  return made;
}

}  // namespace host
