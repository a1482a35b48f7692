#include "engine/jet_sql/parser.h"

namespace jet {
namespace {

constexpr size_t maxUnionParts = 400;  // below SQLite's 500
constexpr int maxJoins = 60;           // below SQLite's 64

}  // namespace

std::vector<ParameterDeclaration> Parser::parameterDeclarations() {
  ++at_;
  std::vector<ParameterDeclaration> declarations;
  do {
    ParameterDeclaration declaration{parameterName(), Type::Unknown};
    Column column;
    declaration.type = columnType(column, parameterSyntax);
    declarations.push_back(std::move(declaration));
  } while (acceptSymbol(","));
  expectSymbol(";", parameterSyntax);
  return declarations;
}

std::string Parser::parameterName() {
  std::string whole = name(parameterSyntax);
  while (acceptSymbol("!") || acceptSymbol(".")) whole += "." + name(parameterSyntax);
  return whole;
}

std::unique_ptr<Query> Parser::query() {
  const Nesting level(*this);
  if (isWord("TRANSFORM")) return transformQuery();
  std::unique_ptr<Query> first = queryTerm();
  if (isWord("UNION")) {
    auto all = std::make_unique<Query>();
    all->place = first->place;
    all->parts.push_back({std::move(first), true});
    while (acceptWord("UNION")) {
      const bool keeps = acceptWord("ALL");
      all->parts.push_back({queryTerm(), keeps});
      if (all->parts.size() > maxUnionParts) fail(tooComplex);
    }
    first = std::move(all);
  }
  if (isWord("ORDER")) first->orderBy = orderKeys();
  return first;
}

std::unique_ptr<Query> Parser::queryTerm() {
  if (isSymbol("(")) {
    const Nesting level(*this);
    ++at_;
    std::unique_ptr<Query> inner = query();
    expectSymbol(")", selectSyntax);
    return inner;
  }
  if (isWord("TABLE")) {
    auto whole = std::make_unique<Query>();
    whole->place = tokens_[at_++].place;
    whole->items.emplace_back();
    whole->sources.push_back(source(fromSyntax));
    return whole;
  }
  if (!isWord("SELECT")) fail(selectSyntax);
  return querySpec();
}

void Parser::selectPrefix(Query& query) {
  for (;;) {
    if (acceptWord("ALL")) continue;
    if (acceptWord("DISTINCT")) {
      query.distinct = true;
    } else if (acceptWord("DISTINCTROW")) {
      query.distinctRow = true;
    } else if (isWord("TOP") && (peek(1).kind == TokenKind::Integer || peek(1).kind == TokenKind::Real)) {
      ++at_;
      query.top = Top{unsignedNumber(selectSyntax), false};
      query.top->percent = acceptWord("PERCENT");
    } else {
      return;
    }
  }
}

OutputItem Parser::outputItem() {
  OutputItem item;
  item.place = peek().place;
  if (acceptSymbol("*")) return item;
  if (atName() && (isSymbol(".", 1) || isSymbol("!", 1)) && isSymbol("*", 2)) {
    item.starOf = peek().text;
    at_ += 3;
    return item;
  }
  item.expression = expression();
  if (acceptWord("AS")) item.alias = name(selectSyntax);
  return item;
}

std::unique_ptr<Query> Parser::querySpec() {
  auto query = std::make_unique<Query>();
  query->place = tokens_[at_++].place;
  selectPrefix(*query);
  if (atEnd() || isWord("FROM")) fail(selectSyntax);
  do query->items.push_back(outputItem());
  while (acceptSymbol(","));
  if (acceptWord("INTO")) query->into = name(selectSyntax);
  if (acceptWord("FROM")) {
    query->sources = sources(fromSyntax);
  } else if (!atEnd() && !isSymbol(")") && !isSymbol(";") && !isWord("UNION") && !isWord("ORDER") &&
             !isWord("WHERE")) {
    fail(expressionSyntax);  // two expressions without an operator between them
  }
  if (acceptWord("WHERE")) query->where = expression();
  if (acceptWord("GROUP")) {
    expectWord("BY", groupSyntax);
    do query->groupBy.push_back(expression());
    while (acceptSymbol(","));
  }
  if (acceptWord("HAVING")) query->having = expression();
  return query;
}

std::unique_ptr<Query> Parser::transformQuery() {
  auto transform = std::make_unique<Transform>();
  ++at_;
  transform->value = expression();
  if (acceptWord("AS")) name(transformSyntax);  // the columns bear the pivot's values, not this
  if (!isWord("SELECT")) fail(transformSyntax);
  std::unique_ptr<Query> query = querySpec();
  if (isWord("ORDER")) query->orderBy = orderKeys();
  expectWord("PIVOT", transformSyntax);
  transform->pivot = concatenation();  // an In behind it lists headings
  if (acceptWord("IN")) {
    expectSymbol("(", transformSyntax);
    do transform->headings.push_back(expression());
    while (acceptSymbol(","));
    expectSymbol(")", transformSyntax);
  }
  if (query->groupBy.empty()) fail(transformSyntax);
  query->transform = std::move(transform);
  return query;
}

std::vector<SourcePtr> Parser::sources(int number) {
  std::vector<SourcePtr> list;
  do list.push_back(source(number));
  while (acceptSymbol(","));
  if (acceptWord("IN"))
    failAt(fromSyntax, "Tables of another file are reached by a link", tokens_[at_ - 1].place);
  return list;
}

SourcePtr Parser::source(int number) {
  const Nesting level(*this);
  SourcePtr left = sourceTerm(number);
  for (int count = 0;; ++count) {
    const size_t place = peek().place;
    JoinKind kind;
    if (isWord("INNER") || isWord("JOIN")) {
      kind = JoinKind::Inner;
    } else if (isWord("LEFT")) {
      kind = JoinKind::Left;
    } else if (isWord("RIGHT")) {
      kind = JoinKind::Right;
    } else {
      return left;
    }
    if (!isWord("JOIN")) {
      ++at_;
      if (kind != JoinKind::Inner) acceptWord("OUTER");
    }
    expectWord("JOIN", fromSyntax);
    if (count > maxJoins) fail(tooComplex);
    auto join = std::make_unique<Source>();
    join->kind = SourceKind::Join;
    join->place = place;
    join->join = kind;
    join->left = std::move(left);
    join->right = sourceTerm(number);
    if (!isWord("ON")) fail(joinSyntax);
    ++at_;
    join->on = expression();
    left = std::move(join);
  }
}

SourcePtr Parser::sourceTerm(int number) {
  const Nesting level(*this);
  auto term = std::make_unique<Source>();
  term->place = peek().place;
  if (isSymbol("(") && !atQuery(1)) {
    ++at_;
    term = source(number);
    expectSymbol(")", term->kind == SourceKind::Join ? joinSyntax : number);
    if (term->kind == SourceKind::Join) return term;
  } else if (isSymbol("(")) {
    ++at_;
    term->kind = SourceKind::Derived;
    term->query = query();
    expectSymbol(")", number);
  } else if (atBracketedQuery()) {
    term->kind = SourceKind::Derived;
    term->query = bracketedQuery();
  } else {
    term->name = dottedName(number);
  }
  if (acceptWord("AS")) {
    term->alias = name(number);
  } else if (atName()) {
    term->alias = name(number);
  }
  return term;
}

// `[SELECT …]. AS x`, as older designers write a query in parentheses.
bool Parser::atBracketedQuery() const {
  if (peek().kind != TokenKind::Bracketed || !isSymbol(".", 1)) return false;
  const size_t begin = peek().text.find_first_not_of(" \t\r\n");
  if (begin == std::string::npos) return false;
  const Token word{TokenKind::Name, 0, peek().text.substr(begin, 6), 0};
  return word.isWord("SELECT");
}

std::unique_ptr<Query> Parser::bracketedQuery() {
  // Blanks in front give its words the places that they have in the statement.
  const std::string text = std::string(peek().place + 1, ' ') + peek().text;
  Parser inner(text);
  inner.nesting_ = nesting_;
  std::unique_ptr<Query> result = inner.query();
  inner.expectEnd();
  at_ += 2;
  return result;
}

std::vector<OrderKey> Parser::orderKeys() {
  ++at_;
  expectWord("BY", orderSyntax);
  std::vector<OrderKey> keys;
  do {
    OrderKey key;
    key.expression = expression();
    key.descending = acceptWord("DESC");
    if (!key.descending) acceptWord("ASC");
    keys.push_back(std::move(key));
  } while (acceptSymbol(","));
  return keys;
}

}  // namespace jet
