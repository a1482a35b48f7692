#include "engine/cursor.h"

#include <algorithm>

#include "platform/text/utf.h"

namespace {

constexpr size_t mostReadAhead = 256;
constexpr size_t mostKeptBytes = 256 << 10;

}  // namespace

Cursor::Cursor(Database& database, DatabaseCatalog& catalog, std::string_view table, std::string_view index)
    : database_(database), catalog_(catalog) {
  table_.name = table;
  bindToSchema(index);
}

void Cursor::bindToSchema(std::string_view indexName) {
  const jet::Table* table = catalog_.findTable(table_.name);
  if (!table) fail(tableNotFound, table_.name);
  const jet::Index* index = nullptr;
  if (!indexName.empty()) {
    index = DatabaseCatalog::findIndex(*table, indexName);
    if (!index) fail(indexNotFound, indexName);
  } else {
    for (const jet::Index& each : table->indexes) index = each.primary ? &each : index;
  }
  table_ = *table;
  indexName_ = indexName.empty() ? "" : index->name;
  order_.clear();
  storedIndex_.clear();
  rowsDescending_ = leavesOutNull_ = false;
  if (index && isRowOrder(table_, *index)) {
    rowsDescending_ = index->columns[0].descending;
  } else if (index) {
    storedIndex_ = storedIndexName(table_, *index);
    leavesOutNull_ = index->ignoreNull;
    for (const jet::IndexColumn& column : index->columns) {
      order_.push_back(
          {static_cast<size_t>(DatabaseCatalog::columnPlace(table_, column.name)), column.descending});
    }
  }
  columnList_ = quoted(table_.rowId);
  wideTableName_ = Bstr::attach(bstrOfUtf8(table_.name));
  names_.clear();
  for (const jet::Column& column : table_.columns) {
    columnList_ += ", " + quoted(column.name);
    names_.push_back(Bstr::attach(bstrOfUtf8(column.name)));
  }
  // The last step: a table that isn't there is missed at every call.
  generation_ = catalog_.generation();
}

// Each step of a walk asks, mostly in the table's own spelling.
bool Cursor::isOn(std::wstring_view table) const {
  return table == wideTableName_.view() || sameText(table_.name, toUtf8(table));
}

// The schema may have changed under an open table. Its position holds as long as its rows bear their numbers.
void Cursor::followSchema() {
  catalog_.refresh();
  if (catalog_.generation() == generation_) return;
  database_.forgetStatements();
  const jet::Table old = table_;
  bindToSchema(indexName_);
  count_.reset();
  if (place_ != Place::OnRow) return;
  if (old.rowId != table_.rowId) {
    place_ = Place::Nowhere;
    return;
  }
  std::vector<int> sources;
  for (const jet::Column& column : table_.columns) {
    sources.push_back(DatabaseCatalog::columnPlace(old, column.name));
  }
  rows_ = rows_.rowInShape(at_, sources);
  at_ = 0;
  exhausted_ = false;
  stamp_ = {};
}

void Cursor::databaseReopened() {
  stamp_ = {};
  count_.reset();
}

std::string Cursor::orderBy(bool forward) const {
  std::string result = " ORDER BY ";
  for (const OrderColumn& each : order_) {
    result += quoted(table_.columns[each.column].name) + (each.descending == forward ? " DESC, " : ", ");
  }
  return result + quoted(table_.rowId) + (rowsDescending_ == forward ? " DESC" : "");
}

std::string Cursor::notNullTerms() const {
  std::string result;
  if (leavesOutNull_) {
    for (const OrderColumn& each : order_)
      result += " AND " + quoted(table_.columns[each.column].name) + " IS NOT NULL";
  }
  return result;
}

std::string Cursor::selection(const std::string& condition, bool forward) const {
  std::string where = condition + notNullTerms();
  if (where.starts_with(" AND ")) where.erase(0, 5);
  return "SELECT " + columnList_ + " FROM " + table_.sqlName() +
         (storedIndex_.empty() ? " NOT INDEXED" : " INDEXED BY " + quoted(storedIndex_)) +
         (where.empty() ? "" : " WHERE " + where) + orderBy(forward);
}

// Runs one search until `wanted` rows are found. Rows to skip come first. True when there are enough.
bool Cursor::runLevel(const std::string& sql, const std::vector<Stored>& values, int64_t& toSkip,
                      size_t wanted) {
  Statement& statement = database_.prepared(sql, Access::Read);
  const Run run(statement);
  for (size_t i = 0; i < values.size(); ++i) statement.bind(static_cast<int>(i + 1), values[i]);
  while (statement.step()) {
    if (toSkip > 0) {
      --toSkip;
      continue;
    }
    found_.add(statement);
    if (found_.size() >= wanted || found_.bytes() > mostKeptBytes) return true;
  }
  return false;
}

