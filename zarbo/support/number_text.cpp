#include "zarbo/support/number_text.h"

#include <algorithm>
#include <cmath>

#include "platform/text/digits.h"

namespace {

constexpr int mostDecimals = 10;

std::wstring widened(std::string_view text) { return {text.begin(), text.end()}; }

}  // namespace

std::wstring intToText(int64_t value) { return std::to_wstring(value); }

std::wstring realToText(double value, int decimals, bool trim) {
  decimals = std::clamp(decimals, 0, mostDecimals);
  const FixedDigits number = fixedDigits(value, decimals);
  const std::string_view digits = number.digits;
  std::wstring text = number.negative ? L"-" : L"";
  if (!std::isfinite(value)) return text + widened(digits);
  if (number.point < 1 && -number.point > decimals) {
    return decimals == 0 ? L"0" : L"0." + std::wstring(static_cast<size_t>(decimals), L'0');
  }
  const auto whole = static_cast<size_t>(std::max(number.point, 0));
  text += whole == 0 ? L"0" : widened(digits.substr(0, whole));

  std::wstring fraction(static_cast<size_t>(std::max(-number.point, 0)), L'0');
  fraction += widened(digits.substr(whole));
  fraction.resize(static_cast<size_t>(decimals), L'0');
  if (trim) fraction.erase(fraction.find_last_not_of(L'0') + 1);
  return fraction.empty() ? text : text + L'.' + fraction;
}

std::wstring realToGroupedText(double value, int decimals) {
  return groupThousands(realToText(value, decimals, true));
}

std::wstring groupThousands(std::wstring text) {
  const size_t first = !text.empty() && text.front() == L'-' ? 1 : 0;
  size_t at = std::min(text.rfind(L'.'), text.size());
  while (at > first + 3) {
    at -= 3;
    text.insert(at, 1, L',');
  }
  return text;
}

std::wstring roundedNumberText(double value) {
  constexpr double limit = 9e15;
  if (!(std::fabs(value) < limit)) return realToText(value, 0, true);
  int64_t scale = 1;
  for (; value > 1000.0; value /= 10.0) scale *= 10;
  return groupThousands(intToText(static_cast<int64_t>(value + 0.5) * scale));
}
