#include <algorithm>
#include <iterator>
#include <map>

#include "engine/jet_sql/binder.h"
#include "engine/jet_sql/convert.h"
#include "engine/jet_sql/functions.h"
#include "engine/text/collation.h"

namespace jet {
namespace {

struct SpecialRow {
  const char* name;
  Special special;
  size_t least, most;
};

constexpr size_t anyNumber = 60;

constexpr SpecialRow specials[] = {
    {"IIF", Special::IIf, 2, 3},
    {"NZ", Special::Nz, 1, 2},
    {"ISNULL", Special::IsNull, 1, 1},
    {"CHOOSE", Special::Choose, 2, anyNumber},
    {"SWITCH", Special::Switch, 2, anyNumber},
    {"COUNT", Special::Count, 1, 1},
    {"SUM", Special::Sum, 1, 1},
    {"AVG", Special::Avg, 1, 1},
    {"MIN", Special::Min, 1, 1},
    {"MAX", Special::Max, 1, 1},
    {"FIRST", Special::First, 1, 1},
    {"LAST", Special::Last, 1, 1},
    {"STDEV", Special::StDev, 1, 1},
    {"STDEVP", Special::StDevP, 1, 1},
    {"VAR", Special::Var, 1, 1},
    {"VARP", Special::VarP, 1, 1},
};

const SpecialRow* findSpecial(std::string_view name) {
  for (const SpecialRow& row : specials) {
    if (sameText(row.name, name)) return &row;
  }
  return nullptr;
}

enum class Family { Any, Text, Number };

Family familyOf(const Expression& e) {
  if (isTextType(e.type) || e.type == Type::Guid) return Family::Text;
  if (isNumberType(e.type) || e.type == Type::Date) return Family::Number;
  return Family::Any;
}

Type arithmeticType(char operation, Type a, Type b) {
  if (operation == 'm' || operation == '\\') return Type::Long;
  if (operation == '/' || operation == '^') return Type::Double;
  if (a == Type::Unknown || b == Type::Unknown) return Type::Unknown;
  if (isTextType(a) && isTextType(b)) return operation == '+' ? Type::Text : Type::Double;
  if (a == Type::Date && b == Type::Date) return operation == '+' ? Type::Date : Type::Double;
  if (a == Type::Date || b == Type::Date) return operation == '*' ? Type::Double : Type::Date;
  if (isWholeType(a) && isWholeType(b)) return Type::Long;
  // A currency amount stays exact through sums with any number, through products with whole numbers.
  const bool currency = a == Type::Currency || b == Type::Currency;
  const bool both = a == Type::Currency && b == Type::Currency;
  const bool whole = isWholeType(a) || isWholeType(b);
  if (currency && isNumberType(a) && isNumberType(b) && (operation != '*' || both || whole))
    return Type::Currency;
  if (a == Type::Single && b == Type::Single) return Type::Single;
  return Type::Double;
}

/// Of kinds whose values are all of one type; `Unknown` of others.
Type typeOfKind(ExpressionKind kind) {
  switch (kind) {
    case ExpressionKind::Boolean:
    case ExpressionKind::Compare:
    case ExpressionKind::Between:
    case ExpressionKind::InList:
    case ExpressionKind::IsNull:
    case ExpressionKind::Like:
      return Type::YesNo;
    case ExpressionKind::Integer:
      return Type::Long;
    case ExpressionKind::Real:
      return Type::Double;
    case ExpressionKind::Date:
      return Type::Date;
    case ExpressionKind::Text:
    case ExpressionKind::Concat:
      return Type::Text;
    case ExpressionKind::Guid:
      return Type::Guid;
    default:
      return Type::Unknown;
  }
}

Type negatedType(Type type) {
  if (type == Type::YesNo || type == Type::Byte) return Type::Integer;
  return isTextType(type) ? Type::Double : type;
}

// Numbers are combined bit by bit; truth values are numbers whose bits are all alike.
Type logicType(const std::vector<ExpressionPtr>& operands) {
  const bool bits = std::any_of(operands.begin(), operands.end(), [](const ExpressionPtr& each) {
    return each->type != Type::YesNo && each->type != Type::Unknown;
  });
  return bits ? Type::Long : Type::YesNo;
}

}  // namespace

void Binder::bind(Expression& e) {
  for (ExpressionPtr& operand : e.operands) {
    if (e.kind != ExpressionKind::Call) bind(*operand);
  }
  if (const Type type = typeOfKind(e.kind); type != Type::Unknown) e.type = type;
  switch (e.kind) {
    case ExpressionKind::Star:
      fail(expressionSyntax, "Only Count takes *", e.place);
    case ExpressionKind::Name:
      return bindName(e);
    case ExpressionKind::Plus:
      e.type = e.operands[0]->type;
      return;
    case ExpressionKind::Negate:
      e.type = negatedType(e.operands[0]->type);
      return;
    case ExpressionKind::Arithmetic:
      return bindArithmetic(e);
    case ExpressionKind::Compare:
    case ExpressionKind::Between:
    case ExpressionKind::InList:
      for (size_t i = 1; i < e.operands.size(); ++i) checkComparable(*e.operands[0], *e.operands[i], e.place);
      return;
    case ExpressionKind::Not:
    case ExpressionKind::Logic:
      e.type = logicType(e.operands);
      return;
    case ExpressionKind::Call:
      return bindCall(e);
    case ExpressionKind::InQuery:
    case ExpressionKind::Subquery:
    case ExpressionKind::Exists:
    case ExpressionKind::Quantified:
      return bindSubquery(e);
    default:
      return;
  }
}

void Binder::bindArithmetic(Expression& e) {
  Type type = e.operands[0]->kind == ExpressionKind::Null ? e.operands[1]->type : e.operands[0]->type;
  for (size_t i = 1; i < e.operands.size(); ++i) {
    const Expression& operand = *e.operands[i];
    type = arithmeticType(e.text[i - 1], type, operand.kind == ExpressionKind::Null ? type : operand.type);
  }
  e.type = type;
  for (const ExpressionPtr& operand : e.operands) {
    if (operand->type == Type::Binary) fail(typeMismatch, "Data type mismatch: binary data", operand->place);
  }
}

// Text and numbers don't compare. A parameter takes the other side's type instead.
void Binder::checkComparable(Expression& a, Expression& b, size_t place) {
  const Family left = familyOf(a), right = familyOf(b);
  if (left == right || left == Family::Any || right == Family::Any) return;
  Expression* parameter = a.parameter ? &a : b.parameter ? &b : nullptr;
  if (!parameter) fail(typeMismatch, "Data type mismatch in criteria expression", place);
  const Type type = (parameter == &a ? b : a).type;
  parameter->sql = conversionCall(std::to_string(place), parameter->sql, readingOf(parameter->type), type);
  parameter->type = type;
}

// ---- Names

void Binder::bindName(Expression& e) {
  if (e.path.size() == 1 && sameText(e.path[0], "@@IDENTITY")) {
    e.kind = ExpressionKind::Integer;
    e.type = Type::Long;
    e.number = static_cast<double>(catalog_.lastCounter);
    return;
  }
  for (auto level = scopes_.rbegin(); level != scopes_.rend(); ++level) {
    if (bindColumn(e, *level)) return;
  }
  if (e.path.size() == 1) {
    if (bindAlias(e)) return;
    for (const char* word : {"Yes", "On", "No", "Off"}) {
      if (!sameText(word, e.path[0])) continue;
      e.number = sameText(word, "Yes") || sameText(word, "On") ? -1 : 0;
      e.kind = ExpressionKind::Boolean;
      e.type = Type::YesNo;
      return;
    }
  }
  std::string name = e.path[0];
  for (size_t i = 1; i < e.path.size(); ++i) name += "." + e.path[i];
  bindParameter(e, name);
}

bool Binder::bindColumn(Expression& e, Scope& level) {
  const ScopeSource* found = nullptr;
  size_t index = 0;
  const auto look = [&](const ScopeSource& source, std::string_view name) {
    for (size_t i = 0; i < source.columns.size(); ++i) {
      if (!sameText(source.columns[i].name, name)) continue;
      if (found && (found != &source || index != i)) {
        fail(ambiguousName, "The field '" + std::string(name) + "' could be of more than one table", e.place);
      }
      found = &source;
      index = i;
    }
  };
  if (e.path.size() == 1) {
    for (const ScopeSource& source : level.sources) look(source, e.path[0]);
  } else {
    // The first name is a table's; a query's output may also have a dot in its own name.
    std::string joined = e.path[0] + "." + e.path[1], rest = e.path[1];
    for (size_t i = 2; i < e.path.size(); ++i) joined += "." + e.path[i], rest += "." + e.path[i];
    for (const ScopeSource& source : level.sources) {
      if (sameText(source.alias, e.path[0])) look(source, rest);
    }
    for (const ScopeSource& source : level.sources) {
      if (!found) look(source, joined);
    }
  }
  if (!found) return false;
  const ScopeColumn& column = found->columns[index];
  e.type = column.type;
  e.size = column.size;
  e.counter = column.counter;
  e.source = found->source->number;
  e.path.back() = column.name;
  e.sql = "\"t" + std::to_string(e.source) + "\"." + quotedName(found->sqlNames[index]);
  return true;
}

bool Binder::bindAlias(Expression& e) {
  if (!scope().aliases || !scope().query) return false;
  Query& query = *scope().query;
  for (size_t i = 0; i < query.items.size(); ++i) {
    if (!sameText(query.items[i].alias, e.path[0])) continue;
    bindItem(query, i);
    e.aliasTarget = query.items[i].expression.get();
    e.type = e.aliasTarget->type;
    e.size = e.aliasTarget->size;
    return true;
  }
  return false;
}

// ---- Calls

void Binder::bindCall(Expression& e) {
  if (const SpecialRow* row = findSpecial(e.text)) {
    e.special = row->special;
    const bool pairs = row->special == Special::Switch && e.operands.size() % 2 == 1;
    if (e.operands.size() < row->least || e.operands.size() > row->most || pairs) {
      fail(expressionSyntax, "Wrong number of arguments for the function '" + e.text + "'", e.place);
    }
    if (row->special >= Special::Count) return bindAggregate(e);
    for (ExpressionPtr& operand : e.operands) bind(*operand);
    return bindSpecialCall(e);
  }
  e.function = findFunction(e.text);
  if (!e.function) fail(unknownFunction, "Undefined function '" + e.text + "' in expression", e.place);
  const std::string_view parameters = e.function->parameters;
  const size_t bar = std::min(parameters.find('|'), parameters.size());
  const size_t most = parameters.size() - (bar < parameters.size() ? 1 : 0);
  const bool fromStart = sameText(e.function->name, "INSTR");
  if (e.operands.size() < bar || e.operands.size() > most) {
    fail(expressionSyntax, "Wrong number of arguments for the function '" + e.text + "'", e.place);
  }
  for (ExpressionPtr& operand : e.operands) bind(*operand);
  e.type = e.function->result;
  if (e.function->rule == ResultRule::SameAsFirst) {
    const Type first = e.operands[0]->type;
    e.type = first == Type::YesNo || first == Type::Byte ? Type::Integer
             : isTextType(first)                         ? Type::Double
                                                         : first;
  }
  if (fromStart && e.operands.size() > 2 && isTextType(e.operands[0]->type)) {
    fail(typeMismatch, "Data type mismatch: the start is a number", e.operands[0]->place);
  }
}

void Binder::bindAggregate(Expression& e) {
  if (!scope().aggregates || scope().inAggregate) {
    fail(3096, "An aggregate function can't stand here", e.place);
  }
  scope().query->aggregated = true;
  Expression& argument = *e.operands[0];
  if (argument.kind == ExpressionKind::Star) {
    if (e.special != Special::Count) fail(expressionSyntax, "Only Count takes *", argument.place);
  } else {
    scope().inAggregate = true;
    bind(argument);
    scope().inAggregate = false;
  }
  const Type type = argument.type;
  const bool numeric = e.special != Special::Count && e.special != Special::Min &&
                       e.special != Special::Max && e.special != Special::First && e.special != Special::Last;
  if (numeric && familyOf(argument) == Family::Text) {
    fail(typeMismatch, "Data type mismatch: '" + e.text + "' takes numbers", argument.place);
  }
  switch (e.special) {
    case Special::Count:
      e.type = Type::Long;
      break;
    case Special::Sum:
    case Special::Avg:
      e.type = type == Type::Currency ? Type::Currency : Type::Double;
      break;
    case Special::Min:
    case Special::Max:
    case Special::First:
    case Special::Last:
      e.type = type;
      e.size = argument.size;
      break;
    default:
      e.type = Type::Double;
      break;
  }
}

void Binder::bindSpecialCall(Expression& e) {
  const auto& operands = e.operands;
  switch (e.special) {
    case Special::IIf:
      e.type = operands.size() > 2 ? commonType(*operands[1], *operands[2]) : operands[1]->type;
      break;
    case Special::Nz:
      e.type = operands.size() > 1 ? commonType(*operands[0], *operands[1]) : operands[0]->type;
      break;
    case Special::IsNull:
      e.type = Type::YesNo;
      break;
    default: {
      // Choose(index, a, b, …) and Switch(condition, a, condition, b, …)
      const size_t step = e.special == Special::Choose ? 1 : 2;
      const Expression* first = operands[1].get();
      e.type = first->type;
      for (size_t i = 1 + step; i < operands.size(); i += step) {
        if (first->kind == ExpressionKind::Null)
          first = operands[i].get(), e.type = first->type;
        else if (operands[i]->kind != ExpressionKind::Null)
          e.type = commonType(e.type, operands[i]->type);
      }
      break;
    }
  }
  for (const ExpressionPtr& operand : operands) e.size = std::max(e.size, operand->size);
}

void Binder::bindSubquery(Expression& e) {
  bindQuery(*e.query);
  const bool oneColumn = e.kind != ExpressionKind::Exists;
  if (oneColumn && e.query->columns.size() != 1) {
    fail(subqueryColumns, "A subquery may give one field only where it isn't the argument of EXISTS",
         e.query->place);
  }
  e.type = e.kind == ExpressionKind::Subquery ? e.query->columns[0].type : Type::YesNo;
  if (e.kind == ExpressionKind::InQuery || e.kind == ExpressionKind::Quantified) {
    Expression stand(ExpressionKind::Subquery, e.query->place);
    stand.type = e.query->columns[0].type;
    checkComparable(*e.operands[0], stand, e.place);
  }
}

}  // namespace jet