bool Cursor::searchFromEnd(int64_t& toSkip, bool forward, size_t wanted) {
  return runLevel(selection("", forward), {}, toSkip, wanted);
}

// What lies behind the place (k1, …, kn, row) is, from near to far: the rows with the same n keys and a
// further row number; those with the same n-1 keys and a further nth key; and so on. Each is one range of
// the index. Null is the least value, and no comparison finds it: it is a range of its own.
bool Cursor::searchFrom(int64_t& toSkip, bool forward, size_t wanted) {
  std::vector<Stored> keys;
  std::vector<std::string> names;
  for (const OrderColumn& each : order_) {
    keys.push_back(rows_.stored(at_, each.column));
    names.push_back(quoted(table_.columns[each.column].name));
  }
  for (size_t level = order_.size() + 1; level-- > 0;) {
    std::string same;
    for (size_t i = 0; i < level; ++i) same += " AND " + names[i] + " IS ?" + std::to_string(i + 1);
    std::vector<Stored> values(keys.begin(), keys.begin() + static_cast<std::ptrdiff_t>(level));
    const std::string mark = " ?" + std::to_string(level + 1);
    if (level == order_.size()) {
      values.push_back(Stored::of(rows_.rowId(at_)));
      const bool up = rowsDescending_ != forward;
      if (runLevel(selection(same + " AND " + quoted(table_.rowId) + (up ? " >" : " <") + mark, forward),
                   values, toSkip, wanted)) {
        return true;
      }
      continue;
    }
    const bool up = order_[level].descending != forward;
    const bool null = keys[level].isNull();
    if (!null) values.push_back(keys[level]);
    if (up) {
      const std::string range = null ? " IS NOT NULL" : " >" + mark;
      if (runLevel(selection(same + " AND " + names[level] + range, forward), values, toSkip, wanted))
        return true;
    } else if (!null) {
      if (runLevel(selection(same + " AND " + names[level] + " <" + mark, forward), values, toSkip, wanted)) {
        return true;
      }
      values.pop_back();
      if (leavesOutNull_) continue;
      if (runLevel(selection(same + " AND " + names[level] + " IS NULL", forward), values, toSkip, wanted))
        return true;
    }
  }
  return false;
}

// Takes over what a search found: the cursor's row is the first.
void Cursor::keep(RowBatch& rows, bool forward, bool exhausted, const FileStamp& stamp) {
  std::swap(rows_, rows);
  at_ = 0;
  forward_ = forward;
  exhausted_ = exhausted;
  deleted_ = false;
  place_ = Place::OnRow;
  stamp_ = stamp;
}

// The row under the cursor as it is now; false when it is gone.
bool Cursor::refreshRow(RowBatch& into) {
  into.clear(table_.columns.size());
  Statement& statement = database_.prepared(
      "SELECT " + columnList_ + " FROM " + table_.sqlName() + " WHERE " + quoted(table_.rowId) + " = ?",
      Access::Read);
  const Run run(statement);
  statement.bind(1, rows_.rowId(at_));
  if (!statement.step()) return false;
  into.add(statement);
  return true;
}

// Goes `count` rows on (from 1) in a direction, from the row under the cursor or from an end of the order.
void Cursor::search(int64_t count, bool forward, std::optional<Place> from) {
  Transaction transaction(database_, Transaction::Kind::Read, Access::Read);
  followSchema();
  place_ = from.value_or(place_);
  const bool fromRow = place_ == Place::OnRow;
  if (place_ == Place::Nowhere) fail(noCurrentRecord);
  if (fromRow && refreshRow(found_)) {
    std::swap(rows_, found_);
    at_ = 0;
    exhausted_ = false;
    stamp_ = database_.stamp();
  }
  found_.clear(table_.columns.size());
  int64_t toSkip = count - 1;
  const size_t wanted = readAhead_;
  const bool enough = fromRow ? searchFrom(toSkip, forward, wanted) : searchFromEnd(toSkip, forward, wanted);
  if (found_.size() == 0) {
    place_ = forward ? Place::AfterLast : Place::BeforeFirst;
    transaction.commit();
    fail(noCurrentRecord);
  }
  keep(found_, forward, !enough, database_.stamp());
  transaction.commit();
}

// Moves among the rows at hand, when they reach so far and are still true.
bool Cursor::stepInKept(int64_t count) {
  if (place_ != Place::OnRow || deleted_ || rows_.size() == 0) return false;
  const int64_t target = static_cast<int64_t>(at_) + (forward_ ? count : -count);
  const bool beyond = target >= static_cast<int64_t>(rows_.size());
  if (target < 0 || (beyond && !exhausted_) || !sameStateAsKept()) return false;
  if (beyond) {
    place_ = forward_ ? Place::AfterLast : Place::BeforeFirst;
    fail(noCurrentRecord);
  }
  at_ = static_cast<size_t>(target);
  return true;
}

