#include "engine/description.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>

#include "engine/catalog.h"
#include "engine/text/collation.h"

const char* const systemTables = R"(
CREATE TABLE zb_tables(name TEXT NOT NULL COLLATE JET PRIMARY KEY, stored TEXT NOT NULL, row_id TEXT NOT NULL) STRICT;
CREATE TABLE zb_columns(table_name TEXT NOT NULL COLLATE JET, position INTEGER NOT NULL, name TEXT NOT NULL,
  type TEXT NOT NULL, size INTEGER NOT NULL, required INTEGER NOT NULL, counter INTEGER NOT NULL,
  empty_allowed INTEGER NOT NULL, default_value TEXT NOT NULL, PRIMARY KEY(table_name, position)) STRICT;
CREATE TABLE zb_indexes(table_name TEXT NOT NULL COLLATE JET, position INTEGER NOT NULL, name TEXT NOT NULL,
  columns TEXT NOT NULL, is_primary INTEGER NOT NULL, is_unique INTEGER NOT NULL, required INTEGER NOT NULL,
  ignore_null INTEGER NOT NULL, PRIMARY KEY(table_name, position)) STRICT;
CREATE TABLE zb_relations(name TEXT NOT NULL COLLATE JET PRIMARY KEY, table_name TEXT NOT NULL COLLATE JET,
  foreign_table TEXT NOT NULL COLLATE JET, columns TEXT NOT NULL, foreign_columns TEXT NOT NULL,
  cascade_update INTEGER NOT NULL, cascade_delete INTEGER NOT NULL, null_on_delete INTEGER NOT NULL) STRICT;
CREATE TABLE zb_queries(name TEXT NOT NULL COLLATE JET PRIMARY KEY, sql TEXT NOT NULL) STRICT;
CREATE TABLE IF NOT EXISTS zb_copies(kind TEXT NOT NULL, name TEXT NOT NULL, root INTEGER NOT NULL,
  content TEXT NOT NULL, checksum INTEGER NOT NULL) STRICT;
CREATE TABLE IF NOT EXISTS zb_rules(table_name TEXT NOT NULL COLLATE JET, column_name TEXT NOT NULL COLLATE JET,
  condition TEXT NOT NULL, message TEXT NOT NULL) STRICT;
)";

const char* const linksTable =
    "CREATE TABLE IF NOT EXISTS zb_links(name TEXT NOT NULL COLLATE JET PRIMARY KEY, file TEXT NOT NULL, "
    "foreign_name TEXT NOT NULL) STRICT";

