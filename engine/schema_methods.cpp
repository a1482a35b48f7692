#include <algorithm>

#include "engine/definition.h"
#include "engine/engine_object.h"
#include "platform/text/utf.h"

namespace {

COleVariant flag(bool value) { return COleVariant::boolean(value); }

std::string columnList(const std::vector<jet::IndexColumn>& columns) {
  std::string result;
  for (const auto& column : columns) {
    result += (result.empty() ? "" : ", ") + column.name + (column.descending ? " DESC" : "");
  }
  return result;
}

void modify(DatabaseCatalog& catalog, const jet::Table& table, const DefinitionEntry& entry) {
  const std::string name = table.name;  // the table goes with the change
  switch (entry.kind) {
    case DefinitionEntry::Kind::Column:
      if (DatabaseCatalog::columnPlace(table, entry.column.name) < 0) {
        return catalog.addColumn(name, entry.column);
      }
      return catalog.alterColumn(name, entry.column);
    case DefinitionEntry::Kind::Index:
      return catalog.createIndex(name, entry.index);
    case DefinitionEntry::Kind::DropColumn:
      return catalog.dropColumn(name, entry.name);
    case DefinitionEntry::Kind::DropIndex:
      return catalog.dropIndex(name, entry.name);
    case DefinitionEntry::Kind::RenameColumn:
      return catalog.renameColumn(name, entry.name, entry.newName);
  }
}

}  // namespace

HRESULT EngineObject::Exists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) {
  if (!exists) return E_POINTER;
  *exists = VARIANT_FALSE;
  return attempt(ok, [&] {
    if (freshCatalog().hasTable(toUtf8(viewOf(name)))) *exists = VARIANT_TRUE;
  });
}

HRESULT EngineObject::Structure(VARIANT* pairs, VARIANT_BOOL* ok) {
  return attempt(pairs, ok, [&] {
    const jet::Table* table = freshCatalog().findTable(cursor().tableName());
    if (!table) fail(tableNotFound, cursor().tableName());
    std::vector<std::pair<std::string, COleVariant>> fields;
    for (const jet::Column& column : table->columns) {
      fields.emplace_back(column.name, COleVariant(fromUtf8(describeColumn(column))));
    }
    return arrayOfPairs(fields);
  });
}

HRESULT EngineObject::ListIndexes(VARIANT* names, VARIANT_BOOL* ok) {
  return attempt(names, ok, [&] {
    const jet::Table* table = freshCatalog().findTable(cursor().tableName());
    if (!table) fail(tableNotFound, cursor().tableName());
    std::vector<std::string> result;
    for (const jet::Index& index : table->indexes) result.push_back(index.name);
    return arrayOfNames(result);
  });
}

HRESULT EngineObject::ListTables(VARIANT* names, VARIANT_BOOL* ok) {
  return attempt(names, ok, [&] {
    DatabaseCatalog& schema = freshCatalog();
    std::vector<std::string> all = schema.tableNames();
    for (const DatabaseCatalog::Link& link : schema.links()) all.push_back(link.name);
    std::sort(all.begin(), all.end(), TextLess());
    return arrayOfNames(all);
  });
}

HRESULT EngineObject::CreateTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    if (database().readOnly()) fail(jet::readOnlyDatabase);
    jet::Table shape;
    shape.name = toUtf8(viewOf(table));
    for (const DefinitionEntry& entry : readDefinition(definition)) {
      if (entry.kind == DefinitionEntry::Kind::Column) {
        shape.columns.push_back(entry.column);
      } else if (entry.kind == DefinitionEntry::Kind::Index) {
        shape.indexes.push_back(entry.index);
      } else {
        fail(definitionSyntax, "a new table has nothing to drop or rename");
      }
    }
    catalog().createTable(shape);
  });
}

HRESULT EngineObject::ModifyTable(BSTR table, VARIANT definition, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    if (database().readOnly()) fail(jet::readOnlyDatabase);
    const std::string name = toUtf8(viewOf(table));
    const Reloading reloading(catalog());
    Transaction transaction(database(), Transaction::Kind::Write, Access::Schema);
    for (const DefinitionEntry& entry : readDefinition(definition)) {
      const jet::Table* known = catalog_->findTable(name);
      if (!known) fail(tableNotFound, name);
      modify(*catalog_, *known, entry);
    }
    transaction.commit();
  });
}

HRESULT EngineObject::RenameTable(BSTR oldName, BSTR newName, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    const std::string from = toUtf8(viewOf(oldName)), to = toUtf8(viewOf(newName));
    catalog().renameTable(from, to);
    if (cursor_ && sameText(cursor_->tableName(), from)) cursor_.reset();
  });
}

HRESULT EngineObject::DeleteTable(BSTR table, VARIANT_BOOL flag, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    const std::string name = toUtf8(viewOf(table));
    if (flag && !freshCatalog().hasTable(name)) return;
    catalog().dropTable(name);
    if (cursor_ && sameText(cursor_->tableName(), name)) cursor_.reset();
  });
}

