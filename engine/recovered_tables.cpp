#include "engine/recovered_tables.h"

#include <algorithm>
#include <optional>
#include <set>

#include "engine/catalog.h"
#include "engine/jet_sql/jet_sql.h"

namespace {

using Rows = std::vector<std::vector<Stored>>;

struct NamedColumn {
  std::string name;
  StoredColumn stored;
};

Storage storageNamed(std::string_view type) {
  if (type == "INTEGER") return Storage::Integer;
  if (type == "REAL") return Storage::Real;
  if (type == "TEXT") return Storage::Text;
  return type == "BLOB" ? Storage::Blob : Storage::Any;
}

const char* nameOf(Storage storage) {
  switch (storage) {
    case Storage::Integer:
    case Storage::RowNumber:
      return "INTEGER";
    case Storage::Real:
      return "REAL";
    case Storage::Blob:
      return "BLOB";
    default:
      return "TEXT";
  }
}

/// Understands SQLite's own statements: a database without rows, in memory.
class Scratch {
 public:
  Scratch() {
    sqlite3_open(":memory:", &handle_);
    jet::registerFunctions(handle_);
  }
  ~Scratch() { sqlite3_close_v2(handle_); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  bool run(const std::string& sql) {
    return sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
  }
  std::vector<NamedColumn> columnsOf(std::string_view table) {
    std::vector<NamedColumn> columns;
    Statement rows(handle_, "SELECT name, type, pk, \"notnull\" FROM pragma_table_info(?)", Access::Read, 0);
    rows.bind(1, table);
    while (rows.step()) {
      StoredColumn stored{storageNamed(rows.text(1)), rows.integer(3) != 0};
      if (rows.integer(2) != 0 && stored.storage == Storage::Integer && !stored.required)
        stored.storage = Storage::RowNumber;
      columns.push_back({std::string(rows.text(0)), stored});
    }
    return columns;
  }
  std::vector<std::pair<std::string, uint32_t>> tables() {
    std::vector<std::pair<std::string, uint32_t>> found;
    Statement rows(handle_, "SELECT name, rootpage FROM sqlite_schema WHERE type = 'table'", Access::Read, 0);
    while (rows.step()) found.emplace_back(rows.text(0), static_cast<uint32_t>(rows.integer(1)));
    return found;
  }

 private:
  sqlite3* handle_ = nullptr;
};

StoredColumns storedColumns(const std::vector<NamedColumn>& columns) {
  StoredColumns stored;
  for (const NamedColumn& column : columns) stored.push_back(column.stored);
  return stored;
}

Rows readRows(PageFile& file, const StoredTable& table) {
  Rows rows;
  for (const uint32_t number : leavesOf(file, table)) {
    const Page page = file.read(number);
    for (const LeafRow& row : readLeaf(page, headerPlace(number), table.columns, RowRange()).rows) {
      std::vector<Stored> values = valuesOf(file, page, row);
      if (values.size() == table.columns.size()) rows.push_back(std::move(values));
    }
  }
  return rows;
}

/// A table in SQLite's schema.
struct SchemaEntry {
  uint32_t root = 0;
  std::string sql;
};

std::map<std::string, SchemaEntry> readSchema(PageFile& file) {
  constexpr StoredColumn text{Storage::Text, true};
  const StoredTable schema{
      "", 1, RowRange().last, {text, text, text, {Storage::Integer, true}, {Storage::Text, false}}, false};
  std::map<std::string, SchemaEntry> entries;
  for (const auto& row : readRows(file, schema)) {
    if (row[0].bytes != "table") continue;
    // The one table whose statement is the same in all files, so that its name may be damaged.
    const bool counts = row[4].bytes.starts_with("CREATE TABLE sqlite_sequence(");
    entries[counts ? "sqlite_sequence" : row[1].bytes] = {static_cast<uint32_t>(row[3].integer),
                                                          row[4].bytes};
  }
  return entries;
}

[[noreturn]] void failUntold(const std::string& table) {
  throw jet::Failure{{notADatabase,
                      "Nothing tells any more how the rows of the table '" + table + "' are to be read.",
                      std::nullopt}};
}

/// The columns of a described table as they lie in SQLite.
std::vector<NamedColumn> columnsOf(const Description& table) {
  const std::string rowId = valueOf(table, "zb_tables", 2)->bytes;
  std::vector<NamedColumn> columns;
  bool counter = false;
  for (const DescriptionRow& row : table) {
    if (row[0].bytes != "zb_columns") continue;
    const bool isRowId = sameText(row[3].bytes, rowId);
    counter = counter || isRowId;
    const Storage storage = isRowId ? Storage::RowNumber : storageNamed(storageOfType(row[4].bytes));
    columns.push_back({row[3].bytes, {storage, row[6].integer != 0}});
  }
  if (!counter) columns.insert(columns.begin(), {rowId, {Storage::RowNumber, false}});
  return columns;
}

Stored textOf(std::string_view value) { return Stored::of(value); }

class Recovery {
 public:
  explicit Recovery(PageFile& file) : file_(file), schema_(readSchema(file)) {}

