#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "engine/jet_sql/date.h"
#include "engine/jet_sql/functions.h"
#include "engine/text/collation.h"
#include "platform/text/utf.h"

namespace jet {
namespace {

struct Named {
  const char* name;
  const char* format;
};

constexpr Named namedNumbers[] = {
    {"Currency", "$#,##0.00;($#,##0.00)"},
    {"Fixed", "0.00"},
    {"Standard", "#,##0.00"},
    {"Percent", "0.00%"},
    {"Scientific", "0.00E+00"},
    {"Yes/No", "\"Yes\";\"Yes\";\"No\""},
    {"True/False", "\"True\";\"True\";\"False\""},
    {"On/Off", "\"On\";\"On\";\"Off\""},
};

constexpr Named namedDates[] = {
    {"General Date", "c"},      {"Long Date", "dddd, mmmm d, yyyy"}, {"Medium Date", "dd-mmm-yy"},
    {"Short Date", "m/d/yyyy"}, {"Long Time", "h:nn:ss AM/PM"},      {"Medium Time", "hh:nn AM/PM"},
    {"Short Time", "hh:nn"},
};

std::string digitsText(double value, int decimals) {
  char buffer[400];
  const auto end =
      std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::fixed, decimals).ptr;
  return {buffer, end};
}

// Rounds half away from zero in decimal digits, by the shortest text of the number.
std::string roundedText(double value, int decimals) {
  std::string text = digitsText(value, 0);
  const std::string shortest = numberText(std::fabs(value));
  if (shortest.find('E') != std::string::npos) return digitsText(value, decimals);
  text = shortest;
  size_t point = text.find('.');
  if (point == std::string::npos) point = text.size(), text += '.';
  while (text.size() - point - 1 < static_cast<size_t>(decimals) + 1) text += '0';
  const bool up = text[point + 1 + decimals] >= '5';
  text.resize(point + 1 + decimals);
  for (size_t i = text.size(); up && i-- > 0;) {
    if (text[i] == '.') continue;
    if (text[i] != '9') {
      ++text[i];
      break;
    }
    text[i] = '0';
    if (i == 0) text.insert(0, "1");
  }
  if (decimals == 0) text.pop_back();
  return text;
}

// One section of a number format, cut into its digit places and the texts around them.
struct NumberPattern {
  std::string before, after;
  int wholeZeros = 0, decimals = 0, decimalZeros = 0, exponentDigits = 0;
  bool hasDigits = false, hasPoint = false, groups = false, percent = false, plusExponent = false;
};

size_t literalAt(std::string_view format, size_t i, std::string& out) {
  if (format[i] == '"') {
    const size_t end = std::min(format.find('"', i + 1), format.size());
    out.append(format.substr(i + 1, end - i - 1));
    return end;
  }
  if (format[i] == '\\' && i + 1 < format.size()) ++i;
  out += format[i];
  return i;
}

NumberPattern parsePattern(std::string_view format) {
  NumberPattern p;
  for (size_t i = 0; i < format.size(); ++i) {
    const char c = format[i];
    if (c == '0' || c == '#') {
      p.hasDigits = true;
      if (p.hasPoint) {
        ++p.decimals;
        if (c == '0') p.decimalZeros = p.decimals;
      } else if (c == '0' || p.wholeZeros > 0) {
        ++p.wholeZeros;
      }
    } else if (c == '.' && !p.hasPoint) {
      p.hasPoint = p.hasDigits = true;
    } else if (c == ',' && p.hasDigits && !p.hasPoint) {
      p.groups = true;
    } else if (c == '%') {
      p.percent = true;
      (p.hasDigits ? p.after : p.before) += '%';
    } else if ((c == 'E' || c == 'e') && p.hasDigits && i + 1 < format.size() &&
               (format[i + 1] == '+' || format[i + 1] == '-')) {
      p.plusExponent = format[++i] == '+';
      while (i + 1 < format.size() && (format[i + 1] == '0' || format[i + 1] == '#')) ++i, ++p.exponentDigits;
    } else {
      i = literalAt(format, i, p.hasDigits ? p.after : p.before);
    }
  }
  p.decimals = std::min(p.decimals, 30);
  p.decimalZeros = std::min(p.decimalZeros, 30);
  return p;
}

std::string grouped(std::string whole) {
  for (int i = static_cast<int>(whole.size()) - 3; i > 0; i -= 3) whole.insert(static_cast<size_t>(i), ",");
  return whole;
}

std::string formatSection(double value, std::string_view section, bool sign) {
  NumberPattern p = parsePattern(section);
  if (!p.hasDigits) return (sign && value < 0 ? "-" : "") + p.before + p.after;
  if (p.percent) value *= 100;
  int exponent = 0;
  if (p.exponentDigits && value != 0) {
    exponent = static_cast<int>(std::floor(std::log10(std::fabs(value)))) - std::max(0, p.wholeZeros - 1);
    value /= std::pow(10.0, exponent);
    if (std::fabs(value) + 0.5 * std::pow(10.0, -p.decimals) >= std::pow(10.0, std::max(1, p.wholeZeros))) {
      value /= 10;
      ++exponent;
    }
  }
  const std::string digits = roundedText(value, p.decimals);
  const size_t point = std::min(digits.find('.'), digits.size());
  std::string whole = digits.substr(0, point),
              fraction = point < digits.size() ? digits.substr(point + 1) : "";
  if (whole == "0") whole.clear();
  while (whole.size() < static_cast<size_t>(p.wholeZeros)) whole.insert(0, "0");
  if (p.groups) whole = grouped(whole);
  while (fraction.size() > static_cast<size_t>(p.decimalZeros) && fraction.back() == '0') fraction.pop_back();
  const bool zero = digits.find_first_not_of("0.") == std::string::npos;
  std::string out = (sign && value < 0 && !zero ? "-" : "") + p.before + whole;
  if (p.hasPoint) out += "." + fraction;
  if (p.exponentDigits) {
    std::string power = std::to_string(std::abs(exponent));
    while (power.size() < static_cast<size_t>(std::min(p.exponentDigits, 9))) power.insert(0, "0");
    out += std::string("E") + (exponent < 0 ? "-" : p.plusExponent ? "+" : "") + power;
  }
  return out + p.after;
}

std::vector<std::string_view> sectionsOf(std::string_view format) {
  std::vector<std::string_view> sections;
  bool quoted = false;
  size_t start = 0;
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] == '"') quoted = !quoted;
    if (format[i] == '\\') ++i;
    if (i < format.size() && format[i] == ';' && !quoted) {
      sections.push_back(format.substr(start, i - start));
      start = i + 1;
    }
  }
  sections.push_back(format.substr(std::min(start, format.size())));
  return sections;
}