HRESULT EngineObject::CreateIndex(BSTR first, BSTR second, VARIANT_BOOL flag1, VARIANT_BOOL flag2,
                                  VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    jet::Index index;
    index.columns = readIndexColumns(toUtf8(viewOf(second)));
    for (const auto& column : index.columns) index.name += column.name;
    index.unique = flag1 != VARIANT_FALSE;
    index.primary = flag2 != VARIANT_FALSE;
    catalog().createIndex(toUtf8(viewOf(first)), index);
  });
}

HRESULT EngineObject::FieldRequired(BSTR table, BSTR field, VARIANT_BOOL* required, VARIANT_BOOL* ok) {
  if (!required) return E_POINTER;
  *required = VARIANT_FALSE;
  return attempt(ok, [&] {
    const std::string name = toUtf8(viewOf(table)), column = toUtf8(viewOf(field));
    const jet::Table* known = freshCatalog().findTable(name);
    if (!known) fail(tableNotFound, name);
    const int place = DatabaseCatalog::columnPlace(*known, column);
    if (place < 0) fail(jet::itemNotFound, "field '" + column + "' in the table '" + name + "'");
    if (known->columns[static_cast<size_t>(place)].required) *required = VARIANT_TRUE;
  });
}

HRESULT EngineObject::Attributes(BSTR name, VARIANT* pairs, VARIANT_BOOL* ok) {
  return attempt(pairs, ok, [&] {
    const std::string wanted = toUtf8(viewOf(name));
    DatabaseCatalog& schema = freshCatalog();
    std::vector<std::pair<std::string, COleVariant>> result;
    for (const DatabaseCatalog::Link& link : schema.links()) {
      if (!sameText(link.name, wanted)) continue;
      result = {{"Name", COleVariant(fromUtf8(link.name))},
                {"Kind", COleVariant(L"link")},
                {"File", COleVariant(fromUtf8(link.file))},
                {"Table", COleVariant(fromUtf8(link.foreignName))}};
      return arrayOfPairs(result);
    }
    if (const jet::Table* table = schema.findTable(wanted)) {
      result = {{"Name", COleVariant(fromUtf8(table->name))},
                {"Kind", COleVariant(L"table")},
                {"Fields", COleVariant(static_cast<LONG>(table->columns.size()))},
                {"Indexes", COleVariant(static_cast<LONG>(table->indexes.size()))}};
      return arrayOfPairs(result);
    }
    if (const auto query = schema.findQuery(wanted)) {
      result = {{"Name", COleVariant(fromUtf8(wanted))},
                {"Kind", COleVariant(L"query")},
                {"Sql", COleVariant(fromUtf8(*query))}};
      return arrayOfPairs(result);
    }
    const jet::Table* table = cursor_ ? schema.findTable(cursor_->tableName()) : nullptr;
    if (!table) fail(tableNotFound, wanted);
    if (const int place = DatabaseCatalog::columnPlace(*table, wanted); place >= 0) {
      const jet::Column& column = table->columns[static_cast<size_t>(place)];
      result = {{"Name", COleVariant(fromUtf8(column.name))},
                {"Kind", COleVariant(L"field")},
                {"Type", COleVariant(fromUtf8(describeColumn(
                             {column.name, column.type, 0, false, column.counter, true, "", ""})))},
                {"Size", COleVariant(static_cast<LONG>(column.size))},
                {"Required", flag(column.required)},
                {"EmptyAllowed", flag(column.emptyAllowed)},
                {"Default", COleVariant(fromUtf8(column.defaultValue))}};
      return arrayOfPairs(result);
    }
    const jet::Index* index = DatabaseCatalog::findIndex(*table, wanted);
    if (!index) fail(jet::itemNotFound, "field or index '" + wanted + "' in the table '" + table->name + "'");
    result = {{"Name", COleVariant(fromUtf8(index->name))},
              {"Kind", COleVariant(L"index")},
              {"Fields", COleVariant(fromUtf8(columnList(index->columns)))},
              {"Primary", flag(index->primary)},
              {"Unique", flag(index->unique)},
              {"IgnoreNull", flag(index->ignoreNull)}};
    return arrayOfPairs(result);
  });
}

HRESULT EngineObject::RelationExists(BSTR name, VARIANT_BOOL* exists, VARIANT_BOOL* ok) {
  if (!exists) return E_POINTER;
  *exists = VARIANT_FALSE;
  return attempt(ok, [&] {
    const std::string wanted = toUtf8(viewOf(name));
    const auto all = freshCatalog().relations();
    if (std::any_of(all.begin(), all.end(), [&](auto& each) { return sameText(each.name, wanted); })) {
      *exists = VARIANT_TRUE;
    }
  });
}

HRESULT EngineObject::RelationDelete(BSTR first, BSTR second, VARIANT_BOOL* ok) {
  return attempt(ok, [&] { catalog().dropRelation(toUtf8(viewOf(first)), toUtf8(viewOf(second))); });
}