namespace {

struct CatalogTable {
  const char* name;
  char kind;            // of the objects that its rows are about; the first column names them
  const char* columns;  // by name, since damage may have changed one
  const char* order;
};

constexpr CatalogTable catalogTables[] = {
    {"zb_tables", 't', "name, stored, row_id", "name"},
    {"zb_columns", 't',
     "table_name, position, name, type, size, required, counter, empty_allowed, default_value",
     "table_name, position"},
    {"zb_indexes", 't', "table_name, position, name, columns, is_primary, is_unique, required, ignore_null",
     "table_name, position"},
    {"zb_rules", 't', "table_name, column_name, condition, message", "rowid"},
    {"zb_relations", 'r',
     "name, table_name, foreign_table, columns, foreign_columns, cascade_update, cascade_delete, "
     "null_on_delete",
     "name"},
    {"zb_queries", 'q', "name, sql", "name"},
    {"zb_links", 'l', "name, file, foreign_name", "name"}};

size_t columnCount(const CatalogTable& table) {
  const std::string_view columns = table.columns;
  return 1 + static_cast<size_t>(std::count(columns.begin(), columns.end(), ','));
}

bool hasTable(Database& database, std::string_view name) {
  Statement statement(database.handle(), "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?",
                      Access::Read, 0);
  statement.bind(1, name);
  return statement.step();
}

Stored columnOf(const Statement& row, int column) {
  switch (sqlite3_column_type(row.get(), column)) {
    case SQLITE_INTEGER:
      return Stored::of(row.integer(column));
    case SQLITE_TEXT:
      return Stored::of(row.text(column));
    default:
      return {};
  }
}

// Each value is a letter for its kind, its length, and its bytes.
std::string written(const Description& description) {
  std::string text;
  for (const DescriptionRow& row : description) {
    text += 'r' + std::to_string(row.size()) + ':';
    for (const Stored& value : row) {
      const std::string bytes =
          value.kind == Stored::Kind::Integer ? std::to_string(value.integer) : value.bytes;
      text += value.isNull() ? 'n' : value.kind == Stored::Kind::Integer ? 'i' : 't';
      text += std::to_string(bytes.size()) + ':' + bytes;
    }
  }
  return text;
}

std::optional<Description> readWritten(std::string_view text) {
  const auto number = [&](size_t& value) {
    const auto end = std::from_chars(text.data() + 1, text.data() + text.size(), value).ptr;
    const auto taken = static_cast<size_t>(end - text.data()) + 1;
    if (taken > text.size() || *end != ':') return false;
    text.remove_prefix(taken);
    return true;
  };
  Description description;
  while (!text.empty()) {
    size_t values = 0;
    if (text[0] != 'r' || !number(values)) return std::nullopt;
    DescriptionRow& row = description.emplace_back();
    for (; values > 0 && !text.empty(); --values) {
      const char kind = text[0];
      size_t size = 0;
      if (!number(size) || size > text.size()) return std::nullopt;
      const std::string_view bytes = text.substr(0, size);
      text.remove_prefix(size);
      Stored value = kind == 'n' ? Stored() : Stored::of(bytes);
      if (kind == 'i') {
        int64_t integer = 0;
        std::from_chars(bytes.data(), bytes.data() + bytes.size(), integer);
        value = Stored::of(integer);
      }
      row.push_back(std::move(value));
    }
    if (values > 0) return std::nullopt;
  }
  return description;
}

// FNV-1a.
int64_t checksum(std::initializer_list<std::string_view> texts) {
  uint64_t sum = 14695981039346656037u;
  for (const std::string_view text : texts) {
    for (const char c : text) sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211u;
    sum = (sum ^ 0xFF) * 1099511628211u;  // no text has this byte
  }
  return static_cast<int64_t>(sum);
}

int64_t checksum(std::string_view kind, std::string_view name, int64_t root, std::string_view content) {
  return checksum({kind, name, std::to_string(root), content});
}

// SQLite's statements for the file's own tables and their indexes, and for what guards relations.
void addStatements(Database& database, Descriptions& objects) {
  std::map<std::string, Description*> owners;
  for (auto& [key, description] : objects) {
    if (key.first == 't') {
      const Stored* stored = valueOf(description, "zb_tables", 1);
      if (!stored) continue;
      owners[stored->bytes] = &description;
      for (const DescriptionRow& row : Description(description)) {
        if (row[0].bytes == "zb_indexes") owners[stored->bytes + "." + row[3].bytes] = &description;
      }
    } else if (key.first == 'r') {
      for (const std::string& name :
           DatabaseCatalog::guardNames(valueOf(description, "zb_relations", 0)->bytes))
        owners[name] = &description;
    }
  }
  // What guards a rule is known by the table that it is on.
  Statement rows(
      database.handle(),
      "SELECT name, sql, CASE WHEN type = 'trigger' AND instr(name, '.rule.') > 0 THEN tbl_name ELSE "
      "name END FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY name",
      Access::Read, 0);
  while (rows.step()) {
    const auto owner = owners.find(std::string(rows.text(2)));
    if (owner == owners.end()) continue;
    owner->second->push_back(
        {Stored::of(std::string_view("sqlite_schema")), Stored::of(rows.text(0)), Stored::of(rows.text(1))});
  }
}

std::map<std::string, int64_t> roots(Database& database) {
  std::map<std::string, int64_t> found;
  Statement rows(database.handle(), "SELECT name, rootpage FROM sqlite_schema WHERE type = 'table'",
                 Access::Read, 0);
  while (rows.step()) found[std::string(rows.text(0))] = rows.integer(1);
  return found;
}

// A row of zb_copies.
using Copy = std::vector<Stored>;

Copy copyOf(const ObjectKey& key, const Description& description,
            const std::map<std::string, int64_t>& roots) {
  const Stored* stored = key.first == 't' ? valueOf(description, "zb_tables", 1) : nullptr;
  const auto root = roots.find(stored ? stored->bytes : "");
  const int64_t number = root == roots.end() ? 0 : root->second;
  const std::string content = written(description), kind(1, key.first);
  return {Stored::of(std::string_view(kind)), Stored::of(std::string_view(key.second)), Stored::of(number),
          Stored::of(std::string_view(content)), Stored::of(checksum(kind, key.second, number, content))};
}

std::vector<Stored> valuesIn(const Statement& row) {
  std::vector<Stored> values;
  for (int i = 0; i < sqlite3_column_count(row.get()); ++i) values.push_back(columnOf(row, i));
  return values;
}

Descriptions describedObjects(Database& database) {
  Descriptions objects;
  for (const CatalogTable& table : catalogTables) {
    // These came later, or with the first link.
    const bool mayMiss = table.kind == 'l' || table.name == std::string_view("zb_rules");
    if (mayMiss && !hasTable(database, table.name)) continue;
    Statement rows(
        database.handle(),
        std::string("SELECT ") + table.columns + " FROM " + table.name + " ORDER BY " + table.order,
        Access::Read, 0);
    while (rows.step()) addRow(objects, table.name, valuesIn(rows));
  }
  addStatements(database, objects);
  return objects;
}

bool agreesWithCopies(Database& database, const Descriptions& objects) {
  if (!hasTable(database, "zb_copies")) return true;
  std::map<ObjectKey, DescriptionCopy> copies;
  Statement rows(database.handle(), "SELECT kind, name, root, content, checksum FROM zb_copies", Access::Read,
                 0);
  while (rows.step()) {
    if (!addCopy(copies, valuesIn(rows))) return false;
  }
  return copies.size() == objects.size() &&
         std::all_of(objects.begin(), objects.end(), [&](const auto& object) {
           const auto copy = copies.find(object.first);
           return copy != copies.end() && written(copy->second.description) == written(object.second);
         });
}

// Files that were made before texts were sorted by language have them in the order of names.
bool isTextOrder(std::string_view collation) { return collation == languageOrder || collation == nameOrder; }

// Whether SQLite has a column as the catalog describes it.
bool isStored(Database& database, const std::string& table, const DescriptionRow& column) {
  const char *type = nullptr, *collation = nullptr;
  int required = 0, primaryKey = 0, counter = 0;
  if (sqlite3_table_column_metadata(database.handle(), "main", table.c_str(), column[3].bytes.c_str(), &type,
                                    &collation, &required, &primaryKey, &counter) != SQLITE_OK)
    return false;
  const std::string_view storage = storageOfType(column[4].bytes);
  return type && storage == type && (column[7].integer != 0) == (counter != 0) &&
         (storage != "TEXT" || isTextOrder(collation));
}

bool hasStoredIndex(Database& database, const std::string& table, const DescriptionRow& index) {
  Statement columns(database.handle(),
                    "SELECT group_concat((CASE desc WHEN 0 THEN '+' ELSE '-' END) || name, char(9)) FROM "
                    "(SELECT name, desc FROM pragma_index_xinfo(?) WHERE key = 1 ORDER BY seqno)",
                    Access::Read, 0);
  const std::string name = table + "." + index[3].bytes;
  columns.bind(1, name);
  return columns.step() && sameText(columns.text(0), index[4].bytes);
}

// Whether SQLite's schema has a table as the catalog describes it.
bool isStored(Database& database, const Description& table) {
  const Stored* stored = valueOf(table, "zb_tables", 1);
  const Stored* rowId = valueOf(table, "zb_tables", 2);
  if (!stored || !valueOf(table, "zb_columns", 0)) return false;
  int primaryKey = 0;
  if (sqlite3_table_column_metadata(database.handle(), "main", stored->bytes.c_str(), rowId->bytes.c_str(),
                                    nullptr, nullptr, nullptr, &primaryKey, nullptr) != SQLITE_OK ||
      primaryKey == 0)
    return false;
  int64_t position = 0;
  for (const DescriptionRow& row : table) {
    const std::string& kind = row[0].bytes;
    if (kind == "zb_columns" && (row[2].integer != position++ || !isStored(database, stored->bytes, row)))
      return false;
    // An index of the row number alone is the table itself.
    if (kind == "zb_indexes" && !sameText(row[4].bytes.substr(1), rowId->bytes) &&
        !hasStoredIndex(database, stored->bytes, row))
      return false;
  }
  return true;
}

}  // namespace

