#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "engine/jet_sql/catalog.h"

namespace jet {

/// One call of a dialect's function inside SQLite. SQLite's argument 0 is always the call's place in the
/// statement; the indexes here begin after it. The readers convert as the dialect does and throw
/// `Failure` (3464) where it refuses.
class Call {
 public:
  Call(sqlite3_context* context, int count, sqlite3_value** values);

  int count() const { return count_; }
  bool isNull(int i) const { return sqlite3_value_type(values_[i]) == SQLITE_NULL; }
  int storage(int i) const { return sqlite3_value_type(values_[i]); }  ///< SQLITE_INTEGER and so on
  sqlite3_value* raw(int i) const { return values_[i]; }
  std::string text(int i) const;
  std::wstring wide(int i) const;
  double number(int i) const;
  int64_t whole(int i) const;       ///< rounded half to even; 6 beyond 64 bits
  int32_t longNumber(int i) const;  ///< the same; 6 beyond 32 bits
  double date(int i) const;

  void null() { sqlite3_result_null(context_); }
  void give(int64_t value) { sqlite3_result_int64(context_, value); }
  void giveTruth(bool value) { give(int64_t{value ? -1 : 0}); }
  void give(double value);  ///< 6 when it is no finite number
  void give(std::string_view value);
  void give(const std::wstring& value);
  void giveSame(int i) { sqlite3_result_value(context_, values_[i]); }

  sqlite3_context* context() const { return context_; }
  [[noreturn]] static void fail(int number, const char* text);
  /// The error of a value that a field refuses, as it is also told outside of statements.
  [[noreturn]] static void failField(int number, std::string_view field);

 private:
  sqlite3_context* context_;
  int count_;
  sqlite3_value** values_;
};

/// How a function's result is typed: its own type, or the type of its first argument.
enum class ResultRule { Fixed, SameAsFirst };

/// `parameters` has a letter for each argument: `t` text, `n` number, `d` date, `v` anything, `x` anything
/// with a letter for its type before it. What follows `|` may be left out; `*` repeats the last.
struct FunctionRow {
  const char* name;  ///< upper-case; in SQLite it has the prefix `jet_` in lower-case
  const char* parameters;
  Type result;
  void (*body)(Call&);
  ResultRule rule = ResultRule::Fixed;
  bool nullGivesNull = true;
  bool steady = true;  ///< the same arguments give the same result
};

std::span<const FunctionRow> textFunctions();
std::span<const FunctionRow> conversionFunctions();
std::span<const FunctionRow> mathFunctions();
std::span<const FunctionRow> dateFunctions();
std::span<const FunctionRow> formatFunctions();
/// What the printer uses for operators; not callable by a statement.
std::span<const FunctionRow> operatorFunctions();

/// The row of a function that statements may call; a trailing `$` doesn't count.
const FunctionRow* findFunction(std::string_view name);

int registerAggregates(sqlite3* database);

// Conversions that functions share.

std::string numberText(double value, int digits = 15);
std::string currencyText(int64_t tenThousandths);
std::optional<double> parseNumber(std::string_view text);
double roundEven(double value);
/// A currency amount in ten-thousandths; throws 6 when it doesn't fit.
int64_t scaledCurrency(double value);
std::string formatValue(double value, bool isDate, std::string_view format);

}  // namespace jet
