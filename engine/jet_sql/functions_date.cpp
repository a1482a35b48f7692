#include <chrono>
#include <cmath>
#include <ctime>

#include "engine/jet_sql/date.h"
#include "engine/jet_sql/functions.h"
#include "engine/text/collation.h"

namespace jet {
namespace {

[[noreturn]] void badArgument() { Call::fail(5, "Invalid procedure call: an argument is out of its range"); }

double localNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return serialOf(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday).value_or(0) +
         timeOf(local.tm_hour, local.tm_min, local.tm_sec);
}

void now(Call& call) { call.give(localNow()); }
void today(Call& call) { call.give(std::floor(localNow())); }
void timeOfDay(Call& call) { call.give(localNow() - std::floor(localNow())); }
void timer(Call& call) {
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  const auto hundredths =
      std::chrono::duration_cast<std::chrono::duration<int64_t, std::centi>>(sinceEpoch).count() % 100;
  const double day = localNow();
  call.give(std::round((day - std::floor(day)) * 86400) + static_cast<double>(hundredths) / 100);
}

DateParts parts(const Call& call, int i) { return *partsOf(call.date(i)); }

void year(Call& call) { call.give(int64_t{parts(call, 0).year}); }
void month(Call& call) { call.give(int64_t{parts(call, 0).month}); }
void day(Call& call) { call.give(int64_t{parts(call, 0).day}); }
void hour(Call& call) { call.give(int64_t{parts(call, 0).hour}); }
void minute(Call& call) { call.give(int64_t{parts(call, 0).minute}); }
void second(Call& call) { call.give(int64_t{parts(call, 0).second}); }

// First day of the week as the dialect counts: 0 and 1 Sunday, 2 Monday.
int firstWeekday(const Call& call, int i) {
  const int64_t first = i < call.count() ? call.whole(i) : 1;
  if (first < 0 || first > 7) badArgument();
  return first == 0 ? 1 : static_cast<int>(first);
}

int weekdayFrom(double serial, int first) { return (weekdayOf(serial) - first + 7) % 7 + 1; }

void weekday(Call& call) { call.give(int64_t{weekdayFrom(call.date(0), firstWeekday(call, 1))}); }

void giveDate(Call& call, std::optional<double> serial) {
  if (!serial || !partsOf(*serial)) Call::fail(overflow, "Overflow: the date is out of its range");
  call.give(*serial);
}

long boundedPart(const Call& call, int i) {
  const int64_t value = call.whole(i);
  if (value < -4000000 || value > 4000000) Call::fail(overflow, "Overflow");
  return static_cast<long>(value);
}

void dateSerial(Call& call) {
  long y = boundedPart(call, 0);
  if (y >= 0 && y < 100) y += y < 30 ? 2000 : 1900;
  giveDate(call, serialOf(y, boundedPart(call, 1), boundedPart(call, 2)));
}

void timeSerial(Call& call) {
  giveDate(call, fromLinear(timeOf(boundedPart(call, 0), boundedPart(call, 1), boundedPart(call, 2))));
}

void dateValue(Call& call) { call.give(std::trunc(call.date(0))); }
void timeValue(Call& call) {
  const double serial = call.date(0);
  call.give(std::fabs(serial - std::trunc(serial)));
}

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

Interval interval(const Call& call, int i) {
  constexpr std::pair<const char*, Interval> names[] = {
      {"yyyy", Interval::Year}, {"q", Interval::Quarter}, {"m", Interval::Month}, {"y", Interval::DayOfYear},
      {"d", Interval::Day},     {"w", Interval::Weekday}, {"ww", Interval::Week}, {"h", Interval::Hour},
      {"n", Interval::Minute},  {"s", Interval::Second},
  };
  const std::string name = call.text(i);
  for (const auto& [text, value] : names) {
    if (sameText(text, name)) return value;
  }
  badArgument();
}

// A month moved keeps its day as far as the new month has it: January 31 and one month is the last of
// February.
std::optional<double> addMonths(double serial, long months) {
  const DateParts from = *partsOf(serial);
  const auto first = serialOf(from.year, from.month + months, 1);
  const auto next = serialOf(from.year, from.month + months + 1, 1);
  if (!first || !next) return std::nullopt;
  const double lastDay = *next - *first;
  const double date = *first + std::min<double>(from.day, lastDay) - 1;
  const double time = std::fabs(serial - std::trunc(serial));
  return date < 0 ? date - time : date + time;
}

void dateAdd(Call& call) {
  const Interval unit = interval(call, 0);
  const double serial = call.date(2);
  const double count = std::trunc(call.number(1));
  if (std::fabs(count) > 1e12) Call::fail(overflow, "Overflow");
  const auto months = static_cast<long>(std::fmax(-1e6, std::fmin(1e6, count)));
  const auto seconds = [&](double each) {
    return fromLinear(std::round((toLinear(serial) * 86400) + count * each) / 86400);
  };
  switch (unit) {
    case Interval::Year:
      return giveDate(call, addMonths(serial, months * 12));
    case Interval::Quarter:
      return giveDate(call, addMonths(serial, months * 3));
    case Interval::Month:
      return giveDate(call, addMonths(serial, months));
    case Interval::Week:
      return giveDate(call, fromLinear(toLinear(serial) + count * 7));
    case Interval::Hour:
      return giveDate(call, seconds(3600));
    case Interval::Minute:
      return giveDate(call, seconds(60));
    case Interval::Second:
      return giveDate(call, seconds(1));
    default:
      return giveDate(call, fromLinear(toLinear(serial) + count));
  }
}

// Counts the borders that lie between the two dates.
void dateDiff(Call& call) {
  const Interval unit = interval(call, 0);
  const double from = call.date(1), to = call.date(2);
  const DateParts a = *partsOf(from), b = *partsOf(to);
  const auto days = static_cast<int64_t>(std::floor(toLinear(to)) - std::floor(toLinear(from)));
  const auto seconds = [](double day, const DateParts& p) {
    return static_cast<int64_t>(std::floor(toLinear(day))) * 86400 + p.hour * 3600 + p.minute * 60 + p.second;
  };
  const auto ticks = [&](int64_t each) {
    const auto floored = [each](int64_t s) { return s >= 0 ? s / each : -((each - 1 - s) / each); };
    return floored(seconds(to, b)) - floored(seconds(from, a));
  };
  int64_t result = days;
  switch (unit) {
    case Interval::Year:
      result = b.year - a.year;
      break;
    case Interval::Quarter:
      result = (b.year - a.year) * 4 + (b.month - 1) / 3 - (a.month - 1) / 3;
      break;
    case Interval::Month:
      result = (b.year - a.year) * 12 + b.month - a.month;
      break;
    case Interval::Weekday:
      result = days / 7;
      break;
    case Interval::Week: {
      const int first = firstWeekday(call, 3);
      result = (days - weekdayFrom(to, first) + weekdayFrom(from, first)) / 7;
      break;
    }
    case Interval::Hour:
      result = ticks(3600);
      break;
    case Interval::Minute:
      result = ticks(60);
      break;
    case Interval::Second:
      result = ticks(1);
      break;
    default:
      break;
  }
  if (result < INT32_MIN || result > INT32_MAX) Call::fail(overflow, "Overflow");
  call.give(result);
}

int64_t dayOfYear(double serial, const DateParts& p) {
  return static_cast<int64_t>(std::trunc(serial) - serialOf(p.year, 1, 1).value_or(0)) + 1;
}

void datePart(Call& call) {
  const double serial = call.date(1);
  const DateParts p = *partsOf(serial);
  const int first = firstWeekday(call, 2);
  switch (interval(call, 0)) {
    case Interval::Year:
      return call.give(int64_t{p.year});
    case Interval::Quarter:
      return call.give(int64_t{(p.month - 1) / 3 + 1});
    case Interval::Month:
      return call.give(int64_t{p.month});
    case Interval::DayOfYear:
      return call.give(dayOfYear(serial, p));
    case Interval::Day:
      return call.give(int64_t{p.day});
    case Interval::Weekday:
      return call.give(int64_t{weekdayFrom(serial, first)});
    case Interval::Week: {  // the week of January 1 is the first
      const int start = weekdayFrom(serialOf(p.year, 1, 1).value_or(0), first);
      return call.give((dayOfYear(serial, p) + start - 2) / 7 + 1);
    }
    case Interval::Hour:
      return call.give(int64_t{p.hour});
    case Interval::Minute:
      return call.give(int64_t{p.minute});
    case Interval::Second:
      return call.give(int64_t{p.second});
  }
}

void named(Call& call, const char* const* names, int64_t index, int64_t count) {
  if (index < 1 || index > count) badArgument();
  const std::string_view name = names[index - 1];
  const bool brief = call.count() > 1 && call.whole(1) != 0;
  call.give(brief ? name.substr(0, 3) : name);
}
void monthName(Call& call) { named(call, monthNames, call.whole(0), 12); }
void weekdayName(Call& call) { named(call, dayNames, call.whole(0), 7); }

constexpr FunctionRow rows[] = {
    {"NOW", "", Type::Date, now, ResultRule::Fixed, true, false},
    {"DATE", "", Type::Date, today, ResultRule::Fixed, true, false},
    {"TIME", "", Type::Date, timeOfDay, ResultRule::Fixed, true, false},
    {"TIMER", "", Type::Double, timer, ResultRule::Fixed, true, false},
    {"YEAR", "d", Type::Long, year},
    {"MONTH", "d", Type::Long, month},
    {"DAY", "d", Type::Long, day},
    {"HOUR", "d", Type::Long, hour},
    {"MINUTE", "d", Type::Long, minute},
    {"SECOND", "d", Type::Long, second},
    {"WEEKDAY", "d|n", Type::Long, weekday},
    {"DATESERIAL", "nnn", Type::Date, dateSerial},
    {"TIMESERIAL", "nnn", Type::Date, timeSerial},
    {"DATEVALUE", "d", Type::Date, dateValue},
    {"TIMEVALUE", "d", Type::Date, timeValue},
    {"DATEADD", "tnd", Type::Date, dateAdd},
    {"DATEDIFF", "tdd|nn", Type::Long, dateDiff},
    {"DATEPART", "td|nn", Type::Long, datePart},
    {"MONTHNAME", "n|n", Type::Text, monthName},
    {"WEEKDAYNAME", "n|nn", Type::Text, weekdayName},
};

}  // namespace

std::span<const FunctionRow> dateFunctions() { return rows; }

}  // namespace jet