std::string formatNumber(double value, std::string_view format) {
  const auto sections = sectionsOf(format);
  if (value == 0 && sections.size() > 2 && !sections[2].empty()) return formatSection(0, sections[2], false);
  if (value < 0 && sections.size() > 1 && !sections[1].empty())
    return formatSection(-value, sections[1], false);
  return formatSection(value, sections[0], true);
}

std::string padded(int value, size_t width) {
  std::string text = std::to_string(value);
  while (text.size() < width) text.insert(0, "0");
  return text;
}

struct DateFormatter {
  double serial;
  DateParts p;
  bool halfDay = false, afterHour = false;
  std::string out;

  void letters(char letter, size_t count) {
    const bool minutes = letter == 'n' || (letter == 'm' && afterHour && count <= 2);
    if (letter != 'm' || minutes) afterHour = letter == 'h';
    switch (letter) {
      case 'd':
        if (count <= 2)
          out += padded(p.day, count);
        else if (count <= 4)
          out += std::string_view(dayNames[weekdayOf(serial) - 1]).substr(0, count == 3 ? 3 : 99);
        else
          out += formatValue(serial, true, count == 5 ? "m/d/yyyy" : "dddd, mmmm d, yyyy");
        break;
      case 'm':
        if (minutes)
          out += padded(p.minute, count);
        else if (count <= 2)
          out += padded(p.month, count);
        else
          out += std::string_view(monthNames[p.month - 1]).substr(0, count == 3 ? 3 : 99);
        break;
      case 'n':
        out += padded(p.minute, std::min<size_t>(count, 2));
        break;
      case 'y':
        if (count == 1)
          out +=
              std::to_string(static_cast<int>(std::trunc(serial) - serialOf(p.year, 1, 1).value_or(0)) + 1);
        else
          out += count == 2 ? padded(p.year % 100, 2) : padded(p.year, 4);
        break;
      case 'h':
        out += padded(halfDay ? (p.hour + 11) % 12 + 1 : p.hour, std::min<size_t>(count, 2));
        break;
      case 's':
        out += padded(p.second, std::min<size_t>(count, 2));
        break;
      case 'q':
        out += std::to_string((p.month - 1) / 3 + 1);
        break;
      case 'c':
        out += dateText(serial);
        break;
      case 't':
        out += formatValue(serial, true, "h:nn:ss AM/PM");
        break;
      case 'w': {
        const int first = weekdayOf(serialOf(p.year, 1, 1).value_or(0));
        const int day = static_cast<int>(std::trunc(serial) - serialOf(p.year, 1, 1).value_or(0));
        out += std::to_string(count == 1 ? weekdayOf(serial) : (day + first - 1) / 7 + 1);
        break;
      }
      default:
        break;
    }
  }
};

// Length of an AM/PM mark at `i`, 0 for none.
size_t halfDayMark(std::string_view format, size_t i) {
  for (const std::string_view mark : {"AM/PM", "A/P", "AMPM"}) {
    if (sameText(format.substr(i, mark.size()), mark)) return mark.size();
  }
  return 0;
}

