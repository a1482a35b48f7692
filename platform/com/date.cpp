#ifndef _WIN32

#include <langinfo.h>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <cwchar>
#include <optional>
#include <string>

#include "platform/com/automation.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace {

constexpr double firstDay = -657434;    // 0100-01-01
constexpr double endDay = 2958466;      // the day after 9999-12-31
constexpr int64_t epochOffset = 25569;  // days from 1899-12-30 to 1970-01-01
constexpr int64_t secondsOfDay = 24 * 3600;

// Days since 1970-01-01 of a date of the Gregorian calendar, and back. Years are counted from March on,
// so that the leap day ends one, in eras of 400 years.
int64_t daysFromDate(int64_t year, unsigned month, unsigned day) {
  year -= month <= 2;
  const int64_t era = (year >= 0 ? year : year - 399) / 400;
  const auto yearOfEra = static_cast<unsigned>(year - era * 400);
  const unsigned dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
  const unsigned dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
  return era * 146097 + static_cast<int64_t>(dayOfEra) - 719468;
}

void dateFromDays(int64_t days, int& year, int& month, int& day) {
  days += 719468;
  const int64_t era = (days >= 0 ? days : days - 146096) / 146097;
  const auto dayOfEra = static_cast<unsigned>(days - era * 146097);
  const unsigned yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
  const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
  const unsigned shifted = (5 * dayOfYear + 2) / 153;
  day = static_cast<int>(dayOfYear - (153 * shifted + 2) / 5 + 1);
  month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
  year = static_cast<int>(static_cast<int64_t>(yearOfEra) + era * 400 + (month <= 2));
}

struct Moment {
  int64_t day;  // since 1899-12-30
  int64_t second;
};

bool momentOf(DATE date, Moment& moment) {
  if (!(date > firstDay - 1 && date < endDay)) return false;
  double whole = std::trunc(date);
  auto second = static_cast<int64_t>(std::llround(std::fabs(date - whole) * secondsOfDay));
  if (second >= secondsOfDay) {
    second -= secondsOfDay;
    whole += 1;
  }
  moment = {static_cast<int64_t>(whole), second};
  return whole < endDay && whole >= firstDay;
}

// Takes a UTF-8 locale object of the user for the time of a call.
class UserLocale {
 public:
  UserLocale() : locale_(newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr)) {}
  ~UserLocale() {
    if (locale_) freelocale(locale_);
  }
  UserLocale(const UserLocale&) = delete;
  UserLocale& operator=(const UserLocale&) = delete;
  std::string item(nl_item which) const { return locale_ ? nl_langinfo_l(which, locale_) : ""; }
  locale_t get() const { return locale_; }

 private:
  locale_t locale_;
};

// Patterns for strftime. Short years are lengthened: a stored date must not lose its century. A locale that
// writes month/day (and the plain C locale) gets numbers without leading zeros and a 12-hour clock.
struct Patterns {
  bool american = true;
  bool dayFirst = false;
  std::string date, time;
};

Patterns userPatterns(const UserLocale& locale) {
  Patterns result;
  result.date = locale.item(D_FMT);
  result.time = locale.item(T_FMT);
  if (result.date.empty() || result.date.rfind("%m/%d/", 0) == 0 || result.date == "%D") return result;
  result.american = false;
  for (size_t at = 0; (at = result.date.find("%y", at)) != std::string::npos; at += 2)
    result.date[at + 1] = 'Y';
  result.dayFirst =
      result.date.rfind("%d", 0) == 0 || result.date.rfind("%e", 0) == 0 || result.date.rfind("%-d", 0) == 0;
  return result;
}

/// The user's locale with its patterns. Looking a locale up costs far more than using it, so it is kept as
/// long as the environment names the same one.
struct UserDates {
  UserLocale locale;
  Patterns patterns = userPatterns(locale);
};

const UserDates& userDates() {
  thread_local std::string names;
  thread_local std::optional<UserDates> dates;
  std::string now;
  for (const char* name : {"LC_ALL", "LC_TIME", "LC_CTYPE", "LANG"}) {
    const char* value = std::getenv(name);
    now.append(value ? value : "").push_back('\n');
  }
  if (!dates || now != names) {
    dates.emplace();
    names = std::move(now);
  }
  return *dates;
}

