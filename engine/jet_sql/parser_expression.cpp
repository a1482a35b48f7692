#include <iterator>
#include <utility>

#include "engine/jet_sql/parser.h"

namespace jet {
namespace {

ExpressionPtr make(ExpressionKind kind, size_t place) { return std::make_unique<Expression>(kind, place); }

ExpressionPtr makeBinary(ExpressionKind kind, size_t place, std::string text, ExpressionPtr left,
                         ExpressionPtr right) {
  ExpressionPtr node = make(kind, place);
  node->text = std::move(text);
  node->operands.push_back(std::move(left));
  node->operands.push_back(std::move(right));
  return node;
}

ExpressionPtr makeUnary(ExpressionKind kind, size_t place, ExpressionPtr operand) {
  ExpressionPtr node = make(kind, place);
  node->operands.push_back(std::move(operand));
  return node;
}

// Logical operators, the weakest first.
constexpr const char* logicWords[] = {"IMP", "EQV", "XOR", "OR", "AND"};
constexpr int logicLevels = static_cast<int>(std::size(logicWords));

// Arithmetic levels below `&`, the weakest first; `m` stands for Mod.
constexpr std::string_view arithmeticLevels[] = {"+-", "m", "\\", "*/"};
constexpr int arithmeticCount = static_cast<int>(std::size(arithmeticLevels));

}  // namespace

ExpressionPtr Parser::expression() {
  const Nesting level(*this);
  return binary(0);
}

ExpressionPtr Parser::binary(int level) {
  if (level == logicLevels) return logicOperand();
  ExpressionPtr left = binary(level + 1);
  const bool flat = level >= 3;  // Or and And gather all their operands in one node
  for (int count = 0; isWord(logicWords[level]); ++count) {
    const size_t place = tokens_[at_++].place;
    ExpressionPtr right = binary(level + 1);
    if (flat && count > 0) {
      left->operands.push_back(std::move(right));
      continue;
    }
    if (count > maxNesting) failAt(tooComplex, "The statement is too complex", place);
    left = makeBinary(ExpressionKind::Logic, place, logicWords[level], std::move(left), std::move(right));
  }
  return left;
}

ExpressionPtr Parser::logicOperand() {
  if (!isWord("NOT")) return comparison();
  const Nesting level(*this);
  const size_t place = tokens_[at_++].place;
  return makeUnary(ExpressionKind::Not, place, logicOperand());
}

ExpressionPtr Parser::comparison() {
  ExpressionPtr left = atImpliedSide() ? impliedSide() : concatenation();
  // What stands on the right, or within a call, is complete.
  const std::string implied = std::exchange(implied_, "");
  for (int count = 0;; ++count) {
    Expression* before = left.get();
    left = comparisonTail(std::move(left));
    if (left.get() == before) break;
    if (count > maxNesting) fail(tooComplex);
  }
  implied_ = implied;
  const bool isValue = left->kind == ExpressionKind::Text || left->kind == ExpressionKind::Integer ||
                       left->kind == ExpressionKind::Real || left->kind == ExpressionKind::Date;
  if (implied_.empty() || !isValue) return left;
  const size_t place = left->place;
  return makeBinary(ExpressionKind::Compare, place, "=", impliedSide(), std::move(left));
}

bool Parser::atImpliedSide() const {
  if (implied_.empty()) return false;
  const auto is = [&](auto... words) { return (... || isWord(words)); };
  const auto isOne = [&](auto... symbols) { return (... || isSymbol(symbols)); };
  return isOne("=", "<>", "<", ">", "<=", ">=") || is("IS", "LIKE", "ALIKE", "BETWEEN", "IN");
}

ExpressionPtr Parser::impliedSide() {
  ExpressionPtr name = make(ExpressionKind::Name, peek().place);
  name->path.push_back(implied_);
  return name;
}

ExpressionPtr Parser::comparisonTail(ExpressionPtr left) {
  const Token& token = peek();
  for (const char* symbol : {"=", "<>", "<", ">", "<=", ">="}) {
    if (!token.isSymbol(symbol)) continue;
    ++at_;
    for (const char* quantifier : {"ANY", "SOME", "ALL"}) {
      if (!isWord(quantifier) || !isSymbol("(", 1)) continue;
      ++at_;
      ExpressionPtr node = subquery(ExpressionKind::Quantified, token.place);
      node->text = symbol;
      node->path.push_back(quantifier);
      node->operands.push_back(std::move(left));
      return node;
    }
    return makeBinary(ExpressionKind::Compare, token.place, symbol, std::move(left), concatenation());
  }
  if (token.isWord("IS")) {
    ++at_;
    const bool negated = acceptWord("NOT");
    expectWord("NULL", expressionSyntax);
    ExpressionPtr node = makeUnary(ExpressionKind::IsNull, token.place, std::move(left));
    node->negated = negated;
    return node;
  }
  const size_t skip = token.isWord("NOT") ? 1 : 0;
  const bool like = isWord("LIKE", skip), alike = isWord("ALIKE", skip);
  if (!like && !alike && !isWord("BETWEEN", skip) && !isWord("IN", skip)) return left;
  at_ += skip;
  const size_t place = peek().place;
  if (acceptWord("IN")) return inTail(std::move(left), skip == 1, place);
  ++at_;
  ExpressionPtr node;
  if (like || alike) {
    node = makeBinary(ExpressionKind::Like, place, like ? "LIKE" : "ALIKE", std::move(left), concatenation());
  } else {
    ExpressionPtr low = concatenation();
    expectWord("AND", expressionSyntax);
    node = makeBinary(ExpressionKind::Between, place, "", std::move(left), std::move(low));
    node->operands.push_back(concatenation());
  }
  node->negated = skip == 1;
  return node;
}

ExpressionPtr Parser::inTail(ExpressionPtr left, bool negated, size_t place) {
  ExpressionPtr node;
  if (isSymbol("(") && atQuery(1)) {
    node = subquery(ExpressionKind::InQuery, place);
    node->operands.push_back(std::move(left));
  } else {
    expectSymbol("(", expressionSyntax);
    node = makeUnary(ExpressionKind::InList, place, std::move(left));
    do node->operands.push_back(expression());
    while (acceptSymbol(","));
    expectSymbol(")", expressionSyntax);
  }
  node->negated = negated;
  return node;
}

ExpressionPtr Parser::concatenation() {
  ExpressionPtr left = chain(0);
  if (!isSymbol("&")) return left;
  ExpressionPtr node = makeUnary(ExpressionKind::Concat, peek().place, std::move(left));
  while (acceptSymbol("&")) node->operands.push_back(chain(0));
  return node;
}

ExpressionPtr Parser::chain(int level) {
  if (level == arithmeticCount) return negation();
  ExpressionPtr left = chain(level + 1);
  ExpressionPtr node;
  for (;;) {
    const Token& token = peek();
    char operation = token.kind == TokenKind::Symbol && token.text.size() == 1 ? token.text[0] : '\0';
    if (token.isWord("MOD")) operation = 'm';
    if (!operation || arithmeticLevels[level].find(operation) == std::string_view::npos) break;
    ++at_;
    if (!node) node = makeUnary(ExpressionKind::Arithmetic, token.place, std::move(left));
    node->text += operation;
    node->operands.push_back(chain(level + 1));
  }
  return node ? std::move(node) : std::move(left);
}

ExpressionPtr Parser::negation() {
  const size_t place = peek().place;
  if (!isSymbol("-") && !isSymbol("+")) return power();
  const Nesting level(*this);
  const bool minus = isSymbol("-");
  ++at_;
  ExpressionPtr operand = negation();
  const bool number = operand->kind == ExpressionKind::Integer || operand->kind == ExpressionKind::Real;
  if (minus && number && operand->number != 0) {
    operand->number = -operand->number;
    operand->place = place;
    return operand;
  }
  return makeUnary(minus ? ExpressionKind::Negate : ExpressionKind::Plus, place, std::move(operand));
}

// From the left, and tighter than a minus before it: 2 ^ 3 ^ 2 is 64, -2 ^ 2 is -4.
ExpressionPtr Parser::power() {
  ExpressionPtr left = primary();
  if (!isSymbol("^")) return left;
  ExpressionPtr node = makeUnary(ExpressionKind::Arithmetic, peek().place, std::move(left));
  while (acceptSymbol("^")) {
    node->text += '^';
    const Nesting level(*this);
    node->operands.push_back(isSymbol("-") || isSymbol("+") ? negation() : primary());
  }
  return node;
}

bool Parser::atQuery(size_t ahead) const {
  while (isSymbol("(", ahead)) ++ahead;
  return isWord("SELECT", ahead) || isWord("TRANSFORM", ahead);
}

ExpressionPtr Parser::subquery(ExpressionKind kind, size_t place) {
  expectSymbol("(", expressionSyntax);
  ExpressionPtr node = make(kind, place);
  node->query = query();
  expectSymbol(")", expressionSyntax);
  return node;
}

ExpressionPtr Parser::primary() {
  const Token& token = peek();
  if (token.isSymbol("(")) {
    if (isWord("SELECT", 1)) return subquery(ExpressionKind::Subquery, token.place);
    ++at_;
    ExpressionPtr inner = expression();
    expectSymbol(")", expressionSyntax);
    return inner;
  }
  if (token.isWord("EXISTS") && isSymbol("(", 1)) {
    ++at_;
    return subquery(ExpressionKind::Exists, token.place);
  }
  if (token.kind == TokenKind::Name && isSymbol("(", 1)) return call();
  if (token.kind == TokenKind::Name || token.kind == TokenKind::Bracketed) return nameOrConstant();
  return literal();
}

ExpressionPtr Parser::literal() {
  const Token& token = peek();
  ExpressionKind kind;
  switch (token.kind) {
    case TokenKind::Integer:
      kind = ExpressionKind::Integer;
      break;
    case TokenKind::Real:
      kind = ExpressionKind::Real;
      break;
    case TokenKind::Date:
      kind = ExpressionKind::Date;
      break;
    case TokenKind::Text:
      kind = ExpressionKind::Text;
      break;
    case TokenKind::Guid:
      kind = ExpressionKind::Guid;
      break;
    default:
      fail(expressionSyntax);
  }
  ExpressionPtr node = make(kind, token.place);
  node->number = token.number;
  if (kind == ExpressionKind::Text || kind == ExpressionKind::Guid) node->text = token.text;
  ++at_;
  return node;
}

ExpressionPtr Parser::call() {
  const bool alsoReserved = isWord("LEFT") || isWord("RIGHT") || isWord("ASC");
  if (!alsoReserved && !atName()) fail(expressionSyntax);
  ExpressionPtr node = make(ExpressionKind::Call, peek().place);
  node->text = tokens_[at_].text;
  at_ += 2;
  if (acceptSymbol(")")) return node;
  const std::string implied = std::exchange(implied_, "");
  if (isSymbol("*") && isSymbol(")", 1)) {
    node->operands.push_back(make(ExpressionKind::Star, peek().place));
    at_ += 2;
    return node;
  }
  do node->operands.push_back(expression());
  while (acceptSymbol(","));
  expectSymbol(")", expressionSyntax);
  implied_ = implied;
  return node;
}

ExpressionPtr Parser::nameOrConstant() {
  const size_t place = peek().place;
  if (acceptWord("NULL")) return make(ExpressionKind::Null, place);
  if (isWord("TRUE") || isWord("FALSE")) {
    ExpressionPtr node = make(ExpressionKind::Boolean, place);
    node->number = acceptWord("TRUE") ? -1 : 0;
    if (node->number == 0) ++at_;
    return node;
  }
  const bool on = isWord("ON");  // reserved, but as an operand it is the constant
  if (!on && !atName()) fail(expressionSyntax);
  ExpressionPtr node = make(ExpressionKind::Name, place);
  node->path.push_back(tokens_[at_++].text);
  while (!on && (isSymbol(".") || isSymbol("!")) && node->path.size() < 4) {
    ++at_;
    node->path.push_back(name(expressionSyntax));
  }
  return node;
}

}  // namespace jet
