#include <algorithm>

#include "engine/catalog.h"
#include "engine/errors/raised.h"

/// Referential integrity is kept by triggers on both tables, named after the relation, so that a rebuilt
/// table can have them taken away and given back.

namespace {

constexpr const char* kinds[] = {"insert", "update", "changed", "deleted"};

std::string triggerName(std::string_view relation, const char* kind) {
  return quoted("zb_" + std::string(relation) + "." + kind);
}

std::string columnsChanged(const std::vector<std::string>& columns) {
  std::string result;
  for (const std::string& column : columns) result += (result.empty() ? "" : ", ") + quoted(column);
  return result;
}

// "a" = NEW."x" AND "b" = NEW."y"
std::string matches(const std::vector<std::string>& columns, const char* row,
                    const std::vector<std::string>& values) {
  std::string result;
  for (size_t i = 0; i < columns.size(); ++i) {
    result += (i ? " AND " : "") + quoted(columns[i]) + " = " + row + "." + quoted(values[i]);
  }
  return result;
}

std::string allGiven(const std::vector<std::string>& columns) {
  std::string result;
  for (const std::string& column : columns) {
    result += (result.empty() ? "" : " AND ") + ("NEW." + quoted(column)) + " IS NOT NULL";
  }
  return result;
}

std::string assignments(const std::vector<std::string>& columns, const std::vector<std::string>* values) {
  std::string result;
  for (size_t i = 0; i < columns.size(); ++i) {
    result +=
        (i ? ", " : "") + quoted(columns[i]) + " = " + (values ? "NEW." + quoted((*values)[i]) : "NULL");
  }
  return result;
}

// A failure that carries its number through SQLite.
std::string raise(int number, std::string_view table) {
  std::string message = jet::raisedText(engineError(number, table), -1);
  for (size_t at = 0; (at = message.find('\'', at)) != std::string::npos; at += 2)
    message.insert(at, 1, '\'');
  return "SELECT RAISE(ABORT, '" + message + "')";
}

// Whether the index makes the columns that a relation refers to unique.
bool covers(const jet::Index& index, const jet::Relation& relation) {
  return (index.unique || index.primary) && index.columns.size() == relation.foreignColumns.size() &&
         std::equal(index.columns.begin(), index.columns.end(), relation.foreignColumns.begin(),
                    [](const jet::IndexColumn& a, const std::string& b) { return sameText(a.name, b); });
}

bool isCovered(const jet::Table& table, const jet::Relation& relation) {
  return std::any_of(table.indexes.begin(), table.indexes.end(),
                     [&](const jet::Index& index) { return covers(index, relation); });
}

bool losesColumn(const jet::Table& old, const jet::Table& shape, const std::vector<std::string>& columns) {
  return std::any_of(columns.begin(), columns.end(), [&](const std::string& column) {
    return DatabaseCatalog::columnPlace(old, column) >= 0 && DatabaseCatalog::columnPlace(shape, column) < 0;
  });
}

}  // namespace

void DatabaseCatalog::renameInRelations(std::string_view table, std::string_view column,
                                        std::string_view newName) {
  for (jet::Relation& relation : relations()) {
    bool changed = false;
    const auto rename = [&](const std::string& owner, std::vector<std::string>& columns) {
      if (!sameText(owner, table)) return;
      for (std::string& each : columns) {
        if (!sameText(each, column)) continue;
        each = newName;
        changed = true;
      }
    };
    rename(relation.table, relation.columns);
    rename(relation.foreignTable, relation.foreignColumns);
    if (!changed) continue;
    run("UPDATE zb_relations SET columns = ?2, foreign_columns = ?3 WHERE name = ?1",
        {Stored::of(relation.name), Stored::of(joinNames(relation.columns)),
         Stored::of(joinNames(relation.foreignColumns))});
  }
}

void DatabaseCatalog::requireRelationsKept(const jet::Table& old, const jet::Table& shape) {
  for (const jet::Relation& relation : relations()) {
    const std::string named = "the relation '" + relation.name + "'";
    if (sameText(relation.table, old.name) && losesColumn(old, shape, relation.columns)) {
      fail(fieldOfRelation, named);
    }
    if (!sameText(relation.foreignTable, old.name)) continue;
    if (losesColumn(old, shape, relation.foreignColumns)) fail(fieldOfRelation, named);
    if (isCovered(old, relation) && !isCovered(shape, relation)) fail(neededByRelation, named);
  }
}

