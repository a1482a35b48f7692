#include "engine/jet_sql/binder.h"

#include <algorithm>
#include <map>

#include "engine/errors/errors.h"
#include "engine/jet_sql/convert.h"
#include "engine/text/collation.h"

namespace jet {
namespace {

constexpr int maxStoredDepth = 12;  // stored queries upon stored queries; a circle ends here

}  // namespace

Binder::Binder(Catalog& catalog, std::string_view statement, const std::vector<Parameter>& given,
               PivotReader pivots)
    : catalog_(catalog), text_(statement), given_(given), pivots_(std::move(pivots)) {
  scopes_.emplace_back();
}

void Binder::fail(int number, std::string text, size_t place) const {
  throw Failure{errorAt(number, std::move(text), text_, place)};
}

// ---- Parameters

namespace {

// A caller may write the name of a parameter as a statement does, [Forms]![Orders]![From].
std::string withoutBrackets(std::string name) {
  std::erase_if(name, [](char c) { return c == '[' || c == ']'; });
  std::replace(name.begin(), name.end(), '!', '.');
  return name;
}

bool isFor(const Parameter& given, std::string_view name) {
  return sameText(given.name, name) || sameText(withoutBrackets(given.name), name);
}

}  // namespace

const Parameter* Binder::nextGiven(const std::string& name) {
  for (const Parameter& parameter : given_) {
    if (parameter.name.empty()) continue;
    if (isFor(parameter, name)) return &parameter;
  }
  while (nextGiven_ < given_.size() && !given_[nextGiven_].name.empty()) ++nextGiven_;
  return nextGiven_ < given_.size() ? &given_[nextGiven_++] : nullptr;
}

void Binder::declare(const std::vector<ParameterDeclaration>& parameters) {
  for (const ParameterDeclaration& declaration : parameters) {
    slots_.push_back({declaration.name, declaration.type, nextGiven(declaration.name), 0});
  }
}

void Binder::bindParameter(Expression& expression, const std::string& name) {
  auto slot = std::find_if(slots_.begin(), slots_.end(),
                           [&](const ParameterSlot& s) { return sameText(s.name, name); });
  const bool known = slot != slots_.end();
  if (!known) {
    const Parameter* given = nextGiven(name);
    slots_.push_back({name, given ? given->type : Type::Unknown, given, expression.place});
    slot = slots_.end() - 1;
  }
  expression.parameter = true;
  expression.type = slot->type;
  expression.sql = "?" + std::to_string(slot - slots_.begin() + 1);
  // A declared type holds whatever type the value comes in.
  if (slot->given && slot->given->type != slot->type)
    expression.sql = conversionCall("-1", expression.sql, readingOf(slot->given->type), slot->type);
}

void Binder::checkNames() const {
  for (const Parameter& given : given_) {
    if (given.name.empty()) continue;
    const bool known = std::any_of(slots_.begin(), slots_.end(),
                                   [&](const ParameterSlot& slot) { return isFor(given, slot.name); });
    if (!known) ::fail(itemNotFound, "parameter '" + given.name + "' in the query");
  }
}

void Binder::checkParameters() const {
  const auto isMissing = [](const ParameterSlot& slot) { return !slot.given; };
  const auto missing = std::count_if(slots_.begin(), slots_.end(), isMissing);
  if (missing == 0) return;
  const auto first = std::find_if(slots_.begin(), slots_.end(), isMissing);
  fail(
      tooFewParameters,
      "Too few parameters. Expected " + std::to_string(missing) + ". No field is named '" + first->name + "'",
      first->place);
}

// ---- Sources

const Table& Binder::table(std::string_view name, size_t place, int number) {
  const Table* found = catalog_.findTable(name);
  if (!found) fail(number, "There is no table or query named '" + std::string(name) + "'", place);
  return *found;
}

void Binder::bindSources(std::vector<SourcePtr>& sources) {
  for (SourcePtr& source : sources) bindSource(*source, scope());
}

void Binder::bindSource(Source& source, Scope& target) {
  switch (source.kind) {
    case SourceKind::Join:
      bindSource(*source.left, target);
      bindSource(*source.right, target);
      bind(*source.on);
      return;
    case SourceKind::Derived:
      bindQuery(*source.query);
      return addDerived(source, target, source.alias);
    case SourceKind::Table:
      return bindTableSource(source, target);
  }
}

void Binder::bindTableSource(Source& source, Scope& target) {
  const std::string& alias = source.alias.empty() ? source.name : source.alias;
  if (const Table* found = catalog_.findTable(source.name)) {
    source.table = found;
    source.number = ++nextSource_;
    ScopeSource entry{alias, &source, {}, {}};
    for (const Column& column : found->columns) {
      entry.columns.push_back({column.name, column.type, column.size, column.counter});
      entry.sqlNames.push_back(column.sqlName.empty() ? column.name : column.sqlName);
    }
    target.sources.push_back(std::move(entry));
    return;
  }
  const auto stored = catalog_.findQuery(source.name);
  if (!stored) fail(unknownTable, "There is no table or query named '" + source.name + "'", source.place);
  if (++storedDepth_ > maxStoredDepth) {
    fail(circularQuery, "Stored queries refer to each other in a circle or too deeply", source.place);
  }
  const std::string_view outerText = text_;
  text_ = storedTexts_.emplace_back(*stored);
  ParsedStatement statement = parseStatement(text_);
  auto* select = std::get_if<SelectStatement>(&statement.body);
  if (!select || !select->query->into.empty()) {
    text_ = outerText;
    fail(unknownTable, "The query '" + source.name + "' gives no rows", source.place);
  }
  declare(statement.parameters);
  source.query = std::move(select->query);
  source.query->stored = true;
  bindQuery(*source.query);
  text_ = outerText;
  --storedDepth_;
  addDerived(source, target, alias);
}

void Binder::addDerived(Source& source, Scope& target, const std::string& alias) {
  source.number = ++nextSource_;
  ScopeSource entry{alias, &source, {}, {}};
  for (const OutputColumn& column : source.query->columns) {
    entry.columns.push_back({column.name, column.type, column.size, column.counter});
    entry.sqlNames.push_back(column.name);
  }
  target.sources.push_back(std::move(entry));
}

// ---- Queries

void Binder::bindQuery(Query& query) {
  if (++depth_ > maxNesting) fail(tooComplex, "The statement is too complex", query.place);
  if (!query.parts.empty()) {
    bindUnion(query);
  } else {
    scopes_.emplace_back();
    scope().query = &query;
    bindSpec(query);
    scopes_.pop_back();
  }
  --depth_;
}

void Binder::bindSpec(Query& query) {
  bindSources(query.sources);
  for (size_t i = 0; i < scope().sources.size(); ++i) {
    for (size_t k = 0; k < i; ++k) {
      if (!scope().sources[i].alias.empty() && sameText(scope().sources[i].alias, scope().sources[k].alias)) {
        fail(fromSyntax, "The table '" + scope().sources[i].alias + "' stands twice in the FROM clause",
             query.place);
      }
    }
  }
  bindCondition(query.where);
  expandStars(query);
  scope().itemStates.assign(query.items.size(), 0);
  scope().aliases = scope().aggregates = true;
  for (size_t i = 0; i < query.items.size(); ++i) bindItem(query, i);
  scope().aggregates = false;
  for (ExpressionPtr& key : query.groupBy) bind(*key);
  scope().aggregates = true;
  if (query.having) {
    bind(*query.having);
    query.aggregated = true;
  }
  if (!query.groupBy.empty()) query.aggregated = true;
  if (query.transform) bind(*query.transform->value);
  nameOutputs(query);
  bindOrder(query);
  if (query.transform) bindTransform(query);
  if (query.aggregated) checkGrouping(query);
  if (query.distinctRow && !query.distinct && !query.aggregated) findDistinctRows(query);
}

void Binder::bindCondition(ExpressionPtr& condition) {
  if (condition) bind(*condition);
}

void Binder::bindValue(Expression& expression) { bind(expression); }

void Binder::expandStars(Query& query) {
  std::vector<OutputItem> items;
  for (OutputItem& item : query.items) {
    if (item.expression) {
      items.push_back(std::move(item));
      continue;
    }
    bool any = false;
    for (const ScopeSource& source : scope().sources) {
      if (!item.starOf.empty() && !sameText(source.alias, item.starOf)) continue;
      any = true;
      for (const ScopeColumn& column : source.columns) {
        OutputItem each;
        each.place = item.place;
        each.expression = std::make_unique<Expression>(ExpressionKind::Name, item.place);
        if (!source.alias.empty()) each.expression->path.push_back(source.alias);
        each.expression->path.push_back(column.name);
        items.push_back(std::move(each));
      }
    }
    if (!any && !item.starOf.empty())
      fail(unknownTable, "There is no table or query named '" + item.starOf + "'", item.place);
    if (!any) fail(3066, "The query needs at least one output field", item.place);
  }
  query.items = std::move(items);
}

void Binder::bindItem(Query& query, size_t index) {
  int& state = scope().itemStates[index];
  if (state == 2) return;
  if (state == 1)
    fail(3103, "The alias '" + query.items[index].alias + "' refers to itself", query.items[index].place);
  state = 1;
  bind(*query.items[index].expression);
  scope().itemStates[index] = 2;
}

// Output columns bear their alias, the field's name, or Expr1000 on; where two fields have the same name
// each gets its table's in front.
void Binder::nameOutputs(Query& query) {
  const auto isNamed = [](const OutputItem& item) {
    return item.alias.empty() && item.expression->kind == ExpressionKind::Name;
  };
  std::map<std::string, int, TextLess> uses;
  for (const OutputItem& item : query.items) {
    if (!item.alias.empty() && ++uses[item.alias] > 1) {
      fail(duplicateOutput, "The output name '" + item.alias + "' stands twice", item.place);
    }
  }
  for (const OutputItem& item : query.items) {
    if (isNamed(item)) ++uses[item.expression->path.back()];
  }
  std::map<std::string, int, TextLess> taken;
  for (size_t i = 0; i < query.items.size(); ++i) {
    const OutputItem& item = query.items[i];
    const Expression& e = *item.expression;
    std::string name = item.alias;
    if (isNamed(item)) {
      name = e.path.back();
      if (uses[name] > 1) {
        for (const ScopeSource& source : scope().sources) {
          if (source.source->number == e.source && !source.alias.empty()) name = source.alias + "." + name;
        }
      }
    } else if (name.empty()) {
      name = "Expr" + std::to_string(1000 + i);
    }
    const std::string wanted = name;
    for (int copy = 1; taken[name]++ > 0; ++copy) name = wanted + "_" + std::to_string(copy);
    query.columns.push_back({std::move(name), e.type, e.size, e.counter});
  }
}

void Binder::bindOrder(Query& query) {
  for (OrderKey& key : query.orderBy) {
    Expression& e = *key.expression;
    if (e.kind == ExpressionKind::Integer) {
      if (e.number < 1 || e.number > static_cast<double>(query.columns.size())) {
        fail(orderSyntax, "There is no output field of this number", e.place);
      }
      key.output = static_cast<int>(e.number) - 1;
      continue;
    }
    bind(e);
    for (size_t i = 0; i < query.items.size() && key.output < 0; ++i) {
      if (sameExpression(e, *query.items[i].expression)) key.output = static_cast<int>(i);
    }
    if (query.distinct && key.output < 0) {
      fail(orderWithDistinct, "With DISTINCT, rows can be ordered by output fields only", e.place);
    }
  }
}

void Binder::bindUnion(Query& query) {
  for (Query::Part& part : query.parts) bindQuery(*part.query);
  query.columns = query.parts.front().query->columns;
  for (const Query::Part& part : query.parts) {
    const auto& columns = part.query->columns;
    if (columns.size() != query.columns.size()) {
      fail(unionColumns, "The queries of a union must have the same number of fields", part.query->place);
    }
    for (size_t i = 0; i < columns.size(); ++i) {
      OutputColumn& column = query.columns[i];
      column.type = column.type == Type::Unknown       ? columns[i].type
                    : columns[i].type == Type::Unknown ? column.type
                                                       : commonType(column.type, columns[i].type);
      column.size = std::max(column.size, columns[i].size);
      column.counter = false;
    }
  }
  for (OrderKey& key : query.orderBy) {
    const Expression& e = *key.expression;
    for (size_t i = 0; i < query.columns.size(); ++i) {
      const bool byNumber = e.kind == ExpressionKind::Integer && e.number == static_cast<double>(i + 1);
      const bool byName = e.kind == ExpressionKind::Name && sameText(e.path.back(), query.columns[i].name);
      if (byNumber || byName) key.output = static_cast<int>(i);
    }
    if (key.output < 0) fail(orderSyntax, "A union can be ordered by its output fields only", e.place);
  }
}

void Binder::bindTransform(Query& query) {
  Transform& transform = *query.transform;
  scope().aggregates = false;
  bind(*transform.pivot);
  for (ExpressionPtr& heading : transform.headings) bind(*heading);
  scope().aggregates = true;
  transform.found = pivots_(query);
  constexpr size_t maxColumns = 255;
  if (transform.found.size() + query.columns.size() > maxColumns) {
    fail(tooManyFields, "The crosstab has too many columns", transform.pivot->place);
  }
  for (const Transform::Heading& heading : transform.found) {
    std::string name = heading.name;
    for (int copy = 1; std::any_of(query.columns.begin(), query.columns.end(),
                                   [&](const OutputColumn& c) { return sameText(c.name, name); });
         ++copy) {
      name = heading.name + "_" + std::to_string(copy);
    }
    query.columns.push_back({std::move(name), transform.value->type, transform.value->size, false});
  }
}

void Binder::checkGrouping(const Query& query) {
  for (const OutputItem& item : query.items) checkGrouped(*item.expression, query);
  if (query.having) checkGrouped(*query.having, query);
  for (const OrderKey& key : query.orderBy) {
    if (key.output < 0) checkGrouped(*key.expression, query);
  }
  if (query.transform) checkGrouped(*query.transform->value, query);
}

void Binder::checkGrouped(const Expression& e, const Query& query) {
  if (e.aliasTarget) return checkGrouped(*e.aliasTarget, query);
  for (const ExpressionPtr& key : query.groupBy) {
    if (sameExpression(e, *key)) return;
  }
  const bool aggregate = e.kind == ExpressionKind::Call && e.special >= Special::Count;
  if (aggregate) return;
  if (e.kind == ExpressionKind::Name && e.source >= 0) {
    for (const ScopeSource& source : scope().sources) {
      if (source.source->number != e.source) continue;
      fail(notAggregated,
           "The query does not have '" + e.path.back() + "' in an aggregate function or in GROUP BY",
           e.place);
    }
  }
  for (const ExpressionPtr& operand : e.operands) checkGrouped(*operand, query);
}

// Rows of a join count once for each combination of records of the tables that give output.
void Binder::findDistinctRows(Query& query) {
  std::vector<std::string> shown;
  size_t tables = 0;
  for (const ScopeSource& source : scope().sources) {
    if (!source.source->table) return;
    ++tables;
    const int number = source.source->number;
    const auto shows = [number](const OutputItem& item) {
      const auto contains = [number](const auto& self, const Expression& e) -> bool {
        if (e.source == number) return true;
        return std::any_of(e.operands.begin(), e.operands.end(),
                           [&](const ExpressionPtr& o) { return self(self, *o); });
      };
      return contains(contains, *item.expression);
    };
    if (std::any_of(query.items.begin(), query.items.end(), shows)) shown.push_back(rowIdOf(*source.source));
  }
  if (!shown.empty() && shown.size() < tables) query.distinctRowIds = std::move(shown);
}

Target Binder::bindTarget(Expression& target) {
  bind(target);
  for (const ScopeSource& entry : scope().sources) {
    if (entry.source->number == target.source && target.source >= 0)
      return baseOf(*entry.source, target.path.back(), target.place);
  }
  fail(tooFewParameters, "Too few parameters. Expected 1. No field is named '" + target.path.back() + "'",
       target.place);
}

namespace {

// Each row of such a query is one of each of its tables.
bool givesTablesRows(const Query& query) {
  return query.parts.empty() && !query.transform && !query.aggregated && !query.distinct && !query.top;
}

}  // namespace

Target Binder::baseOf(const Source& source, const std::string& column, size_t place) {
  if (source.table) return {source.table, source.table->findColumn(column), rowIdOf(source)};
  const Query& query = *source.query;
  for (size_t i = 0; i < query.items.size() && givesTablesRows(query); ++i) {
    const Expression& item = *query.items[i].expression;
    if (!sameText(query.columns[i].name, column) || item.kind != ExpressionKind::Name) continue;
    for (const Source* inner : leavesOf(query.sources)) {
      if (inner->number == item.source) return below(source, *inner, baseOf(*inner, item.path.back(), place));
    }
  }
  fail(notUpdateable, "The operation needs an updateable query", place);
}

Target Binder::below(const Source& source, const Source& inner, Target base) {
  const std::string name = "jet row " + std::to_string(inner.number);
  source.query->rowNumbers[name] = base.rowId;
  base.rowId = "\"t" + std::to_string(source.number) + "\"." + quotedName(name);
  return base;
}

Target Binder::onlyTableOf(const Source& source, size_t place) {
  if (source.table) return {source.table, nullptr, rowIdOf(source)};
  const std::vector<const Source*> leaves = leavesOf(source.query->sources);
  if (!givesTablesRows(*source.query) || leaves.size() != 1) {
    fail(deleteTarget, "Records can't be deleted from a query's answer", place);
  }
  return below(source, *leaves[0], onlyTableOf(*leaves[0], place));
}

void Binder::checkStorable(const Expression& value, const Column& column) {
  const bool binaryToOther =
      value.type == Type::Binary && column.type != Type::Binary && !isTextType(column.type);
  if (binaryToOther)
    fail(typeMismatch, "Data type mismatch for the field '" + column.name + "'", value.place);
}

}  // namespace jet