  RecoveredTables run() {
    readOwnTables();
    describeTables();
    below_ = pagesBelow(file_);
    placeTables();
    return std::move(found_);
  }

 private:
  /// The tables that the file has about itself stand at the same place in all files.
  void readOwnTables() {
    scratch_.run(systemTables);
    std::vector<StoredTable> own;
    for (const auto& [name, place] : scratch_.tables()) own.push_back(ownTable(name, place));
    scratch_.run(linksTable);
    own.push_back(ownTable("zb_links", 0));
    std::erase_if(own, [](const StoredTable& table) { return table.root == 0; });
    if (const auto entry = schema_.find("sqlite_sequence"); entry != schema_.end()) {
      own.push_back({entry->first,
                     entry->second.root,
                     RowRange().last,
                     {{Storage::Text, true}, {Storage::Integer, true}},
                     false});
      countersAreWhole_ = isWholeLeaf(entry->second.root, own.back().columns);
    }
    mendTrees(file_, own);
    for (const StoredTable& table : own) {
      for (std::vector<Stored>& row : readRows(file_, table)) {
        if (table.name == "zb_copies") {
          addCopy(copies_, row);
        } else if (table.name == "sqlite_sequence") {
          found_.lastRows[row[0].bytes] = row[1].integer;
        } else {
          addRow(catalog_, table.name, std::move(row));
        }
      }
    }
  }

  bool isWholeLeaf(uint32_t root, const StoredColumns& columns) const {
    return root > 1 && root <= file_.count() && readLeaf(file_.read(root), 0, columns, RowRange()).whole;
  }

  StoredTable ownTable(const std::string& name, uint32_t place) {
    const StoredColumns columns = storedColumns(scratch_.columnsOf(name));
    const auto entry = schema_.find(name);
    uint32_t root = entry == schema_.end() ? 0 : entry->second.root;
    if (place != 0 && !canBeRoot(file_, root, columns)) {
      // A file without the table has another one there.
      root = entry != schema_.end() || canBeRoot(file_, place, columns) ? place : 0;
    }
    return {name, root, RowRange().last, columns, false};
  }

  void describeTables() {
    for (const auto& [key, copy] : copies_) found_.objects[key] = copy.description;
    for (auto& [key, description] : catalog_) {
      if (found_.objects.contains(key) || key.first == 't' || isRenamed(key.first, description)) continue;
      found_.objects[key] = description;
    }
    // A table's name may be damaged where its columns are not: those with columns come first.
    for (const bool withColumns : {true, false}) {
      for (const auto& [key, description] : catalog_) {
        const bool hasColumns = valueOf(description, "zb_columns", 0) != nullptr;
        if (key.first == 't' && hasColumns == withColumns && !found_.objects.contains(key)) {
          addTable(key, description);
        }
      }
    }
    for (const auto& [name, entry] : schema_) {
      if (name.starts_with("sqlite_") || name.starts_with("zb_") || isCovered(name)) continue;
      if (!hasRowNumber(columnsIn({name, entry}))) continue;  // none of this engine's, its name is damaged
      addTable({'t', foldText(name)}, {});
    }
  }

