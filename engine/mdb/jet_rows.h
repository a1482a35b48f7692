#pragma once

#include "engine/mdb/jet_table.h"

namespace mdb {

/// Rows of a system table, with their values by the names of the columns.
class JetRows {
 public:
  JetRows(JetFile& file, const char* table);

  /// Fails at the end when rows are missing.
  bool next();
  /// 0 and "" stand for null, and for a column that this version of the format doesn't have.
  int64_t number(const char* column) const;
  const std::string& text(const char* column) const;

 private:
  const Stored* find(const char* column) const;

  std::unique_ptr<JetTable> table_;
  std::vector<Stored> row_;
};

}  // namespace mdb