/// A number of at least 0; `least` digits with zeros before it.
void appendNumber(std::wstring& text, int number, int least = 1) {
  if (number >= 10 || least > 1) appendNumber(text, number / 10, least - 1);
  text += static_cast<wchar_t>(L'0' + number % 10);
}

// A query's rows hold a date each: formatting with swprintf would cost more than fetching it.
std::wstring american(const Moment& moment, int year, int month, int day) {
  std::wstring result;
  result.reserve(32);
  if (moment.day != 0) {
    appendNumber(result, month);
    appendNumber(result += L'/', day);
    appendNumber(result += L'/', year);
  }
  if (moment.second != 0 || moment.day == 0) {
    const auto second = static_cast<int>(moment.second);
    const int hour = second / 3600;
    if (!result.empty()) result += L' ';
    appendNumber(result, (hour + 11) % 12 + 1);
    appendNumber(result += L':', second / 60 % 60, 2);
    appendNumber(result += L':', second % 60, 2);
    result += hour < 12 ? L" AM" : L" PM";
  }
  return result;
}

std::wstring localized(const Patterns& patterns, locale_t locale, const Moment& moment, int year, int month,
                       int day) {
  std::tm parts{};
  parts.tm_year = year - 1900;
  parts.tm_mon = month - 1;
  parts.tm_mday = day;
  parts.tm_wday = static_cast<int>(((moment.day - 1) % 7 + 7) % 7);  // 1899-12-30 was a Saturday
  parts.tm_hour = static_cast<int>(moment.second / 3600);
  parts.tm_min = static_cast<int>(moment.second / 60 % 60);
  parts.tm_sec = static_cast<int>(moment.second % 60);
  std::string pattern;
  if (moment.day != 0) pattern = patterns.date;
  if (moment.second != 0 || moment.day == 0) pattern += (pattern.empty() ? "" : " ") + patterns.time;
  char text[256];
  const size_t length = strftime_l(text, sizeof text, pattern.c_str(), &parts, locale);
  return fromUtf8({text, length});
}

// Reads a text of numbers and separators.
class Scanner {
 public:
  explicit Scanner(const wchar_t* text) : at_(text) { skipBlanks(); }

  bool number(int& value, int mostDigits, int* digits = nullptr) {
    const wchar_t* start = at_;
    value = 0;
    while (*at_ >= L'0' && *at_ <= L'9' && at_ - start < mostDigits) value = value * 10 + (*at_++ - L'0');
    if (digits) *digits = static_cast<int>(at_ - start);
    return at_ != start;
  }
  bool take(wchar_t c) { return *at_ == c ? (++at_, true) : false; }
  wchar_t peek() const { return *at_; }
  void next() { ++at_; }
  void skipBlanks() {
    while (*at_ == L' ' || *at_ == L'\t') ++at_;
  }
  bool word(const wchar_t* lower) {
    const wchar_t* p = at_;
    for (; *lower; ++lower, ++p) {
      if (lowerLetter(*p) != *lower) return false;
    }
    at_ = p;
    return true;
  }
  const wchar_t* place() const { return at_; }
  void rewind(const wchar_t* place) { at_ = place; }
  bool atEnd() const { return *at_ == 0; }

 private:
  const wchar_t* at_;
};

// Two digits mean 1930 to 2029.
int fullYear(int year, int digits) { return digits > 2 ? year : year < 30 ? 2000 + year : 1900 + year; }

bool readDate(Scanner& in, bool dayFirst, SYSTEMTIME& parts) {
  int numbers[3], digits[3];
  if (!in.number(numbers[0], 4, &digits[0])) return false;
  const wchar_t separator = in.peek();
  if (separator != L'/' && separator != L'-' && separator != L'.') return false;
  for (int i = 1; i < 3; ++i) {
    if (!in.take(separator) || !in.number(numbers[i], 4, &digits[i])) return false;
  }
  const bool yearFirst = digits[0] > 2;
  const bool dayBeforeMonth = !yearFirst && (dayFirst || separator == L'.');
  parts.wYear = static_cast<WORD>(yearFirst ? numbers[0] : fullYear(numbers[2], digits[2]));
  parts.wMonth = static_cast<WORD>(yearFirst ? numbers[1] : dayBeforeMonth ? numbers[1] : numbers[0]);
  parts.wDay = static_cast<WORD>(yearFirst ? numbers[2] : dayBeforeMonth ? numbers[0] : numbers[1]);
  return true;
}

