#include <algorithm>
#include <cctype>
#include <cmath>

#include "engine/jet_sql/convert.h"
#include "engine/jet_sql/date.h"
#include "engine/text/collation.h"

namespace jet {

std::string textOf(const Call& call, int i, Reading reading) {
  if (call.storage(i) != SQLITE_INTEGER && call.storage(i) != SQLITE_FLOAT) return call.text(i);
  switch (reading) {
    case Reading::Date:
      return dateText(call.number(i));
    case Reading::Scaled:
      return currencyText(call.whole(i));
    case Reading::Single:
      return numberText(call.number(i), 7);
    case Reading::Plain:
      break;
  }
  return call.text(i);
}

namespace {

int64_t ranged(const Call& call, int i, Reading reading, int64_t low, int64_t high) {
  int64_t value;
  if (reading == Reading::Scaled && call.storage(i) == SQLITE_INTEGER) {
    value = static_cast<int64_t>(std::nearbyint(static_cast<long double>(call.whole(i)) / 10000));
  } else {
    value = call.whole(i);
  }
  if (value < low || value > high) Call::fail(overflow, "Overflow");
  return value;
}

double realOf(const Call& call, int i, Reading reading) {
  const double value = call.number(i);
  return reading == Reading::Scaled && call.storage(i) == SQLITE_INTEGER ? value / 10000 : value;
}

bool truthOf(const Call& call, int i) {
  if (call.storage(i) != SQLITE_TEXT) return call.number(i) != 0;
  const std::string words = call.text(i);
  for (const char* yes : {"true", "yes", "on"}) {
    if (sameText(words, yes)) return true;
  }
  for (const char* no : {"false", "no", "off"}) {
    if (sameText(words, no)) return false;
  }
  return call.number(i) != 0;
}

std::string guidOf(const Call& call, int i) {
  std::string text = call.text(i);
  if (!text.starts_with('{')) text = "{" + text + "}";
  bool good = text.size() == 38 && text.back() == '}';
  for (size_t k = 1; good && k < 37; ++k) {
    const bool dash = k == 9 || k == 14 || k == 19 || k == 24;
    text[k] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[k])));
    good = dash ? text[k] == '-' : std::isxdigit(static_cast<unsigned char>(text[k])) != 0;
  }
  if (!good) Call::fail(typeMismatch, "Data type mismatch: a GUID is expected");
  return text;
}

}  // namespace

void giveAs(Call& call, int i, Type type, Reading reading) {
  if (call.isNull(i)) return call.null();
  if (call.storage(i) == SQLITE_BLOB && type != Type::Binary && type != Type::Unknown) {
    Call::fail(typeMismatch, "Data type mismatch: binary data");
  }
  switch (type) {
    case Type::Unknown:
      return call.giveSame(i);
    case Type::YesNo:
      return call.giveTruth(truthOf(call, i));
    case Type::Byte:
      return call.give(ranged(call, i, reading, 0, 255));
    case Type::Integer:
      return call.give(ranged(call, i, reading, INT16_MIN, INT16_MAX));
    case Type::Long:
      return call.give(ranged(call, i, reading, INT32_MIN, INT32_MAX));
    case Type::Currency:
      if (reading == Reading::Scaled && call.storage(i) == SQLITE_INTEGER) return call.giveSame(i);
      return call.give(scaledCurrency(call.number(i)));
    case Type::Single: {
      const double value = realOf(call, i, reading);
      if (std::fabs(value) > 3.402823466e38) Call::fail(overflow, "Overflow");
      return call.give(static_cast<double>(static_cast<float>(value)));
    }
    case Type::Double:
      return call.give(realOf(call, i, reading));
    case Type::Date:
      return call.give(reading == Reading::Scaled ? realOf(call, i, reading) : call.date(i));
    case Type::Text:
    case Type::Memo:
      return call.give(std::string_view(textOf(call, i, reading)));
    case Type::Binary: {
      if (call.storage(i) == SQLITE_BLOB) return call.giveSame(i);
      const std::string bytes = call.text(i);
      return sqlite3_result_blob64(call.context(), bytes.data(), bytes.size(), SQLITE_TRANSIENT);
    }
    case Type::Guid:
      return call.give(std::string_view(guidOf(call, i)));
  }
}