void addRow(Descriptions& objects, std::string_view table, std::vector<Stored> values) {
  const auto* found = std::find_if(std::begin(catalogTables), std::end(catalogTables),
                                   [&](const CatalogTable& each) { return table == each.name; });
  if (found == std::end(catalogTables) || values.size() != columnCount(*found) ||
      values[0].kind != Stored::Kind::Text)
    return;
  Description& object = objects[{found->kind, foldText(values[0].bytes)}];
  values.insert(values.begin(), Stored::of(table));
  object.push_back(std::move(values));
}

const Stored* valueOf(const Description& description, std::string_view table, size_t column) {
  for (const DescriptionRow& row : description) {
    if (row[0].bytes == table && column + 1 < row.size()) return &row[column + 1];
  }
  return nullptr;
}

bool addCopy(std::map<ObjectKey, DescriptionCopy>& copies, const std::vector<Stored>& row) {
  if (row.size() != 5) return false;
  const std::string &kind = row[0].bytes, &name = row[1].bytes, &content = row[3].bytes;
  if (kind.size() != 1 || checksum(kind, name, row[2].integer, content) != row[4].integer) return false;
  auto description = readWritten(content);
  if (!description) return false;
  copies[{kind[0], name}] = {std::move(*description), static_cast<uint32_t>(row[2].integer)};
  return true;
}

