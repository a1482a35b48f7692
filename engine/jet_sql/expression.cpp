#include "engine/jet_sql/expression.h"

#include "engine/jet_sql/query.h"
#include "engine/text/collation.h"

namespace jet {

Expression::Expression(ExpressionKind kind, size_t place) : kind(kind), place(place) {}
Expression::~Expression() = default;

bool sameExpression(const Expression& left, const Expression& right) {
  const Expression& a = left.aliasTarget ? *left.aliasTarget : left;
  const Expression& b = right.aliasTarget ? *right.aliasTarget : right;
  if (a.aliasTarget || b.aliasTarget) return sameExpression(a, b);
  if (a.kind != b.kind || a.operands.size() != b.operands.size() || a.query || b.query) return false;
  if (a.kind == ExpressionKind::Name) return a.sql == b.sql;
  if (a.number != b.number || a.negated != b.negated) return false;
  if (a.kind == ExpressionKind::Call ? !sameText(a.text, b.text) : a.text != b.text) return false;
  for (size_t i = 0; i < a.operands.size(); ++i) {
    if (!sameExpression(*a.operands[i], *b.operands[i])) return false;
  }
  return true;
}

}  // namespace jet
