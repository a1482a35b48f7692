#include "engine/jet_sql/date.h"

#include <cctype>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

namespace jet {

const char* const monthNames[12] = {"January", "February", "March",     "April",   "May",      "June",
                                    "July",    "August",   "September", "October", "November", "December"};
const char* const dayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                 "Thursday", "Friday", "Saturday"};

namespace {

constexpr double secondsOfDay = 86400;
constexpr double firstDay = -657434, lastDay = 2958465;  // 0100-01-01 and 9999-12-31

constexpr long epochOffset = 25569;  // serial of 1970-01-01

int monthNamed(std::string_view word) {
  for (int i = 0; i < 12 && word.size() >= 3; ++i) {
    const std::string_view full = monthNames[i];
    if (word.size() > full.size() || (word.size() != 3 && word.size() != full.size())) continue;
    bool same = true;
    for (size_t k = 0; k < word.size(); ++k) same = same && (word[k] | 0x20) == (full[k] | 0x20);
    if (same) return i + 1;
  }
  return 0;
}

long fullYear(long year, size_t digits) {
  if (digits > 2) return year;
  return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<double> datePart(const std::vector<long>& numbers, const std::vector<size_t>& digits, int month,
                               size_t monthAt) {
  long year = 0, day = 0, m = month;
  if (month) {
    if (numbers.size() != 2) return std::nullopt;
    const bool yearFirst = monthAt > 0 && digits[0] > 2;
    day = numbers[yearFirst ? 1 : 0];
    year = fullYear(numbers[yearFirst ? 0 : 1], digits[yearFirst ? 0 : 1]);
  } else {
    if (numbers.size() != 3) return std::nullopt;
    if (digits[0] > 2) {
      year = numbers[0], m = numbers[1], day = numbers[2];
    } else {
      m = numbers[0], day = numbers[1], year = fullYear(numbers[2], digits[2]);
      if (m > 12 && day <= 12) std::swap(m, day);
    }
  }
  if (m < 1 || m > 12 || day < 1 || day > 31) return std::nullopt;
  const auto serial = serialOf(year, m, day);
  if (!serial || partsOf(*serial)->day != day) return std::nullopt;
  return serial;
}

}  // namespace

std::optional<double> serialOf(long year, long month, long day) {
  if (std::labs(year) > 20000 || std::labs(month) > 300000 || std::labs(day) > 5000000) return std::nullopt;
  const long months = year * 12 + month - 1;
  const long carried = months >= 0 ? months / 12 : -((11 - months) / 12);
  // What the calendar's years don't hold is far from the serials that there are.
  const std::chrono::year calendarYear(static_cast<int>(carried));
  if (static_cast<int>(calendarYear) != carried) return std::nullopt;
  const std::chrono::sys_days first =
      calendarYear / std::chrono::month(static_cast<unsigned>(months - carried * 12 + 1)) / 1;
  const double serial = static_cast<double>(first.time_since_epoch().count() + day - 1 + epochOffset);
  if (serial < firstDay || serial > lastDay) return std::nullopt;
  return serial;
}

double timeOf(long hour, long minute, long second) {
  return (static_cast<double>(hour) * 3600 + static_cast<double>(minute) * 60 + static_cast<double>(second)) /
         secondsOfDay;
}

double toLinear(double serial) {
  const double day = std::trunc(serial);
  return day + std::fabs(serial - day);
}

double fromLinear(double days) {
  const double day = std::floor(days);
  return day >= 0 ? days : day - (days - day);
}

std::optional<DateParts> partsOf(double serial) {
  if (!(serial > firstDay - 1 && serial < lastDay + 1)) return std::nullopt;
  double day = std::trunc(serial);
  long seconds = std::lround(std::fabs(serial - day) * secondsOfDay);
  if (seconds >= 86400) day += 1, seconds = 0;
  const std::chrono::year_month_day date{
      std::chrono::sys_days(std::chrono::days(static_cast<int>(day) - epochOffset))};
  DateParts parts{};
  parts.day = static_cast<int>(static_cast<unsigned>(date.day()));
  parts.month = static_cast<int>(static_cast<unsigned>(date.month()));
  parts.year = static_cast<int>(date.year());
  parts.hour = static_cast<int>(seconds / 3600);
  parts.minute = static_cast<int>(seconds / 60 % 60);
  parts.second = static_cast<int>(seconds % 60);
  return parts;
}

int weekdayOf(double serial) {
  // Day zero, 1899-12-30, was a Saturday.
  const long day = static_cast<long>(std::trunc(serial));
  return static_cast<int>(((day + 6) % 7 + 7) % 7) + 1;
}

namespace {

/// What stands in a text that is read as a date: its numbers in their order, and where the month is named.
class DateReader {
 public:
  explicit DateReader(std::string_view text) : text_(text) {}

