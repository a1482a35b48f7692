#include "engine/mdb/import.h"

#include <algorithm>
#include <optional>

#include "engine/catalog.h"
#include "engine/compact.h"
#include "engine/mdb/jet_schema.h"
#include "engine/mdb/jet_table.h"

namespace mdb {
namespace {

/// Columns whose rows don't keep a rule of theirs: the rows come over, the rule doesn't.
struct BrokenRules {
  std::set<size_t> nulls;  ///< columns with null where none may be
  bool counter = false;    ///< its numbers repeat, or are missing
  bool operator==(const BrokenRules&) const = default;
};

class Import {
 public:
  Import(JetFile& file, Database& target, const ImportOptions& options, const ImportProgress& progress)
      : file_(file), target_(target), catalog_(target), options_(options), progress_(progress) {}

  ImportResult run() {
    for (const JetObject& object : file_.objects()) {
      if (isUsersTable(object)) allRows_ += rowsOf(object);
    }
    Transaction transaction(target_, Transaction::Kind::Write, Access::Write);
    for (const JetObject& object : file_.objects()) {
      if (isUsersTable(object)) importTable(object);
    }
    attempt("The relations", [&] { importRelations(); });
    attempt("The queries", [&] { importQueries(); });
    attempt("The other objects", [&] { tellTheRest(); });
    transaction.commit();
    return result_;
  }

 private:
  static bool isUsersTable(const JetObject& object) { return object.kind == MDB_TABLE && !object.system; }
  void lose(const std::string& what) { progress_.loss(what + "."); }

  void attempt(const char* what, const std::function<void()>& work) try {
    work();
  } catch (const JetError& error) {
    if (!options_.keepGoing) throw;
    lose(what + std::string(" can't be read whole: ") + error.what());
  }

  static size_t rowsOf(const JetObject& object) {
    MdbTableDef* table = mdb_read_table(object.entry);
    if (!table) return 0;
    const size_t rows = table->num_rows;
    mdb_free_tabledef(table);
    return rows;
  }

  void importTable(const JetObject& object) try {
    progress_.at(object.name, result_.rows, allRows_);
    const size_t rowsBefore = result_.rows;
    BrokenRules broken;
    while (true) {
      target_.execute("SAVEPOINT jet_table", Access::Write);
      JetTable table(file_, object);
      const BrokenRules before = broken;
      copyTable(table, broken);
      if (broken == before) {
        finish(table, broken);
        target_.execute("RELEASE jet_table", Access::Write);
        return;
      }
      // Once more, without the rules that rows turned out to break.
      undoTable();
      result_.rows = rowsBefore;
    }
  } catch (const JetError& error) {
    const std::string what = "The table '" + object.name + "' can't be read: " + error.what();
    undoTable();
    if (!options_.keepGoing) throw JetError(what);
    lose(what);
  }

  void undoTable() {
    target_.forgetStatements();
    sqlite3_exec(target_.handle(), "ROLLBACK TO jet_table; RELEASE jet_table", nullptr, nullptr, nullptr);
    catalog_.changesUndone();
  }

  void copyTable(JetTable& source, BrokenRules& broken) {
    jet::Table shape = source.shape();
    for (size_t column : broken.nulls) shape.columns[column].required = false;
    for (jet::Column& column : shape.columns) column.counter = column.counter && !broken.counter;
    shape.indexes = keptIndexes(shape, broken);
    catalog_.createTable(shape, DatabaseCatalog::IndexStorage::Later);
    const jet::Table target = *catalog_.findTable(shape.name);
    copyRows(source, target, broken);
  }

  static bool isKey(const jet::Table& shape, size_t column) {
    return std::any_of(shape.indexes.begin(), shape.indexes.end(), [&](const jet::Index& index) {
      return (index.primary || index.required) &&
             std::any_of(index.columns.begin(), index.columns.end(),
                         [&](auto& each) { return sameText(each.name, shape.columns[column].name); });
    });
  }

  static std::vector<jet::Index> keptIndexes(const jet::Table& shape, const BrokenRules& broken) {
    std::vector<jet::Index> indexes = shape.indexes;
    for (jet::Index& index : indexes) {
      const bool hasNulls = std::any_of(index.columns.begin(), index.columns.end(), [&](auto& each) {
        return broken.nulls.contains(static_cast<size_t>(DatabaseCatalog::columnPlace(shape, each.name)));
      });
      if (hasNulls) index.primary = index.required = false;
    }
    return indexes;
  }

