#pragma once

#include <utility>
#include <vector>

namespace host::view {

/// Parts of a line of this length that a pattern leaves visible, as distances from its start; a dot is
/// a part without length. Both ends of the line show a dash: what is left over of whole patterns is
/// shared between the two. Empty when the line is shorter than a pattern or the pattern would repeat
/// more than `mostRepeats` times: then the line is drawn without it.
std::vector<std::pair<double, double>> dashesOf(const std::vector<double>& pattern, double scale,
                                                double length, double mostRepeats = 20000);

}  // namespace host::view
