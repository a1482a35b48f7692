#include "engine/jet_sql/parser.h"

namespace jet {

InsertStatement Parser::insertStatement() {
  InsertStatement insert;
  insert.place = tokens_[at_++].place;
  expectWord("INTO", insertSyntax);
  insert.table = name(insertSyntax);
  if (isSymbol("(") && !atQuery(1)) {
    ++at_;
    do {
      insert.columnPlaces.push_back(peek().place);
      std::string column = name(insertSyntax);
      if (acceptSymbol(".")) column = name(insertSyntax);
      insert.columns.push_back(std::move(column));
    } while (acceptSymbol(","));
    expectSymbol(")", insertSyntax);
  }
  if (acceptWord("VALUES")) {
    expectSymbol("(", insertSyntax);
    do insert.values.push_back(expression());
    while (acceptSymbol(","));
    expectSymbol(")", insertSyntax);
  } else if (isWord("SELECT") || isWord("TRANSFORM") || isWord("TABLE") || isSymbol("(")) {
    insert.query = query();
  } else {
    fail(insertSyntax);
  }
  return insert;
}

UpdateStatement Parser::updateStatement() {
  UpdateStatement update;
  ++at_;
  if (isWord("DISTINCTROW")) ++at_;
  update.sources = sources(updateSyntax);
  expectWord("SET", updateSyntax);
  do {
    Assignment assignment;
    if (!atName()) fail(updateSyntax);
    assignment.target = nameOrConstant();
    expectSymbol("=", updateSyntax);
    assignment.value = expression();
    update.assignments.push_back(std::move(assignment));
  } while (acceptSymbol(","));
  if (acceptWord("WHERE")) {
    update.where = expression();
  } else if (!atEnd()) {
    fail(expressionSyntax);
  }
  return update;
}

DeleteStatement Parser::deleteStatement() {
  DeleteStatement result;
  result.place = tokens_[at_++].place;
  acceptWord("DISTINCTROW");
  if (!isWord("FROM")) {
    do deleteItem(result);
    while (acceptSymbol(","));
  }
  expectWord("FROM", deleteSyntax);
  result.sources = sources(fromSyntax);
  if (acceptWord("WHERE")) {
    result.where = expression();
  } else if (!atEnd()) {
    fail(fromSyntax);
  }
  return result;
}

// Fields say which table is meant, too, but a star says it first.
void Parser::deleteItem(DeleteStatement& statement) {
  if (acceptSymbol("*")) return;
  const size_t place = peek().place;
  std::string table = name(deleteSyntax);
  if (!acceptSymbol(".") && !acceptSymbol("!")) return;  // a field alone
  const bool star = acceptSymbol("*");
  if (!star) name(deleteSyntax);
  if (!statement.target.empty() && !star) return;
  statement.place = place;
  statement.target = std::move(table);
}

ExecuteStatement Parser::executeStatement() {
  ++at_;
  ExecuteStatement result{name(invalidStatement), {}};
  if (atEnd()) return result;
  do result.arguments.push_back(expression());
  while (acceptSymbol(","));
  return result;
}

}  // namespace jet
