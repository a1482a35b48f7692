#include "zarbo/standards/user_units.h"

#include "platform/text/digits.h"
#include "zarbo/support/number_text.h"
#include "zarbo/support/utilities.h"

namespace {

constexpr double hundredthsPerMillimetre = 100.0;
constexpr const wchar_t* defaultLineweight = L"Default";

}  // namespace

std::wstring lineweightText(const std::optional<std::wstring>& stored) {
  if (!stored || stored->empty()) return defaultLineweight;
  return realToText(readInteger(*stored) / hundredthsPerMillimetre, 2, true) + L" mm";
}

std::optional<std::wstring> lineweightFromText(const std::wstring& text) {
  if (text.empty() || text == defaultLineweight) return {};
  return intToText(truncated(readReal(text) * hundredthsPerMillimetre));
}

std::wstring hatchAngleText(double radians) { return realToText(radiansToDegrees(radians), 2, true); }
double hatchAngleFromText(const std::wstring& text) { return degreesToRadians(readReal(text)); }

std::wstring hatchScaleText(double scale) { return realToText(scale, 2, true); }
double hatchScaleFromText(const std::wstring& text) { return readReal(text); }

std::wstring overhangText(double overhang) { return realToText(overhang, 4, true); }
double overhangFromText(const std::wstring& text) { return readReal(text); }
