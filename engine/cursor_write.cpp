#include <algorithm>
#include <charconv>

#include "engine/cursor.h"
#include "engine/jet_sql/jet_sql.h"
#include "engine/row_set.h"
#include "platform/text/utf.h"

namespace {

/// A default that is a plain value.
std::optional<COleVariant> literalDefault(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '=')) text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front()) {
    return COleVariant(fromUtf8(text.substr(1, text.size() - 2)));
  }
  for (const char* yes : {"true", "yes", "on"}) {
    if (sameText(text, yes)) return COleVariant::boolean(true);
  }
  for (const char* no : {"false", "no", "off"}) {
    if (sameText(text, no)) return COleVariant::boolean(false);
  }
  if (sameText(text, "null")) return COleVariant::null();
  double number = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
  if (read.ec == std::errc() && read.ptr == text.data() + text.size()) return COleVariant(number);
  return std::nullopt;
}

}  // namespace

// Column and value of each named field; of a field that is named twice, the last.
std::vector<Cursor::Assignment> Cursor::assignments(const VARIANT& fields) const {
  const VariantElements elements(fields);
  if (elements.size() % 2 != 0) fail(invalidArgument, "a field without a value");
  std::vector<Assignment> result;
  for (ULONG i = 0; i < elements.size(); i += 2) {
    if (elements[i].vt != VT_BSTR) fail(invalidArgument, "a field's name is no text");
    const std::string name = toUtf8(viewOf(elements[i].bstrVal));
    const int place = DatabaseCatalog::columnPlace(table_, name);
    if (place < 0) fail(jet::itemNotFound, "field '" + name + "' in the table '" + table_.name + "'");
    const auto column = static_cast<size_t>(place);
    Assignment assignment{column, storedValue(elements[i + 1], table_.columns[column])};
    const auto same =
        std::find_if(result.begin(), result.end(), [&](auto& each) { return each.column == column; });
    if (same != result.end()) {
      *same = std::move(assignment);
    } else {
      result.push_back(std::move(assignment));
    }
  }
  return result;
}

// The value of a default that is an expression, such as Date(); nothing when it can't be worked out.
std::optional<COleVariant> Cursor::evaluated(std::string_view expression) const {
  while (expression.starts_with('=') || expression.starts_with(' ')) expression.remove_prefix(1);
  RowSet rows;
  try {
    jet::execute(database_.handle(), catalog_, "SELECT " + std::string(expression), {}, &rows);
  } catch (const jet::Failure&) {
    return std::nullopt;
  }
  const COleSafeArray array = rows.take();
  constexpr ULONG valuePlace = 2;  // behind the mark of the record and the name
  const VariantElements elements(array);
  if (elements.size() <= valuePlace) return std::nullopt;
  return COleVariant(elements[valuePlace]);
}

void Cursor::applyDefaults(std::vector<Assignment>& values) const {
  for (size_t i = 0; i < table_.columns.size(); ++i) {
    const jet::Column& column = table_.columns[i];
    if (column.counter) continue;
    if (std::any_of(values.begin(), values.end(), [&](auto& each) { return each.column == i; })) continue;
    std::optional<COleVariant> value;
    if (!column.defaultValue.empty()) value = literalDefault(column.defaultValue);
    if (!value && !column.defaultValue.empty()) value = evaluated(column.defaultValue);
    const COleVariant nothing = COleVariant::null();
    values.push_back({i, storedValue(value ? *value : nothing, column)});
  }
}

void Cursor::requireKeyValues(const std::vector<Assignment>& values) const {
  for (const Assignment& each : values) {
    const jet::Column& column = table_.columns[each.column];
    if (column.inKey && !column.counter && each.value.isNull()) fail(jet::indexNull, column.name);
  }
}

