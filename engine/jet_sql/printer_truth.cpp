#include <algorithm>

#include "engine/jet_sql/convert.h"
#include "engine/jet_sql/printer.h"
#include "engine/text/collation.h"

/// Conditions: comparisons with the order of texts and of scaled amounts, logic on bits, subqueries.

namespace jet {

Printer::Form Printer::comparisonForm(const std::vector<const Expression*>& operands) const {
  const auto isCurrency = [](const Expression* e) { return e->type == Type::Currency; };
  if (std::none_of(operands.begin(), operands.end(), isCurrency)) return Form::Plain;
  const bool exact =
      std::all_of(operands.begin(), operands.end(), [](const Expression* e) { return isScaledExactly(*e); });
  return exact ? Form::Scaled : Form::Real;
}

void Printer::operand(const Expression& e, Form form) {
  switch (form) {
    case Form::Plain:
      return value(e);
    case Form::Scaled:
      return scaled(e);
    case Form::Real:
      return real(e);
  }
}

void Printer::collate(Type type) {
  if (isTextType(type) || type == Type::Unknown) raw(std::string(" COLLATE ") + languageOrder);
}

// The left side of a comparison decides about the order of texts.
void Printer::compared(const Expression& left, const std::vector<const Expression*>& all, Form form) {
  raw("(");
  operand(left, form);
  raw(")");
  const bool numbers = std::any_of(all.begin(), all.end(), [](const Expression* e) {
    return isNumberType(e->type) || e->type == Type::Date;
  });
  if (!numbers) collate(left.kind == ExpressionKind::Null ? Type::Unknown : left.type);
}

void Printer::comparison(const Expression& e) {
  const auto& o = e.operands;
  std::vector<const Expression*> all;
  for (const ExpressionPtr& each : o) all.push_back(each.get());
  const Form form = comparisonForm(all);
  compared(*o[0], all, form);
  if (e.kind == ExpressionKind::Between) {
    raw(e.negated ? " NOT BETWEEN " : " BETWEEN ");
    return bounds(e, form);
  }
  raw(e.kind == ExpressionKind::Compare ? e.text : e.negated ? " NOT IN " : " IN ");
  raw("(");
  for (size_t i = 1; i < o.size(); ++i) {
    if (i > 1) raw(",");
    operand(*o[i], form);
  }
  raw(")");
}

void Printer::like(const Expression& e) {
  if (e.negated) raw("NOT ");
  raw("jet_op_like(");
  place(e);
  raw(",");
  asText(*e.operands[0]);
  raw(",");
  asText(*e.operands[1]);
  raw(e.text == "ALIKE" ? ",1)<>0" : ",0)<>0");
}

void Printer::truth(const Expression& e) {
  raw("(");
  switch (e.kind) {
    case ExpressionKind::Compare:
    case ExpressionKind::Between:
    case ExpressionKind::InList:
      comparison(e);
      break;
    case ExpressionKind::IsNull:
    case ExpressionKind::Call:  // IsNull()
      raw("(");
      value(*e.operands[0]);
      raw(e.negated ? ") IS NOT NULL" : ") IS NULL");
      break;
    case ExpressionKind::Like:
      like(e);
      break;
    case ExpressionKind::Not:
      raw("NOT ");
      condition(*e.operands[0]);
      break;
    case ExpressionKind::Logic:
      logic(e);
      break;
    case ExpressionKind::Exists:
      raw("EXISTS (");
      query(*e.query, RowOrder::Any);
      raw(")");
      break;
    case ExpressionKind::InQuery:
      inQuery(e);
      break;
    case ExpressionKind::Quantified:
      quantified(e);
      break;
    default:
      break;
  }
  raw(")");
}

// The lower and the upper bound, in whatever order the statement has them.
void Printer::bounds(const Expression& e, Form form) {
  const Expression &a = *e.operands[1], &b = *e.operands[2];
  const auto isLiteral = [](const Expression& each) {
    return isNumberLiteral(each) || each.kind == ExpressionKind::Date || each.kind == ExpressionKind::Text;
  };
  if (isLiteral(a) && isLiteral(b) && isTextType(a.type) == isTextType(b.type)) {
    const bool swapped = isTextType(a.type) ? compareLanguage(a.text, b.text) > 0 : a.number > b.number;
    operand(swapped ? b : a, form);
    raw(" AND ");
    return operand(swapped ? a : b, form);
  }
  for (const char* least : {"min((", ") AND max(("}) {
    raw(least);
    operand(a, form);
    raw(")");
    collate(a.kind == ExpressionKind::Null ? b.type : a.type);
    raw(",");
    operand(b, form);
  }
  raw(")");
}

// More than one row is an error, not the first one.
void Printer::subqueryValue(const Expression& e) {
  const Query& inner = *e.query;
  const bool oneRow = inner.parts.empty() &&
                      ((inner.aggregated && inner.groupBy.empty()) ||
                       (inner.top && inner.top->count == 1 && !inner.top->percent && inner.orderBy.empty()));
  raw("(");
  if (!oneRow) {
    raw("SELECT jet_only(");
    place(e);
    raw(",\"each\"." + quotedName(inner.columns[0].name) + ") FROM (");
  }
  query(inner, RowOrder::Any);
  raw(oneRow ? ")" : ") AS \"each\")");
}

void Printer::logic(const Expression& e) {
  if (e.text == "AND" || e.text == "OR") return logicRange(e, 0, e.operands.size());
  raw(e.text == "XOR" ? "jet_op_xor(" : e.text == "EQV" ? "jet_op_eqv(" : "jet_op_imp(");
  place(e);
  for (const ExpressionPtr& o : e.operands) {
    raw(",");
    real(*o);
  }
  raw(")<>0");  // these give Jet's -1 for true
}

// As a balanced tree: SQLite bounds the depth of a row of conditions.
void Printer::logicRange(const Expression& e, size_t from, size_t to) {
  if (to - from == 1) return condition(*e.operands[from]);
  const size_t middle = from + (to - from) / 2;
  raw("(");
  logicRange(e, from, middle);
  raw(e.text == "AND" ? " AND " : " OR ");
  logicRange(e, middle, to);
  raw(")");
}

void Printer::bits(const Expression& e) {
  if (e.kind == ExpressionKind::Not) {
    raw("jet_op_not(");
    place(e);
    raw(",");
    real(*e.operands[0]);
    return raw(")");
  }
  std::string name = "jet_op_";
  for (const char c : e.text) name += static_cast<char>(c | 0x20);
  for (size_t i = 1; i < e.operands.size(); ++i) {
    raw(name + "(");
    place(e);
    raw(",");
  }
  real(*e.operands[0]);
  for (size_t i = 1; i < e.operands.size(); ++i) {
    raw(",");
    real(*e.operands[i]);
    raw(")");
  }
}

void Printer::inQuery(const Expression& e) {
  const Expression& left = *e.operands[0];
  const OutputColumn& column = e.query->columns[0];
  const bool mixed = (left.type == Type::Currency) != (column.type == Type::Currency);
  raw("(");
  mixed ? real(left) : value(left);
  raw(")");
  collate(left.type);
  raw(e.negated ? " NOT IN (" : " IN (");
  if (mixed)
    raw("SELECT " + quotedName(column.name) +
        (column.type == Type::Currency ? "/10000.0 FROM (" : " FROM ("));
  query(*e.query, RowOrder::Any);
  raw(mixed ? "))" : ")");
}

// ANY is true when one value is; ALL is untrue when one isn't.
void Printer::quantified(const Expression& e) {
  const bool all = e.path[0] == "ALL";
  const Expression& left = *e.operands[0];
  const OutputColumn& column = e.query->columns[0];
  const bool mixed = (left.type == Type::Currency) != (column.type == Type::Currency);
  raw(all ? "NOT EXISTS (SELECT 1 FROM (" : "EXISTS (SELECT 1 FROM (");
  query(*e.query, RowOrder::Any);
  raw(all ? ") AS \"each\" WHERE NOT coalesce((" : ") AS \"each\" WHERE ((");
  mixed ? real(left) : value(left);
  raw(")");
  collate(left.type);
  raw(e.text + "\"each\"." + quotedName(column.name));
  if (mixed && column.type == Type::Currency) raw("/10000.0");
  raw(all ? ",0))" : "))");
}

}  // namespace jet
