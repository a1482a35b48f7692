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
    sqlite3_value* value = sqlite3_column_value(statement, static_cast<int>(i) + 1);
    Cell& cell = cells_.emplace_back();
    switch (sqlite3_value_type(value)) {
      case SQLITE_NULL:
        break;
      case SQLITE_INTEGER:
        cell.kind = Stored::Kind::Integer;
        cell.integer = sqlite3_value_int64(value);
        break;
      case SQLITE_FLOAT:
        cell.kind = Stored::Kind::Real;
        cell.real = sqlite3_value_double(value);
        break;
      case SQLITE_TEXT:
        cell.kind = Stored::Kind::Text;
        addBytes(cell, value);
        break;
      default:
        cell.kind = Stored::Kind::Blob;
        addBytes(cell, value);
    }
  }
}

void RowBatch::addBytes(Cell& cell, sqlite3_value* value) {
  const void* data = sqlite3_value_blob(value);
  cell.offset = bytes_.size();
  cell.length = static_cast<size_t>(sqlite3_value_bytes(value));
  if (cell.length > 0) bytes_.append(static_cast<const char*>(data), cell.length);
}

RowBatch RowBatch::rowInShape(size_t row, const std::vector<int>& sources) const {
  RowBatch shaped;
  shaped.columns_ = sources.size();
  shaped.rows_ = {rowId(row)};
  shaped.bytes_ = bytes_;
  for (const int source : sources) {
    shaped.cells_.push_back(source < 0 ? Cell() : cell(row, static_cast<size_t>(source)));
  }
  return shaped;
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
