#pragma once

#include <map>
#include <string>

#include "engine/errors/errors.h"
#include "engine/jet_sql/jet_sql.h"
#include "engine/text/collation.h"

/// What a statement came to.
struct Outcome {
  std::optional<jet::Error> error;
  int64_t affected = 0;
  bool ok() const { return !error; }
};

inline Outcome outcomeOf(sqlite3* database, jet::Catalog& catalog, std::string_view sql,
                         const std::vector<jet::Parameter>& parameters = {}, jet::RowSink* rows = nullptr) {
  try {
    return {std::nullopt, jet::execute(database, catalog, sql, parameters, rows)};
  } catch (const jet::Failure& failure) {
    return {failure.error, 0};
  }
}

/// A catalog that keeps its definitions in memory, over one connection's main database.
class MemoryCatalog : public jet::Catalog {
 public:
  explicit MemoryCatalog(sqlite3* database) : database_(database) {}

  const jet::Table* findTable(std::string_view name) override;
  std::optional<std::string> findQuery(std::string_view name) override;
  void createTable(const jet::Table& definition) override;
  void dropTable(std::string_view table) override;
  void addColumn(std::string_view table, const jet::Column& column) override;
  void alterColumn(std::string_view table, const jet::Column& column) override;
  void dropColumn(std::string_view table, std::string_view column) override;
  void createIndex(std::string_view table, const jet::Index& index) override;
  void dropIndex(std::string_view table, std::string_view index) override;
  void createRelation(const jet::Relation& relation) override;
  void dropRelation(std::string_view table, std::string_view relation) override;
  void createQuery(std::string_view name, std::string_view sql) override;
  void dropQuery(std::string_view name) override;
  void changesUndone() override;

  /// What stands now is what `changesUndone` goes back to.
  void checkpoint() { saved_ = state_; }

 private:
  struct State {
    std::map<std::string, jet::Table, TextLess> tables;
    std::map<std::string, std::string, TextLess> queries;
  };

  void run(const std::string& sql);
  void rebuild(const jet::Table& from, jet::Table to);
  jet::Table* table(std::string_view name);

  sqlite3* database_;
  State state_, saved_;
};
