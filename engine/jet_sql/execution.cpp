#include "engine/jet_sql/execution.h"

#include <algorithm>
#include <charconv>
#include <memory>

#include "engine/jet_sql/date.h"
#include "engine/jet_sql/functions.h"
#include "engine/text/collation.h"

namespace jet {
namespace {

constexpr int maxExecuteDepth = 8;  // stored commands that run stored commands

struct Finalizer {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Prepared = std::unique_ptr<sqlite3_stmt, Finalizer>;

}  // namespace

namespace {

void gatherLeaves(const Source& source, std::vector<const Source*>& leaves) {
  if (source.kind == SourceKind::Join) {
    gatherLeaves(*source.left, leaves);
    gatherLeaves(*source.right, leaves);
  } else {
    leaves.push_back(&source);
  }
}

}  // namespace

std::vector<const Source*> leavesOf(const std::vector<SourcePtr>& sources) {
  std::vector<const Source*> leaves;
  for (const SourcePtr& source : sources) gatherLeaves(*source, leaves);
  return leaves;
}

std::string Table::sqlName() const { return quotedName(schema) + "." + quotedName(stored); }

const Column* Table::findColumn(std::string_view name) const {
  const auto found =
      std::find_if(columns.begin(), columns.end(), [&](const Column& c) { return sameText(c.name, name); });
  return found == columns.end() ? nullptr : &*found;
}

Execution::Execution(sqlite3* database, Catalog& catalog, std::string_view sql,
                     const std::vector<Parameter>& given, RowSink* rows, int depth)
    : database_(database),
      catalog_(catalog),
      sql_(sql),
      given_(given),
      rows_(rows),
      depth_(depth),
      binder_(catalog, sql, given, [this](const Query& query) { return pivotHeadings(query); }) {}

namespace {

Access accessOf(const ParsedStatement& statement) {
  const auto& body = statement.body;
  if (const auto* select = std::get_if<SelectStatement>(&body)) {
    return select->query->into.empty() ? Access::Read : Access::Schema;
  }
  const bool changesRows =
      std::holds_alternative<InsertStatement>(body) || std::holds_alternative<UpdateStatement>(body) ||
      std::holds_alternative<DeleteStatement>(body) || std::holds_alternative<ExecuteStatement>(body);
  return changesRows ? Access::Write : Access::Schema;
}

}  // namespace

int64_t Execution::run(ParsedStatement& statement) {
  access_ = accessOf(statement);
  binder_.declare(statement.parameters);
  return std::visit([this](auto& body) { return (*this)(body); }, statement.body);
}

// ---- SQLite

void Execution::failDatabase(int code) const {
  Error error = errorOfSqlite(database_, code, access_);
  if (error.place) error = errorAt(error.number, error.text, sql_, *error.place);
  throw Failure{std::move(error)};
}

void Execution::bindParameters(sqlite3_stmt* prepared) {
  const int count = sqlite3_bind_parameter_count(prepared);
  for (int i = 1; i <= count && i <= static_cast<int>(binder_.slots().size()); ++i) {
    const auto& value = binder_.slots()[static_cast<size_t>(i) - 1].given->value;
    if (const auto* whole = std::get_if<int64_t>(&value)) sqlite3_bind_int64(prepared, i, *whole);
    if (const auto* real = std::get_if<double>(&value)) sqlite3_bind_double(prepared, i, *real);
    if (const auto* text = std::get_if<std::string>(&value)) {
      sqlite3_bind_text64(prepared, i, text->data(), text->size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
      sqlite3_bind_blob64(prepared, i, bytes->empty() ? "" : static_cast<const void*>(bytes->data()),
                          bytes->size(), SQLITE_TRANSIENT);
    }
  }
}

void Execution::visit(const std::string& sql, const std::function<void(sqlite3_stmt*)>& row) {
  binder_.checkParameters();
  sqlite3_stmt* raw = nullptr;
  int code = sqlite3_prepare_v3(database_, sql.data(), static_cast<int>(sql.size()), 0, &raw, nullptr);
  const Prepared prepared(raw);
  if (code != SQLITE_OK) failDatabase(code);
  bindParameters(raw);
  while ((code = sqlite3_step(raw)) == SQLITE_ROW) {
    if (row) row(raw);
  }
  if (code != SQLITE_DONE) failDatabase(code);
}

int64_t Execution::change(const std::string& sql) {
  binder_.checkNames();
  visit(sql, nullptr);
  return sqlite3_changes64(database_);
}

// ---- Queries

// Headings are the values' texts; null is <>, and what a name can't hold becomes _.
std::vector<Transform::Heading> Execution::pivotHeadings(const Query& query) {
  std::vector<Transform::Heading> headings;
  const Type type = query.transform->pivot->type;
  const auto add = [&](sqlite3_value* value) {
    std::string sql, name;
    switch (sqlite3_value_type(value)) {
      case SQLITE_NULL:
        sql = "NULL";
        name = "<>";
        break;
      case SQLITE_INTEGER: {
        const int64_t whole = sqlite3_value_int64(value);
        sql = std::to_string(whole);
        name = type == Type::Currency ? currencyText(whole) : sql;
        break;
      }
      case SQLITE_FLOAT: {
        char exact[40];
        const double real = sqlite3_value_double(value);
        sql.assign(exact, std::to_chars(exact, exact + sizeof exact, real).ptr);
        name = type == Type::Date ? dateText(real) : numberText(real);
        break;
      }
      default: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
        name = text ? text : "";
        sql = quotedText(name);
        break;
      }
    }
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '.' || c == '!' || c == '[' || c == ']'; }, '_');
    headings.push_back({name.empty() ? "_" : name, sql});
  };
  if (query.transform->headings.empty()) {
    Printer printer;
    printer.pivotValues(query);
    visit(printer.text(), [&](sqlite3_stmt* row) { add(sqlite3_column_value(row, 0)); });
    return headings;
  }
  for (const ExpressionPtr& heading : query.transform->headings) {
    Printer printer;
    printer.raw("SELECT ");
    printer.value(*heading);
    visit(printer.text(), [&](sqlite3_stmt* row) { add(sqlite3_column_value(row, 0)); });
  }
  return headings;
}

