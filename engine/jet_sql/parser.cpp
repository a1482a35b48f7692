#include "engine/jet_sql/parser.h"

#include <algorithm>
#include <iterator>

namespace jet {
namespace {

// Words that end a name or an alias; as names they need brackets.
constexpr std::string_view reservedWords[] = {
    "ALIKE",       "ALL",    "AND",  "ANY",   "AS",        "ASC",   "BETWEEN", "BY",    "DESC",  "DISTINCT",
    "DISTINCTROW", "EQV",    "FROM", "GROUP", "HAVING",    "IMP",   "IN",      "INNER", "INTO",  "IS",
    "JOIN",        "LEFT",   "LIKE", "MOD",   "NOT",       "NULL",  "ON",      "OR",    "ORDER", "PIVOT",
    "RIGHT",       "SELECT", "SET",  "SOME",  "TRANSFORM", "UNION", "VALUES",  "WHERE", "WITH",  "XOR",
};

struct SyntaxText {
  int number;
  const char* text;
};

constexpr SyntaxText syntaxTexts[] = {
    {expressionSyntax, "Syntax error in query expression"},
    {invalidStatement,
     "A statement begins with Select, Insert, Update, Delete, Transform, Create, Alter or Drop"},
    {deleteSyntax, "Syntax error in DELETE statement"},
    {fromSyntax, "Syntax error in FROM clause"},
    {groupSyntax, "Syntax error in GROUP BY clause"},
    {havingSyntax, "Syntax error in HAVING clause"},
    {insertSyntax, "Syntax error in INSERT INTO statement"},
    {joinSyntax, "Syntax error in JOIN operation"},
    {orderSyntax, "Syntax error in ORDER BY clause"},
    {parameterSyntax, "Syntax error in PARAMETERS clause"},
    {selectSyntax, "Syntax error in SELECT statement: a word is reserved, missing or misspelled"},
    {trailingText, "Characters found after the end of the statement"},
    {transformSyntax, "Syntax error in TRANSFORM statement"},
    {updateSyntax, "Syntax error in UPDATE statement"},
    {whereSyntax, "Syntax error in WHERE clause"},
    {constraintSyntax, "Syntax error in CONSTRAINT clause"},
    {createTableSyntax, "Syntax error in CREATE TABLE statement"},
    {createIndexSyntax, "Syntax error in CREATE INDEX statement"},
    {fieldSyntax, "Syntax error in field definition"},
    {alterTableSyntax, "Syntax error in ALTER TABLE statement"},
    {dropSyntax, "Syntax error in DROP statement"},
    {tooComplex, "The statement is too complex"},
};

}  // namespace

const char* syntaxText(int number) {
  for (const SyntaxText& entry : syntaxTexts) {
    if (entry.number == number) return entry.text;
  }
  return "Syntax error";
}

Parser::Parser(std::string_view statement) : text_(statement), tokens_(tokenize(statement)) {}

bool Parser::acceptWord(const char* word) {
  if (!isWord(word)) return false;
  ++at_;
  return true;
}

bool Parser::acceptSymbol(const char* symbol) {
  if (!isSymbol(symbol)) return false;
  ++at_;
  return true;
}

void Parser::expectWord(const char* word, int number) {
  if (!acceptWord(word)) fail(number);
}

void Parser::expectSymbol(const char* symbol, int number) {
  if (!acceptSymbol(symbol)) fail(number);
}

void Parser::fail(int number) const { failAt(number, syntaxText(number), peek().place); }

void Parser::failAt(int number, std::string text, size_t place) const {
  throw Failure{errorAt(number, std::move(text), text_, place)};
}

bool Parser::atName(size_t ahead) const {
  const Token& token = peek(ahead);
  if (token.kind == TokenKind::Bracketed) return true;
  if (token.kind != TokenKind::Name) return false;
  return std::none_of(std::begin(reservedWords), std::end(reservedWords),
                      [&](std::string_view word) { return token.isWord(word); });
}

std::string Parser::name(int number) {
  if (!atName()) fail(number);
  return tokens_[at_++].text;
}

std::string Parser::dottedName(int number) {
  std::string whole = name(number);
  while (isSymbol(".") && atName(1)) {
    ++at_;
    whole += "." + name(number);
  }
  return whole;
}

double Parser::unsignedNumber(int number) {
  if (peek().kind != TokenKind::Integer && peek().kind != TokenKind::Real) fail(number);
  return tokens_[at_++].number;
}

bool Parser::atEnd() const {
  return peek().kind == TokenKind::End || (isSymbol(";") && peek(1).kind == TokenKind::End);
}

void Parser::expectEnd() {
  // Whose rights a stored query runs with: there are none here.
  if (isWord("WITH") && isWord("OWNERACCESS", 1) && isWord("OPTION", 2)) at_ += 3;
  if (!atEnd()) fail(trailingText);
}

ParsedStatement Parser::statement() {
  ParsedStatement result;
  if (isWord("PARAMETERS")) result.parameters = parameterDeclarations();
  if (isWord("SELECT") || isSymbol("(") || isWord("TRANSFORM") || (isWord("TABLE") && atName(1))) {
    result.body = SelectStatement{query()};
  } else if (isWord("INSERT")) {
    result.body = insertStatement();
  } else if (isWord("UPDATE")) {
    result.body = updateStatement();
  } else if (isWord("DELETE")) {
    result.body = deleteStatement();
  } else if (isWord("EXEC") || isWord("EXECUTE")) {
    result.body = executeStatement();
  } else if (isWord("CREATE") && isWord("TABLE", 1)) {
    result.body = createTable();
  } else if (isWord("CREATE") && (isWord("VIEW", 1) || isWord("PROCEDURE", 1) || isWord("PROC", 1))) {
    result.body = createQuery();
  } else if (isWord("CREATE")) {
    result.body = createIndex();
  } else if (isWord("ALTER")) {
    result.body = alterTable();
  } else if (isWord("DROP")) {
    result.body = drop();
  } else {
    fail(invalidStatement);
  }
  expectEnd();
  return result;
}

ExpressionPtr Parser::loneExpression() {
  ExpressionPtr result = expression();
  if (peek().kind != TokenKind::End) fail(expressionSyntax);
  return result;
}

ExpressionPtr Parser::rule(std::string column) {
  implied_ = std::move(column);
  return loneExpression();
}

ExpressionPtr parseRule(std::string_view text, std::string column) {
  return Parser(text).rule(std::move(column));
}

ParsedStatement parseStatement(std::string_view sql) { return Parser(sql).statement(); }

ExpressionPtr parseExpression(std::string_view text) { return Parser(text).loneExpression(); }

}  // namespace jet
