#pragma once

#include <optional>
#include <string>

namespace lisp {

/// Lengths and angles as text, in the forms of the host's drawing units.

enum class LengthUnits { scientific = 1, decimal = 2, engineering = 3, architectural = 4, fractional = 5 };
enum class AngleUnits { degrees = 0, degreesMinutesSeconds = 1, grads = 2, radians = 3, surveyor = 4 };

/// Whether texts are for people, or as they are typed: without the blanks and hyphens between their parts.
enum class UnitForm { shown, typed };

/// Suppression of zeros: the bits of the host's variable DIMZIN.
struct ZeroRules {
  bool keepZeroFeet = true;
  bool keepZeroInches = true;
  bool dropLeading = false;
  bool dropTrailing = false;
  static ZeroRules ofDimzin(int dimzin);
};

/// `precision`: decimals, or the power of two of the smallest fraction. Inches are the drawing's unit.
std::wstring lengthText(double value, LengthUnits units, int precision, const ZeroRules& zeros,
                        UnitForm form = UnitForm::shown);
/// Any of the forms; nothing for a text that is no length.
std::optional<double> parseLength(const std::wstring& text);

/// Radians from 0 to a full turn.
std::wstring angleText(double radians, AngleUnits units, int precision, bool dropTrailing,
                       UnitForm form = UnitForm::shown);
/// As many turns as the text says.
std::optional<double> parseAngle(const std::wstring& text, AngleUnits units);

}  // namespace lisp