int64_t Execution::operator()(SelectStatement& statement) {
  Query& query = *statement.query;
  binder_.bindQuery(query);
  if (!query.into.empty()) return selectInto(query);
  Printer printer;
  printer.query(query);
  binder_.checkNames();
  binder_.checkParameters();
  if (rows_) {
    std::vector<ResultColumn> columns;
    for (const OutputColumn& column : query.columns) columns.push_back({column.name, column.type});
    rows_->begin(columns);
  }
  int64_t count = 0;
  visit(printer.text(), [&](sqlite3_stmt* row) {
    ++count;
    if (rows_) rows_->row(row);
  });
  return count;
}

int64_t Execution::selectInto(Query& query) {
  if (catalog_.hasTable(query.into))
    binder_.fail(tableExists, "The table '" + query.into + "' exists already", query.place);
  Printer rows;
  rows.query(query);
  binder_.checkParameters();
  Table definition;
  definition.name = query.into;
  for (const OutputColumn& output : query.columns) {
    Column column;
    column.name = output.name;
    std::replace(column.name.begin(), column.name.end(), '.', '_');
    column.type = output.type == Type::Unknown ? Type::Text : output.type;
    column.size = column.type == Type::Text ? (output.size > 0 ? output.size : 255) : output.size;
    column.counter = output.counter && std::none_of(definition.columns.begin(), definition.columns.end(),
                                                    [](const Column& c) { return c.counter; });
    definition.columns.push_back(std::move(column));
  }
  catalog_.createTable(definition);
  const Table& table = existing(query.into, noSuchTable);
  std::vector<const Column*> columns;
  Printer printer;
  for (const Column& column : table.columns) columns.push_back(&column);
  printer.raw(insertHead(table, columns) + " SELECT ");
  for (size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) printer.raw(",");
    printer.storedText("\"q\"." + quotedName(query.columns[i].name), query.columns[i].type, *columns[i], -1);
  }
  printer.raw(" FROM (" + rows.text() + ") AS \"q\"");
  return change(printer.text());
}

