#include "engine/row_set.h"

#include <cmath>
#include <limits>

#include "engine/values.h"

namespace {

bool isReal(jet::Type type) {
  return type == jet::Type::Single || type == jet::Type::Double || type == jet::Type::Date;
}

/// The type of a value whose column has none: a whole number that fits is a long one.
jet::Type typeOf(sqlite3_stmt* row, int column) {
  if (sqlite3_column_type(row, column) != SQLITE_INTEGER) return jet::Type::Double;
  const int64_t value = sqlite3_column_int64(row, column);
  const bool fits =
      value >= std::numeric_limits<int32_t>::min() && value <= std::numeric_limits<int32_t>::max();
  return fits ? jet::Type::Long : jet::Type::Double;
}

void giveValue(sqlite3_stmt* row, int column, jet::Type type, VARIANT& value) {
  if (type == jet::Type::Unknown) type = typeOf(row, column);
  Cell cell;
  const char* bytes = nullptr;
  switch (sqlite3_column_type(row, column)) {
    case SQLITE_INTEGER:
      cell.kind = isReal(type) ? Stored::Kind::Real : Stored::Kind::Integer;
      if (isReal(type)) {
        cell.real = sqlite3_column_double(row, column);
      } else {
        cell.integer = sqlite3_column_int64(row, column);
      }
      break;
    case SQLITE_FLOAT:
      cell.kind = Stored::Kind::Real;
      cell.real = sqlite3_column_double(row, column);
      break;
    case SQLITE_TEXT:
      cell.kind = Stored::Kind::Text;
      bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
      cell.length = static_cast<size_t>(sqlite3_column_bytes(row, column));
      break;
    case SQLITE_BLOB:
      cell.kind = Stored::Kind::Blob;
      bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
      cell.length = static_cast<size_t>(sqlite3_column_bytes(row, column));
      break;
    default:
      break;
  }
  variantOf(cell, bytes, type, value);
}

}  // namespace

RowSet::~RowSet() {
  for (VARIANT& value : values_) VariantClear(&value);
}

void RowSet::begin(const std::vector<jet::ResultColumn>& columns) {
  fields_.clear();
  for (const jet::ResultColumn& column : columns) {
    fields_.push_back({Bstr::attach(bstrOfUtf8(column.name)), column.type});
  }
}

VARIANT& RowSet::add() {
  values_.emplace_back();
  VariantInit(&values_.back());
  return values_.back();
}

void RowSet::addShared(const Bstr& text) {
  VARIANT& value = add();
  value.bstrVal = shareBstr(text.get());
  value.vt = VT_BSTR;
}

void RowSet::row(sqlite3_stmt* row) {
  addShared(recordMark_);
  for (size_t i = 0; i < fields_.size(); ++i) {
    addShared(fields_[i].name);
    giveValue(row, static_cast<int>(i), fields_[i].type, add());
  }
}

COleSafeArray RowSet::take() {
  COleSafeArray array;
  if (values_.empty()) return array;
  array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(values_.size()));
  const VariantElements elements(array);
  for (VARIANT& element : elements) {
    element = values_.front();  // moved: the array owns it from here on
    values_.pop_front();
  }
  return array;
}