bool describesItself(Database& database) try {
  const Descriptions objects = describedObjects(database);
  return agreesWithCopies(database, objects) &&
         std::all_of(objects.begin(), objects.end(), [&](const auto& object) {
           return object.first.first != 't' || isStored(database, object.second);
         });
} catch (const jet::Failure& failure) {
  if (failure.error.number == notADatabase || failure.error.number == unexpectedFailure) return false;
  throw;
}

void completeSystemTables(Database& database) {
  if (hasTable(database, "zb_copies") && hasTable(database, "zb_rules")) return;
  const std::string_view script = systemTables;
  database.execute(script.substr(script.find("CREATE TABLE IF NOT EXISTS")), Access::Schema);
}

void copyDescriptions(Database& database) {
  const auto run = [&](std::string_view sql, const std::vector<Stored>& values) {
    Statement statement(database.handle(), sql, Access::Schema, 0);
    for (size_t i = 0; i < values.size(); ++i) statement.bind(static_cast<int>(i + 1), values[i]);
    statement.step();
  };
  const auto places = roots(database);
  std::map<int64_t, Copy> wanted;  // by checksum, which covers everything
  for (const auto& [key, description] : describedObjects(database)) {
    Copy copy = copyOf(key, description, places);
    wanted.emplace(copy.back().integer, std::move(copy));
  }
  std::set<int64_t> outdated;
  {
    Statement rows(database.handle(), "SELECT rowid, checksum FROM zb_copies", Access::Read, 0);
    while (rows.step()) {
      if (wanted.erase(rows.integer(1)) == 0) outdated.insert(rows.integer(0));
    }
  }
  for (const int64_t row : outdated) run("DELETE FROM zb_copies WHERE rowid = ?", {Stored::of(row)});
  for (const auto& [sum, copy] : wanted) run("INSERT INTO zb_copies VALUES(?, ?, ?, ?, ?)", copy);
}

void restoreDescription(Database& database, const Description& description) {
  for (const DescriptionRow& row : description) {
    const auto table = std::find_if(std::begin(catalogTables), std::end(catalogTables),
                                    [&](const CatalogTable& each) { return row[0].bytes == each.name; });
    if (table == std::end(catalogTables)) continue;
    if (table->kind == 'l') database.execute(linksTable, Access::Schema);
    std::string sql = std::string("INSERT INTO ") + table->name + " VALUES(";
    for (size_t i = 1; i < row.size(); ++i) sql += i > 1 ? ", ?" : "?";
    Statement statement(database.handle(), sql + ")", Access::Schema, 0);
    for (size_t i = 1; i < row.size(); ++i) statement.bind(static_cast<int>(i), row[i]);
    statement.step();
  }
}
