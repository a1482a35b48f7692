#pragma once

#include <optional>
#include <string>
#include <vector>

#include "engine/catalog.h"
#include "engine/row_batch.h"

/// One open table in the order of an index: where the cursor stands, and how it moves.
///
/// A position is a row's number with the values of its index columns, so it holds without a lock and without
/// an open statement: every move is a search in the index for what lies behind or before that place, ties in
/// the order of the row numbers. Rows that a search met are kept, and serve the next moves as long as the
/// file's counter of changes says that nothing was committed since.
///
/// A row that moves in the order because its values change takes the cursor along. On a deleted row the
/// cursor keeps the place. Failures are `jet::Failure`; the position is then as it was, where not told
/// otherwise.
class Cursor {
 public:
  /// `index` empty: the primary key's order, or that of the row numbers. Inside a read transaction.
  Cursor(Database& database, DatabaseCatalog& catalog, std::string_view table, std::string_view index);

  const std::string& tableName() const { return table_.name; }
  /// Whether the table is known by this name.
  bool isOn(std::wstring_view table) const;
  /// "" when none was asked for.
  const std::string& indexName() const { return indexName_; }
  const jet::Table& table() const { return table_; }

  /// What was read is of a file that was replaced. The place holds: a compacted file numbers its rows as
  /// before.
  void databaseReopened();
  void moveTop();
  void moveBottom();
  void skip(int64_t count);
  /// Reads the row under the cursor; 3021 when it stands on none, 3167 when the row is deleted.
  void read();
  /// Stands nowhere afterwards when nothing is found.
  void seek(const std::vector<COleVariant>& keys);

  bool afterLast();
  bool beforeFirst();
  int64_t count();

  /// Names and values of the row that the last successful move or read came to.
  COleSafeArray record() const;

  /// `fields`: names and values, in turn. The new row is under the cursor, unless `stay`; it is what
  /// `appended` gets in any case.
  COleSafeArray append(const VARIANT& fields, bool stay);
  void replace(const VARIANT& fields);
  void remove();

 private:
  enum class Place { Top, BeforeFirst, OnRow, AfterLast, Nowhere };
  struct OrderColumn {
    size_t column;
    bool descending;
  };
  struct Assignment {
    size_t column;
    Stored value;
  };

  void bindToSchema(std::string_view indexName);
  void followSchema();
  void resolveTop();
  /// The stamp is that of the main file, and tells nothing of a linked one.
  bool sameStateAsKept() const { return !isLinked(table_) && database_.unchangedSince(stamp_); }
  bool stepInKept(int64_t count);
  void search(int64_t count, bool forward, std::optional<Place> from = std::nullopt);
  bool runLevel(const std::string& sql, const std::vector<Stored>& values, int64_t& toSkip, size_t wanted);
  bool searchFrom(int64_t& toSkip, bool forward, size_t wanted);
  bool searchFromEnd(int64_t& toSkip, bool forward, size_t wanted);
  bool refreshRow(RowBatch& into);
  void keep(RowBatch& rows, bool forward, bool exhausted, const FileStamp& stamp);
  bool isEmpty();
  std::string orderBy(bool forward) const;
  std::string notNullTerms() const;
  std::string selection(const std::string& condition, bool forward) const;
  std::vector<Assignment> assignments(const VARIANT& fields) const;
  std::optional<COleVariant> evaluated(std::string_view expression) const;
  void applyDefaults(std::vector<Assignment>& values) const;
  void requireKeyValues(const std::vector<Assignment>& values) const;
  COleSafeArray recordOf(const RowBatch& rows, size_t at) const;

  Database& database_;
  DatabaseCatalog& catalog_;
  jet::Table table_;
  std::string indexName_;
  std::vector<OrderColumn> order_;
  bool rowsDescending_ = false;
  std::string storedIndex_;  // "" when the row numbers are the order
  bool leavesOutNull_ = false;
  std::string columnList_;
  Bstr wideTableName_;
  std::vector<Bstr> names_;

  Place place_ = Place::Top;
  RowBatch rows_;   // rows in the direction of the last search; `at_` is the cursor's
  RowBatch found_;  // of the search that runs
  size_t at_ = 0;
  bool forward_ = true;
  bool exhausted_ = false;  // the order ends behind `rows_`
  bool deleted_ = false;    // this object deleted the row under the cursor
  size_t readAhead_ = 1;
  uint64_t generation_ = 0;  // of the catalog that the table is bound to
  FileStamp stamp_;          // of the file when `rows_` was read
  FileStamp countStamp_;
  std::optional<int64_t> count_;
};
