#include <algorithm>

#include "engine/jet_sql/convert.h"
#include "engine/jet_sql/printer.h"

/// Calls of functions and aggregates.

namespace jet {

void Printer::call(const Expression& e) {
  if (e.special >= Special::Count) return aggregate(e);
  if (e.special != Special::None) return specialCall(e);
  const FunctionRow& row = *e.function;
  std::string name = "jet_";
  for (const char* c = row.name; *c; ++c) name += static_cast<char>(*c | 0x20);
  const bool scale = row.rule == ResultRule::SameAsFirst && e.type == Type::Currency;
  if (scale) raw("jet_op_as(-1,");
  raw(name + "(");
  place(e);
  size_t at = 0;
  for (const ExpressionPtr& operand : e.operands) {
    if (row.parameters[at] == '|') ++at;
    raw(",");
    switch (row.parameters[at++]) {
      case 't':
        asText(*operand);
        break;
      case 'x':
        raw(operand->type == Type::Date ? "'D'," : "'V',");
        real(*operand);
        break;
      default:
        real(*operand);
        break;
    }
  }
  raw(")");
  if (scale) raw("," + std::to_string(static_cast<int>(Type::Currency)) + ",0)");
}

void Printer::specialCall(const Expression& e) {
  const auto& o = e.operands;
  switch (e.special) {
    case Special::IIf:
      raw("(CASE WHEN ");
      condition(*o[0]);
      raw(" THEN ");
      as(*o[1], e.type);
      if (o.size() > 2) {
        raw(" ELSE ");
        as(*o[2], e.type);
      }
      return raw(" END)");
    case Special::Nz:
      raw("coalesce(");
      as(*o[0], e.type);
      raw(",");
      if (o.size() > 1) {
        as(*o[1], e.type);
      } else {
        raw(isNumberType(e.type) || e.type == Type::Date ? "0" : "''");
      }
      return raw(")");
    case Special::Choose:
      raw("(CASE CAST(");
      real(*o[0]);
      raw(" AS INTEGER)");
      for (size_t i = 1; i < o.size(); ++i) {
        raw(" WHEN " + std::to_string(static_cast<int64_t>(i)) + " THEN ");
        as(*o[i], e.type);
      }
      return raw(" END)");
    default:
      raw("(CASE");
      for (size_t i = 0; i + 1 < o.size(); i += 2) {
        raw(" WHEN ");
        condition(*o[i]);
        raw(" THEN ");
        as(*o[i + 1], e.type);
      }
      return raw(" END)");
  }
}

void Printer::aggregate(const Expression& e) {
  const Expression& argument = *e.operands[0];
  const auto plain = [&](const char* name) {
    raw(std::string(name) + "(");
    if (argument.kind == ExpressionKind::Star) {
      raw("*");
    } else if (e.special == Special::Min || e.special == Special::Max) {
      raw("(");
      value(argument);
      raw(")");
      collate(argument.type);
    } else if (e.special >= Special::StDev) {
      real(argument);
    } else {
      value(argument);
    }
    if (e.special == Special::First || e.special == Special::Last) raw(rowOrder_);
    raw(")" + filter_);
  };
  switch (e.special) {
    case Special::Count:
      return plain("count");
    case Special::Min:
      return plain("min");
    case Special::Max:
      return plain("max");
    case Special::First:
      return plain("jet_first");
    case Special::Last:
      return plain("jet_last");
    case Special::StDev:
      return plain("jet_stdev");
    case Special::StDevP:
      return plain("jet_stdevp");
    case Special::Var:
      return plain("jet_var");
    case Special::VarP:
      return plain("jet_varp");
    case Special::Sum:
      raw(e.type == Type::Currency ? "(" : "(1.0*");
      plain("sum");
      return raw(")");
    default:
      raw(e.type == Type::Currency ? "CAST(round(" : "(");
      plain("avg");
      return raw(e.type == Type::Currency ? ") AS INTEGER)" : ")");
  }
}

}  // namespace jet