  void copyRows(JetTable& source, const jet::Table& target, BrokenRules& broken) {
    const BrokenRules before = broken;
    std::string columns, marks;
    std::vector<bool> mustHaveValue;
    for (size_t i = 0; i < target.columns.size(); ++i) {
      columns += (i ? ", " : "") + quoted(target.columns[i].name);
      marks += (i ? ", ?" : "?");
      mustHaveValue.push_back(target.columns[i].required || isKey(target, i));
    }
    const int counter = counterColumn(target);
    Statement insert(target_.handle(),
                     "INSERT INTO " + target.sqlName() + "(" + columns + ") VALUES(" + marks + ")",
                     Access::Write);
    constexpr size_t stepOfProgress = 4096;
    for (std::vector<Stored> row; source.next(row);) {
      for (size_t i = 0; i < row.size(); ++i) {
        if (row[i].isNull() && mustHaveValue[i]) broken.nulls.insert(i);
        if (row[i].isNull() && static_cast<int>(i) == counter) broken.counter = true;
        insert.bind(static_cast<int>(i) + 1, row[i]);
      }
      // Once a rule is broken the table will be read again: the rest only shows what else is.
      if (broken != before) continue;
      insertChecked(insert, counter, broken);
      if (++result_.rows % stepOfProgress == 0) progress_.at(target.name, result_.rows, allRows_);
    }
  }

  static void insertChecked(Statement& insert, int counter, BrokenRules& broken) {
    const Run run(insert);
    try {
      insert.step();
    } catch (const jet::Failure& failure) {
      if (failure.error.number != jet::duplicateValue || counter < 0) throw;
      broken.counter = true;
    }
  }

  void finish(const JetTable& source, const BrokenRules& broken) {
    const std::string& name = source.shape().name;
    const std::string of = " of the table '" + name + "'";
    if (const std::string missing = source.missing(); !missing.empty()) {
      if (!options_.keepGoing) throw JetError(missing);
      lose("The table '" + name + "' is not whole: " + missing);
    }
    ++result_.tables;
    for (const std::string& loss : source.losses()) lose("Not imported" + of + ": " + loss);
    for (size_t column : broken.nulls)
      lose("The field '" + source.shape().columns[column].name + "'" + of +
           " is not required: rows have no value there");
    if (broken.counter) lose("The counter" + of + " became a number: its values repeat or are missing");
    for (const auto& [what, times] : source.changedValues())
      lose("Changed" + of + ", " + std::to_string(times) + " times: " + what);
    if (!broken.counter) catalog_.continueCounter(name, source.lastCounter());
    catalog_.storeIndexes(name, [&](const jet::Index& index) {
      lose("The index '" + index.name + "'" + of + " doesn't refuse equal values: the rows have some");
    });
  }

  void importRelations() {
    for (JetRelation& each : readRelations(file_)) {
      const std::string name = "The relation '" + each.relation.name + "'";
      if (!each.enforced) {
        lose(name + " is not imported: it guards nothing");
        continue;
      }
      try {
        catalog_.createRelation(each.relation);
        ++result_.relations;
      } catch (const jet::Failure& failure) {
        const std::string& text = failure.error.text;
        lose(name + " is not imported: " + text.substr(0, text.find_last_not_of('.') + 1));
      }
    }
  }

  void importQueries() {
    for (const JetQuery& query : readQueries(file_)) {
      std::string failure = query.failure;
      if (failure.empty()) {
        try {
          catalog_.createQuery(query.name, query.sql);
        } catch (const jet::Failure& refused) {
          failure = refused.error.text;
        }
      }
      if (failure.empty()) {
        ++result_.queries;
      } else {
        lose("The query '" + query.name + "' is not imported: " + failure);
      }
    }
  }

  void tellTheRest() {
    for (const std::string& link : describeLinks(file_)) lose("Not imported: the linked table " + link);
    constexpr std::pair<int, const char*> kinds[] = {
        {MDB_FORM, "forms"}, {MDB_REPORT, "reports"}, {MDB_MACRO, "macros"}, {MDB_MODULE, "modules"}};
    for (const auto& [kind, name] : kinds) {
      const auto count = std::count_if(
          file_.objects().begin(), file_.objects().end(),
          [&, wanted = kind](const JetObject& each) { return each.kind == wanted && !each.system; });
      if (count > 0) lose("Not imported: " + std::string(name) + " (" + std::to_string(count) + ")");
    }
  }

  JetFile& file_;
  Database& target_;
  DatabaseCatalog catalog_;
  const ImportOptions& options_;
  const ImportProgress& progress_;
  ImportResult result_;
  size_t allRows_ = 0;
};

}  // namespace

ImportResult importJetFile(const std::string& source, const std::string& target, const ImportOptions& options,
                           const ImportProgress& progress) {
  JetFile file(source);
  ImportResult result;
  buildDatabaseFile(target,
                    [&](Database& database) { result = Import(file, database, options, progress).run(); });
  return result;
}

}  // namespace mdb