// ---- Changes of data

std::string Execution::insertHead(const Table& table, const std::vector<const Column*>& columns) const {
  std::string text = "INSERT INTO " + table.sqlName() + " (";
  for (size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) text += ",";
    text += quotedName(columns[i]->sqlName.empty() ? columns[i]->name : columns[i]->sqlName);
  }
  return text + ")";
}

// A default that is no expression is a text, as tables made elsewhere have it.
std::string defaultSql(Catalog& catalog, const Column& column) {
  std::string_view text = column.defaultValue;
  while (text.starts_with('=') || text.starts_with(' ')) text.remove_prefix(1);
  ExpressionPtr expression;
  try {
    expression = parseExpression(text);
    Binder alone(catalog, text, {}, nullptr);
    alone.bindValue(*expression);
    if (!alone.slots().empty()) expression = nullptr;
  } catch (const Failure&) {
    expression = nullptr;
  }
  if (!expression) {
    expression = std::make_unique<Expression>(
        isTextType(column.type) ? ExpressionKind::Text : ExpressionKind::Null, 0);
    expression->text = text;
    expression->type = Type::Text;
  }
  Printer printer;
  printer.stored(*expression, column);
  return printer.take();
}

void Execution::addLeftOut(const Table& table, std::vector<const Column*>& columns,
                           std::vector<std::string>& values) {
  for (const Column& column : table.columns) {
    if (std::find(columns.begin(), columns.end(), &column) != columns.end() || column.counter) continue;
    const bool mayBeNull = !column.required && !column.inKey && column.type != Type::YesNo;
    if (column.defaultValue.empty() && mayBeNull) continue;
    columns.push_back(&column);
    if (!column.defaultValue.empty()) {
      values.push_back(defaultSql(catalog_, column));
      continue;
    }
    Printer printer;
    printer.storedText("NULL", Type::Unknown, column, -1);
    values.push_back(printer.take());
  }
}

int64_t Execution::operator()(InsertStatement& statement) {
  const Table& table = binder_.table(statement.table, statement.place, unknownTable);
  std::vector<const Column*> columns;
  std::vector<std::string> values;
  const auto find = [&](const std::string& name, size_t place) {
    const Column* column = table.findColumn(name);
    if (!column)
      binder_.fail(unknownField, "The table '" + table.name + "' has no field '" + name + "'", place);
    if (std::find(columns.begin(), columns.end(), column) != columns.end()) {
      binder_.fail(duplicateOutput, "The field '" + name + "' stands twice", place);
    }
    columns.push_back(column);
  };
  for (size_t i = 0; i < statement.columns.size(); ++i) find(statement.columns[i], statement.columnPlaces[i]);
  const Query* query = statement.query.get();
  if (query) {
    binder_.bindQuery(*statement.query);
    if (columns.empty()) {
      for (const OutputColumn& output : query->columns) find(output.name, query->place);
    }
  } else if (columns.empty()) {
    for (const Column& column : table.columns) columns.push_back(&column);
  }
  const size_t given = query ? query->columns.size() : statement.values.size();
  if (given != columns.size()) {
    binder_.fail(valueCount, "The number of values and of fields is not the same", statement.place);
  }
  for (size_t i = 0; i < given; ++i) {
    Printer printer;
    if (query) {
      printer.storedText("\"q\"." + quotedName(query->columns[i].name), query->columns[i].type, *columns[i],
                         static_cast<int64_t>(query->place));
    } else {
      binder_.bindValue(*statement.values[i]);
      binder_.checkStorable(*statement.values[i], *columns[i]);
      printer.stored(*statement.values[i], *columns[i]);
    }
    values.push_back(printer.take());
  }
  addLeftOut(table, columns, values);
  Printer printer;
  printer.raw(insertHead(table, columns) + " SELECT ");
  for (size_t i = 0; i < values.size(); ++i) printer.raw((i > 0 ? "," : "") + values[i]);
  if (query) {
    printer.raw(" FROM (");
    printer.query(*query);
    printer.raw(") AS \"q\"");
  }
  const int64_t inserted = change(printer.text());
  const bool counts =
      std::any_of(table.columns.begin(), table.columns.end(), [](const Column& c) { return c.counter; });
  if (counts && inserted > 0) catalog_.lastCounter = sqlite3_last_insert_rowid(database_);
  return inserted;
}

