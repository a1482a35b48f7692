#include "engine/jet_sql/jet_sql.h"

#include "engine/jet_sql/execution.h"
#include "engine/jet_sql/statement.h"

namespace jet {
namespace {

/// A savepoint around one statement; undone unless kept.
class Transaction {
 public:
  Transaction(sqlite3* database, Catalog& catalog) : database_(database), catalog_(catalog) {
    run("SAVEPOINT \"jet statement\"");
  }

  ~Transaction() {
    if (kept_) return;
    // A full disk or a deadlock may have undone everything already; then these two have nothing to do.
    sqlite3_exec(database_, "ROLLBACK TO \"jet statement\"", nullptr, nullptr, nullptr);
    sqlite3_exec(database_, "RELEASE \"jet statement\"", nullptr, nullptr, nullptr);
    catalog_.changesUndone();
  }

  void keep() {
    run("RELEASE \"jet statement\"");
    kept_ = true;
  }

  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

 private:
  void run(const char* sql) {
    const int code = sqlite3_exec(database_, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) failSqlite(database_, code, Access::Write);
  }

  sqlite3* database_;
  Catalog& catalog_;
  bool kept_ = false;
};

bool onlyReads(const ParsedStatement& statement) {
  const auto* select = std::get_if<SelectStatement>(&statement.body);
  return select && select->query->into.empty();
}

}  // namespace

int64_t execute(sqlite3* database, Catalog& catalog, std::string_view sql,
                const std::vector<Parameter>& parameters, RowSink* rows) {
  ParsedStatement statement = parseStatement(sql);
  Execution execution(database, catalog, sql, parameters, rows, 0);
  if (onlyReads(statement)) return execution.run(statement);
  catalog.changesBegin();
  Transaction transaction(database, catalog);
  const int64_t touched = execution.run(statement);
  transaction.keep();
  return touched;
}

namespace {

template <typename Work>
std::optional<Error> errorOf(const Work& work) {
  try {
    work();
    return std::nullopt;
  } catch (const Failure& failure) {
    return failure.error;
  }
}

}  // namespace

std::optional<Error> checkSyntax(std::string_view sql) {
  return errorOf([&] { parseStatement(sql); });
}

std::string ruleCondition(Catalog& catalog, const Table& table, const std::string& column,
                          std::string_view rule) {
  Binder binder(catalog, rule, {}, nullptr);
  std::vector<SourcePtr> sources;
  sources.push_back(std::make_unique<Source>());
  sources[0]->name = table.name;
  binder.bindSources(sources);
  ExpressionPtr condition = parseRule(rule, column);
  binder.bindCondition(condition);
  binder.checkParameters();
  Printer printer;
  printer.condition(*condition);
  return printer.take();
}

std::optional<Error> checkExpression(std::string_view expression) {
  return errorOf([&] { parseExpression(expression); });
}

}  // namespace jet
