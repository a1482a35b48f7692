#include <algorithm>

#include "engine/jet_sql/execution.h"
#include "engine/text/collation.h"

namespace jet {

const Table& Execution::existing(std::string_view name, int number) {
  const Table* table = catalog_.findTable(name);
  if (!table) throw Failure{{number, "There is no table named '" + std::string(name) + "'.", std::nullopt}};
  return *table;
}

void Execution::checkColumns(const Table& table, const Index& index) {
  for (const IndexColumn& column : index.columns) {
    if (table.findColumn(column.name)) continue;
    throw Failure{
        {noSuchField, "The table '" + table.name + "' has no field '" + column.name + "'.", std::nullopt}};
  }
}

void Execution::addRelations(std::vector<Relation>& relations) {
  for (Relation& relation : relations) {
    const Table& table = existing(relation.foreignTable, noSuchTable);
    if (relation.name.empty()) relation.name = relation.foreignTable + relation.table;
    if (relation.foreignColumns.empty()) {
      for (const Index& index : table.indexes) {
        if (!index.primary) continue;
        for (const IndexColumn& column : index.columns) relation.foreignColumns.push_back(column.name);
      }
    }
    if (relation.foreignColumns.size() != relation.columns.size() || relation.columns.empty()) {
      throw Failure{
          {constraintSyntax, "A relation joins the same number of fields on both sides.", std::nullopt}};
    }
    catalog_.createRelation(relation);
  }
}

int64_t Execution::operator()(CreateTableStatement& statement) {
  const Table& table = statement.table;
  if (catalog_.hasTable(table.name) || catalog_.findQuery(table.name)) {
    throw Failure{{tableExists, "The table '" + table.name + "' exists already.", std::nullopt}};
  }
  if (table.columns.empty())
    throw Failure{{createTableSyntax, "A table needs at least one field.", std::nullopt}};
  constexpr size_t maxColumns = 255;
  if (table.columns.size() > maxColumns)
    throw Failure{{tooManyFields, "Too many fields defined.", std::nullopt}};
  for (const Column& column : table.columns) {
    if (table.findColumn(column.name) == &column) continue;
    throw Failure{{duplicateField, "The field '" + column.name + "' is defined twice.", std::nullopt}};
  }
  size_t primaries = 0;
  for (const Index& index : table.indexes) {
    checkColumns(table, index);
    primaries += index.primary;
  }
  if (primaries > 1) throw Failure{{3283, "A primary key exists already.", std::nullopt}};
  catalog_.createTable(table);
  addRelations(statement.relations);
  return 0;
}

int64_t Execution::operator()(CreateIndexStatement& statement) {
  const Table& table = existing(statement.table, noSuchTable);
  checkColumns(table, statement.index);
  for (const Index& index : table.indexes) {
    if (sameText(index.name, statement.index.name)) {
      throw Failure{{3284, "The index '" + index.name + "' exists already.", std::nullopt}};
    }
    if (index.primary && statement.index.primary)
      throw Failure{{3283, "A primary key exists already.", std::nullopt}};
  }
  catalog_.createIndex(statement.table, statement.index);
  return 0;
}

int64_t Execution::operator()(AlterTableStatement& statement) {
  const std::string table = existing(statement.table, noSuchTable).name;
  const auto fieldMustExist = [&](const Column& column) {
    if (existing(table, noSuchTable).findColumn(column.name)) return;
    throw Failure{
        {noSuchField, "The table '" + table + "' has no field '" + column.name + "'.", std::nullopt}};
  };
  for (const Column& column : statement.columns) {
    switch (statement.action) {
      case AlterAction::AddColumn:
        if (existing(table, noSuchTable).findColumn(column.name)) {
          throw Failure{{fieldExists, "The field '" + column.name + "' exists already.", std::nullopt}};
        }
        catalog_.addColumn(table, column);
        break;
      case AlterAction::AlterColumn:
        fieldMustExist(column);
        catalog_.alterColumn(table, column);
        break;
      default:
        fieldMustExist(column);
        catalog_.dropColumn(table, column.name);
        break;
    }
  }
  for (const Index& index : statement.indexes) {
    CreateIndexStatement create{table, index};
    (*this)(create);
  }
  addRelations(statement.relations);
  if (statement.action != AlterAction::DropConstraint) return 0;
  const Table& now = existing(table, noSuchTable);
  const bool isIndex = std::any_of(now.indexes.begin(), now.indexes.end(),
                                   [&](const Index& i) { return sameText(i.name, statement.constraint); });
  if (isIndex) {
    catalog_.dropIndex(table, statement.constraint);
  } else {
    catalog_.dropRelation(table, statement.constraint);
  }
  return 0;
}

int64_t Execution::operator()(DropStatement& statement) {
  switch (statement.kind) {
    case DropKind::Table:
      if (catalog_.hasTable(statement.name)) {
        catalog_.dropTable(statement.name);
      } else if (catalog_.findQuery(statement.name)) {
        catalog_.dropQuery(statement.name);
      } else {
        existing(statement.name, noSuchTable);
      }
      break;
    case DropKind::Index: {
      const Table& table = existing(statement.table, noSuchTable);
      if (std::none_of(table.indexes.begin(), table.indexes.end(),
                       [&](const Index& i) { return sameText(i.name, statement.name); })) {
        throw Failure{{noSuchIndex, "The table '" + table.name + "' has no index '" + statement.name + "'.",
                       std::nullopt}};
      }
      catalog_.dropIndex(statement.table, statement.name);
      break;
    }
    case DropKind::Query:
      if (!catalog_.findQuery(statement.name)) {
        throw Failure{{noSuchTable, "There is no query named '" + statement.name + "'.", std::nullopt}};
      }
      catalog_.dropQuery(statement.name);
      break;
  }
  return 0;
}

int64_t Execution::operator()(CreateQueryStatement& statement) {
  if (catalog_.hasTable(statement.name) || catalog_.findQuery(statement.name)) {
    throw Failure{{objectExists, "The object '" + statement.name + "' exists already.", std::nullopt}};
  }
  catalog_.createQuery(statement.name, statement.sql);
  return 0;
}

}  // namespace jet
