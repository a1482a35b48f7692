#pragma once

#include <string>
#include <vector>

#include "engine/values.h"

/// Rows that lie next to each other in an order, copied out of SQLite: row numbers and the values of all
/// columns. One block of bytes holds all texts.
class RowBatch {
 public:
  /// `columns` values for each row.
  void clear(size_t columns);
  /// Appends the statement's row: the row number first, then the columns.
  void add(const Statement& row);

  size_t size() const { return rows_.size(); }
  size_t bytes() const { return bytes_.size(); }
  int64_t rowId(size_t row) const { return rows_[row]; }
  const Cell& cell(size_t row, size_t column) const { return cells_[row * columns_ + column]; }
  const char* bytesOf(const Cell& cell) const {
    return cell.kind >= Stored::Kind::Text ? bytes_.data() + cell.offset : nullptr;
  }
  Stored stored(size_t row, size_t column) const;
  /// One row as a batch of its own with other columns: `sources` has each one's old place, below zero for a
  /// new one, which is null.
  RowBatch rowInShape(size_t row, const std::vector<int>& sources) const;

 private:
  void addBytes(Cell& cell, sqlite3_value* value);

  size_t columns_ = 0;
  std::vector<int64_t> rows_;
  std::vector<Cell> cells_;
  std::string bytes_;
};
