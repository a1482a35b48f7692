#include "engine/mdb/jet_rows.h"

#include "engine/text/collation.h"

namespace mdb {

JetRows::JetRows(JetFile& file, const char* table) {
  if (const JetObject* object = file.findTable(table)) table_ = std::make_unique<JetTable>(file, *object);
}

bool JetRows::next() {
  if (!table_) return false;
  if (table_->next(row_)) return true;
  if (const std::string missing = table_->missing(); !missing.empty())
    throw JetError("the system table '" + table_->shape().name + "': " + missing);
  return false;
}

const Stored* JetRows::find(const char* column) const {
  const auto& columns = table_->shape().columns;
  for (size_t i = 0; i < columns.size(); ++i) {
    if (sameText(columns[i].name, column)) return &row_[i];
  }
  return nullptr;
}

int64_t JetRows::number(const char* column) const {
  const Stored* value = find(column);
  return value && value->kind == Stored::Kind::Integer ? value->integer : 0;
}

const std::string& JetRows::text(const char* column) const {
  static const std::string none;
  const Stored* value = find(column);
  return value ? value->bytes : none;
}

}  // namespace mdb
