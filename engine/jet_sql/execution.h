#pragma once

#include <string>
#include <vector>

#include "engine/errors/errors.h"
#include "engine/jet_sql/binder.h"
#include "engine/jet_sql/jet_sql.h"
#include "engine/jet_sql/printer.h"

namespace jet {

/// SQL of a column's default value, as the column stores it.
std::string defaultSql(Catalog& catalog, const Column& column);

/// Carries out one parsed statement on a connection, inside a transaction that the caller keeps.
/// Everything throws `Failure`.
class Execution {
 public:
  Execution(sqlite3* database, Catalog& catalog, std::string_view sql, const std::vector<Parameter>& given,
            RowSink* rows, int depth);

  /// Rows inserted, changed, deleted or given.
  int64_t run(ParsedStatement& statement);

 private:
  int64_t operator()(SelectStatement& statement);
  int64_t operator()(InsertStatement& statement);
  int64_t operator()(UpdateStatement& statement);
  int64_t operator()(DeleteStatement& statement);
  int64_t operator()(CreateTableStatement& statement);
  int64_t operator()(AlterTableStatement& statement);
  int64_t operator()(CreateIndexStatement& statement);
  int64_t operator()(DropStatement& statement);
  int64_t operator()(CreateQueryStatement& statement);
  int64_t operator()(ExecuteStatement& statement);

  int64_t selectInto(Query& query);
  int64_t updateOne(UpdateStatement& statement, const std::vector<Target>& targets);
  int64_t updateMany(UpdateStatement& statement, const std::vector<Target>& targets);
  std::string insertHead(const Table& table, const std::vector<const Column*>& columns) const;
  /// Columns that an insert leaves out but that have a default or must have a value, with their values.
  void addLeftOut(const Table& table, std::vector<const Column*>& columns, std::vector<std::string>& values);
  const Table& existing(std::string_view table, int number);
  void checkColumns(const Table& table, const Index& index);
  void addRelations(std::vector<Relation>& relations);

  /// Runs a statement without rows and gives the number of changed rows.
  int64_t change(const std::string& sql);
  void visit(const std::string& sql, const std::function<void(sqlite3_stmt*)>& row);
  void bindParameters(sqlite3_stmt* prepared);
  std::vector<Transform::Heading> pivotHeadings(const Query& query);
  [[noreturn]] void failDatabase(int code) const;

  sqlite3* database_;
  Catalog& catalog_;
  std::string_view sql_;
  const std::vector<Parameter>& given_;
  RowSink* rows_;
  int depth_;
  Access access_ = Access::Read;
  Binder binder_;
};

}  // namespace jet