  std::optional<double> serial() {
    while (at_ < text_.size()) {
      if (!step()) return std::nullopt;
    }
    const bool loneNumber = times_.size() == 1 && half_ == Half::none;
    if (colon_ || times_.size() > 3 || loneNumber || (dates_.empty() && times_.empty())) return std::nullopt;
    const bool hasDay = !dates_.empty() || month_;
    const auto day = hasDay ? datePart(dates_, digits_, month_, monthAt_) : 0.0;
    const auto time = times_.empty() ? 0.0 : timePart();
    if (!day || !time) return std::nullopt;
    return *day < 0 ? *day - *time : *day + *time;
  }

 private:
  enum class Half { none, morning, afternoon };

  static Half halfOf(char letter) {
    return (letter | 0x20) == 'a' ? Half::morning : (letter | 0x20) == 'p' ? Half::afternoon : Half::none;
  }

  bool step() {
    const auto c = static_cast<unsigned char>(text_[at_]);
    if (std::isdigit(c)) return number();
    if (std::isalpha(c)) return word();
    ++at_;
    if (c != ':') return std::string_view(" /-,.").find(text_[at_ - 1]) != std::string_view::npos;
    return !times_.empty() && !std::exchange(colon_, true);
  }

  bool number() {
    const size_t start = at_;
    long value = 0;
    for (; at_ < text_.size() && std::isdigit(static_cast<unsigned char>(text_[at_])); ++at_) {
      if (at_ - start >= 4) return false;
      value = value * 10 + (text_[at_] - '0');
    }
    if (colon_ || isHour()) {
      times_.push_back(value);
    } else {
      dates_.push_back(value);
      digits_.push_back(at_ - start);
    }
    colon_ = false;
    return true;
  }

  /// By what comes behind the number.
  bool isHour() const {
    size_t after = at_;
    while (after < text_.size() && text_[after] == ' ') ++after;
    if (after >= text_.size()) return false;
    if (text_[after] == ':') return true;
    const Half half = halfOf(text_[after]);
    const bool wanted = half == Half::afternoon || (half == Half::morning && half_ == Half::none);
    return wanted && after + 1 < text_.size() && (text_[after + 1] | 0x20) == 'm';
  }

  bool word() {
    const size_t start = at_;
    while (at_ < text_.size() && std::isalpha(static_cast<unsigned char>(text_[at_]))) ++at_;
    const std::string_view word = text_.substr(start, at_ - start);
    if (word.size() == 2 && (word[1] | 0x20) == 'm' && half_ == Half::none && !times_.empty()) {
      half_ = halfOf(word[0]);
      return half_ != Half::none;
    }
    const int named = monthNamed(word);
    if (!named || month_) return false;
    month_ = named;
    monthAt_ = dates_.size();
    return true;
  }

  std::optional<double> timePart() {
    times_.resize(3);
    if (half_ != Half::none) {
      if (times_[0] < 1 || times_[0] > 12) return std::nullopt;
      times_[0] = times_[0] % 12 + (half_ == Half::afternoon ? 12 : 0);
    }
    if (times_[0] > 23 || times_[1] > 59 || times_[2] > 59) return std::nullopt;
    return timeOf(times_[0], times_[1], times_[2]);
  }

  std::string_view text_;
  size_t at_ = 0;
  std::vector<long> dates_, times_;
  std::vector<size_t> digits_;  ///< how many each of `dates_` has
  int month_ = 0;
  size_t monthAt_ = 0;
  Half half_ = Half::none;
  bool colon_ = false;  ///< a time's next number is expected
};

}  // namespace

std::optional<double> parseDate(std::string_view text) { return DateReader(text).serial(); }

std::string dateText(double serial) {
  const auto parts = partsOf(serial);
  if (!parts) return "";
  char date[32] = "", time[32] = "";
  const bool midnight = parts->hour == 0 && parts->minute == 0 && parts->second == 0;
  const bool dayZero = parts->year == 1899 && parts->month == 12 && parts->day == 30;
  if (!dayZero || midnight) {
    std::snprintf(date, sizeof date, "%d/%d/%04d", parts->month, parts->day, parts->year);
  }
  if (midnight && !dayZero) return date;
  std::snprintf(time, sizeof time, "%d:%02d:%02d %s", (parts->hour + 11) % 12 + 1, parts->minute,
                parts->second, parts->hour < 12 ? "AM" : "PM");
  return dayZero ? std::string(time) : std::string(date) + " " + time;
}

}  // namespace jet
