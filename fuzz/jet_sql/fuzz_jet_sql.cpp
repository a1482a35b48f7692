// Any text as a statement of the dialect: it ends with an answer or an error, leaves no transaction open, and
// after an error nothing has changed.

#include <sqlite3.h>

#include <cstdlib>
#include <string>

#include "engine/jet_sql/jet_sql.h"
#include "tests/jet_sql/memory_catalog.h"

namespace {

class Rows : public jet::RowSink {
 public:
  void begin(const std::vector<jet::ResultColumn>& columns) override { columns_ = columns.size(); }
  void row(sqlite3_stmt* row) override {
    for (size_t i = 0; i < columns_; ++i) sqlite3_column_bytes(row, static_cast<int>(i));
  }

 private:
  size_t columns_ = 0;
};

/// A statement may join a table with itself for ever.
int stopAfterAWhile(void* steps) { return ++*static_cast<int*>(steps) > 200; }

struct Sample {
  sqlite3* database = nullptr;
  int steps = 0;
  MemoryCatalog catalog;

  Sample() : catalog(open()) {
    for (const char* sql :
         {"CREATE TABLE Jobs (id COUNTER PRIMARY KEY, name TEXT(20) NOT NULL, cost CURRENCY, hours DOUBLE, "
          "due DATE, "
          "done YESNO, note MEMO)",
          "CREATE TABLE Parts (job LONG, what TEXT(20), qty INTEGER)",
          "CREATE VIEW Costly AS SELECT id, name FROM Jobs WHERE cost >= [least]",
          "INSERT INTO Jobs (name, cost, due, done) VALUES ('Duct', 100.25, #1/15/2020#, True)",
          "INSERT INTO Jobs (name, hours) VALUES ('pipe', 1.5)", "INSERT INTO Parts VALUES (1, 'bend', 5)",
          "INSERT INTO Parts VALUES (2, Null, Null)"}) {
      outcomeOf(database, catalog, sql);
    }
    sqlite3_progress_handler(database, 1000, stopAfterAWhile, &steps);
    sqlite3_limit(database, SQLITE_LIMIT_LENGTH, 1 << 20);
  }
  ~Sample() { sqlite3_close(database); }
  sqlite3* open() {
    sqlite3_open(":memory:", &database);
    jet::registerFunctions(database);
    return database;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Sample sample;
  sample.catalog.checkpoint();
  const int before = sqlite3_total_changes(sample.database);
  Rows rows;
  const std::string sql(reinterpret_cast<const char*>(data), size);
  const Outcome outcome =
      outcomeOf(sample.database, sample.catalog, sql, {{"least", jet::Type::Long, int64_t{5}}}, &rows);
  if (!sqlite3_get_autocommit(sample.database)) std::abort();
  if (outcome.ok() || sqlite3_total_changes(sample.database) == before) return 0;
  sample.steps = 0;
  const Outcome jobs = outcomeOf(sample.database, sample.catalog, "SELECT * FROM Jobs WHERE id < 3");
  const Outcome parts = outcomeOf(sample.database, sample.catalog, "SELECT * FROM Parts");
  if (jobs.affected != 2 || parts.affected != 2) std::abort();
  return 0;
}
