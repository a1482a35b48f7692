#include "host/lisp/units.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace lisp {
namespace {

constexpr double pi = 3.141592653589793;
constexpr int mostDecimals = 16;
constexpr int mostFractionBits = 8;
constexpr double inchesPerFoot = 12.0;

std::string fixedText(double value, int decimals) {
  char text[400];
  std::snprintf(text, sizeof text, "%.*f", decimals, value);
  return text;
}

void dropTrailingZeros(std::string& text) {
  if (text.find('.') == std::string::npos) return;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
}

void dropLeadingZero(std::string& text) {
  if (text.rfind("0.", 0) == 0) text.erase(0, 1);
}

std::string decimalText(double magnitude, int decimals, const ZeroRules& zeros) {
  std::string text = fixedText(magnitude, decimals);
  if (zeros.dropTrailing) dropTrailingZeros(text);
  if (zeros.dropLeading) dropLeadingZero(text);
  return text;
}

std::string scientificText(double magnitude, int decimals) {
  char text[64];
  std::snprintf(text, sizeof text, "%.*E", decimals, magnitude);
  return text;
}

// Feet in front of a text of inches: 1'-3.5", 3.5", 1'; typed 1'3.5".
std::string withFeet(double feet, const std::string& inches, bool inchesAreZero, const ZeroRules& zeros,
                     UnitForm form) {
  const std::string feetText = fixedText(feet, 0) + "'";
  const bool hideInches = inchesAreZero && !zeros.keepZeroInches && feet != 0.0;
  const bool hideFeet = feet == 0.0 && !zeros.keepZeroFeet;
  if (hideInches) return feetText;
  const std::string feetPart = form == UnitForm::typed ? feetText : feetText + "-";
  return (hideFeet ? "" : feetPart) + inches + "\"";
}

std::string engineeringText(double magnitude, int decimals, const ZeroRules& zeros, UnitForm form) {
  const double scale = std::pow(10.0, decimals);
  const double rounded = std::round(magnitude * scale) / scale;
  const double feet = std::floor(rounded / inchesPerFoot);
  const double inches = rounded - feet * inchesPerFoot;
  return withFeet(feet, decimalText(inches, decimals, zeros), inches == 0.0, zeros, form);
}

// A number as whole part and reduced fraction, "3 1/2", typed "3-1/2".
std::string fractionText(double wholes, long numerator, long denominator, UnitForm form) {
  const std::string whole = fixedText(wholes, 0);
  if (numerator == 0) return whole;
  while (numerator % 2 == 0) numerator /= 2, denominator /= 2;
  const std::string fraction = std::to_string(numerator) + "/" + std::to_string(denominator);
  return wholes == 0.0 ? fraction : whole + (form == UnitForm::typed ? "-" : " ") + fraction;
}

struct Fraction {
  double wholes;
  long numerator;
  long denominator;
};

Fraction nearestFraction(double magnitude, int bits) {
  const long denominator = 1L << std::clamp(bits, 0, mostFractionBits);
  double wholes = std::floor(magnitude);
  long numerator = std::lround((magnitude - wholes) * static_cast<double>(denominator));
  if (numerator == denominator) wholes += 1.0, numerator = 0;
  return {wholes, numerator, denominator};
}

std::string architecturalText(double magnitude, int bits, const ZeroRules& zeros, UnitForm form) {
  const Fraction parts = nearestFraction(magnitude, bits);
  const double feet = std::floor(parts.wholes / inchesPerFoot);
  const double inches = parts.wholes - feet * inchesPerFoot;
  const bool zeroInches = inches == 0.0 && parts.numerator == 0;
  std::string text = fractionText(inches, parts.numerator, parts.denominator, form);
  if (inches == 0.0 && !zeroInches && feet != 0.0 && form == UnitForm::shown) text = "0 " + text;
  return withFeet(feet, text, zeroInches, zeros, form);
}

// ---- reading

struct Scanner {
  std::string_view left;