std::string formatDate(double serial, std::string_view format) {
  const auto parts = partsOf(serial);
  if (!parts) return "";
  DateFormatter formatter{serial, *parts, false, false, ""};
  for (size_t i = 0; i < format.size(); ++i)
    formatter.halfDay = formatter.halfDay || halfDayMark(format, i) > 0;
  for (size_t i = 0; i < format.size();) {
    if (const size_t mark = halfDayMark(format, i)) {
      const bool morning = parts->hour < 12;
      const bool upper = format[i] == 'A';
      formatter.out += mark == 3 ? (morning ? (upper ? "A" : "a") : (upper ? "P" : "p"))
                                 : (morning ? (upper ? "AM" : "am") : (upper ? "PM" : "pm"));
      i += mark;
      continue;
    }
    const char letter = static_cast<char>(format[i] | 0x20);
    if (std::isalpha(static_cast<unsigned char>(format[i])) &&
        std::string_view("dmynhsqctw").find(letter) != std::string_view::npos) {
      size_t count = 1;
      while (i + count < format.size() && (format[i + count] | 0x20) == letter) ++count;
      formatter.letters(letter, count);
      i += count;
      continue;
    }
    i = literalAt(format, i, formatter.out) + 1;
  }
  return formatter.out;
}

bool looksLikeDate(std::string_view format) {
  bool quoted = false;
  for (size_t i = 0; i < format.size(); ++i) {
    const char c = format[i];
    if (c == '"') quoted = !quoted;
    if (c == '\\') ++i;
    if (quoted || c == '\\') continue;
    if (c == '0' || c == '#') return false;
    if (std::string_view("dDmMyYhHnNsS").find(c) != std::string_view::npos) return true;
  }
  return false;
}

// `@` and `&` take the text's characters from the right, `<` and `>` change its case.
std::string formatText(const std::string& text, std::string_view format) {
  std::wstring source = fromUtf8(text);
  if (format.find('<') != std::string_view::npos)
    std::transform(source.begin(), source.end(), source.begin(), lowerCharacter);
  if (format.find('>') != std::string_view::npos)
    std::transform(source.begin(), source.end(), source.begin(), upperCharacter);
  const auto places = static_cast<size_t>(
      std::count_if(format.begin(), format.end(), [](char c) { return c == '@' || c == '&'; }));
  if (places == 0)
    return format.find_first_of("<>") == std::string_view::npos ? std::string(format) : toUtf8(source);
  size_t missing = places > source.size() ? places - source.size() : 0;
  size_t taken = 0, seen = 0;
  std::string out;
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] == '@' || format[i] == '&') {
      ++seen;
      if (missing > 0) {
        --missing;
        if (format[i] == '@') out += ' ';
        continue;
      }
      const size_t count = seen == places ? source.size() - taken : 1;
      out += toUtf8(source.substr(taken, count));
      taken += count;
    } else if (format[i] != '<' && format[i] != '>' && format[i] != '!') {
      i = literalAt(format, i, out);
    }
  }
  return out;
}

// Format(value, format): the letter of the value's type comes first.
void format(Call& call) {
  const bool isDate = call.text(0) == "D";
  const std::string pattern = call.count() > 2 ? call.text(2) : "";
  if (call.isNull(1)) return call.give(std::string_view(""));
  if (call.storage(1) == SQLITE_TEXT) {
    const std::string text = call.text(1);
    if (pattern.empty()) return call.give(std::string_view(text));
    const auto number = parseNumber(text);
    const auto date = parseDate(text);
    const bool named = std::any_of(std::begin(namedDates), std::end(namedDates),
                                   [&](const Named& n) { return sameText(n.name, pattern); });
    if (date && !number && (named || looksLikeDate(pattern)))
      return call.give(std::string_view(formatValue(*date, true, pattern)));
    if (number && pattern.find_first_of("@&<>") == std::string::npos) {
      return call.give(std::string_view(formatValue(*number, false, pattern)));
    }
    return call.give(std::string_view(formatText(text, pattern)));
  }
  const double value = call.number(1);
  if (pattern.find_first_of("@&") != std::string::npos && !isDate) {
    return call.give(std::string_view(formatText(call.text(1), pattern)));
  }
  call.give(std::string_view(formatValue(value, isDate, pattern)));
}

constexpr FunctionRow rows[] = {
    {"FORMAT", "x|tnn", Type::Text, format, ResultRule::Fixed, false},
};

}  // namespace

std::string formatValue(double value, bool isDate, std::string_view format) {
  if (format.empty() || sameText(format, "General Number"))
    return isDate ? dateText(value) : numberText(value);
  for (const Named& named : namedNumbers) {
    if (sameText(named.name, format)) return formatNumber(value, named.format);
  }
  for (const Named& named : namedDates) {
    if (sameText(named.name, format)) return formatDate(value, named.format);
  }
  return isDate                  ? formatDate(value, format)
         : looksLikeDate(format) ? formatDate(value, format)
                                 : formatNumber(value, format);
}

std::span<const FunctionRow> formatFunctions() { return rows; }

}  // namespace jet
