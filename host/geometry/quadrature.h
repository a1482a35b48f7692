#pragma once

#include <array>
#include <cmath>

namespace host {

/// Gauss and Legendre's rule of ten points.
template <class Function>
double tenPointRule(double from, double to, Function f) {
  constexpr std::array<std::array<double, 2>, 5> nodes = {{{0.1488743389816312, 0.2955242247147529},
                                                           {0.4333953941292472, 0.2692667193099963},
                                                           {0.6794095682990244, 0.2190863625159820},
                                                           {0.8650633666889845, 0.1494513491505806},
                                                           {0.9739065285171717, 0.0666713443086881}}};
  const double middle = (from + to) / 2, half = (to - from) / 2;
  double sum = 0;
  for (const auto& [place, weight] : nodes)
    sum += weight * (f(middle - half * place) + f(middle + half * place));
  return sum * half;
}

/// Integral of a smooth function to rounding: intervals are halved until both halves agree with the
/// whole.
template <class Function>
double integral(double from, double to, Function f, int depth = 12) {
  const double middle = (from + to) / 2, whole = tenPointRule(from, to, f);
  const double halves = tenPointRule(from, middle, f) + tenPointRule(middle, to, f);
  if (depth <= 0 || std::abs(halves - whole) <= 1e-14 * std::abs(whole)) return halves;
  return integral(from, middle, f, depth - 1) + integral(middle, to, f, depth - 1);
}

}  // namespace host
