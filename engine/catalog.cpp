#include "engine/catalog.h"

#include <algorithm>
#include <array>

#include "engine/description.h"
#include "engine/errors/errors.h"
#include "engine/jet_sql/execution.h"
#include "engine/jet_sql/printer.h"

namespace {

struct TypeRow {
  jet::Type type;
  const char* name;     // in zb_columns
  const char* storage;  // in SQLite
};

constexpr TypeRow typeRows[] = {
    {jet::Type::YesNo, "yesno", "INTEGER"},
    {jet::Type::Byte, "byte", "INTEGER"},
    {jet::Type::Integer, "integer", "INTEGER"},
    {jet::Type::Long, "long", "INTEGER"},
    {jet::Type::Currency, "currency", "INTEGER"},
    {jet::Type::Single, "single", "REAL"},
    {jet::Type::Double, "double", "REAL"},
    {jet::Type::Date, "date", "REAL"},
    {jet::Type::Text, "text", "TEXT"},
    {jet::Type::Memo, "memo", "TEXT"},
    {jet::Type::Binary, "binary", "BLOB"},
    {jet::Type::Guid, "guid", "TEXT"},
};

const TypeRow& rowOf(jet::Type type) {
  for (const TypeRow& row : typeRows) {
    if (row.type == type) return row;
  }
  fail(definitionSyntax, "a field has no type");
}

jet::Type typeNamed(std::string_view name) {
  for (const TypeRow& row : typeRows) {
    if (name == row.name) return row.type;
  }
  return jet::Type::Unknown;
}

constexpr size_t mostColumns = 255;

// Of a table on its way to another shape or spelling: no table's own, see `storedTableName`.
constexpr const char* passingName = "~passing";

std::vector<std::string> split(std::string_view list) {
  std::vector<std::string> result;
  while (!list.empty()) {
    const size_t end = std::min(list.find('\t'), list.size());
    result.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return result;
}

std::string indexColumns(const jet::Index& index) {
  std::vector<std::string> marked;
  for (const auto& column : index.columns) marked.push_back((column.descending ? "-" : "+") + column.name);
  return joinNames(marked);
}

std::vector<jet::IndexColumn> readIndexColumns(std::string_view list) {
  std::vector<jet::IndexColumn> result;
  for (const std::string& marked : split(list)) result.push_back({marked.substr(1), marked[0] == '-'});
  return result;
}

void markKeys(jet::Table& table) {
  for (const jet::Index& index : table.indexes) {
    if (!index.primary && !index.required) continue;
    for (const jet::IndexColumn& each : index.columns) {
      const int place = DatabaseCatalog::columnPlace(table, each.name);
      if (place >= 0) table.columns[static_cast<size_t>(place)].inKey = true;
    }
  }
}

bool hasColumn(const jet::Table& table, std::string_view name) {
  return DatabaseCatalog::columnPlace(table, name) >= 0;
}

// SQLite keeps some names for itself, and the catalog others.
std::string storedTableName(std::string_view name) {
  const std::string folded = foldText(name);
  const bool reserved = folded.starts_with("sqlite_") || folded.starts_with("zb_") || folded.starts_with("~");
  return (reserved ? "~" : "") + std::string(name);
}

std::string freeRowName(const jet::Table& table) {
  std::string name = "zb_row";
  while (hasColumn(table, name)) name += "_";
  return name;
}

void requireDefinition(const jet::Table& table) {
  requireName(table.name);
  if (table.columns.empty()) fail(definitionSyntax, "a table needs a field");
  if (table.columns.size() > mostColumns) fail(jet::tooManyFields);
  std::set<std::string, TextLess> names;
  int counters = 0;
  for (const jet::Column& column : table.columns) {
    requireName(column.name);
    if (!names.insert(column.name).second) fail(jet::duplicateField, column.name);
    rowOf(column.type);
    if (column.counter) ++counters;
    if (column.counter && column.type != jet::Type::Long)
      fail(definitionSyntax, "a counter is a long number");
  }
  if (counters > 1) fail(definitionSyntax, "a table has one counter at most");
}

void requireIndex(const jet::Table& table, const jet::Index& index) {
  requireName(index.name);
  if (index.columns.empty() || index.columns.size() > 10)
    fail(definitionSyntax, "an index has 1 to 10 fields");
  std::set<std::string, TextLess> names;
  for (const auto& column : index.columns) {
    if (!hasColumn(table, column.name)) fail(jet::noSuchField, column.name);
    if (!names.insert(column.name).second) fail(jet::duplicateField, column.name);
  }
}

}  // namespace

std::string joinNames(const std::vector<std::string>& names) {
  std::string result;
  for (const std::string& name : names) result += (result.empty() ? "" : "\t") + name;
  return result;
}

// Names lie between tabs in lists, and quoted in SQL.
void requireName(std::string_view name) {
  constexpr size_t longestName = 64;
  const bool bad = name.empty() || name.front() == ' ' || name.size() > 4 * longestName ||
                   std::any_of(name.begin(), name.end(), [](char c) {
                     return static_cast<unsigned char>(c) < ' ' ||
                            std::string_view(".![]`").find(c) != std::string_view::npos;
                   });
  if (bad) fail(badName, name);
}

std::string_view storageOfType(std::string_view typeName) {
  for (const TypeRow& row : typeRows) {
    if (typeName == row.name) return row.storage;
  }
  return {};
}

std::string likelyType(std::string_view damagedName, std::string_view storage) {
  for (const TypeRow& row : typeRows) {
    const std::string_view name = row.name;
    if (storageOfType(name) != storage || name.size() != damagedName.size()) continue;
    size_t different = 0;
    for (size_t i = 0; i < name.size(); ++i) different += name[i] != damagedName[i];
    if (different <= 2) return std::string(name);
  }
  // These lose limits only, whereas each other storage has types that read the same value differently.
  return storage == "TEXT" ? "memo" : storage == "BLOB" ? "binary" : "";
}

void createSystemTables(Database& database) { database.execute(systemTables, Access::Schema); }

std::string storedIndexName(const jet::Table& table, const jet::Index& index) {
  return table.stored + "." + index.name;
}

int counterColumn(const jet::Table& table) {
  for (size_t i = 0; i < table.columns.size(); ++i) {
    if (table.columns[i].counter) return static_cast<int>(i);
  }
  return -1;
}

bool isRowOrder(const jet::Table& table, const jet::Index& index) {
  const int counter = counterColumn(table);
  return counter >= 0 && index.columns.size() == 1 &&
         sameText(index.columns[0].name, table.columns[static_cast<size_t>(counter)].name);
}

void DatabaseCatalog::refresh() {
  // The version may be that of the moment before the transaction: statements name their columns, so that a
  // change in this very moment shows at the next call.
  refreshLinks();
  const uint32_t schema = database_.schemaVersion();
  if (loaded_ && schema == schema_) return;
  load();
  schema_ = schema;
  loaded_ = true;
}

void DatabaseCatalog::load() {
  ++generation_;
  tables_ = readTables("main");
  readLinks();
}

DatabaseCatalog::Tables DatabaseCatalog::readTables(const std::string& schema) {
  Tables found;
  sqlite3* handle = database_.handle();
  const std::string in = quoted(schema) + ".";
  Statement tables(handle, "SELECT name, stored, row_id FROM " + in + "zb_tables", Access::Read, 0);
  while (tables.step()) {
    jet::Table table;
    table.name = tables.text(0);
    table.schema = schema;
    table.stored = tables.text(1);
    table.rowId = tables.text(2);
    found.emplace(table.name, std::move(table));
  }
  Statement columns(handle,
                    "SELECT table_name, name, type, size, required, counter, empty_allowed, default_value "
                    "FROM " +
                        in + "zb_columns ORDER BY table_name, position",
                    Access::Read, 0);
  while (columns.step()) {
    const auto owner = found.find(columns.text(0));
    if (owner == found.end()) continue;
    owner->second.columns.push_back({std::string(columns.text(1)),
                                     typeNamed(columns.text(2)),
                                     static_cast<int>(columns.integer(3)),
                                     columns.integer(4) != 0,
                                     columns.integer(5) != 0,
                                     columns.integer(6) != 0,
                                     std::string(columns.text(7)),
                                     {}});
  }
  Statement indexes(handle,
                    "SELECT table_name, name, columns, is_primary, is_unique, required, ignore_null "
                    "FROM " +
                        in + "zb_indexes ORDER BY table_name, position",
                    Access::Read, 0);
  while (indexes.step()) {
    const auto owner = found.find(indexes.text(0));
    if (owner == found.end()) continue;
    owner->second.indexes.push_back({std::string(indexes.text(1)), readIndexColumns(indexes.text(2)),
                                     indexes.integer(3) != 0, indexes.integer(4) != 0,
                                     indexes.integer(5) != 0, indexes.integer(6) != 0});
  }
  for (auto& [name, table] : found) markKeys(table);
  return found;
}

std::vector<std::string> DatabaseCatalog::tableNames() const {
  std::vector<std::string> names;
  for (const auto& [name, table] : tables_) names.push_back(name);
  return names;
}

const jet::Index* DatabaseCatalog::findIndex(const jet::Table& table, std::string_view name) {
  for (const jet::Index& index : table.indexes) {
    if (sameText(index.name, name)) return &index;
  }
  for (const jet::Index& index : table.indexes) {
    if (index.columns.size() == 1 && sameText(index.columns[0].name, name)) return &index;
  }
  return nullptr;
}

int DatabaseCatalog::columnPlace(const jet::Table& table, std::string_view name) {
  for (size_t i = 0; i < table.columns.size(); ++i) {
    if (sameText(table.columns[i].name, name)) return static_cast<int>(i);
  }
  return -1;
}

std::vector<jet::Relation> DatabaseCatalog::relations() {
  std::vector<jet::Relation> result;
  Statement rows(database_.handle(),
                 "SELECT name, table_name, foreign_table, columns, foreign_columns, cascade_update, "
                 "cascade_delete, null_on_delete FROM zb_relations ORDER BY name",
                 Access::Read, 0);
  while (rows.step()) {
    result.push_back({std::string(rows.text(0)), std::string(rows.text(1)), std::string(rows.text(2)),
                      split(rows.text(3)), split(rows.text(4)), rows.integer(5) != 0, rows.integer(6) != 0,
                      rows.integer(7) != 0});
  }
  return result;
}

std::vector<std::string> DatabaseCatalog::queryNames() {
  std::vector<std::string> names;
  Statement rows(database_.handle(), "SELECT name FROM zb_queries ORDER BY name", Access::Read, 0);
  while (rows.step()) names.emplace_back(rows.text(0));
  return names;
}

const jet::Table* DatabaseCatalog::findTable(std::string_view name) {
  if (!loaded_) refresh();
  const auto found = tables_.find(name);
  return found == tables_.end() ? findLinkedTable(name) : &found->second;
}

bool DatabaseCatalog::hasTable(std::string_view name) {
  if (!loaded_) refresh();
  return tables_.contains(name) || links_.contains(name);
}

std::optional<std::string> DatabaseCatalog::findQuery(std::string_view name) {
  Statement& statement = database_.prepared("SELECT sql FROM zb_queries WHERE name = ?", Access::Read);
  const Run run(statement);
  statement.bind(1, name);
  if (!statement.step()) return std::nullopt;
  return std::string(statement.text(0));
}

// Only the file's own tables change here.
const jet::Table& DatabaseCatalog::require(std::string_view name) {
  if (links_.contains(name)) fail(linkedTable, name);
  const jet::Table* table = findTable(name);
  if (!table) fail(tableNotFound, name);
  return *table;
}

void DatabaseCatalog::changing(const std::function<void()>& change) {
  const Reloading reloading(*this);
  Transaction transaction(database_, Transaction::Kind::Write, Access::Schema);
  completeSystemTables(database_);
  refresh();
  change();
  if (!copiesLater_) copyDescriptions(database_);
  transaction.commit();
}

void DatabaseCatalog::changeMuch(const std::function<void()>& changes) {
  copiesLater_ = true;
  try {
    changes();
  } catch (...) {
    copiesLater_ = false;
    throw;
  }
  copiesLater_ = false;
  copyDescriptions(database_);
}

void DatabaseCatalog::changesUndone() { loaded_ = false; }

void DatabaseCatalog::run(std::string_view sql, const std::vector<Stored>& values) {
  Statement statement(database_.handle(), sql, Access::Schema, 0);
  for (size_t i = 0; i < values.size(); ++i) statement.bind(static_cast<int>(i + 1), values[i]);
  while (statement.step()) {
  }
}

void DatabaseCatalog::createStorage(const jet::Table& table) {
  // The row number is never given twice, so that a cursor on a deleted row can't find another one there.
  std::string sql = "CREATE TABLE " + quoted(table.stored) + "(";
  if (counterColumn(table) < 0) sql += quoted(table.rowId) + " INTEGER PRIMARY KEY AUTOINCREMENT, ";
  const char* separator = "";
  for (const jet::Column& column : table.columns) {
    sql += separator + quoted(column.name) + " " + rowOf(column.type).storage;
    if (rowOf(column.type).storage == std::string_view("TEXT"))
      sql += std::string(" COLLATE ") + languageOrder;
    if (column.counter) sql += " PRIMARY KEY AUTOINCREMENT";
    if (!column.counter && (column.required || column.inKey)) sql += " NOT NULL";
    separator = ", ";
  }
  run(sql + ") STRICT");
}

void DatabaseCatalog::describe(const jet::Table& table) {
  run("INSERT INTO zb_tables VALUES(?, ?, ?)",
      {Stored::of(table.name), Stored::of(table.stored), Stored::of(table.rowId)});
  int64_t place = 0;
  for (const jet::Column& column : table.columns) {
    run("INSERT INTO zb_columns VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?)",
        {Stored::of(table.name), Stored::of(place++), Stored::of(column.name),
         Stored::of(std::string_view(rowOf(column.type).name)), Stored::of(int64_t{column.size}),
         Stored::of(int64_t{column.required}), Stored::of(int64_t{column.counter}),
         Stored::of(int64_t{column.emptyAllowed}), Stored::of(column.defaultValue)});
  }
  place = 0;
  for (const jet::Index& index : table.indexes) {
    run("INSERT INTO zb_indexes VALUES(?, ?, ?, ?, ?, ?, ?, ?)",
        {Stored::of(table.name), Stored::of(place++), Stored::of(index.name), Stored::of(indexColumns(index)),
         Stored::of(int64_t{index.primary}), Stored::of(int64_t{index.unique || index.primary}),
         Stored::of(int64_t{index.required}), Stored::of(int64_t{index.ignoreNull})});
  }
}

void DatabaseCatalog::forget(std::string_view table) {
  for (const char* sql :
       {"DELETE FROM zb_tables WHERE name = ?", "DELETE FROM zb_columns WHERE table_name = ?",
        "DELETE FROM zb_indexes WHERE table_name = ?"}) {
    run(sql, {Stored::of(table)});
  }
}

void DatabaseCatalog::createStoredIndex(const jet::Table& table, const jet::Index& index) {
  if (isRowOrder(table, index)) return;
  std::string columns, condition;
  for (const jet::IndexColumn& column : index.columns) {
    const std::string name = quoted(table.columns[static_cast<size_t>(columnPlace(table, column.name))].name);
    columns += (columns.empty() ? "" : ", ") + name + (column.descending ? " DESC" : "");
    condition += (condition.empty() ? " WHERE " : " AND ") + name + " IS NOT NULL";
  }
  run(std::string("CREATE ") + (index.unique || index.primary ? "UNIQUE " : "") + "INDEX " +
      quoted(storedIndexName(table, index)) + " ON " + quoted(table.stored) + "(" + columns + ")" +
      (index.ignoreNull ? condition : ""));
}

void DatabaseCatalog::createTable(const jet::Table& definition, IndexStorage storage) {
  changing([&] {
    requireDefinition(definition);
    if (hasTable(definition.name)) fail(jet::tableExists, definition.name);
    if (findQuery(definition.name)) fail(jet::objectExists, definition.name);
    jet::Table table = definition;
    table.stored = storedTableName(table.name);
    const int counter = counterColumn(table);
    table.rowId = counter >= 0 ? table.columns[static_cast<size_t>(counter)].name : freeRowName(table);
    std::set<std::string, TextLess> names;
    for (const jet::Index& index : table.indexes) {
      requireIndex(table, index);
      if (!names.insert(index.name).second) fail(jet::objectExists, index.name);
    }
    markKeys(table);
    createStorage(table);
    if (storage == IndexStorage::Now) {
      for (const jet::Index& index : table.indexes) createStoredIndex(table, index);
    }
    describe(table);
  });
}

void DatabaseCatalog::storeIndexes(std::string_view name,
                                   const std::function<void(const jet::Index&)>& notUnique) {
  jet::Table table = require(name);
  for (jet::Index& index : table.indexes) {
    try {
      createStoredIndex(table, index);
    } catch (const jet::Failure& failure) {
      if (failure.error.number != jet::duplicateValue) throw;
      notUnique(index);
      index.unique = index.primary = false;
      createStoredIndex(table, index);
    }
  }
  forget(table.name);
  describe(table);
  loaded_ = false;
}

void DatabaseCatalog::continueCounter(std::string_view name, int64_t last) {
  const std::string stored = require(name).stored;
  run("DELETE FROM sqlite_sequence WHERE name = ?1 AND seq < ?2", {Stored::of(stored), Stored::of(last)});
  run("INSERT INTO sqlite_sequence(name, seq) SELECT ?1, ?2 WHERE NOT EXISTS(SELECT 1 FROM sqlite_sequence "
      "WHERE name = ?1)",
      {Stored::of(stored), Stored::of(last)});
}

void DatabaseCatalog::dropTable(std::string_view name) {
  changing([&] {
    if (changeLink(name, "")) return;
    const jet::Table table = require(name);
    for (const jet::Relation& relation : relations()) {
      if (sameText(relation.foreignTable, name) && !sameText(relation.table, name)) {
        fail(neededByRelation, "the relation '" + relation.name + "'");
      }
    }
    unguardRelationsOf(name);
    run("DELETE FROM zb_relations WHERE table_name = ?1 OR foreign_table = ?1", {Stored::of(name)});
    run("DELETE FROM zb_rules WHERE table_name = ?1", {Stored::of(name)});
    run("DROP TABLE " + table.sqlName());
    forget(name);
  });
}

void DatabaseCatalog::rebuild(const jet::Table& old, jet::Table shape,
                              const std::vector<std::string>& sources) {
  requireDefinition(shape);
  for (const jet::Index& index : shape.indexes) requireIndex(shape, index);
  requireRelationsKept(old, shape);
  const int counter = counterColumn(shape);
  const bool keepsRowId = counter < 0 || counterColumn(old) >= 0;
  shape.rowId = counter >= 0 ? shape.columns[static_cast<size_t>(counter)].name : freeRowName(shape);
  unguardRelationsOf(old.name);
  for (jet::Column& column : shape.columns) column.inKey = false;
  markKeys(shape);

  jet::Table temporary = shape;
  temporary.stored = passingName;
  createStorage(temporary);
  std::string into, from;
  if (counter < 0) {
    into = quoted(shape.rowId);
    from = quoted(old.rowId);
  }
  for (size_t i = 0; i < shape.columns.size(); ++i) {
    if (sources[i].empty()) continue;
    into += (into.empty() ? "" : ", ") + quoted(shape.columns[i].name);
    from += (from.empty() ? "" : ", ") + sources[i];
  }
  if (!into.empty()) {
    run("INSERT INTO " + temporary.sqlName() + "(" + into + ") SELECT " + from + " FROM " + old.sqlName() +
        " ORDER BY " + quoted(old.rowId));
  }
  if (keepsRowId) {
    run("DELETE FROM sqlite_sequence WHERE name = ?", {Stored::of(temporary.stored)});
    run("INSERT INTO sqlite_sequence(name, seq) SELECT ?1, seq FROM sqlite_sequence WHERE name = ?2",
        {Stored::of(temporary.stored), Stored::of(old.stored)});
  }
  run("DROP TABLE " + old.sqlName());
  run("ALTER TABLE " + temporary.sqlName() + " RENAME TO " + quoted(shape.stored));
  forget(old.name);
  for (const jet::Index& index : shape.indexes) createStoredIndex(shape, index);
  describe(shape);
  guardRelationsOf(shape.name);
  guardRulesOf(shape.name);
}

namespace {

std::vector<std::string> sameSources(const jet::Table& table) {
  std::vector<std::string> sources;
  for (const jet::Column& column : table.columns) sources.push_back(quoted(column.name));
  return sources;
}

// SQL that gives a column's values as another column stores them; fails where a value doesn't fit there.
std::string conversion(const jet::Column& from, const jet::Column& to) {
  jet::Printer printer;
  printer.storedText(quoted(from.name), from.type, to, -1);
  return printer.take();
}

}  // namespace

void DatabaseCatalog::renameTable(std::string_view name, std::string_view newName) {
  changing([&] {
    requireName(newName);
    if (!sameText(name, newName) && hasTable(newName)) fail(jet::tableExists, newName);
    if (findQuery(newName)) fail(jet::objectExists, newName);
    if (changeLink(name, newName)) return;
    const jet::Table old = require(name);
    unguardRelationsOf(old.name);
    unguardRulesOf(old.name);
    jet::Table table = old;
    table.name = newName;
    table.stored = storedTableName(newName);
    for (const jet::Index& index : old.indexes) {
      if (!isRowOrder(old, index)) run("DROP INDEX " + quoted(storedIndexName(old, index)));
    }
    // By way of another name: to SQLite a name in another spelling is taken.
    run("ALTER TABLE " + old.sqlName() + " RENAME TO " + quoted(passingName));
    run("ALTER TABLE " + quoted(passingName) + " RENAME TO " + quoted(table.stored));
    forget(old.name);
    for (const jet::Index& index : table.indexes) createStoredIndex(table, index);
    describe(table);
    run("UPDATE zb_relations SET table_name = ?1 WHERE table_name = ?2",
        {Stored::of(newName), Stored::of(name)});
    run("UPDATE zb_relations SET foreign_table = ?1 WHERE foreign_table = ?2",
        {Stored::of(newName), Stored::of(name)});
    guardRelationsOf(newName);
    run("UPDATE zb_rules SET table_name = ?1 WHERE table_name = ?2", {Stored::of(newName), Stored::of(name)});
    guardRulesOf(newName);
  });
}

void DatabaseCatalog::addColumn(std::string_view name, const jet::Column& column) {
  changing([&] {
    const jet::Table old = require(name);
    if (hasColumn(old, column.name)) fail(jet::fieldExists, column.name);
    jet::Table shape = old;
    shape.columns.push_back(column);
    std::vector<std::string> sources = sameSources(old);
    // Rows that are there already have no value, which yes/no fields don't know. Where one is required they
    // take the default.
    const bool takesDefault = column.required && !column.defaultValue.empty();
    sources.push_back(takesDefault                      ? jet::defaultSql(*this, column)
                      : column.type == jet::Type::YesNo ? "0"
                                                        : "");
    rebuild(old, shape, sources);
  });
}

void DatabaseCatalog::alterColumn(std::string_view name, const jet::Column& column) {
  changing([&] {
    const jet::Table old = require(name);
    const int place = columnPlace(old, column.name);
    if (place < 0) fail(jet::noSuchField, column.name);
    const auto at = static_cast<size_t>(place);
    jet::Table shape = old;
    shape.columns[at] = column;
    shape.columns[at].name = old.columns[at].name;
    std::vector<std::string> sources = sameSources(old);
    sources[at] = conversion(old.columns[at], shape.columns[at]);
    rebuild(old, shape, sources);
  });
}

void DatabaseCatalog::renameColumn(std::string_view name, std::string_view column, std::string_view newName) {
  changing([&] {
    const jet::Table old = require(name);
    const int place = columnPlace(old, column);
    if (place < 0) fail(jet::noSuchField, column);
    jet::Table shape = old;
    shape.columns[static_cast<size_t>(place)].name = newName;
    for (jet::Index& index : shape.indexes) {
      for (jet::IndexColumn& each : index.columns) {
        if (sameText(each.name, column)) each.name = newName;
      }
    }
    run("UPDATE zb_rules SET column_name = ?3 WHERE table_name = ?1 AND column_name = ?2",
        {Stored::of(name), Stored::of(column), Stored::of(newName)});
    renameInRelations(old.name, column, newName);
    rebuild(old, shape, sameSources(old));
  });
}

void DatabaseCatalog::dropColumn(std::string_view name, std::string_view column) {
  changing([&] {
    const jet::Table old = require(name);
    const int place = columnPlace(old, column);
    if (place < 0) fail(jet::noSuchField, column);
    for (const jet::Index& index : old.indexes) {
      for (const auto& each : index.columns) {
        if (sameText(each.name, column)) fail(neededByIndex, "the index '" + index.name + "'");
      }
    }
    run("DELETE FROM zb_rules WHERE table_name = ?1 AND column_name = ?2",
        {Stored::of(name), Stored::of(column)});
    jet::Table shape = old;
    shape.columns.erase(shape.columns.begin() + place);
    std::vector<std::string> sources = sameSources(old);
    sources.erase(sources.begin() + place);
    rebuild(old, shape, sources);
  });
}

void DatabaseCatalog::createIndex(std::string_view name, const jet::Index& index) {
  changing([&] {
    const jet::Table old = require(name);
    requireIndex(old, index);
    for (const jet::Index& each : old.indexes) {
      if (sameText(each.name, index.name)) fail(jet::objectExists, index.name);
      if (each.primary && index.primary) fail(definitionSyntax, "the table has a primary key already");
    }
    jet::Table shape = old;
    shape.indexes.push_back(index);
    if (index.primary || index.required) return rebuild(old, shape, sameSources(old));
    createStoredIndex(shape, index);
    forget(old.name);
    describe(shape);
    // Also an index without storage must show in the schema's counter, which tells other connections.
    if (isRowOrder(shape, index)) rebuild(shape, shape, sameSources(shape));
  });
}

void DatabaseCatalog::dropIndex(std::string_view name, std::string_view index) {
  changing([&] {
    const jet::Table old = require(name);
    const auto found = std::find_if(old.indexes.begin(), old.indexes.end(),
                                    [&](const jet::Index& each) { return sameText(each.name, index); });
    if (found == old.indexes.end()) fail(jet::noSuchIndex, index);
    jet::Table shape = old;
    shape.indexes.erase(shape.indexes.begin() + (found - old.indexes.begin()));
    rebuild(old, shape, sameSources(old));
  });
}

void DatabaseCatalog::createQuery(std::string_view name, std::string_view sql) {
  changing([&] {
    requireName(name);
    if (hasTable(name) || findQuery(name)) fail(jet::objectExists, name);
    run("INSERT INTO zb_queries VALUES(?, ?)", {Stored::of(name), Stored::of(sql)});
  });
}

void DatabaseCatalog::dropQuery(std::string_view name) {
  changing([&] {
    if (!findQuery(name)) fail(jet::noSuchTable, name);
    run("DELETE FROM zb_queries WHERE name = ?", {Stored::of(name)});
  });
}