COleSafeArray Cursor::append(const VARIANT& fields, bool stay) {
  if (database_.readOnly()) fail(jet::readOnlyDatabase);
  Transaction transaction(database_, Transaction::Kind::Write, Access::Write);
  followSchema();
  std::vector<Assignment> values = assignments(fields);
  const int counter = counterColumn(table_);
  // A counter that is given as nothing numbers itself.
  std::erase_if(values,
                [&](auto& each) { return static_cast<int>(each.column) == counter && each.value.isNull(); });
  applyDefaults(values);
  requireKeyValues(values);
  std::sort(values.begin(), values.end(), [](auto& a, auto& b) { return a.column < b.column; });
  std::string names, marks;
  for (const Assignment& each : values) {
    names += (names.empty() ? "" : ", ") + quoted(table_.columns[each.column].name);
    marks += marks.empty() ? "?" : ", ?";
  }
  const std::string content = values.empty() ? " DEFAULT VALUES" : "(" + names + ") VALUES(" + marks + ")";
  Statement& insert = database_.prepared(
      "INSERT INTO " + table_.sqlName() + content + " RETURNING " + columnList_, Access::Write);
  found_.clear(table_.columns.size());
  {
    const Run run(insert);
    for (size_t i = 0; i < values.size(); ++i) insert.bind(static_cast<int>(i + 1), values[i].value);
    while (insert.step()) found_.add(insert);
  }
  if (counter >= 0 && found_.rowId(0) > INT32_MAX) {
    fail(jet::numberTooLarge, table_.columns[static_cast<size_t>(counter)].name);
  }
  const FileStamp before = database_.stamp();
  COleSafeArray result = recordOf(found_, 0);
  transaction.commit();
  if (!stay) keep(found_, true, false, before);
  return result;
}

void Cursor::replace(const VARIANT& fields) {
  if (database_.readOnly()) fail(jet::readOnlyDatabase);
  resolveTop();
  if (place_ != Place::OnRow) fail(noCurrentRecord);
  if (deleted_) fail(recordDeleted);
  Transaction transaction(database_, Transaction::Kind::Write, Access::Write);
  followSchema();
  if (place_ != Place::OnRow) fail(noCurrentRecord);
  std::vector<Assignment> values = assignments(fields);
  if (values.empty()) fail(invalidArgument, "no field is named");
  std::erase_if(values, [&](const Assignment& each) {
    const jet::Column& column = table_.columns[each.column];
    if (!column.counter) return false;
    if (each.value.integer != rows_.rowId(at_)) fail(notUpdatable, column.name);
    return true;
  });
  requireKeyValues(values);
  std::string changes;
  for (const Assignment& each : values) {
    changes += (changes.empty() ? "" : ", ") + quoted(table_.columns[each.column].name) + " = ?";
  }
  if (changes.empty()) changes = quoted(table_.rowId) + " = " + quoted(table_.rowId);
  Statement& update = database_.prepared("UPDATE " + table_.sqlName() + " SET " + changes + " WHERE " +
                                             quoted(table_.rowId) + " = ? RETURNING " + columnList_,
                                         Access::Write);
  found_.clear(table_.columns.size());
  {
    const Run run(update);
    for (size_t i = 0; i < values.size(); ++i) update.bind(static_cast<int>(i + 1), values[i].value);
    update.bind(static_cast<int>(values.size() + 1), rows_.rowId(at_));
    while (update.step()) found_.add(update);
  }
  if (found_.size() == 0) fail(recordDeleted);
  // Whether the commit will count the file's changes on is not known: a row that is stored as it was changes
  // nothing. With the stamp from before, the next look at the row reads it again when something was
  // committed.
  const FileStamp before = database_.stamp();
  transaction.commit();
  keep(found_, forward_, false, before);
}

void Cursor::remove() {
  if (database_.readOnly()) fail(jet::readOnlyDatabase);
  resolveTop();
  if (place_ != Place::OnRow) fail(noCurrentRecord);
  if (deleted_) fail(recordDeleted);
  Transaction transaction(database_, Transaction::Kind::Write, Access::Write);
  followSchema();
  if (place_ != Place::OnRow) fail(noCurrentRecord);
  Statement& statement = database_.prepared(
      "DELETE FROM " + table_.sqlName() + " WHERE " + quoted(table_.rowId) + " = ?", Access::Write);
  {
    const Run run(statement);
    statement.bind(1, rows_.rowId(at_));
    statement.step();
  }
  if (sqlite3_changes64(database_.handle()) == 0) fail(recordDeleted);
  transaction.commit();
  deleted_ = true;
}
