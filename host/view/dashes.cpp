#include "host/view/dashes.h"

#include <algorithm>
#include <cmath>

namespace host::view {

std::vector<std::pair<double, double>> dashesOf(const std::vector<double>& pattern, double scale,
                                                double length, double mostRepeats) {
  double whole = 0;
  for (const double each : pattern) whole += std::abs(each) * scale;
  const double repeats = whole > 0 ? std::floor(length / whole) : 0;
  if (!(repeats >= 1) || repeats > mostRepeats) return {};
  const double first = std::max(pattern.front(), 0.0) * scale;
  const double end = (length - repeats * whole + first) / 2;
  // A pattern that begins with a dot leaves its share of the rest open.
  std::vector<std::pair<double, double>> dashes{{0, first > 0 ? end : 0}};
  double at = end;
  for (int left = static_cast<int>(repeats); left > 0; --left) {
    for (size_t i = 1; i < pattern.size(); ++i) {
      const double piece = std::abs(pattern[i]) * scale;
      if (pattern[i] >= 0) dashes.emplace_back(at, at + piece);
      at += piece;
    }
    if (left > 1) dashes.emplace_back(at, at + first);
    at += first;
  }
  dashes.emplace_back(first > 0 ? length - end : length, length);
  return dashes;
}

}  // namespace host::view