  /// Whether all but the name is that of a copy: the name is damaged.
  bool isRenamed(char kind, const Description& description) const {
    return std::any_of(copies_.begin(), copies_.end(), [&](const auto& copy) {
      const Description& known = copy.second.description;
      return copy.first.first == kind && !known.empty() && !description.empty() &&
             known[0].size() == description[0].size() && !catalog_.contains(copy.first) &&
             std::equal(known[0].begin() + 2, known[0].end(), description[0].begin() + 2,
                        [](const Stored& a, const Stored& b) {
                          return a.kind == b.kind && a.integer == b.integer && a.bytes == b.bytes;
                        });
    });
  }

  bool isCovered(const std::string& stored) const {
    return std::any_of(found_.objects.begin(), found_.objects.end(), [&](const auto& object) {
      const Stored* name = object.first.first == 't' ? valueOf(object.second, "zb_tables", 1) : nullptr;
      return name && sameText(name->bytes, stored);
    });
  }

  /// Adds a table that no copy describes, from the catalog and SQLite's schema.
  void addTable(const ObjectKey& key, const Description& described) {
    const Stored* knownName = valueOf(described, "zb_tables", 0);
    const Stored* knownStored = valueOf(described, "zb_tables", 1);
    const Stored* columnsName = valueOf(described, "zb_columns", 0);
    const std::string name = knownName ? knownName->bytes : columnsName ? columnsName->bytes : key.second;
    auto entry = schema_.find(knownStored ? knownStored->bytes : name);
    if (entry == schema_.end()) entry = schema_.find(name);
    const bool isInSchema = entry != schema_.end();
    const std::string stored = isInSchema ? entry->first : knownStored ? knownStored->bytes : name;
    if (isCovered(stored)) return;
    if (!knownStored && !isInSchema) return;  // a part of another table, under a damaged name
    std::vector<NamedColumn> columns;
    if (isInSchema) columns = columnsIn(*entry);
    found_.objects[{'t', foldText(isInSchema && !knownName ? stored : name)}] =
        completed(isInSchema && !knownName ? stored : name, stored, described, columns);
  }

  static bool hasRowNumber(const std::vector<NamedColumn>& columns) {
    return std::any_of(columns.begin(), columns.end(),
                       [](const NamedColumn& each) { return each.stored.storage == Storage::RowNumber; });
  }

  std::vector<NamedColumn> columnsIn(const std::pair<const std::string, SchemaEntry>& entry) {
    scratch_.run("SAVEPOINT trial");
    std::vector<NamedColumn> columns;
    if (scratch_.run(entry.second.sql)) columns = scratch_.columnsOf(entry.first);
    scratch_.run("ROLLBACK TO trial; RELEASE trial");
    return columns;
  }