int64_t Execution::operator()(UpdateStatement& statement) {
  binder_.bindSources(statement.sources);
  std::vector<Target> targets;
  for (Assignment& assignment : statement.assignments) {
    targets.push_back(binder_.bindTarget(*assignment.target));
    binder_.bindValue(*assignment.value);
    binder_.checkStorable(*assignment.value, *targets.back().column);
  }
  binder_.bindCondition(statement.where);
  const bool one = std::all_of(targets.begin(), targets.end(),
                               [&](const Target& each) { return each.rowId == targets[0].rowId; });
  return one ? updateOne(statement, targets) : updateMany(statement, targets);
}

namespace {

std::string sqlName(const Column& column) {
  return quotedName(column.sqlName.empty() ? column.name : column.sqlName);
}

}  // namespace

// All new values are worked out before the first is stored, so that each row sees the old ones.
int64_t Execution::updateOne(UpdateStatement& statement, const std::vector<Target>& targets) {
  const Table& table = *targets[0].table;
  const Source& first = *statement.sources[0];
  const bool alone = statement.sources.size() == 1 && first.kind == SourceKind::Table && first.table;
  Printer printer;
  const std::string alias = alone ? "\"t" + std::to_string(first.number) + "\"" : "\"target\"";
  printer.raw("UPDATE " + table.sqlName() + " AS " + alias + " SET ");
  for (size_t i = 0; i < targets.size(); ++i) {
    printer.raw((i > 0 ? "," : "") + sqlName(*targets[i].column) + "=");
    if (alone) {
      printer.stored(*statement.assignments[i].value, *targets[i].column);
    } else {
      printer.raw("\"new\".\"v" + std::to_string(i) + "\"");
    }
  }
  if (alone) {
    if (statement.where) {
      printer.raw(" WHERE ");
      printer.condition(*statement.where);
    }
    return change(printer.text());
  }
  printer.raw(" FROM (SELECT " + targets[0].rowId + " AS \"row\"");
  for (size_t i = 0; i < targets.size(); ++i) {
    printer.raw(",");
    printer.stored(*statement.assignments[i].value, *targets[i].column);
    printer.raw(" AS \"v" + std::to_string(i) + "\"");
  }
  printer.rows(statement.sources, statement.where.get());
  printer.raw(") AS \"new\" WHERE \"target\"." + quotedName(table.rowId) + " = \"new\".\"row\"");
  return change(printer.text());
}

