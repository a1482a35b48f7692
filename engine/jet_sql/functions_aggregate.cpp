#include <cmath>

#include "engine/errors/raised.h"
#include "engine/jet_sql/functions.h"

namespace jet {
namespace {

// First and Last: the value, null or not, of the row with the least or greatest row numbers, which stand
// behind it; of rows without numbers the first or last in the order of reading.
struct Kept {
  sqlite3_value* value;
  int64_t* numbers;
};

void dropKept(Kept& kept) {
  sqlite3_value_free(kept.value);
  sqlite3_free(kept.numbers);
  kept = {};
}

template <bool last>
bool comesBefore(const Kept& kept, int count, sqlite3_value** values) {
  for (int i = 1; i < count; ++i) {
    const int64_t number = sqlite3_value_int64(values[i]), known = kept.numbers[i];
    if (number != known) return (number < known) != last;
  }
  return last;
}

template <bool last>
void keepStep(sqlite3_context* context, int count, sqlite3_value** values) {
  auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
  if (!kept) return sqlite3_result_error_nomem(context);
  if (kept->value && !comesBefore<last>(*kept, count, values)) return;
  dropKept(*kept);
  kept->value = sqlite3_value_dup(values[0]);
  kept->numbers = static_cast<int64_t*>(sqlite3_malloc64(sizeof(int64_t) * static_cast<size_t>(count)));
  if (!kept->value || !kept->numbers) {
    dropKept(*kept);
    return sqlite3_result_error_nomem(context);
  }
  for (int i = 1; i < count; ++i) kept->numbers[i] = sqlite3_value_int64(values[i]);
}

void keepEnd(sqlite3_context* context) {
  auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
  if (!kept || !kept->value) return sqlite3_result_null(context);
  sqlite3_result_value(context, kept->value);
  dropKept(*kept);
}

// only(place, value): of a subquery that stands for a value.
struct Only {
  sqlite3_value* value;
};

void onlyStep(sqlite3_context* context, int, sqlite3_value** values) {
  auto* only = static_cast<Only*>(sqlite3_aggregate_context(context, sizeof(Only)));
  if (!only) return sqlite3_result_error_nomem(context);
  if (only->value) {
    return raise(context, {tooManyRecords, "At most one record can be returned by this subquery", {}},
                 sqlite3_value_int64(values[0]));
  }
  only->value = sqlite3_value_dup(values[1]);
}

void onlyEnd(sqlite3_context* context) {
  auto* only = static_cast<Only*>(sqlite3_aggregate_context(context, 0));
  if (!only || !only->value) return sqlite3_result_null(context);
  sqlite3_result_value(context, only->value);
  sqlite3_value_free(only->value);
  only->value = nullptr;
}

// Mean and sum of squared distances, one value at a time (Welford).
struct Spread {
  int64_t count;
  double mean, squares;
};

void spreadStep(sqlite3_context* context, int, sqlite3_value** values) {
  if (sqlite3_value_type(values[0]) == SQLITE_NULL) return;
  auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, sizeof(Spread)));
  if (!spread) return sqlite3_result_error_nomem(context);
  const double value = sqlite3_value_double(values[0]);
  const double distance = value - spread->mean;
  spread->mean += distance / static_cast<double>(++spread->count);
  spread->squares += distance * (value - spread->mean);
}

/// `population` divides by the count, else by one less; null for too few values.
template <bool population, bool root>
void spreadEnd(sqlite3_context* context) {
  const auto* spread = static_cast<Spread*>(sqlite3_aggregate_context(context, 0));
  const int64_t divisor = !spread ? 0 : population ? spread->count : spread->count - 1;
  if (divisor < 1) return sqlite3_result_null(context);
  const double variance = spread->squares / static_cast<double>(divisor);
  sqlite3_result_double(context, root ? std::sqrt(variance) : variance);
}

struct AggregateRow {
  const char* name;
  int arguments;  ///< -1: any number
  void (*step)(sqlite3_context*, int, sqlite3_value**);
  void (*end)(sqlite3_context*);
};

constexpr AggregateRow rows[] = {
    {"jet_first", -1, keepStep<false>, keepEnd},
    {"jet_last", -1, keepStep<true>, keepEnd},
    {"jet_only", 2, onlyStep, onlyEnd},
    {"jet_stdev", 1, spreadStep, spreadEnd<false, true>},
    {"jet_stdevp", 1, spreadStep, spreadEnd<true, true>},
    {"jet_var", 1, spreadStep, spreadEnd<false, false>},
    {"jet_varp", 1, spreadStep, spreadEnd<true, false>},
};

}  // namespace

int registerAggregates(sqlite3* database) {
  int code = SQLITE_OK;
  for (const AggregateRow& row : rows) {
    if (code != SQLITE_OK) break;
    code = sqlite3_create_function_v2(database, row.name, row.arguments, SQLITE_UTF8, nullptr, nullptr,
                                      row.step, row.end, nullptr);
  }
  return code;
}

}  // namespace jet