  static Description completed(const std::string& name, const std::string& stored,
                               const Description& described, std::vector<NamedColumn> columns) {
    std::map<int64_t, DescriptionRow> positions;
    for (const DescriptionRow& row : described) {
      if (row[0].bytes == "zb_columns" && row[2].integer >= 0) positions[row[2].integer] = row;
    }
    const Stored* knownRowId = valueOf(described, "zb_tables", 2);
    std::string rowId = knownRowId ? knownRowId->bytes : "";
    for (size_t i = 0; i < columns.size(); ++i) {
      if (columns[i].stored.storage != Storage::RowNumber) continue;
      if (rowId.empty()) rowId = columns[i].name;
      // The hidden number of a table without a counter is not described.
      if (columns[i].name.starts_with("zb_row"))
        columns.erase(columns.begin() + static_cast<std::ptrdiff_t>(i));
      break;
    }
    if (rowId.empty()) failUntold(name);
    Description table = {{textOf("zb_tables"), textOf(name), textOf(stored), textOf(rowId)}};
    const auto count = std::max<int64_t>(static_cast<int64_t>(columns.size()),
                                         positions.empty() ? 0 : positions.rbegin()->first + 1);
    for (int64_t position = 0; position < count; ++position) {
      const auto known = positions.find(position);
      DescriptionRow row = known == positions.end() ? DescriptionRow() : known->second;
      if (row.empty() || storageOfType(row[4].bytes).empty()) {
        const auto place = static_cast<size_t>(position);
        if (place >= columns.size()) failUntold(name);
        row = likelyColumn(name, position, columns[place], row);
      }
      row[1] = textOf(name);
      table.push_back(std::move(row));
    }
    if (count == 0) failUntold(name);
    for (const DescriptionRow& row : described) {
      if (row[0].bytes == "zb_indexes") table.push_back(row);
    }
    return table;
  }

  /// A column whose row in the catalog is damaged or lost.
  static DescriptionRow likelyColumn(const std::string& table, int64_t position, const NamedColumn& column,
                                     const DescriptionRow& damaged) {
    const bool counter = column.stored.storage == Storage::RowNumber;
    const std::string type =
        counter ? "long" : likelyType(damaged.empty() ? "" : damaged[4].bytes, nameOf(column.stored.storage));
    if (type.empty()) failUntold(table);
    if (!damaged.empty()) {
      DescriptionRow row = damaged;
      row[4] = textOf(type);
      return row;
    }
    return {textOf("zb_columns"),
            textOf(table),
            Stored::of(position),
            textOf(column.name),
            textOf(type),
            Stored::of(int64_t{0}),
            Stored::of(int64_t{column.stored.required}),
            Stored::of(int64_t{counter}),
            Stored::of(int64_t{1}),
            textOf("")};
  }

  void placeTables() {
    std::map<uint32_t, int> uses;
    for (const auto& [name, entry] : schema_) ++uses[entry.root];
    for (const auto& [key, description] : found_.objects) {
      if (key.first != 't') continue;
      StoredTable table;
      table.name = valueOf(description, "zb_tables", 0)->bytes;
      table.columns = storedColumns(columnsOf(description));
      const std::string& stored = valueOf(description, "zb_tables", 1)->bytes;
      const auto entry = schema_.find(stored);
      if (entry != schema_.end() && uses[entry->second.root] == 1) useRoot(table, entry->second.root);
      if (const auto copy = copies_.find(key); copy != copies_.end()) useRoot(table, copy->second.root);
      const auto last = found_.lastRows.find(stored);
      if (last != found_.lastRows.end()) {
        table.lastRow = last->second;
      } else if (countersAreWhole_) {
        table.lastRow = 0;  // it never had a row
      }
      found_.tables.push_back(std::move(table));
    }
  }

  void useRoot(StoredTable& table, uint32_t root) const {
    if (table.root == 0 && root > 1 && !below_.contains(root) && canBeRoot(file_, root, table.columns)) {
      table.root = root;
    }
  }

  PageFile& file_;
  std::map<std::string, SchemaEntry> schema_;
  Scratch scratch_;
  std::map<ObjectKey, DescriptionCopy> copies_;
  Descriptions catalog_;
  std::set<uint32_t> below_;
  RecoveredTables found_;
  bool countersAreWhole_ = false;
};

}  // namespace

RecoveredTables recoverTables(PageFile& file) { return Recovery(file).run(); }

std::string plainStorage(const Description& table) {
  std::string columns;
  for (const NamedColumn& column : columnsOf(table)) {
    columns += (columns.empty() ? "" : ", ") + quoted(column.name) + " " + nameOf(column.stored.storage);
    if (column.stored.storage == Storage::RowNumber) columns += " PRIMARY KEY";
  }
  return "CREATE TABLE " + quoted(valueOf(table, "zb_tables", 1)->bytes) + "(" + columns + ")";
}
