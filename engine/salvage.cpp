#include "engine/salvage.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <vector>

#include "engine/catalog.h"
#include "engine/row_batch.h"

namespace {

bool isDamage(const jet::Failure& failure) {
  return failure.error.number == notADatabase || failure.error.number == diskOrNetwork ||
         failure.error.number == unexpectedFailure;
}

// Runs what may meet damage; false when it did.
bool survives(const std::function<void()>& work) {
  try {
    work();
    return true;
  } catch (const jet::Failure& failure) {
    if (!isDamage(failure)) throw;
    return false;
  }
}

jet::Type typeOfStorage(std::string_view declared) {
  if (declared == "INTEGER") return jet::Type::Long;
  if (declared == "REAL") return jet::Type::Double;
  return declared == "BLOB" ? jet::Type::Binary : jet::Type::Memo;
}

// What SQLite itself knows of a table whose description is lost: names and storage of its columns.
jet::Table tableFromSchema(Database& from, const std::string& name) {
  jet::Table table;
  table.name = name;
  table.stored = name;
  Statement columns(from.handle(), "SELECT name, type, pk FROM pragma_table_info(?)", Access::Read, 0);
  columns.bind(1, name);
  while (columns.step()) {
    const std::string column(columns.text(0));
    if (columns.integer(2) != 0) table.rowId = column;
    if (columns.integer(2) != 0 && column.starts_with("zb_row")) continue;
    jet::Column described{column, typeOfStorage(columns.text(1)), 0, false, columns.integer(2) != 0, true, {},
                          {}};
    table.columns.push_back(std::move(described));
  }
  return table;
}

std::vector<std::string> storedTables(Database& from) {
  std::vector<std::string> names;
  survives([&] {
    Statement rows(
        from.handle(),
        "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' "
        "AND name NOT LIKE 'zb\\_%' ESCAPE '\\'",
        Access::Read, 0);
    while (rows.step()) names.emplace_back(rows.text(0));
  });
  return names;
}

std::vector<jet::Table> describedTables(Database& from, bool damaged) {
  std::vector<jet::Table> tables;
  DatabaseCatalog catalog(from);
  const auto read = [&] {
    catalog.refresh();
    for (const std::string& name : catalog.tableNames()) tables.push_back(*catalog.findTable(name));
  };
  if (!damaged) {
    read();
    return tables;
  }
  if (!survives(read)) tables.clear();
  std::erase_if(tables, [](const jet::Table& table) {
    return table.columns.empty() ||
           std::any_of(table.columns.begin(), table.columns.end(),
                       [](const jet::Column& column) { return column.type == jet::Type::Unknown; });
  });
  for (const std::string& name : storedTables(from)) {
    if (std::any_of(tables.begin(), tables.end(), [&](auto& each) { return each.stored == name; })) continue;
    survives([&] { tables.push_back(tableFromSchema(from, name)); });
  }
  return tables;
}

// Copies the rows of one table in the order of their numbers, past the places that can't be read.
class RowCopy {
 public:
  RowCopy(Database& from, Database& to, const jet::Table& source, const jet::Table& target)
      : from_(from), source_(source) {
    std::string columns = quoted(source.rowId), into = quoted(target.rowId), marks = "?1";
    for (size_t i = 0; i < source.columns.size(); ++i) {
      columns += ", " + quoted(source.columns[i].name);
      if (source.columns[i].counter) continue;
      into += ", " + quoted(target.columns[i].name);
      marks += ", ?" + std::to_string(i + 2);
    }
    select_ = Statement(from.handle(),
                        "SELECT " + columns + " FROM " + source.sqlName() + " NOT INDEXED WHERE " +
                            quoted(source.rowId) + " >= ? ORDER BY " + quoted(source.rowId),
                        Access::Read);
    insert_ =
        Statement(to.handle(), "INSERT INTO " + target.sqlName() + "(" + into + ") VALUES(" + marks + ")",
                  Access::Write);
  }

