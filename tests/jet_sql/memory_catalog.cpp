#include "tests/jet_sql/memory_catalog.h"

#include <algorithm>
#include <utility>

namespace {

std::string quoted(std::string_view name) {
  std::string text = "\"";
  for (const char c : name) text += c == '"' ? "\"\"" : std::string(1, c);
  return text + "\"";
}

std::string columnSql(const jet::Column& column) {
  switch (column.type) {
    case jet::Type::Single:
    case jet::Type::Double:
    case jet::Type::Date:
      return quoted(column.name) + " REAL";
    case jet::Type::Text:
    case jet::Type::Memo:
      return quoted(column.name) + " TEXT COLLATE JET";
    case jet::Type::Guid:
      return quoted(column.name) + " TEXT";
    case jet::Type::Binary:
      return quoted(column.name) + " BLOB";
    default:
      return quoted(column.name) + (column.counter ? " INTEGER PRIMARY KEY AUTOINCREMENT" : " INTEGER");
  }
}

}  // namespace

jet::Table* MemoryCatalog::table(std::string_view name) {
  const auto found = state_.tables.find(name);
  return found == state_.tables.end() ? nullptr : &found->second;
}

const jet::Table* MemoryCatalog::findTable(std::string_view name) { return table(name); }

std::optional<std::string> MemoryCatalog::findQuery(std::string_view name) {
  const auto found = state_.queries.find(name);
  if (found == state_.queries.end()) return std::nullopt;
  return found->second;
}

void MemoryCatalog::run(const std::string& sql) {
  const int code = sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) failSqlite(database_, code, Access::Schema);
}

void MemoryCatalog::createTable(const jet::Table& definition) {
  jet::Table table = definition;
  table.stored = table.name;
  std::string sql = "CREATE TABLE " + table.sqlName() + " (";
  for (size_t i = 0; i < table.columns.size(); ++i) sql += (i ? "," : "") + columnSql(table.columns[i]);
  run(sql + ")");
  const std::vector<jet::Index> indexes = std::exchange(table.indexes, {});
  const std::string name = table.name;
  state_.tables[name] = std::move(table);
  for (const jet::Index& index : indexes) {
    createIndex(name, index);
  }
}

void MemoryCatalog::dropTable(std::string_view name) {
  const std::string stored = table(name)->sqlName();
  state_.tables.erase(state_.tables.find(name));
  return run("DROP TABLE " + stored);
}

void MemoryCatalog::addColumn(std::string_view name, const jet::Column& column) {
  jet::Table& target = *table(name);
  run("ALTER TABLE " + target.sqlName() + " ADD COLUMN " + columnSql(column));
  target.columns.push_back(column);
}

void MemoryCatalog::rebuild(const jet::Table& from, jet::Table to) {
  const std::string old = from.sqlName();
  std::string names, values;
  for (const jet::Column& column : to.columns) {
    if (!from.findColumn(column.name)) continue;
    names += (names.empty() ? "" : ",") + quoted(column.name);
    values += (values.empty() ? "" : ",") + ("jet_op_as(-1," + quoted(column.name) + "," +
                                             std::to_string(static_cast<int>(column.type)) + ",0)");
  }
  run("ALTER TABLE " + old + " RENAME TO \"old table\"");
  state_.tables.erase(to.name);
  for (const jet::Index& index : to.indexes) {
    run("DROP INDEX " + quoted(to.name + "." + index.name));
  }
  createTable(to);
  run("INSERT INTO " + old + " (" + names + ") SELECT " + values + " FROM \"old table\"");
  return run("DROP TABLE \"old table\"");
}

void MemoryCatalog::alterColumn(std::string_view name, const jet::Column& column) {
  const jet::Table from = *table(name);
  jet::Table to = from;
  for (jet::Column& each : to.columns) {
    if (sameText(each.name, column.name)) each = column;
  }
  return rebuild(from, to);
}

void MemoryCatalog::dropColumn(std::string_view name, std::string_view column) {
  const jet::Table from = *table(name);
  for (const jet::Index& index : from.indexes) {
    for (const jet::IndexColumn& each : index.columns) {
      if (sameText(each.name, column))
        throw jet::Failure{{3280, "The field is part of an index.", std::nullopt}};
    }
  }
  jet::Table to = from;
  std::erase_if(to.columns, [&](const jet::Column& each) { return sameText(each.name, column); });
  if (to.columns.empty()) throw jet::Failure{{3291, "A table needs at least one field.", std::nullopt}};
  return rebuild(from, to);
}

void MemoryCatalog::createIndex(std::string_view name, const jet::Index& index) {
  jet::Table& target = *table(name);
  std::string sql = std::string(index.unique ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
                    quoted(target.name + "." + index.name) + " ON " + quoted(target.stored) + " (";
  for (size_t i = 0; i < index.columns.size(); ++i)
    sql += (i ? "," : "") + quoted(index.columns[i].name) + (index.columns[i].descending ? " DESC" : "");
  run(sql + ")");
  target.indexes.push_back(index);
}

void MemoryCatalog::dropIndex(std::string_view name, std::string_view index) {
  jet::Table& target = *table(name);
  for (auto each = target.indexes.begin(); each != target.indexes.end(); ++each) {
    if (!sameText(each->name, index)) continue;
    const std::string sql = "DROP INDEX " + quoted(target.name + "." + each->name);
    target.indexes.erase(each);
    return run(sql);
  }
  throw jet::Failure{{jet::noSuchIndex, "There is no such index.", std::nullopt}};
}

void MemoryCatalog::createRelation(const jet::Relation& relation) {
  const jet::Table* foreign = findTable(relation.foreignTable);
  for (const std::string& column : relation.foreignColumns) {
    if (!foreign->findColumn(column))
      throw jet::Failure{{jet::noSuchField, "There is no such field.", std::nullopt}};
  }
}

void MemoryCatalog::dropRelation(std::string_view, std::string_view) {
  throw jet::Failure{{3265, "There is no such relation.", std::nullopt}};
}

void MemoryCatalog::createQuery(std::string_view name, std::string_view sql) {
  state_.queries[std::string(name)] = sql;
}

void MemoryCatalog::dropQuery(std::string_view name) { state_.queries.erase(state_.queries.find(name)); }

void MemoryCatalog::changesUndone() { state_ = saved_; }
