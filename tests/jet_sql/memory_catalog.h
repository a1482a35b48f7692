#pragma once

#include <map>
#include <string>

#include "engine/jet_sql/jet_sql.h"
#include "engine/text/collation.h"

/// A catalog that keeps its definitions in memory, over one connection's main database.
class MemoryCatalog : public jet::Catalog {
 public:
  explicit MemoryCatalog(sqlite3* database) : database_(database) {}

  const jet::Table* findTable(std::string_view name) override;
  std::optional<std::string> findQuery(std::string_view name) override;
  Refusal createTable(const jet::Table& definition) override;
  Refusal dropTable(std::string_view table) override;
  Refusal addColumn(std::string_view table, const jet::Column& column) override;
  Refusal alterColumn(std::string_view table, const jet::Column& column) override;
  Refusal dropColumn(std::string_view table, std::string_view column) override;
  Refusal createIndex(std::string_view table, const jet::Index& index) override;
  Refusal dropIndex(std::string_view table, std::string_view index) override;
  Refusal createRelation(const jet::Relation& relation) override;
  Refusal dropRelation(std::string_view table, std::string_view relation) override;
  Refusal createQuery(std::string_view name, std::string_view sql) override;
  Refusal dropQuery(std::string_view name) override;
  void changesUndone() override;

  /// What stands now is what `changesUndone` goes back to.
  void checkpoint() { saved_ = state_; }

 private:
  struct State {
    std::map<std::string, jet::Table, TextLess> tables;
    std::map<std::string, std::string, TextLess> queries;
  };

  Refusal run(const std::string& sql);
  Refusal rebuild(const jet::Table& from, jet::Table to);
  jet::Table* table(std::string_view name);

  sqlite3* database_;
  State state_, saved_;
};
