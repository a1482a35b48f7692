#include "engine/catalog.h"
#include "engine/description.h"
#include "engine/errors/raised.h"
#include "engine/jet_sql/jet_sql.h"

/// Rules that a table's rows keep, whoever writes them: triggers on the table, numbered in the order of the
/// rules.

namespace {

constexpr const char* events[] = {"INSERT", "UPDATE"};

constexpr std::string_view namePart = ".rule.";  // behind the table's name

std::string ruleName(std::string_view table, size_t number, const char* event) {
  return "zb_" + std::string(table) + std::string(namePart) + std::to_string(number) + "." + event;
}

jet::Error broken(const DatabaseCatalog::Rule& rule) {
  if (!rule.message.empty()) return {ruleMessage, rule.message, std::nullopt};
  return engineError(ruleBroken, (rule.column.empty() ? rule.table : rule.table + "." + rule.column) + ": " +
                                     rule.condition);
}

}  // namespace

std::vector<DatabaseCatalog::Rule> DatabaseCatalog::rules() {
  std::vector<Rule> found;
  Statement known(database_.handle(), "SELECT 1 FROM sqlite_schema WHERE name = 'zb_rules'", Access::Read, 0);
  if (!known.step()) return found;  // a file that was made before there were rules
  Statement rows(database_.handle(),
                 "SELECT table_name, column_name, condition, message FROM zb_rules ORDER BY rowid",
                 Access::Read, 0);
  while (rows.step()) {
    found.push_back({std::string(rows.text(0)), std::string(rows.text(1)), std::string(rows.text(2)),
                     std::string(rows.text(3))});
  }
  return found;
}

void DatabaseCatalog::unguardRulesOf(std::string_view table) {
  std::vector<std::string> guards;
  {
    Statement triggers(database_.handle(),
                       "SELECT name FROM sqlite_schema WHERE type = 'trigger' AND tbl_name = ?1 AND "
                       "instr(name, ?2) > 0",
                       Access::Schema, 0);
    const std::string stored = require(table).stored;
    triggers.bind(1, stored);
    triggers.bind(2, namePart);
    while (triggers.step()) guards.emplace_back(triggers.text(0));
  }
  for (const std::string& name : guards) run("DROP TRIGGER " + quoted(name));
}

void DatabaseCatalog::guardRulesOf(std::string_view name) {
  loaded_ = false;
  refresh();
  const jet::Table table = require(name);
  const std::string stored = quoted(table.stored), row = quoted(table.rowId);
  size_t number = 0;
  for (const Rule& rule : rules()) {
    if (!sameText(rule.table, table.name)) continue;
    const std::string condition = jet::ruleCondition(*this, table, rule.column, rule.condition);
    ++number;
    for (const char* event : events) {
      run("CREATE TRIGGER " + quoted(ruleName(table.name, number, event)) + " AFTER " + event + " ON " +
          stored + " BEGIN SELECT " + jet::raiseInTrigger(broken(rule)) + " FROM " + stored +
          " AS \"t1\" WHERE \"t1\"." + row + " = NEW." + row + " AND NOT coalesce(" + condition +
          ", 1); END");
    }
  }
}

void DatabaseCatalog::createRule(const Rule& rule) {
  changing([&] {
    const jet::Table table = require(rule.table);
    if (!rule.column.empty() && columnPlace(table, rule.column) < 0) fail(jet::noSuchField, rule.column);
    const std::string condition = jet::ruleCondition(*this, table, rule.column, rule.condition);
    {
      Statement breaking(
          database_.handle(),
          "SELECT 1 FROM " + table.sqlName() + " AS \"t1\" WHERE NOT coalesce(" + condition + ", 1) LIMIT 1",
          Access::Schema, 0);
      if (breaking.step()) throw jet::Failure{broken(rule)};
    }
    unguardRulesOf(table.name);
    run("INSERT INTO zb_rules VALUES(?, ?, ?, ?)", {Stored::of(table.name), Stored::of(rule.column),
                                                    Stored::of(rule.condition), Stored::of(rule.message)});
    guardRulesOf(table.name);
  });
}