bool readTime(Scanner& in, SYSTEMTIME& parts) {
  int hour, minute, second = 0;
  if (!in.number(hour, 2) || !in.take(L':') || !in.number(minute, 2)) return false;
  if (in.take(L':') && !in.number(second, 2)) return false;
  in.skipBlanks();
  const bool am = in.word(L"am"), pm = !am && in.word(L"pm");
  if (am || pm) {
    if (hour < 1 || hour > 12) return false;
    hour = hour % 12 + (pm ? 12 : 0);
  }
  if (hour > 23 || minute > 59 || second > 59) return false;
  parts.wHour = static_cast<WORD>(hour);
  parts.wMinute = static_cast<WORD>(minute);
  parts.wSecond = static_cast<WORD>(second);
  return true;
}

}  // namespace

INT VariantTimeToSystemTime(DATE date, SYSTEMTIME* parts) {
  Moment moment;
  if (!parts || !momentOf(date, moment)) return 0;
  int year, month, day;
  dateFromDays(moment.day - epochOffset, year, month, day);
  *parts = SYSTEMTIME{};
  parts->wYear = static_cast<WORD>(year);
  parts->wMonth = static_cast<WORD>(month);
  parts->wDay = static_cast<WORD>(day);
  parts->wDayOfWeek = static_cast<WORD>(((moment.day - 1) % 7 + 7) % 7);
  parts->wHour = static_cast<WORD>(moment.second / 3600);
  parts->wMinute = static_cast<WORD>(moment.second / 60 % 60);
  parts->wSecond = static_cast<WORD>(moment.second % 60);
  return 1;
}

INT SystemTimeToVariantTime(SYSTEMTIME* parts, DATE* date) {
  if (!parts || !date) return 0;
  if (parts->wYear < 100 || parts->wYear > 9999 || parts->wMonth < 1 || parts->wMonth > 12 ||
      parts->wDay < 1 || parts->wHour > 23 || parts->wMinute > 59 || parts->wSecond > 59) {
    return 0;
  }
  const int64_t day = daysFromDate(parts->wYear, parts->wMonth, parts->wDay);
  int year, month, dayOfMonth;
  dateFromDays(day, year, month, dayOfMonth);
  if (month != parts->wMonth || dayOfMonth != parts->wDay) return 0;
  const double whole = static_cast<double>(day + epochOffset);
  const double fraction =
      (parts->wHour * 3600 + parts->wMinute * 60 + parts->wSecond) / static_cast<double>(secondsOfDay);
  *date = whole < 0 ? whole - fraction : whole + fraction;
  return 1;
}

HRESULT VarBstrFromDate(DATE date, LCID, ULONG, BSTR* text) {
  if (!text) return E_POINTER;
  *text = nullptr;
  Moment moment;
  if (!momentOf(date, moment)) return E_INVALIDARG;
  int year, month, day;
  dateFromDays(moment.day - epochOffset, year, month, day);
  const auto& [locale, patterns] = userDates();
  const std::wstring result = patterns.american ? american(moment, year, month, day)
                                                : localized(patterns, locale.get(), moment, year, month, day);
  *text = SysAllocStringLen(result.data(), static_cast<UINT>(result.size()));
  return *text ? S_OK : E_OUTOFMEMORY;
}

HRESULT VarDateFromStr(const OLECHAR* text, LCID, ULONG, DATE* date) {
  if (!text || !date) return E_INVALIDARG;
  SYSTEMTIME parts{1899, 12, 0, 30, 0, 0, 0, 0};
  Scanner in(text);
  const wchar_t* start = in.place();
  const bool hasDate = readDate(in, userDates().patterns.dayFirst, parts);
  if (!hasDate) in.rewind(start);
  if (hasDate && !in.take(L'T')) in.skipBlanks();
  const bool good = (hasDate && in.atEnd()) || readTime(in, parts);
  in.skipBlanks();
  if (!good || !in.atEnd()) return DISP_E_TYPEMISMATCH;
  return SystemTimeToVariantTime(&parts, date) ? S_OK : DISP_E_TYPEMISMATCH;
}

#endif
