#include "host/geometry/polynomial.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

double valueAt(const std::vector<double>& c, double x) {
  double sum = 0;
  for (size_t i = c.size(); i-- > 0;) sum = sum * x + c[i];
  return sum;
}

/// How far rounding alone may move the value. Each coefficient was rounded as the largest ones were.
double noiseAt(const std::vector<double>& c, double x) {
  double sum = 0, largest = 0;
  for (const double each : c) largest = std::max(largest, std::abs(each));
  for (size_t i = c.size(); i-- > 0;) sum = sum * std::abs(x) + std::abs(c[i]);
  sum += largest;
  return sum * 1e-15 * static_cast<double>(c.size());
}

std::vector<double> derivativeOf(const std::vector<double>& c) {
  std::vector<double> made;
  for (size_t i = 1; i < c.size(); ++i) made.push_back(c[i] * static_cast<double>(i));
  return made;
}

/// The root between two places of opposite signs.
double bisect(const std::vector<double>& c, double low, double high) {
  const bool rises = valueAt(c, low) < 0;
  for (int i = 0; i < 200; ++i) {
    const double middle = low + (high - low) / 2;
    if (middle <= std::min(low, high) || middle >= std::max(low, high)) break;
    ((valueAt(c, middle) < 0) == rises ? low : high) = middle;
  }
  return low + (high - low) / 2;
}

}  // namespace

/// Between two neighbouring extremes a polynomial is monotone, so that it has one root there or none;
/// the extremes are the roots of the derivative, found in the same way.
std::vector<double> realRoots(std::vector<double> c) {
  double largest = 0;
  for (const double each : c) largest = std::max(largest, std::abs(each));
  while (!c.empty() && std::abs(c.back()) <= largest * 1e-14) c.pop_back();
  if (c.size() < 2) return {};
  if (c.size() == 2) return {-c[0] / c[1]};
  // All roots lie within 1 + the largest ratio to the leading coefficient (Cauchy's bound).
  double bound = 0;
  for (size_t i = 0; i + 1 < c.size(); ++i) bound = std::max(bound, std::abs(c[i] / c.back()));
  std::vector<double> stops = realRoots(derivativeOf(c));
  stops.insert(stops.begin(), -bound - 1);
  stops.push_back(bound + 1);
  std::vector<double> roots;
  for (size_t i = 0; i < stops.size(); ++i) {
    if (std::abs(valueAt(c, stops[i])) <= noiseAt(c, stops[i])) {
      roots.push_back(stops[i]);
      continue;
    }
    if (!i || std::abs(valueAt(c, stops[i - 1])) <= noiseAt(c, stops[i - 1])) continue;
    if ((valueAt(c, stops[i - 1]) < 0) != (valueAt(c, stops[i]) < 0)) {
      roots.push_back(bisect(c, stops[i - 1], stops[i]));
    }
  }
  std::sort(roots.begin(), roots.end());
  return roots;
}

}  // namespace host