  void skipBlanks() {
    while (!left.empty() && left[0] == ' ') left.remove_prefix(1);
  }
  bool take(char c) {
    if (left.empty() || left[0] != c) return false;
    left.remove_prefix(1);
    return true;
  }
  std::optional<double> number() {
    if (left.empty() || !((left[0] >= '0' && left[0] <= '9') || left[0] == '.')) return {};
    double value = 0.0;
    const auto result = std::from_chars(left.data(), left.data() + left.size(), value);
    if (result.ec != std::errc()) return {};
    left.remove_prefix(static_cast<size_t>(result.ptr - left.data()));
    return value;
  }
};

// A number, a fraction, or a number and a fraction: "3", "1/2", "3 1/2", "3-1/2".
std::optional<double> mixedNumber(Scanner& scan) {
  const auto first = scan.number();
  if (!first) return {};
  const auto over = [&](double numerator) -> std::optional<double> {
    const auto denominator = scan.number();
    if (!denominator || *denominator == 0.0) return {};
    return numerator / *denominator;
  };
  if (scan.take('/')) return over(*first);
  const Scanner before = scan;
  if (scan.take(' ') || scan.take('-')) {
    scan.skipBlanks();
    const auto numerator = scan.number();
    if (numerator && scan.take('/')) {
      const auto fraction = over(*numerator);
      if (!fraction) return {};
      return *first + *fraction;
    }
    scan = before;
  }
  return first;
}

// The compass form N45d30'15"E; the angle counts from north or south toward east or west.
std::optional<double> surveyorDegrees(const std::string& text,
                                      std::optional<double> (*inner)(const std::string&)) {
  if (text == "E") return 0.0;
  if (text == "N") return 90.0;
  if (text == "W") return 180.0;
  if (text == "S") return 270.0;
  if (text.size() < 3 || (text.front() != 'N' && text.front() != 'S')) return {};
  if (text.back() != 'E' && text.back() != 'W') return {};
  const auto turn = inner(text.substr(1, text.size() - 2));
  if (!turn) return {};
  const bool north = text.front() == 'N', east = text.back() == 'E';
  return north ? (east ? 90.0 - *turn : 90.0 + *turn) : (east ? 270.0 + *turn : 270.0 - *turn);
}

// 45, 45d30'15", 45d.
std::optional<double> degrees(const std::string& text) {
  Scanner scan{text};
  const bool negative = scan.take('-');
  auto value = scan.number();
  if (!value) return {};
  double total = *value;
  if (scan.take('D')) {
    if (const auto minutes = scan.number()) {
      if (!scan.take('\'')) return {};
      total += *minutes / 60.0;
      if (const auto seconds = scan.number()) {
        if (!scan.take('"')) return {};
        total += *seconds / 3600.0;
      }
    }
  }
  if (!scan.left.empty()) return {};
  return negative ? -total : total;
}

std::string degreesMinutesSeconds(double degrees, int precision) {
  const int secondDecimals = std::max(0, precision - 4);
  const double unit = precision <= 0   ? 1.0
                      : precision <= 2 ? 1.0 / 60.0
                                       : 1.0 / 3600.0 / std::pow(10.0, secondDecimals);
  const double rounded = std::round(degrees / unit) * unit;
  double whole = std::floor(rounded + unit / 4);
  double rest = std::max(0.0, (rounded - whole) * 60.0);
  std::string text = fixedText(whole, 0) + "d";
  if (precision <= 0) return text;
  if (precision <= 2) return text + fixedText(rest, 0) + "'";
  const double minutes = std::floor(rest + unit * 15.0);
  const double seconds = std::max(0.0, (rest - minutes) * 60.0);
  return text + fixedText(minutes, 0) + "'" + fixedText(seconds, secondDecimals) + "\"";
}

std::string surveyorText(double degrees, int precision, UnitForm form) {
  const std::string inner = degreesMinutesSeconds(0.0, precision);
  const auto is = [&](double corner) {
    return degreesMinutesSeconds(std::abs(degrees - corner), precision) == inner;
  };
  if (is(0.0) || is(360.0)) return "E";
  if (is(90.0)) return "N";
  if (is(180.0)) return "W";
  if (is(270.0)) return "S";
  const bool north = degrees < 180.0, east = degrees < 90.0 || degrees > 270.0;
  const double turn = std::abs((north ? 90.0 : 270.0) - degrees);
  const std::string gap = form == UnitForm::typed ? "" : " ";
  return (north ? "N" : "S") + gap + degreesMinutesSeconds(turn, precision) + gap + (east ? "E" : "W");
}

}  // namespace

