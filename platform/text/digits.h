#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Numbers and their decimal digits, the same on every platform and in every locale.

/// What the C library's `_fcvt` gives: the digits of |value| rounded to a number of decimal places,
/// without leading zeros, and the place of the decimal point among them.
struct FixedDigits {
  std::string digits;
  /// Digits that stand before the point; negative when zeros follow the point before the first digit.
  int point = 0;
  bool negative = false;
};

/// Most places that `fixedDigits` gives; more are cut to it, negative ones count as 0.
inline constexpr int mostPlaces = 20;

/// Rounds the exact binary value, ties away from zero. Zero, of either sign, gives `places` zeros and
/// the point 0. A value that rounds away gives no digits, keeps its sign, and has the point −places
/// when its first digit stands right behind the last place, −places − 1 when further behind. What is
/// not finite gives "inf" or "nan" with the point behind it.
FixedDigits fixedDigits(double value, int places);

/// The number at the start of `text`: leading blanks, sign, digits with a point, exponent with e or d;
/// no hexadecimal and no words. 0 without a number; beyond the range of a double it is infinite or 0.
double readReal(std::wstring_view text);

/// The integer at the start of `text`: leading blanks, sign, digits. 0 without one; beyond 32 bits it is the
/// nearest that they hold.
int32_t readInteger(std::wstring_view text);

/// The value without its fraction; 0 for what is no number, and beyond 32 bits the nearest that they hold.
int32_t truncated(double value);
