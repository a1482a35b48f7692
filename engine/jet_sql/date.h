#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace jet {

/// A date serial is days since 1899-12-30; its fraction is the time of day, counted forward from
/// midnight also before that day: -1.25 is 1899-12-29 06:00. Years 100 to 9999.
struct DateParts {
  int year, month, day, hour, minute, second;
};

/// Nothing when the year leaves its range.
std::optional<double> serialOf(long year, long month, long day);  ///< months and days may overflow
double timeOf(long hour, long minute, long second);               ///< fraction of a day
std::optional<DateParts> partsOf(double serial);

/// Moves a serial by a fraction of days in time order, which for negative days isn't plain addition.
double toLinear(double serial);
double fromLinear(double days);

/// Day of the week, 1 Sunday to 7 Saturday.
int weekdayOf(double serial);

/// `month/day/year`, `year-month-day`, with month names, with or without a time; two-digit years are
/// 1930 to 2029. A first number above 12 is a day. Nothing when it is no date.
std::optional<double> parseDate(std::string_view text);

/// `1/31/2020 1:05:09 PM`; without a time at midnight, without a date on day zero.
std::string dateText(double serial);

extern const char* const monthNames[12];
extern const char* const dayNames[7];

}  // namespace jet