ZeroRules ZeroRules::ofDimzin(int dimzin) {
  const int feetInches = dimzin & 3;
  ZeroRules rules;
  rules.keepZeroFeet = feetInches == 1 || feetInches == 2;
  rules.keepZeroInches = feetInches == 1 || feetInches == 3;
  rules.dropLeading = (dimzin & 4) != 0;
  rules.dropTrailing = (dimzin & 8) != 0;
  return rules;
}

std::wstring lengthText(double value, LengthUnits units, int precision, const ZeroRules& zeros,
                        UnitForm form) {
  const int decimals = std::clamp(precision, 0, mostDecimals);
  const double magnitude = std::abs(value);
  std::string text;
  switch (units) {
    case LengthUnits::scientific:
      text = scientificText(magnitude, decimals);
      break;
    case LengthUnits::engineering:
      text = engineeringText(magnitude, decimals, zeros, form);
      break;
    case LengthUnits::architectural:
      text = architecturalText(magnitude, decimals, zeros, form);
      break;
    case LengthUnits::fractional: {
      const Fraction parts = nearestFraction(magnitude, decimals);
      text = fractionText(parts.wholes, parts.numerator, parts.denominator, form);
      break;
    }
    case LengthUnits::decimal:
      text = decimalText(magnitude, decimals, zeros);
      break;
  }
  const bool shownAsZero = text.find_first_of("123456789") == std::string::npos;
  return fromUtf8(value < 0.0 && !shownAsZero ? "-" + text : text);
}

std::optional<double> parseLength(const std::wstring& text) {
  const std::string bytes = toUtf8(text);
  Scanner scan{bytes};
  scan.skipBlanks();
  const bool negative = scan.take('-');
  if (!negative) scan.take('+');
  auto value = mixedNumber(scan);
  if (!value) return {};
  double total = *value;
  if (scan.take('\'')) {
    total *= inchesPerFoot;
    scan.take('-');
    scan.skipBlanks();
    if (const auto inches = mixedNumber(scan)) total += *inches;
  }
  scan.take('"');
  scan.skipBlanks();
  if (!scan.left.empty()) return {};
  return negative ? -total : total;
}

std::wstring angleText(double radians, AngleUnits units, int precision, bool dropTrailing, UnitForm form) {
  double turn = std::fmod(radians, 2 * pi);
  if (turn < 0.0) turn += 2 * pi;
  const int decimals = std::clamp(precision, 0, mostFractionBits);
  const double degreesValue = turn * 180.0 / pi;
  std::string text;
  switch (units) {
    case AngleUnits::degreesMinutesSeconds:
      return fromUtf8(degreesMinutesSeconds(degreesValue, decimals));
    case AngleUnits::surveyor:
      return fromUtf8(surveyorText(degreesValue, decimals, form));
    case AngleUnits::degrees:
      text = fixedText(degreesValue, decimals);
      break;
    case AngleUnits::grads:
      text = fixedText(turn * 200.0 / pi, decimals);
      break;
    case AngleUnits::radians:
      text = fixedText(turn, decimals);
      break;
  }
  if (dropTrailing) dropTrailingZeros(text);
  return fromUtf8(text + (units == AngleUnits::grads ? "g" : units == AngleUnits::radians ? "r" : ""));
}

std::optional<double> parseAngle(const std::wstring& text, AngleUnits units) {
  std::string bytes;
  for (const wchar_t c : text) {
    if (c != L' ') bytes += toUtf8(std::wstring(1, upperLetter(c)));
  }
  if (bytes.empty()) return {};
  if (const auto surveyed = surveyorDegrees(bytes, degrees)) return *surveyed * pi / 180.0;
  const char suffix = bytes.back();
  if (suffix == 'G' || suffix == 'R') bytes.pop_back();
  const auto value = degrees(bytes);
  if (!value) return {};
  if (suffix == 'R' || (suffix != 'G' && units == AngleUnits::radians)) return value;
  if (suffix == 'G' || units == AngleUnits::grads) return *value * pi / 200.0;
  return *value * pi / 180.0;
}

}  // namespace lisp