  void copyAll() {
    const Run run(select_);
    select_.bind(1, INT64_MIN);
    while (select_.step()) {
      batch_.clear(source_.columns.size());
      batch_.add(select_);
      insert(false);
    }
  }

  void salvage() {
    int64_t next = 1;  // row numbers begin here
    while (true) {
      if (copyFrom(next)) return;
      const std::optional<int64_t> readable = firstReadableFrom(next);
      if (!readable) return;
      next = *readable;
    }
  }

 private:
  void insert(bool damaged) {
    const Run run(insert_);
    std::vector<Stored> values;
    for (size_t i = 0; i < source_.columns.size(); ++i) values.push_back(batch_.stored(0, i));
    insert_.bind(1, batch_.rowId(0));
    for (size_t i = 0; i < values.size(); ++i) {
      if (source_.columns[i].counter) continue;
      if (damaged) makeFit(values[i], source_.columns[i]);
      insert_.bind(static_cast<int>(i) + 2, values[i]);
    }
    insert_.step();
  }

  // A value that turned into another kind is lost, its row is not.
  static void makeFit(Stored& value, const jet::Column& column) {
    if (value.isNull() && !column.required) return;
    using Kind = Stored::Kind;
    switch (column.type) {
      case jet::Type::Single:
      case jet::Type::Double:
      case jet::Type::Date:
        if (value.kind != Kind::Real && value.kind != Kind::Integer) value = Stored::of(0.0);
        break;
      case jet::Type::Text:
      case jet::Type::Memo:
      case jet::Type::Guid:
        if (value.kind != Kind::Text) value = Stored::of(std::string_view());
        break;
      case jet::Type::Binary:
        if (value.kind != Kind::Blob) value = Stored{Kind::Blob, 0, 0, {}};
        break;
      default:
        if (value.kind != Kind::Integer) value = Stored::of(int64_t{0});
    }
  }

  // Copies from a row number on; false at the first place that can't be read, with `next` behind the last
  // row.
  bool copyFrom(int64_t& next) {
    return survives([&] {
      const Run run(select_);
      select_.bind(1, next);
      while (select_.step()) {
        batch_.clear(source_.columns.size());
        batch_.add(select_);
        const int64_t row = batch_.rowId(0);
        // Pages that point at each other in a circle would give the same rows again.
        if (row < next || row == INT64_MAX) fail(notADatabase, from_.path());
        next = row + 1;
        try {
          insert(true);
        } catch (const jet::Failure& failure) {
          if (failure.error.number == diskFull || failure.error.number == outOfMemory) throw;
        }
      }
    });
  }

  bool readableFrom(int64_t row) {
    return survives([&] {
      const Run run(select_);
      select_.bind(1, row);
      if (select_.step() && sqlite3_column_int64(select_.get(), 0) < row) fail(notADatabase, from_.path());
    });
  }

  // The least row number from which on something, or the table's end, can be read. A page that can't be read
  // covers a range of numbers: look ahead in doubling steps, then halve back.
  std::optional<int64_t> firstReadableFrom(int64_t row) {
    constexpr int64_t farthest = int64_t{1} << 40;
    int64_t bad = row, step = 1;
    while (!readableFrom(bad + step)) {
      bad += step;
      step *= 2;
      if (bad + step > farthest) return std::nullopt;
    }
    int64_t good = bad + step;
    while (good - bad > 1) {
      const int64_t middle = bad + (good - bad) / 2;
      (readableFrom(middle) ? good : bad) = middle;
    }
    return good;
  }