void Cursor::moveTop() {
  readAhead_ = 1;
  search(1, true, Place::BeforeFirst);
}

void Cursor::moveBottom() {
  readAhead_ = 1;
  search(1, false, Place::AfterLast);
}

void Cursor::resolveTop() {
  if (place_ != Place::Top) return;
  try {
    moveTop();
  } catch (const jet::Failure&) {
    place_ = Place::Top;
    throw;
  }
}

void Cursor::skip(int64_t count) {
  if (count == 0) return read();
  resolveTop();
  const bool forward = count > 0;
  if (stepInKept(count)) return;
  if (place_ == (forward ? Place::AfterLast : Place::BeforeFirst)) fail(noCurrentRecord);
  // A walk reads further ahead with each search; a single step reads no more than its row.
  const bool goesOn = place_ == Place::OnRow && forward == forward_ && std::abs(count) == 1;
  readAhead_ = goesOn ? std::min(mostReadAhead, readAhead_ * 4) : 1;
  search(std::abs(count), forward);
}

void Cursor::read() {
  resolveTop();
  if (place_ != Place::OnRow) fail(noCurrentRecord);
  if (deleted_) fail(recordDeleted);
  if (sameStateAsKept()) return;
  Transaction transaction(database_, Transaction::Kind::Read, Access::Read);
  followSchema();
  if (place_ != Place::OnRow) fail(noCurrentRecord);
  if (!refreshRow(found_)) fail(recordDeleted);
  keep(found_, forward_, false, database_.stamp());
  transaction.commit();
}

void Cursor::seek(const std::vector<COleVariant>& keys) {
  if (indexName_.empty()) fail(noCurrentIndex);
  Transaction transaction(database_, Transaction::Kind::Read, Access::Read);
  followSchema();
  const bool byRow = storedIndex_.empty();
  const size_t most = byRow ? 1 : order_.size();
  if (keys.empty() || keys.size() > most) fail(invalidArgument, "the number of keys");
  std::string condition;
  std::vector<Stored> values;
  for (size_t i = 0; i < keys.size(); ++i) {
    const auto column = byRow ? static_cast<size_t>(counterColumn(table_)) : order_[i].column;
    values.push_back(searchValue(keys[i], table_.columns[column]));
    condition += " AND " + quoted(table_.columns[column].name) + " IS ?" + std::to_string(i + 1);
  }
  found_.clear(table_.columns.size());
  int64_t none = 0;
  readAhead_ = 1;
  if (!runLevel(selection(condition, true), values, none, 1)) {
    place_ = Place::Nowhere;
    fail(noCurrentRecord);
  }
  keep(found_, true, false, database_.stamp());
  transaction.commit();
}

bool Cursor::isEmpty() {
  Transaction transaction(database_, Transaction::Kind::Read, Access::Read);
  followSchema();
  Statement& statement = database_.prepared("SELECT 1 FROM " + table_.sqlName() + " LIMIT 1", Access::Read);
  const Run run(statement);
  return !statement.step();
}

bool Cursor::afterLast() {
  if (place_ == Place::AfterLast) return true;
  if (place_ == Place::OnRow && !deleted_ && sameStateAsKept()) return false;
  return isEmpty();
}

bool Cursor::beforeFirst() {
  if (place_ == Place::BeforeFirst) return true;
  if (place_ == Place::OnRow && !deleted_ && sameStateAsKept()) return false;
  return isEmpty();
}

int64_t Cursor::count() {
  if (count_ && !isLinked(table_) && database_.unchangedSince(countStamp_)) return *count_;
  Transaction transaction(database_, Transaction::Kind::Read, Access::Read);
  followSchema();
  Statement& statement = database_.prepared("SELECT count(*) FROM " + table_.sqlName(), Access::Read);
  const Run run(statement);
  statement.step();
  count_ = statement.integer(0);
  countStamp_ = database_.stamp();
  return *count_;
}

COleSafeArray Cursor::recordOf(const RowBatch& rows, size_t at) const {
  COleSafeArray result;
  const size_t columns = table_.columns.size();
  result.CreateOneDim(VT_VARIANT, static_cast<ULONG>(2 * columns));
  const VariantElements elements(result);
  for (size_t i = 0; i < columns; ++i) {
    VARIANT& name = elements[static_cast<ULONG>(2 * i)];
    name.bstrVal = shareBstr(names_[i].get());
    name.vt = VT_BSTR;
    const Cell& cell = rows.cell(at, i);
    variantOf(cell, rows.bytesOf(cell), table_.columns[i].type, elements[static_cast<ULONG>(2 * i + 1)]);
  }
  return result;
}

COleSafeArray Cursor::record() const { return recordOf(rows_, at_); }
