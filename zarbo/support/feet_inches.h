#pragma once

#include <string>
#include <string_view>

/// Lengths in feet and inches: 66.5 inches read "5-6.5".
std::wstring feetInchesText(double inches);
/// In inches.
double parseFeetInches(std::wstring_view text);