namespace {

constexpr const char* nullMisuse = "Invalid use of null";

template <Type type>
void convert(Call& call) {
  if (call.isNull(0)) Call::fail(94, nullMisuse);
  giveAs(call, 0, type, Reading::Plain);
}

// With a letter for the argument's type first.
void convertDate(Call& call) {
  if (call.isNull(0)) Call::fail(94, nullMisuse);
  call.give(call.date(0));
}

void str(Call& call) {
  const std::string text = numberText(call.number(0));
  call.give(std::string_view(text.starts_with('-') ? text : " " + text));
}

// The number that a text begins with, blanks skipped, 0 for none; &H begins a hexadecimal number.
void val(Call& call) {
  std::string text = call.text(0);
  std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
  if (text.size() > 2 && text[0] == '&' && (text[1] | 0x20) == 'h') {
    const long long value = std::strtoll(text.substr(2, 8).c_str(), nullptr, 16);
    return call.give(
        static_cast<double>(text.size() <= 6 ? static_cast<int16_t>(value) : static_cast<int32_t>(value)));
  }
  size_t end = text.starts_with('-') || text.starts_with('+') ? 1 : 0;
  const auto digits = [&] {
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) ++end;
  };
  digits();
  if (end < text.size() && text[end] == '.') ++end, digits();
  if (end + 1 < text.size() && end > 0 && ((text[end] | 0x20) == 'e' || (text[end] | 0x20) == 'd')) {
    const size_t sign = text[end + 1] == '-' || text[end + 1] == '+' ? 1 : 0;
    if (end + 1 + sign < text.size() && std::isdigit(static_cast<unsigned char>(text[end + 1 + sign]))) {
      text[end] = 'e';
      end += 1 + sign;
      digits();
    }
  }
  call.give(parseNumber(text.substr(0, end)).value_or(0));
}

void hexOrOctal(Call& call, const char* format) {
  char buffer[32];
  const auto value = static_cast<unsigned>(call.longNumber(0));
  std::snprintf(buffer, sizeof buffer, format, value);
  call.give(std::string_view(buffer));
}
void hex(Call& call) { hexOrOctal(call, "%X"); }
void octal(Call& call) { hexOrOctal(call, "%o"); }

void isNumeric(Call& call) {
  const bool isDate = call.text(0) == "D";
  if (call.storage(1) == SQLITE_TEXT) return call.giveTruth(parseNumber(call.text(1)).has_value());
  call.giveTruth(!call.isNull(1) && call.storage(1) != SQLITE_BLOB && !isDate);
}

void isDate(Call& call) {
  if (call.storage(1) == SQLITE_TEXT) return call.giveTruth(parseDate(call.text(1)).has_value());
  call.giveTruth(!call.isNull(1) && call.text(0) == "D");
}

constexpr FunctionRow rows[] = {
    {"CBOOL", "n", Type::YesNo, convert<Type::YesNo>, ResultRule::Fixed, false},
    {"CBYTE", "n", Type::Byte, convert<Type::Byte>, ResultRule::Fixed, false},
    {"CINT", "n", Type::Integer, convert<Type::Integer>, ResultRule::Fixed, false},
    {"CLNG", "n", Type::Long, convert<Type::Long>, ResultRule::Fixed, false},
    {"CSNG", "n", Type::Single, convert<Type::Single>, ResultRule::Fixed, false},
    {"CDBL", "n", Type::Double, convert<Type::Double>, ResultRule::Fixed, false},
    {"CDEC", "n", Type::Double, convert<Type::Double>, ResultRule::Fixed, false},
    {"CCUR", "n", Type::Currency, convert<Type::Currency>, ResultRule::Fixed, false},
    {"CDATE", "d", Type::Date, convertDate, ResultRule::Fixed, false},
    {"CVDATE", "d", Type::Date, convertDate, ResultRule::Fixed, true},
    {"CSTR", "t", Type::Text, convert<Type::Text>, ResultRule::Fixed, false},
    {"STR", "n", Type::Text, str},
    {"VAL", "t", Type::Double, val},
    {"HEX", "n", Type::Text, hex},
    {"OCT", "n", Type::Text, octal},
    {"ISNUMERIC", "x", Type::YesNo, isNumeric, ResultRule::Fixed, false},
    {"ISDATE", "x", Type::YesNo, isDate, ResultRule::Fixed, false},
};

}  // namespace

std::span<const FunctionRow> conversionFunctions() { return rows; }

}  // namespace jet
