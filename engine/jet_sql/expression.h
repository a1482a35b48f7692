#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/jet_sql/catalog.h"

namespace jet {

struct Query;
struct FunctionRow;

/// Calls that are no plain function of their arguments' values.
enum class Special {
  None,
  IIf,
  Nz,
  IsNull,
  Choose,
  Switch,
  Count,
  Sum,
  Avg,
  Min,
  Max,
  First,
  Last,
  StDev,
  StDevP,
  Var,
  VarP
};

enum class ExpressionKind {
  Null,
  Boolean,     ///< `number` -1 or 0
  Integer,     ///< `number`
  Real,        ///< `number`
  Date,        ///< `number`, a date serial
  Text,        ///< `text`
  Guid,        ///< `text`
  Name,        ///< `path`
  Star,        ///< the argument of Count(*)
  Negate,      ///< 1 operand
  Plus,        ///< 1 operand
  Not,         ///< 1 operand
  Arithmetic,  ///< `text` has the operators, one character each, between the operands from the left
  Concat,      ///< `&`, 2 or more operands
  Compare,     ///< `text` is the operator; 2 operands
  Logic,       ///< `text` is AND, OR (2 or more operands), XOR, EQV, IMP (2 operands)
  Between,     ///< 3 operands
  InList,      ///< the value, then the list
  InQuery,     ///< the value; `query`
  IsNull,      ///< 1 operand
  Like,        ///< `text` is LIKE or ALIKE; 2 operands
  Call,        ///< `text` is the function's name; operands are its arguments
  Subquery,    ///< `query`
  Exists,      ///< `query`
  Quantified,  ///< operand `text` ANY/ALL (`query`); `path[0]` is the quantifier
};

struct Expression;
using ExpressionPtr = std::unique_ptr<Expression>;

/// How deep expressions and queries may nest. SQLite's parser gives up earlier on what costs it a function
/// or a subquery for each level; this bounds our own recursion.
constexpr int maxNesting = 120;

struct Expression {
  ExpressionKind kind;
  size_t place = 0;
  double number = 0;
  std::string text;
  std::vector<std::string> path;
  std::vector<ExpressionPtr> operands;
  std::unique_ptr<Query> query;
  bool negated = false;  ///< Not Between, Not In, Not Like, Is Not Null

  // What name resolution finds out.
  Type type = Type::Unknown;
  int size = 0;
  Special special = Special::None;  ///< of a Call, else `function`
  const FunctionRow* function = nullptr;
  bool parameter = false;                   ///< a name that no source knows
  bool counter = false;                     ///< a column that numbers itself
  std::string sql;                          ///< a column or parameter as SQLite is to read it
  int source = -1;                          ///< number of the source that a column belongs to
  const Expression* aliasTarget = nullptr;  ///< a name that stands for another output expression

  Expression(ExpressionKind kind, size_t place);
  ~Expression();
};

/// True when both say the same, once their names are resolved.
bool sameExpression(const Expression& a, const Expression& b);

}  // namespace jet
