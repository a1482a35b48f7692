#include "zarbo/dialogs/layer_texts.h"

#include "platform/text/digits.h"
#include "zarbo/support/number_text.h"
#include "zarbo/support/utilities.h"

namespace {

const std::wstring defaultText = L"Default";
constexpr double hundredths = 100.0;

}  // namespace

const wchar_t* const lineweightChoices =
    L"Default|0.00 mm|0.05 mm|0.09 mm|0.13 mm|0.15 mm|0.18 mm|0.20 mm|0.25 mm|0.30 mm|0.35 mm|0.40 mm|"
    L"0.50 mm|0.53 mm|0.60 mm|0.70 mm|0.80 mm|0.90 mm|1.00 mm|1.06 mm|1.20 mm|1.40 mm|1.58 mm|2.00 mm|"
    L"2.11 mm";

std::wstring lineweightText(const TextColumn& stored) {
  std::wstring digits;
  if (!stored.get(digits) || digits.empty()) return defaultText;
  return realToText(readInteger(digits) / hundredths, 2, true) + L" mm";
}

void setLineweight(TextColumn& column, const std::wstring& text) {
  if (text.empty() || text == defaultText) return column.SetNull();
  column.set(intToText(truncated(readReal(text) * hundredths)));
}

std::wstring angleText(double radians) { return realToText(radiansToDegrees(radians), 2, true); }

double angleOfText(const std::wstring& degrees) { return degreesToRadians(readReal(degrees)); }
