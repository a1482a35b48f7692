#include "engine/jet_sql/functions.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>
#include <map>

#include "engine/errors/errors.h"
#include "engine/errors/raised.h"
#include "engine/jet_sql/date.h"
#include "engine/jet_sql/jet_sql.h"
#include "engine/text/collation.h"
#include "platform/text/utf.h"

namespace jet {
namespace {

constexpr auto tables = {textFunctions, conversionFunctions, mathFunctions, dateFunctions, formatFunctions};

void runRow(sqlite3_context* context, int count, sqlite3_value** values) {
  const auto& row = *static_cast<const FunctionRow*>(sqlite3_user_data(context));
  if (row.nullGivesNull) {
    for (int i = 1; i < count; ++i) {
      if (sqlite3_value_type(values[i]) == SQLITE_NULL) return sqlite3_result_null(context);
    }
  }
  try {
    Call call(context, count, values);
    row.body(call);
  } catch (const Failure& failure) {
    raise(context, failure.error, failure.error.complete ? -1 : sqlite3_value_int64(values[0]));
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

int registerRow(sqlite3* database, const FunctionRow& row) {
  std::string name = "jet_";
  for (const char* c = row.name; *c; ++c)
    name += static_cast<char>(std::tolower(static_cast<unsigned char>(*c)));
  const int flags = SQLITE_UTF8 | (row.steady ? SQLITE_DETERMINISTIC : 0);
  return sqlite3_create_function_v2(database, name.c_str(), -1, flags, const_cast<FunctionRow*>(&row), runRow,
                                    nullptr, nullptr, nullptr);
}

int collate(void*, int leftSize, const void* left, int rightSize, const void* right) {
  return compareText({static_cast<const char*>(left), static_cast<size_t>(leftSize)},
                     {static_cast<const char*>(right), static_cast<size_t>(rightSize)});
}

}  // namespace

Call::Call(sqlite3_context* context, int count, sqlite3_value** values)
    : context_(context), count_(count - 1), values_(values + 1) {}

void Call::fail(int number, const char* text) { throw Failure{{number, text, std::nullopt}}; }

void Call::failField(int number, std::string_view field) {
  Error error = engineError(number, field);
  error.complete = true;
  throw Failure{std::move(error)};
}

std::string Call::text(int i) const {
  switch (storage(i)) {
    case SQLITE_NULL:
      return "";
    case SQLITE_INTEGER:
      return std::to_string(sqlite3_value_int64(values_[i]));
    case SQLITE_FLOAT:
      return numberText(sqlite3_value_double(values_[i]));
    default:
      break;
  }
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(values_[i]));
  return bytes ? std::string(bytes, static_cast<size_t>(sqlite3_value_bytes(values_[i]))) : std::string();
}

std::wstring Call::wide(int i) const { return fromUtf8(text(i)); }

double Call::number(int i) const {
  if (storage(i) == SQLITE_INTEGER || storage(i) == SQLITE_FLOAT) return sqlite3_value_double(values_[i]);
  if (storage(i) == SQLITE_NULL) return 0;
  const auto value = parseNumber(text(i));
  if (!value) fail(typeMismatch, "Data type mismatch: a number is expected");
  return *value;
}

int64_t Call::whole(int i) const {
  if (storage(i) == SQLITE_INTEGER) return sqlite3_value_int64(values_[i]);
  const double value = roundEven(number(i));
  if (!(std::fabs(value) < 9.2e18)) fail(overflow, "Overflow");
  return static_cast<int64_t>(value);
}

int32_t Call::longNumber(int i) const {
  const int64_t value = whole(i);
  if (value < INT32_MIN || value > INT32_MAX) fail(overflow, "Overflow");
  return static_cast<int32_t>(value);
}

double Call::date(int i) const {
  double serial = 0;
  if (storage(i) == SQLITE_TEXT) {
    const std::string words = text(i);
    const auto parsed = parseDate(words);
    const auto number = parsed ? std::nullopt : parseNumber(words);
    if (!parsed && !number) fail(typeMismatch, "Data type mismatch: a date is expected");
    serial = parsed ? *parsed : *number;
  } else {
    serial = number(i);
  }
  if (!partsOf(serial)) fail(overflow, "Overflow: the date is out of its range");
  return serial;
}

void Call::give(double value) {
  if (!std::isfinite(value)) fail(overflow, "Overflow");
  sqlite3_result_double(context_, value);
}

void Call::give(std::string_view value) {
  sqlite3_result_text64(context_, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Call::give(const std::wstring& value) { give(std::string_view(toUtf8(value))); }

const FunctionRow* findFunction(std::string_view name) {
  static const auto byName = [] {
    std::map<std::string_view, const FunctionRow*, TextLess> all;
    for (const auto& table : tables) {
      for (const FunctionRow& row : table()) all.emplace(row.name, &row);
    }
    return all;
  }();
  if (!name.empty() && name.back() == '$') name.remove_suffix(1);
  const auto found = byName.find(name);
  return found == byName.end() ? nullptr : found->second;
}

int registerFunctions(sqlite3* database) {
  int code = sqlite3_create_collation_v2(database, "JET", SQLITE_UTF8, nullptr, collate, nullptr);
  for (const auto& table : tables) {
    for (const FunctionRow& row : table()) {
      if (code == SQLITE_OK) code = registerRow(database, row);
    }
  }
  for (const FunctionRow& row : operatorFunctions()) {
    if (code == SQLITE_OK) code = registerRow(database, row);
  }
  return code == SQLITE_OK ? registerAggregates(database) : code;
}

double roundEven(double value) { return std::nearbyint(value); }

std::string numberText(double value, int digits) {
  if (value == 0) return "0";
  std::array<char, 64> buffer;
  const auto end =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, digits)
          .ptr;
  std::string text(buffer.data(), end);
  const size_t exponent = text.find('e');
  if (exponent == std::string::npos) return text;
  // Small values with few digits are written out, as the dialect does from 1E-15 on only.
  if (value > -1 && value < 1 && std::fabs(value) >= 1e-15) {
    const int decimals =
        std::min(30, digits - 1 - static_cast<int>(std::floor(std::log10(std::fabs(value)))));
    const auto last =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals)
            .ptr;
    std::string written(buffer.data(), last);
    while (written.back() == '0') written.pop_back();
    if (written.size() <= static_cast<size_t>(digits) + 3) return written;
  }
  text[exponent] = 'E';
  return text;
}

std::string currencyText(int64_t tenThousandths) {
  const bool negative = tenThousandths < 0;
  const uint64_t size =
      negative ? 0 - static_cast<uint64_t>(tenThousandths) : static_cast<uint64_t>(tenThousandths);
  std::string text = std::to_string(size / 10000);
  if (size % 10000) {
    std::string fraction = std::to_string(size % 10000 + 10000).substr(1);
    while (fraction.back() == '0') fraction.pop_back();
    text += "." + fraction;
  }
  return negative ? "-" + text : text;
}

std::optional<double> parseNumber(std::string_view text) {
  std::string digits;
  size_t start = text.find_first_not_of(" \t\r\n"), end = text.find_last_not_of(" \t\r\n");
  if (start == std::string_view::npos) return std::nullopt;
  text = text.substr(start, end - start + 1);
  for (size_t i = 0; i < text.size(); ++i) {
    // A comma groups digits before the point only.
    if (text[i] == ',' && i > 0 && digits.find('.') == std::string::npos) continue;
    digits += text[i];
  }
  std::string_view rest = digits;
  if (rest.starts_with('+')) rest.remove_prefix(1);
  if (rest.empty() || !(std::isdigit(static_cast<unsigned char>(rest.back())) || rest.back() == '.'))
    return std::nullopt;
  const char first = rest[rest[0] == '-' ? std::min<size_t>(1, rest.size() - 1) : 0];
  if (!std::isdigit(static_cast<unsigned char>(first)) && first != '.') return std::nullopt;
  double value = 0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), value);
  if (result.ec != std::errc() || result.ptr != rest.data() + rest.size()) return std::nullopt;
  return value;
}

int64_t scaledCurrency(double value) {
  const long double scaled = std::nearbyint(static_cast<long double>(value) * 10000);
  if (!(std::fabs(scaled) < 9.2233720368547758e18L)) Call::fail(overflow, "Overflow");
  return static_cast<int64_t>(scaled);
}

}  // namespace jet
