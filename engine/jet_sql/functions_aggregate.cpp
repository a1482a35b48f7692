#include <cmath>

#include "engine/errors/raised.h"
#include "engine/jet_sql/functions.h"

namespace jet {
namespace {

// First and Last: the value of the first or last row in the order of reading, null or not.
struct Kept {
  sqlite3_value* value;
};

template <bool last>
void keepStep(sqlite3_context* context, int, sqlite3_value** values) {
  auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, sizeof(Kept)));
  if (!kept) return sqlite3_result_error_nomem(context);
  if (kept->value && !last) return;
  sqlite3_value_free(kept->value);
  kept->value = sqlite3_value_dup(values[0]);
}

void keepEnd(sqlite3_context* context) {
  auto* kept = static_cast<Kept*>(sqlite3_aggregate_context(context, 0));
  if (!kept || !kept->value) return sqlite3_result_null(context);
  sqlite3_result_value(context, kept->value);
  sqlite3_value_free(kept->value);
  kept->value = nullptr;
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
  void (*step)(sqlite3_context*, int, sqlite3_value**);
  void (*end)(sqlite3_context*);
};

constexpr AggregateRow rows[] = {
    {"jet_first", keepStep<false>, keepEnd},           {"jet_last", keepStep<true>, keepEnd},
    {"jet_stdev", spreadStep, spreadEnd<false, true>}, {"jet_stdevp", spreadStep, spreadEnd<true, true>},
    {"jet_var", spreadStep, spreadEnd<false, false>},  {"jet_varp", spreadStep, spreadEnd<true, false>},
};

}  // namespace

int registerAggregates(sqlite3* database) {
  int code = SQLITE_OK;
  for (const AggregateRow& row : rows) {
    if (code != SQLITE_OK) break;
    code = sqlite3_create_function_v2(database, row.name, 1, SQLITE_UTF8, nullptr, nullptr, row.step, row.end,
                                      nullptr);
  }
  return code;
}

}  // namespace jet
