#pragma once

#include <vector>

namespace host {

/// Real roots in ascending order of a polynomial, coefficients by rising power. Roots of even
/// multiplicity are found where the value comes to zero within rounding. A polynomial that is zero
/// has none.
std::vector<double> realRoots(std::vector<double> coefficients);

}  // namespace host