void DatabaseCatalog::guardRelation(const jet::Relation& relation) {
  const jet::Table& many = require(relation.table);
  const jet::Table& one = require(relation.foreignTable);
  // Without the database's name, which is another one where the file is attached.
  const std::string oneName = quoted(one.stored), manyName = quoted(many.stored);
  const std::string missing = "WHEN " + allGiven(relation.columns) + " AND NOT EXISTS(SELECT 1 FROM " +
                              oneName + " WHERE " +
                              matches(relation.foreignColumns, "NEW", relation.columns) + ") BEGIN " +
                              raise(jet::relatedRecordNeeded, one.name) + "; END";
  run("CREATE TRIGGER " + triggerName(relation.name, kinds[0]) + " AFTER INSERT ON " + manyName + " " +
      missing);
  run("CREATE TRIGGER " + triggerName(relation.name, kinds[1]) + " AFTER UPDATE OF " +
      columnsChanged(relation.columns) + " ON " + manyName + " " + missing);

  const std::string related = matches(relation.columns, "OLD", relation.foreignColumns);
  const std::string refuse = raise(jet::relatedRecords, many.name) + " WHERE EXISTS(SELECT 1 FROM " +
                             manyName + " WHERE " + related + ")";
  std::string differs;
  for (const std::string& column : relation.foreignColumns) {
    differs += (differs.empty() ? "" : " OR ") + ("OLD." + quoted(column)) + " IS NOT NEW." + quoted(column);
  }
  run("CREATE TRIGGER " + triggerName(relation.name, kinds[2]) + " AFTER UPDATE OF " +
      columnsChanged(relation.foreignColumns) + " ON " + oneName + " WHEN " + differs + " BEGIN " +
      (relation.cascadeUpdate
           ? "UPDATE " + manyName + " SET " + assignments(relation.columns, &relation.foreignColumns) +
                 " WHERE " + related
           : refuse) +
      "; END");
  run("CREATE TRIGGER " + triggerName(relation.name, kinds[3]) + " AFTER DELETE ON " + oneName + " BEGIN " +
      (relation.cascadeDelete ? "DELETE FROM " + manyName + " WHERE " + related
       : relation.setNullOnDelete
           ? "UPDATE " + manyName + " SET " + assignments(relation.columns, nullptr) + " WHERE " + related
           : refuse) +
      "; END");
}

void DatabaseCatalog::unguardRelation(std::string_view name) {
  for (const char* kind : kinds) run("DROP TRIGGER IF EXISTS " + triggerName(name, kind));
}

void DatabaseCatalog::unguardRelationsOf(std::string_view table) {
  for (const jet::Relation& relation : relations()) {
    if (sameText(relation.table, table) || sameText(relation.foreignTable, table))
      unguardRelation(relation.name);
  }
}

void DatabaseCatalog::guardRelationsOf(std::string_view table) {
  load();
  for (const jet::Relation& relation : relations()) {
    if (sameText(relation.table, table) || sameText(relation.foreignTable, table)) guardRelation(relation);
  }
}

void DatabaseCatalog::createRelation(const jet::Relation& wanted) {
  changing([&] {
    jet::Relation relation = wanted;
    const jet::Table& many = require(relation.table);
    const jet::Table& one = require(relation.foreignTable);
    for (const jet::Relation& each : relations()) {
      if (sameText(each.name, relation.name)) fail(jet::objectExists, relation.name);
    }
    if (relation.foreignColumns.empty()) {
      for (const jet::Index& index : one.indexes) {
        if (!index.primary) continue;
        for (const auto& column : index.columns) relation.foreignColumns.push_back(column.name);
      }
    }
    if (relation.columns.empty() || relation.columns.size() != relation.foreignColumns.size() ||
        !isCovered(one, relation)) {
      fail(definitionSyntax, "a relation needs a unique index of the fields that it refers to");
    }
    for (const std::string& column : relation.columns) {
      if (columnPlace(many, column) < 0) fail(jet::noSuchField, column);
    }
    std::string given;
    for (const std::string& column : relation.columns) given += " AND c." + quoted(column) + " IS NOT NULL";
    Statement orphans(
        database_.handle(),
        "SELECT 1 FROM " + many.sqlName() + " AS c WHERE NOT EXISTS(SELECT 1 FROM " + one.sqlName() +
            " AS p WHERE " +
            [&] {
              std::string on;
              for (size_t i = 0; i < relation.columns.size(); ++i) {
                on += (i ? " AND p." : "p.") + quoted(relation.foreignColumns[i]) + " = c." +
                      quoted(relation.columns[i]);
              }
              return on;
            }() +
            ")" + given + " LIMIT 1",
        Access::Schema, 0);
    if (orphans.step()) fail(jet::relatedRecordNeeded, relation.foreignTable);
    orphans.reset();
    run("INSERT INTO zb_relations VALUES(?, ?, ?, ?, ?, ?, ?, ?)",
        {Stored::of(relation.name), Stored::of(many.name), Stored::of(one.name),
         Stored::of(joinNames(relation.columns)), Stored::of(joinNames(relation.foreignColumns)),
         Stored::of(int64_t{relation.cascadeUpdate}), Stored::of(int64_t{relation.cascadeDelete}),
         Stored::of(int64_t{relation.setNullOnDelete})});
    guardRelation(relation);
  });
}

void DatabaseCatalog::renewRelations() {
  changing([&] {
    for (const jet::Relation& relation : relations()) {
      unguardRelation(relation.name);
      guardRelation(relation);
    }
  });
}

void DatabaseCatalog::dropRelation(std::string_view table, std::string_view name) {
  changing([&] {
    for (const jet::Relation& relation : relations()) {
      const bool ofTable =
          table.empty() || sameText(relation.table, table) || sameText(relation.foreignTable, table);
      if (!ofTable || !sameText(relation.name, name)) continue;
      unguardRelation(relation.name);
      run("DELETE FROM zb_relations WHERE name = ?", {Stored::of(name)});
      return;
    }
    fail(jet::itemNotFound, "relation '" + std::string(name) + "'");
  });
}
