#pragma once

#include <deque>
#include <vector>

#include "engine/jet_sql/jet_sql.h"
#include "platform/com/owners.h"

/// Collects a query's rows in the form in which they leave the engine: "*NewRecord*", name, value, name,
/// value, … for each. Values have the variant type of their column.
class RowSet : public jet::RowSink {
 public:
  RowSet() = default;
  RowSet(const RowSet&) = delete;
  RowSet& operator=(const RowSet&) = delete;
  ~RowSet() override;

  void begin(const std::vector<jet::ResultColumn>& columns) override;
  void row(sqlite3_stmt* row) override;

  /// Hands the rows out; nothing when there were none.
  COleSafeArray take();

 private:
  VARIANT& add();
  void addShared(const Bstr& text);

  struct Field {
    Bstr name;
    jet::Type type;
  };
  Bstr recordMark_{L"*NewRecord*"};
  std::vector<Field> fields_;
  std::deque<VARIANT> values_;  // in small blocks: nothing moves as it grows, and each goes once it is read
};
