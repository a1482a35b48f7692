#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "engine/jet_sql/statement.h"
#include "engine/jet_sql/token.h"

namespace jet {

/// What a syntax error of this number says, without its place.
const char* syntaxText(int number);

/// Recursive descent over the tokens of one statement. The parse functions stand in files by subject:
/// expressions, queries, changes of data, changes of the schema.
class Parser {
 public:
  explicit Parser(std::string_view statement);

  ParsedStatement statement();
  ExpressionPtr loneExpression();
  ExpressionPtr rule(std::string column);

 private:
  // Tokens.
  const Token& peek(size_t ahead = 0) const { return tokens_[std::min(at_ + ahead, tokens_.size() - 1)]; }
  bool isWord(const char* word, size_t ahead = 0) const { return peek(ahead).isWord(word); }
  bool isSymbol(const char* symbol, size_t ahead = 0) const { return peek(ahead).isSymbol(symbol); }
  bool acceptWord(const char* word);
  bool acceptSymbol(const char* symbol);
  void expectWord(const char* word, int number);
  void expectSymbol(const char* symbol, int number);
  [[noreturn]] void fail(int number) const;
  [[noreturn]] void failAt(int number, std::string text, size_t place) const;
  /// A name that is no reserved word unless bracketed.
  bool atName(size_t ahead = 0) const;
  std::string name(int number);
  std::string parameterName();         ///< may be a path, as [Forms]![Orders]![From]
  std::string dottedName(int number);  ///< a name whose parts dots may join, as a query's `a.id` column
  double unsignedNumber(int number);
  bool atEnd() const;
  void expectEnd();

  class Nesting;  ///< counts the recursion's levels and fails (3360) beyond `maxNesting`

  // Expressions.
  ExpressionPtr expression();
  ExpressionPtr binary(int level);
  ExpressionPtr logicOperand();
  ExpressionPtr comparison();
  ExpressionPtr comparisonTail(ExpressionPtr left);
  bool atImpliedSide() const;
  ExpressionPtr impliedSide();
  ExpressionPtr inTail(ExpressionPtr left, bool negated, size_t place);
  ExpressionPtr chain(int level);
  ExpressionPtr concatenation();
  ExpressionPtr negation();
  ExpressionPtr power();
  ExpressionPtr primary();
  ExpressionPtr literal();
  ExpressionPtr call();
  ExpressionPtr nameOrConstant();
  ExpressionPtr subquery(ExpressionKind kind, size_t place);
  bool atQuery(size_t ahead = 0) const;

  // Queries.
  std::vector<ParameterDeclaration> parameterDeclarations();
  std::unique_ptr<Query> query();      ///< with unions and their order
  std::unique_ptr<Query> querySpec();  ///< one Select, without its order
  std::unique_ptr<Query> queryTerm();  ///< a Select, one in parentheses, or Table name
  std::unique_ptr<Query> transformQuery();
  void selectPrefix(Query& query);
  OutputItem outputItem();
  std::vector<SourcePtr> sources(int number);
  SourcePtr source(int number);
  SourcePtr sourceTerm(int number);
  bool atBracketedQuery() const;
  std::unique_ptr<Query> bracketedQuery();
  std::vector<OrderKey> orderKeys();

  // Changes of data.
  InsertStatement insertStatement();
  UpdateStatement updateStatement();
  DeleteStatement deleteStatement();
  void deleteItem(DeleteStatement& statement);
  ExecuteStatement executeStatement();

  // Changes of the schema.
  CreateTableStatement createTable();
  CreateIndexStatement createIndex();
  CreateQueryStatement createQuery();
  std::string procedureParameters();
  AlterTableStatement alterTable();
  DropStatement drop();
  Type columnType(Column& column, int number);
  Column column(Table& table, std::vector<Relation>& relations, int number);
  void columnConstraint(Column& column, Table& table, std::vector<Relation>& relations);
  void tableConstraint(Table& table, std::vector<Relation>& relations);
  Relation reference(std::string name, std::vector<std::string> columns);
  std::vector<std::string> columnNames(int number);

  std::string_view text_;
  std::vector<Token> tokens_;
  size_t at_ = 0;
  int nesting_ = 0;
  std::string implied_;  ///< the field that a rule's comparisons without a left side are about
};

/// Counts one level of recursion for as long as it lives.
class Parser::Nesting {
 public:
  explicit Nesting(Parser& parser) : parser_(parser) {
    if (++parser_.nesting_ > maxNesting) {
      --parser_.nesting_;
      parser_.failAt(tooComplex, "The statement is too complex", parser_.peek().place);
    }
  }
  ~Nesting() { --parser_.nesting_; }
  Nesting(const Nesting&) = delete;
  Nesting& operator=(const Nesting&) = delete;

 private:
  Parser& parser_;
};

}  // namespace jet
