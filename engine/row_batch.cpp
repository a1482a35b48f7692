#include "engine/row_batch.h"

void RowBatch::clear(size_t columns) {
  columns_ = columns;
  rows_.clear();
  cells_.clear();
  bytes_.clear();
}

void RowBatch::add(const Statement& row) {
  sqlite3_stmt* statement = row.get();
  rows_.push_back(sqlite3_column_int64(statement, 0));
  for (size_t i = 0; i < columns_; ++i) {
    const int column = static_cast<int>(i) + 1;
    Cell cell;
    switch (sqlite3_column_type(statement, column)) {
      case SQLITE_NULL:
        break;
      case SQLITE_INTEGER:
        cell.kind = Stored::Kind::Integer;
        cell.integer = sqlite3_column_int64(statement, column);
        break;
      case SQLITE_FLOAT:
        cell.kind = Stored::Kind::Real;
        cell.real = sqlite3_column_double(statement, column);
        break;
      default:
        cell.kind =
            sqlite3_column_type(statement, column) == SQLITE_TEXT ? Stored::Kind::Text : Stored::Kind::Blob;
        cell.offset = bytes_.size();
        const void* data = sqlite3_column_blob(statement, column);
        cell.length = static_cast<size_t>(sqlite3_column_bytes(statement, column));
        if (cell.length > 0) bytes_.append(static_cast<const char*>(data), cell.length);
    }
    cells_.push_back(cell);
  }
}

Stored RowBatch::stored(size_t row, size_t column) const {
  const Cell& source = cell(row, column);
  Stored result;
  result.kind = source.kind;
  if (source.kind == Stored::Kind::Integer) result.integer = source.integer;
  if (source.kind == Stored::Kind::Real) result.real = source.real;
  if (source.kind >= Stored::Kind::Text) result.bytes.assign(bytesOf(source), source.length);
  return result;
}
