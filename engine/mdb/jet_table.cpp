#include "engine/mdb/jet_table.h"

#include <algorithm>

#include "engine/jet_sql/jet_sql.h"
#include "engine/mdb/jet_values.h"
#include "engine/text/collation.h"

namespace mdb {
namespace {

constexpr int bigNumber = 0x13;  // whole numbers of 64 bits, in the newest files

// libmdb has the two in each other's place.
int scaleOf(const MdbColumn& column) { return column.col_prec; }
int precisionOf(const MdbColumn& column) { return column.col_scale; }

jet::Type typeOf(const MdbColumn& column) {
  switch (column.col_type) {
    case MDB_BOOL:
      return jet::Type::YesNo;
    case MDB_BYTE:
      return jet::Type::Byte;
    case MDB_INT:
      return jet::Type::Integer;
    case MDB_LONGINT:
      return jet::Type::Long;
    case MDB_MONEY:
      return jet::Type::Currency;
    case MDB_FLOAT:
      return jet::Type::Single;
    case MDB_DOUBLE:
    case bigNumber:
      return jet::Type::Double;
    case MDB_DATETIME:
      return jet::Type::Date;
    case MDB_TEXT:
      return jet::Type::Text;
    case MDB_MEMO:
      return jet::Type::Memo;
    case MDB_BINARY:
    case MDB_OLE:
      return jet::Type::Binary;
    case MDB_REPID:
      return jet::Type::Guid;
    case MDB_NUMERIC:
      // Amounts hold them exactly as long as they fit.
      return scaleOf(column) <= 4 && precisionOf(column) + 4 - scaleOf(column) <= 18 ? jet::Type::Currency
                                                                                     : jet::Type::Double;
    default:
      return jet::Type::Unknown;
  }
}

std::string property(const MdbColumn& column, const char* name) {
  const char* value = mdb_col_get_prop(&column, name);
  return value ? value : "";
}

bool isYes(const std::string& value) { return sameText(value, "yes"); }

}  // namespace

JetTable::JetTable(JetFile& file, const JetObject& object) : file_(file) {
  table_.reset(mdb_read_table(object.entry));
  if (!table_) throw JetError("its definition");
  if (!mdb_read_columns(table_.get())) throw JetError("its fields");
  shape_.name = object.name;
  readColumns();
  readIndexes();
  if (const char* rule = mdb_table_get_prop(table_.get(), "ValidationRule"); rule && *rule)
    addLoss("the rule of the table: " + std::string(rule));
  mdb_rewind_table(table_.get());
}

void JetTable::readColumns() {
  for (unsigned i = 0; i < table_->num_cols; ++i)
    addColumn(*static_cast<MdbColumn*>(g_ptr_array_index(table_->columns, i)), i);
  if (fields_.empty()) throw JetError("it has no field that can be read");
  found_.resize(table_->num_cols);
}

void JetTable::addColumn(MdbColumn& column, size_t number) {
  const std::string name = column.name;
  const jet::Type type = typeOf(column);
  if (type == jet::Type::Unknown) {
    addLoss("the field '" + name + "': " +
            (column.col_type == MDB_COMPLEX
                 ? "attachments and several values in one field"
                 : "values of the type number " + std::to_string(column.col_type)));
    return;
  }
  jet::Column shape;
  shape.name = name;
  shape.type = type;
  if (type == jet::Type::Text) shape.size = file_.isJet3() ? column.col_size : column.col_size / 2;
  if (column.col_type == MDB_BINARY) shape.size = column.col_size;
  if (shape.size < 0 || (type == jet::Type::Text && shape.size > 255))
    throw JetError("the size of '" + name + "'");
  shape.counter = type == jet::Type::Long && column.is_long_auto;
  shape.required = isYes(property(column, "Required"));
  shape.emptyAllowed = !sameText(property(column, "AllowZeroLength"), "no");
  shape.defaultValue = property(column, "DefaultValue");
  if (!shape.defaultValue.empty() && !sameText(shape.defaultValue, "GenGUID()")) {
    std::string_view expression = shape.defaultValue;
    while (expression.starts_with('=') || expression.starts_with(' ')) expression.remove_prefix(1);
    if (jet::checkExpression(expression)) {
      addLoss("the default of '" + name + "': " + shape.defaultValue);
      shape.defaultValue.clear();
    }
  }
  if (column.is_uuid_auto || sameText(shape.defaultValue, "GenGUID()")) {
    addLoss("the field '" + name + "' doesn't make new identifiers by itself");
    shape.defaultValue.clear();
  }
  if (const std::string rule = property(column, "ValidationRule"); !rule.empty())
    addLoss("the rule of '" + name + "': " + rule);
  fields_.push_back({&column, number, type});
  shape_.columns.push_back(std::move(shape));
}

void JetTable::readIndexes() {
  // The definition's pages, each behind 8 bytes that name the next.
  constexpr size_t pageHead = 8, mostPages = 200;
  std::vector<uint8_t> definition;
  auto number = static_cast<uint32_t>(table_->entry->table_pg);
  for (size_t i = 0; number != 0; ++i) {
    const ByteView page = file_.page(number);
    if (page[0] != MDB_PAGE_TABLE || i == mostPages) throw JetError("its definition");
    number = numberAt<uint32_t>(page, 4);
    const ByteView rest = i == 0 ? page : page.subspan(pageHead);
    definition.insert(definition.end(), rest.begin(), rest.end());
  }
  const size_t counterPlace = file_.isJet3() ? 16 : 20;
  const bool counts = std::any_of(shape_.columns.begin(), shape_.columns.end(),
                                  [](const jet::Column& column) { return column.counter; });
  if (counts) lastCounter_ = numberAt<int32_t>(definition, counterPlace);

  std::map<int, std::string> names;
  std::set<std::string, TextLess> kept;
  for (unsigned i = 0; i < table_->num_cols; ++i) {
    const auto* column = static_cast<MdbColumn*>(g_ptr_array_index(table_->columns, i));
    names[column->col_num] = column->name;
  }
  for (const jet::Column& column : shape_.columns) kept.insert(column.name);
  for (JetIndex& each :
       parseIndexes(definition, file_.isJet3(), names, [&](ByteView name) { return file_.text(name); })) {
    if (each.ofRelation) continue;
    const bool whole = std::all_of(each.index.columns.begin(), each.index.columns.end(),
                                   [&](auto& column) { return kept.contains(column.name); });
    if (whole && !each.index.columns.empty()) {
      shape_.indexes.push_back(std::move(each.index));
    } else {
      addLoss("the index '" + each.index.name + "'");
    }
  }
}

bool JetTable::nextPage() {
  const int number = mdb_read_next_dpg(table_.get());
  if (number == 0) return false;
  if (!pages_.insert(number).second) throw JetError("its list of pages goes round in a circle");
  const ByteView page(file_.handle()->pg_buf, static_cast<size_t>(file_.handle()->fmt->pg_size));
  const auto table = static_cast<size_t>(file_.handle()->fmt->row_count_offset);
  rowsOnPage_ = numberAt<uint16_t>(page, table);
  if (table + 2 + 2 * size_t{rowsOnPage_} > page.size())
    throw JetError("page " + std::to_string(number) + " says that it has " + std::to_string(rowsOnPage_) +
                   " rows");
  row_ = 0;
  return true;
}

bool JetTable::next(std::vector<Stored>& row) {
  constexpr int moved = 0x4000;  // the row was deleted, or is another page's now, where it is read
  while (true) {
    if (row_ == rowsOnPage_ && !nextPage()) return false;
    if (row_ == rowsOnPage_) continue;
    const unsigned at = row_++;
    int start = 0;
    size_t length = 0;
    if (mdb_find_row(file_.handle(), static_cast<int>(at), &start, &length) != 0) {
      ++damagedRows_;
      continue;
    }
    if (start & moved) continue;
    constexpr int offsetMask = 0x1FFF;
    cracked_.assign(table_->num_cols, {});
    if (length == 0 || mdb_crack_row(table_.get(), start & offsetMask, length, cracked_.data()) < 0) {
      ++damagedRows_;
      continue;
    }
    for (const MdbField& each : cracked_) {
      if (each.colnum >= 0 && static_cast<size_t>(each.colnum) < found_.size())
        found_[static_cast<size_t>(each.colnum)] = each;
    }
    ++rowsRead_;
    row.resize(fields_.size());
    for (size_t i = 0; i < fields_.size(); ++i)
      row[i] = value(fields_[i], shape_.columns[i], found_[fields_[i].number]);
    return true;
  }
}

std::string JetTable::missing() const {
  if (damagedRows_ > 0) return std::to_string(damagedRows_) + " rows are damaged";
  if (rowsRead_ >= declaredRows()) return "";
  return "it says that it has " + std::to_string(declaredRows()) + " rows, but only " +
         std::to_string(rowsRead_) + " were found";
}

// A value that can't be read is lost, its row is not.
Stored JetTable::value(const Field& field, const jet::Column& shape, const MdbField& found) try {
  const MdbColumn& column = *field.column;
  // Yes is the bit that elsewhere tells that a value is there.
  if (field.type == jet::Type::YesNo) return Stored::of(int64_t{found.is_null ? 0 : -1});
  if (found.is_null) return {};
  const ByteView bytes = partOf({file_.handle()->pg_buf, static_cast<size_t>(file_.handle()->fmt->pg_size)},
                                static_cast<size_t>(found.start), static_cast<size_t>(found.siz));
  const auto textOf = [](std::string bytes) {
    Stored value = Stored::of(std::string_view());
    value.bytes = std::move(bytes);
    return value;
  };
  switch (column.col_type) {
    case MDB_TEXT:
      return textOf(file_.text(bytes));
    case MDB_MEMO: {
      const std::string content = file_.longValue(bytes);
      return textOf(file_.text({reinterpret_cast<const uint8_t*>(content.data()), content.size()}));
    }
    case MDB_OLE:
    case MDB_BINARY: {
      Stored value{Stored::Kind::Blob, 0, 0, {}};
      value.bytes = column.col_type == MDB_OLE
                        ? file_.longValue(bytes)
                        : std::string(reinterpret_cast<const char*>(bytes.data()), bytes.size());
      return value;
    }
    case MDB_NUMERIC: {
      if (field.type == jet::Type::Currency) return Stored::of(decimalAsCurrency(bytes, scaleOf(column)));
      bool exact = true;
      const Stored value = Stored::of(decimalAsDouble(bytes, scaleOf(column), exact));
      if (!exact) ++changedValues_["digits of '" + shape.name + "' beyond the fifteenth"];
      return value;
    }
    case bigNumber: {
      const auto whole = numberAt<int64_t>(bytes, 0);
      constexpr int64_t exactly = int64_t{1} << 53;
      if (whole > exactly || whole < -exactly)
        ++changedValues_["digits of '" + shape.name + "' beyond the fifteenth"];
      return Stored::of(static_cast<double>(whole));
    }
    default: {
      const Stored value = fixedValue(field.type, bytes);
      if (value.isNull()) ++changedValues_["values of '" + shape.name + "' that are no finite number"];
      return value;
    }
  }
} catch (const JetError& error) {
  ++changedValues_["values of '" + shape.name + "' that can't be read (" + error.what() + ")"];
  return {};
}

}  // namespace mdb
