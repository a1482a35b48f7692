#include "engine/jet_sql/parser.h"
#include "engine/text/collation.h"

namespace jet {
namespace {

struct TypeName {
  const char* word;
  Type type;
  int size;  ///< unless the statement tells it
  bool counter = false;
};

constexpr int textSize = 255;

// The dialect's type names; those of two words stand with their second word in `columnType`.
constexpr TypeName typeNames[] = {
    {"AUTOINCREMENT", Type::Long, 0, true},
    {"BINARY", Type::Binary, 510},
    {"BIT", Type::YesNo, 0},
    {"BOOLEAN", Type::YesNo, 0},
    {"BYTE", Type::Byte, 0},
    {"CHAR", Type::Text, textSize},
    {"CHARACTER", Type::Text, textSize},
    {"COUNTER", Type::Long, 0, true},
    {"CURRENCY", Type::Currency, 0},
    {"DATE", Type::Date, 0},
    {"DATETIME", Type::Date, 0},
    {"DEC", Type::Double, 0},
    {"DECIMAL", Type::Double, 0},
    {"DOUBLE", Type::Double, 0},
    {"FLOAT", Type::Double, 0},
    {"FLOAT4", Type::Single, 0},
    {"FLOAT8", Type::Double, 0},
    {"GENERAL", Type::Binary, 0},
    {"GUID", Type::Guid, 0},
    {"IDENTITY", Type::Long, 0, true},
    {"IEEEDOUBLE", Type::Double, 0},
    {"IEEESINGLE", Type::Single, 0},
    {"IMAGE", Type::Binary, 0},
    {"INT", Type::Long, 0},
    {"INTEGER", Type::Long, 0},
    {"INTEGER1", Type::Byte, 0},
    {"INTEGER2", Type::Integer, 0},
    {"INTEGER4", Type::Long, 0},
    {"LOGICAL", Type::YesNo, 0},
    {"LOGICAL1", Type::YesNo, 0},
    {"LONG", Type::Long, 0},
    {"LONGBINARY", Type::Binary, 0},
    {"LONGCHAR", Type::Memo, 0},
    {"LONGTEXT", Type::Memo, 0},
    {"MEMO", Type::Memo, 0},
    {"MONEY", Type::Currency, 0},
    {"NATIONAL", Type::Text, textSize},
    {"NCHAR", Type::Text, textSize},
    {"NOTE", Type::Memo, 0},
    {"NTEXT", Type::Memo, 0},
    {"NUMBER", Type::Double, 0},
    {"NUMERIC", Type::Double, 0},
    {"NVARCHAR", Type::Text, textSize},
    {"OLEOBJECT", Type::Binary, 0},
    {"REAL", Type::Single, 0},
    {"SHORT", Type::Integer, 0},
    {"SINGLE", Type::Single, 0},
    {"SMALLINT", Type::Integer, 0},
    {"STRING", Type::Text, textSize},
    {"TEXT", Type::Text, textSize},
    {"TIME", Type::Date, 0},
    {"TIMESTAMP", Type::Date, 0},
    {"TINYINT", Type::Byte, 0},
    {"UNIQUEIDENTIFIER", Type::Guid, 0},
    {"VARBINARY", Type::Binary, 510},
    {"VARCHAR", Type::Text, textSize},
    {"YESNO", Type::YesNo, 0},
};

}  // namespace

Type Parser::columnType(Column& column, int number) {
  const Token& word = peek();
  const TypeName* found = nullptr;
  for (const TypeName& entry : typeNames) {
    if (word.isWord(entry.word)) found = &entry;
  }
  if (!found) fail(number);
  ++at_;
  column.type = found->type;
  column.size = found->size;
  column.counter = found->counter;
  const bool charKind = word.isWord("CHAR") || word.isWord("CHARACTER") || word.isWord("NCHAR");
  if (word.isWord("NATIONAL") && !acceptWord("CHAR") && !acceptWord("CHARACTER")) fail(number);
  if (charKind || word.isWord("NATIONAL") || word.isWord("BINARY")) acceptWord("VARYING");
  if (word.isWord("DOUBLE")) acceptWord("PRECISION");
  if (word.isWord("LONG") && (isWord("TEXT") || isWord("BINARY"))) {
    column.type = acceptWord("TEXT") ? Type::Memo : Type::Binary;
    if (column.type == Type::Binary) ++at_;
  }
  if (acceptSymbol("(")) {
    const double first = unsignedNumber(number);
    if (acceptSymbol(",")) unsignedNumber(number);
    expectSymbol(")", number);
    const bool sized = column.type == Type::Text || column.type == Type::Binary;
    if (sized && (first < 1 || first > (column.type == Type::Text ? 255 : 510))) {
      failAt(number, "The size of a field is out of its range", tokens_[at_ - 2].place);
    }
    if (sized) column.size = static_cast<int>(first);
  }
  return column.type;
}

std::vector<std::string> Parser::columnNames(int number) {
  expectSymbol("(", number);
  std::vector<std::string> names;
  do names.push_back(name(number));
  while (acceptSymbol(","));
  expectSymbol(")", number);
  return names;
}

Relation Parser::reference(std::string constraint, std::vector<std::string> columns) {
  Relation relation;
  relation.name = std::move(constraint);
  relation.columns = std::move(columns);
  relation.foreignTable = name(constraintSyntax);
  if (isSymbol("(")) relation.foreignColumns = columnNames(constraintSyntax);
  while (acceptWord("ON")) {
    const bool update = acceptWord("UPDATE");
    if (!update) expectWord("DELETE", constraintSyntax);
    if (acceptWord("CASCADE")) {
      (update ? relation.cascadeUpdate : relation.cascadeDelete) = true;
    } else if (acceptWord("SET")) {
      expectWord("NULL", constraintSyntax);
      if (!update) relation.setNullOnDelete = true;
    } else if (acceptWord("NO")) {
      expectWord("ACTION", constraintSyntax);
    } else {
      fail(constraintSyntax);
    }
  }
  return relation;
}

void Parser::columnConstraint(Column& column, Table& table, std::vector<Relation>& relations) {
  std::string constraint;
  if (acceptWord("CONSTRAINT")) constraint = name(constraintSyntax);
  if (acceptWord("PRIMARY")) {
    expectWord("KEY", constraintSyntax);
    table.indexes.push_back(
        {constraint.empty() ? "PrimaryKey" : constraint, {{column.name}}, true, true, true, false});
  } else if (acceptWord("UNIQUE")) {
    table.indexes.push_back(
        {constraint.empty() ? column.name : constraint, {{column.name}}, false, true, false, false});
  } else if (acceptWord("NOT")) {
    expectWord("NULL", constraintSyntax);
    column.required = true;
  } else if (acceptWord("REFERENCES")) {
    relations.push_back(reference(constraint, {column.name}));
    relations.back().table = table.name;
  } else {
    fail(constraintSyntax);
  }
}

Column Parser::column(Table& table, std::vector<Relation>& relations, int number) {
  Column result;
  result.name = name(number);
  columnType(result, fieldSyntax);
  for (;;) {
    if (acceptWord("NULL")) continue;
    if (acceptWord("DEFAULT")) {
      const size_t start = peek().place;
      negation();
      result.defaultValue = std::string(text_.substr(start, peek().place - start));
      while (!result.defaultValue.empty() && result.defaultValue.back() == ' ')
        result.defaultValue.pop_back();
      continue;
    }
    if (acceptWord("WITH")) {  // With Compression changes nothing here
      if (!acceptWord("COMPRESSION") && !acceptWord("COMP")) fail(fieldSyntax);
      continue;
    }
    if (!isWord("CONSTRAINT") && !isWord("PRIMARY") && !isWord("UNIQUE") && !isWord("NOT") &&
        !isWord("REFERENCES")) {
      break;
    }
    columnConstraint(result, table, relations);
  }
  return result;
}

void Parser::tableConstraint(Table& table, std::vector<Relation>& relations) {
  std::string constraint;
  if (acceptWord("CONSTRAINT")) constraint = name(constraintSyntax);
  if (acceptWord("FOREIGN")) {
    expectWord("KEY", constraintSyntax);
    acceptWord("NO");  // No Index: the index that relations bring is the catalog's affair
    acceptWord("INDEX");
    std::vector<std::string> columns = columnNames(constraintSyntax);
    expectWord("REFERENCES", constraintSyntax);
    relations.push_back(reference(constraint, std::move(columns)));
    relations.back().table = table.name;
    return;
  }
  Index index;
  if (acceptWord("PRIMARY")) {
    expectWord("KEY", constraintSyntax);
    index.primary = index.required = true;
  } else if (!acceptWord("UNIQUE")) {
    fail(constraintSyntax);
  }
  index.unique = true;
  for (std::string& column : columnNames(constraintSyntax)) index.columns.push_back({std::move(column)});
  index.name = !constraint.empty() ? constraint : index.primary ? "PrimaryKey" : index.columns.front().name;
  table.indexes.push_back(std::move(index));
}

CreateTableStatement Parser::createTable() {
  at_ += 2;
  CreateTableStatement result;
  result.table.name = name(createTableSyntax);
  expectSymbol("(", createTableSyntax);
  do {
    const bool constraint = isWord("CONSTRAINT") || (isWord("PRIMARY") && isWord("KEY", 1)) ||
                            (isWord("UNIQUE") && isSymbol("(", 1)) || (isWord("FOREIGN") && isWord("KEY", 1));
    if (constraint) {
      tableConstraint(result.table, result.relations);
    } else {
      result.table.columns.push_back(column(result.table, result.relations, createTableSyntax));
    }
  } while (acceptSymbol(","));
  expectSymbol(")", createTableSyntax);
  return result;
}

CreateIndexStatement Parser::createIndex() {
  ++at_;
  CreateIndexStatement result;
  Index& index = result.index;
  index.unique = acceptWord("UNIQUE");
  expectWord("INDEX", createIndexSyntax);
  index.name = name(createIndexSyntax);
  expectWord("ON", createIndexSyntax);
  result.table = name(createIndexSyntax);
  expectSymbol("(", createIndexSyntax);
  do {
    IndexColumn column{name(createIndexSyntax), false};
    column.descending = acceptWord("DESC");
    if (!column.descending) acceptWord("ASC");
    index.columns.push_back(std::move(column));
  } while (acceptSymbol(","));
  expectSymbol(")", createIndexSyntax);
  if (!acceptWord("WITH")) return result;
  do {
    if (acceptWord("PRIMARY")) {
      index.primary = index.unique = index.required = true;
    } else if (acceptWord("DISALLOW")) {
      expectWord("NULL", createIndexSyntax);
      index.required = true;
    } else if (acceptWord("IGNORE")) {
      expectWord("NULL", createIndexSyntax);
      index.ignoreNull = true;
    } else {
      fail(createIndexSyntax);
    }
    acceptSymbol(",");
  } while (!atEnd());
  return result;
}

CreateQueryStatement Parser::createQuery() {
  at_ += 2;
  CreateQueryStatement result;
  result.name = name(invalidStatement);
  if (!acceptWord("AS")) fail(invalidStatement);
  const size_t start = peek().place;
  result.sql = std::string(text_.substr(start));
  Parser inner(result.sql);
  try {
    inner.statement();
  } catch (Failure& failure) {
    throw Failure{errorAt(failure.error.number, syntaxText(failure.error.number), text_,
                          start + failure.error.place.value_or(0))};
  }
  at_ = tokens_.size() - 1;
  return result;
}

AlterTableStatement Parser::alterTable() {
  ++at_;
  expectWord("TABLE", alterTableSyntax);
  AlterTableStatement result;
  result.table = name(alterTableSyntax);
  Table sketch;  // gathers what the column's constraints ask for
  sketch.name = result.table;
  const bool add = acceptWord("ADD");
  if (add && (isWord("CONSTRAINT") || isWord("PRIMARY") || isWord("FOREIGN") ||
              (isWord("UNIQUE") && isSymbol("(", 1)))) {
    tableConstraint(sketch, result.relations);
    result.action = sketch.indexes.empty() ? AlterAction::AddRelation : AlterAction::AddIndex;
  } else if (add || acceptWord("ALTER")) {
    result.action = add ? AlterAction::AddColumn : AlterAction::AlterColumn;
    acceptWord("COLUMN");
    do {
      acceptWord("COLUMN");
      result.columns.push_back(column(sketch, result.relations, alterTableSyntax));
    } while (acceptSymbol(","));
  } else if (acceptWord("DROP")) {
    if (acceptWord("CONSTRAINT")) {
      result.action = AlterAction::DropConstraint;
      result.constraint = name(alterTableSyntax);
      return result;
    }
    result.action = AlterAction::DropColumn;
    acceptWord("COLUMN");
    do {
      result.columns.emplace_back();
      result.columns.back().name = name(alterTableSyntax);
    } while (acceptSymbol(","));
  } else {
    fail(alterTableSyntax);
  }
  result.indexes = std::move(sketch.indexes);
  return result;
}

DropStatement Parser::drop() {
  ++at_;
  DropStatement result;
  if (acceptWord("INDEX")) {
    result.kind = DropKind::Index;
    result.name = name(dropSyntax);
    expectWord("ON", dropSyntax);
    result.table = name(dropSyntax);
  } else if (acceptWord("TABLE")) {
    result.name = name(dropSyntax);
  } else if (acceptWord("VIEW") || acceptWord("PROCEDURE") || acceptWord("PROC")) {
    result.kind = DropKind::Query;
    result.name = name(dropSyntax);
  } else {
    fail(dropSyntax);
  }
  return result;
}

}  // namespace jet
