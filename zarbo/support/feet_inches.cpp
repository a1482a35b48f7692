#include "zarbo/support/feet_inches.h"

#include <cmath>

#include "platform/text/digits.h"
#include "zarbo/support/number_text.h"

namespace {

constexpr double inchesInFoot = 12.0;

}  // namespace

std::wstring feetInchesText(double value) {
  const double size = std::fabs(value);
  const double feet = std::floor(std::floor(size) / inchesInFoot);
  const double inches = size - feet * inchesInFoot;
  const std::wstring text =
      realToText(feet, 0, true) + L"-" + (inches == 0 ? L"0" : realToText(inches, 4, true));
  return value < 0 ? L"-" + text : text;
}

double parseFeetInches(std::wstring_view text) {
  const bool negative = !text.empty() && text.front() == L'-';
  if (negative) text.remove_prefix(1);
  const size_t dash = text.find(L'-');
  const double inches = dash == std::wstring_view::npos ? 0.0 : readReal(text.substr(dash + 1));
  const double value = readReal(text) * inchesInFoot + inches;
  return negative ? -value : value;
}
