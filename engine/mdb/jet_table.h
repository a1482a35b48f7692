#pragma once

#include <set>

#include "engine/jet_sql/catalog.h"
#include "engine/mdb/jet_file.h"
#include "engine/statement.h"

namespace mdb {

/// A table of a Jet file: its definition in the engine's terms, and its rows one after the other.
class JetTable {
 public:
  JetTable(JetFile& file, const JetObject& object);

  /// Columns and indexes that come over. Indexes of relations stay out: relations make their own.
  const jet::Table& shape() const { return shape_; }
  /// What of the definition doesn't come over, a line each.
  const std::vector<std::string>& losses() const { return losses_; }
  /// Rules for the rows: the field that each is of, "" for one of the table, its condition, and what is told
  /// when it is broken.
  struct Rule {
    std::string column, condition, message;
  };
  const std::vector<Rule>& rules() const { return rules_; }
  /// How many rows the table says that it has.
  size_t declaredRows() const { return table_->num_rows; }
  /// The last number that the counter gave, 0 without one.
  int64_t lastCounter() const { return lastCounter_; }

  /// Reads the next row: a value for each column of `shape()`. False at the end.
  bool next(std::vector<Stored>& row);
  size_t rowsRead() const { return rowsRead_; }
  /// After the last row: what is missing of the table, "" when nothing is.
  std::string missing() const;
  /// Values of rows that were read but came over changed: why, and how often.
  const std::map<std::string, size_t>& changedValues() const { return changedValues_; }

 private:
  struct Field {
    MdbColumn* column;
    size_t number;  ///< in libmdb's list
    jet::Type type;
  };
  struct Free {
    void operator()(MdbTableDef* table) const { mdb_free_tabledef(table); }
  };
  void readColumns();
  void addColumn(MdbColumn& column, size_t number);
  void readIndexes();
  bool nextPage();
  Stored value(const Field& field, const jet::Column& shape, const MdbField& found);
  void addLoss(const std::string& what) { losses_.push_back(what); }

  JetFile& file_;
  std::unique_ptr<MdbTableDef, Free> table_;
  jet::Table shape_;
  std::vector<Field> fields_;
  std::vector<MdbField> found_;    ///< where the row's values stand, by libmdb's numbers of the columns
  std::vector<MdbField> cracked_;  ///< the same in the order of the row
  std::vector<std::string> losses_;
  std::vector<Rule> rules_;
  int64_t lastCounter_ = 0;
  unsigned rowsOnPage_ = 0, row_ = 0;
  std::set<int> pages_;  // that were read: a damaged map may name one twice
  size_t damagedRows_ = 0, rowsRead_ = 0;
  std::map<std::string, size_t> changedValues_;
};

/// Indexes of a table's definition, as its pages hold them. `columnNames` by the file's own numbers.
struct JetIndex {
  jet::Index index;
  bool ofRelation = false;
};
std::vector<JetIndex> parseIndexes(ByteView definition, bool isJet3,
                                   const std::map<int, std::string>& columnNames,
                                   const std::function<std::string(ByteView)>& text);

}  // namespace mdb
