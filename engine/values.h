#pragma once

#include "engine/jet_sql/catalog.h"
#include "engine/statement.h"
#include "platform/com/owners.h"

/// A value on its way into a column: converted to the column's type, checked against its rules. Null and
/// empty are null, and no in a yes/no column. Fails with the number of the broken rule.
Stored storedValue(const VARIANT& value, const jet::Column& column);

/// A value to search a column for: converted to the column's type where that keeps its size (2.5 is no whole
/// number, and stays itself). Fails with 3421 when it can't be compared with the column.
Stored searchValue(const VARIANT& value, const jet::Column& column);

/// A stored value without a copy: what SQLite gave, or a place in a batch of rows.
struct Cell {
  Stored::Kind kind = Stored::Kind::Null;
  union {
    int64_t integer = 0;
    double real;
    size_t offset;  ///< in the batch's bytes
  };
  size_t length = 0;
};

/// The variant of the column's type; `bytes` are the text's or blob's own. `result` must be empty.
void variantOf(const Cell& cell, const char* bytes, jet::Type type, VARIANT& result);

/// A text as a new BSTR.
BSTR bstrOfUtf8(std::string_view text);