int64_t Execution::updateMany(UpdateStatement& statement, const std::vector<Target>& targets) {
  std::vector<const Target*> tables;
  for (const Target& target : targets) {
    if (std::none_of(tables.begin(), tables.end(),
                     [&](const Target* each) { return each->rowId == target.rowId; }))
      tables.push_back(&target);
  }
  Printer rows;
  rows.raw("CREATE TEMP TABLE \"jet update\" AS SELECT 0");
  for (size_t i = 0; i < tables.size(); ++i)
    rows.raw("," + tables[i]->rowId + " AS \"row" + std::to_string(i) + "\"");
  for (size_t i = 0; i < targets.size(); ++i) {
    rows.raw(",");
    rows.stored(*statement.assignments[i].value, *targets[i].column);
    rows.raw(" AS \"v" + std::to_string(i) + "\"");
  }
  rows.rows(statement.sources, statement.where.get());
  change(rows.text());
  for (size_t t = 0; t < tables.size(); ++t) {
    std::string sql = "UPDATE " + tables[t]->table->sqlName() + " AS \"target\" SET ";
    bool first = true;
    for (size_t i = 0; i < targets.size(); ++i) {
      if (targets[i].rowId != tables[t]->rowId) continue;
      sql += (first ? "" : ",") + sqlName(*targets[i].column) + "=\"new\".\"v" + std::to_string(i) + "\"";
      first = false;
    }
    sql += " FROM temp.\"jet update\" AS \"new\" WHERE \"target\"." + quotedName(tables[t]->table->rowId) +
           " = \"new\".\"row" + std::to_string(t) + "\"";
    change(sql);
  }
  int64_t count = 0;
  visit("SELECT count(*) FROM temp.\"jet update\"",
        [&](sqlite3_stmt* row) { count = sqlite3_column_int64(row, 0); });
  change("DROP TABLE temp.\"jet update\"");
  return count;
}

int64_t Execution::operator()(DeleteStatement& statement) {
  binder_.bindSources(statement.sources);
  binder_.bindCondition(statement.where);
  const std::vector<const Source*> tables = leavesOf(statement.sources);
  const Source* target = tables.size() == 1 ? tables[0] : nullptr;
  for (const Source* each : tables) {
    if (sameText(each->alias.empty() ? each->name : each->alias, statement.target)) target = each;
  }
  if (!target)
    binder_.fail(deleteTableNeeded, "Name the table whose records are to be deleted", statement.place);
  const Target base = binder_.onlyTableOf(*target, target->place);
  Printer printer;
  if (tables.size() == 1 && target->table) {
    printer.raw("DELETE FROM " + target->table->sqlName() + " AS \"t" + std::to_string(target->number) +
                "\"");
    if (statement.where) {
      printer.raw(" WHERE ");
      printer.condition(*statement.where);
    }
  } else {
    printer.raw("DELETE FROM " + base.table->sqlName() + " WHERE " + quotedName(base.table->rowId) +
                " IN (SELECT " + base.rowId);
    printer.rows(statement.sources, statement.where.get());
    printer.raw(")");
  }
  return change(printer.text());
}

int64_t Execution::operator()(ExecuteStatement& statement) {
  const auto stored = catalog_.findQuery(statement.name);
  if (!stored) binder_.fail(unknownTable, "There is no query named '" + statement.name + "'", 0);
  if (depth_ >= maxExecuteDepth)
    binder_.fail(circularQuery, "Stored queries run each other in a circle or too deeply", 0);
  std::vector<Parameter> arguments;
  for (ExpressionPtr& argument : statement.arguments) {
    binder_.bindValue(*argument);
    Printer printer;
    printer.raw("SELECT ");
    printer.value(*argument);
    visit(printer.text(), [&](sqlite3_stmt* row) {
      Parameter parameter{"", argument->type, {}};
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
      switch (sqlite3_column_type(row, 0)) {
        case SQLITE_INTEGER:
          parameter.value = static_cast<int64_t>(sqlite3_column_int64(row, 0));
          break;
        case SQLITE_FLOAT:
          parameter.value = sqlite3_column_double(row, 0);
          break;
        case SQLITE_NULL:
          break;
        default:
          parameter.value = std::string(text, static_cast<size_t>(sqlite3_column_bytes(row, 0)));
          break;
      }
      arguments.push_back(std::move(parameter));
    });
  }
  binder_.checkNames();
  ParsedStatement inner = parseStatement(*stored);
  return Execution(database_, catalog_, *stored, arguments, rows_, depth_ + 1).run(inner);
}

}  // namespace jet
