#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Numbers as the application writes them, the same in every locale.

std::wstring intToText(int64_t value);

/// `decimals` places, at most 10, or, with `trim`, as many of them as are not closing zeros. A value whose
/// first digit lies further behind the point than the places gives "0.", or "0", with all its zeros
/// and without a sign, trimmed or not.
std::wstring realToText(double value, int decimals, bool trim);

/// Trimmed, with "," between groups of three digits.
std::wstring realToGroupedText(double value, int decimals);

/// Puts "," before every third digit left of the last ".", never at the start or right behind a "-" there.
std::wstring groupThousands(std::wstring text);

/// Three or four significant digits, grouped: 123456.0 gives "123,000". What can't be written so (not
/// finite, or beyond the range of 64 bits) gives `realToText`'s text.
std::wstring roundedNumberText(double value);