  Database& from_;
  const jet::Table& source_;
  Statement select_, insert_;
  RowBatch batch_;
};

// What a change is refused for; nothing when it was made.
std::optional<jet::Error> refusalOf(const std::function<void()>& change) {
  try {
    change();
    return std::nullopt;
  } catch (const jet::Failure& failure) {
    return failure.error;
  }
}

// Counters go on where the source's stand, so that no number is given again.
void copyCounter(Database& from, DatabaseCatalog& catalog, const jet::Table& source) {
  Statement read(from.handle(), "SELECT max(seq) FROM sqlite_sequence WHERE name = ?", Access::Read, 0);
  read.bind(1, source.stored);
  if (!read.step() || sqlite3_column_type(read.get(), 0) != SQLITE_INTEGER) return;
  catalog.continueCounter(source.name, read.integer(0));
}

void copyIndexes(DatabaseCatalog& catalog, const jet::Table& source, bool damaged) {
  for (jet::Index index : source.indexes) {
    const auto refusal = refusalOf([&] { catalog.createIndex(source.name, index); });
    if (!refusal) continue;
    if (!damaged) throw jet::Failure{*refusal};
    // Rows come before rules: what damage has made double is kept.
    index.unique = index.primary = index.required = false;
    catalog.createIndex(source.name, index);
  }
}

void copyTable(Database& from, Database& to, DatabaseCatalog& catalog, const jet::Table& source,
               bool damaged) {
  jet::Table shape = source;
  shape.indexes.clear();
  catalog.createTable(shape);
  const jet::Table target = *catalog.findTable(source.name);
  {
    RowCopy rows(from, to, source, target);
    damaged ? rows.salvage() : rows.copyAll();
  }
  if (damaged) {
    survives([&] { copyCounter(from, catalog, source); });
  } else {
    copyCounter(from, catalog, source);
  }
  copyIndexes(catalog, source, damaged);
}

// A relation can't be made when its fields or its index are gone, or its rows broke it unseen.
bool isBroken(const jet::Error& refusal) {
  return refusal.number == jet::noSuchField || refusal.number == tableNotFound ||
         refusal.number == definitionSyntax || refusal.number == jet::relatedRecordNeeded;
}

std::vector<jet::Error> copyRelationsAndQueries(Database& from, DatabaseCatalog& catalog, bool damaged) {
  DatabaseCatalog source(from);
  std::vector<jet::Relation> relations;
  std::vector<std::pair<std::string, std::string>> queries;
  std::vector<DatabaseCatalog::Link> links;
  const auto read = [&] {
    source.refresh();
    links = source.links();
    relations = source.relations();
    for (const std::string& name : source.queryNames()) {
      if (auto sql = source.findQuery(name)) queries.emplace_back(name, *sql);
    }
  };
  if (damaged) {
    survives(read);
  } else {
    read();
  }
  std::vector<jet::Error> leftOut;
  for (const jet::Relation& relation : relations) {
    const auto refusal = refusalOf([&] { catalog.createRelation(relation); });
    if (!refusal) continue;
    if (!damaged && !isBroken(*refusal)) throw jet::Failure{*refusal};
    leftOut.push_back({refusal->number,
                       "The relation '" + relation.name + "' of the table '" + relation.table +
                           "' is left out: " + refusal->text,
                       std::nullopt});
  }
  for (const DatabaseCatalog::Link& link : links) catalog.createLink(link);
  for (const auto& [name, sql] : queries) catalog.createQuery(name, sql);
  return leftOut;
}

}  // namespace

std::vector<jet::Error> copyContent(Database& from, Database& to, bool damaged) {
  std::optional<Transaction> reading;
  const auto begin = [&] { reading.emplace(from, Transaction::Kind::Read, Access::Read); };
  damaged ? static_cast<void>(survives(begin)) : begin();
  const std::vector<jet::Table> tables = describedTables(from, damaged);
  if (damaged && tables.empty()) fail(notADatabase, from.path());
  Transaction writing(to, Transaction::Kind::Write, Access::Write);
  DatabaseCatalog catalog(to);
  for (const jet::Table& table : tables) {
    if (damaged) {
      survives([&] { copyTable(from, to, catalog, table, true); });
    } else {
      copyTable(from, to, catalog, table, false);
    }
  }
  std::vector<jet::Error> leftOut = copyRelationsAndQueries(from, catalog, damaged);
  writing.commit();
  return leftOut;
}
