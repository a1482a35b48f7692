#include "engine/jet_sql/printer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "engine/jet_sql/convert.h"

namespace jet {
namespace {

constexpr size_t maxText =
    16 << 20;  // an alias used twice in each of many aliases doubles the text each time
constexpr size_t maxArguments = 100;  // below SQLite's 127

std::string realLiteral(double value) {
  std::array<char, 40> buffer;
  std::string text(buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr);
  if (text.find_first_of(".e") == std::string::npos) text += ".0";
  return text;
}

bool isNumberLiteral(const Expression& e) {
  return e.kind == ExpressionKind::Integer || e.kind == ExpressionKind::Real ||
         e.kind == ExpressionKind::Boolean;
}

bool isScaledExactly(const Expression& e) {
  if (e.type == Type::Currency || e.kind == ExpressionKind::Null || isWholeType(e.type)) return true;
  if (!isNumberLiteral(e)) return false;
  const double scaled = e.number * 10000;
  return std::fabs(scaled) < 1e15 && std::fabs(scaled - std::nearbyint(scaled)) < 1e-6;
}

Reading readingOf(Type type) {
  return type == Type::Date       ? Reading::Date
         : type == Type::Currency ? Reading::Scaled
         : type == Type::Single   ? Reading::Single
                                  : Reading::Plain;
}

std::string number(int64_t value) { return std::to_string(value); }

}  // namespace

std::string quotedText(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) {
    if (c == '\'') quoted += c;
    quoted += c;
  }
  return quoted + "'";
}

void Printer::raw(std::string_view text) {
  if (out_.size() + text.size() > maxText) {
    throw Failure{{tooComplex, "The statement is too complex.", std::nullopt}};
  }
  out_ += text;
}

void Printer::place(const Expression& e) { raw(foreign_ ? "-1" : number(static_cast<int64_t>(e.place))); }

void Printer::literal(const Expression& e) {
  switch (e.kind) {
    case ExpressionKind::Integer:
    case ExpressionKind::Boolean:
      return raw(number(static_cast<int64_t>(e.number)));
    case ExpressionKind::Real:
    case ExpressionKind::Date:
      return raw(realLiteral(e.number));
    case ExpressionKind::Text:
    case ExpressionKind::Guid:
      return raw(quotedText(e.text));
    default:
      return raw("NULL");
  }
}

void Printer::value(const Expression& e) {
  if (isTruth(e)) {
    raw("(-(");
    truth(e);
    return raw("))");
  }
  switch (e.kind) {
    case ExpressionKind::Name:
      if (!e.aliasTarget) return raw(e.sql);
      raw("(");
      if (++deep_ > maxNesting) throw Failure{{tooComplex, "The statement is too complex.", std::nullopt}};
      value(*e.aliasTarget);
      --deep_;
      return raw(")");
    case ExpressionKind::Plus:
      return value(*e.operands[0]);
    case ExpressionKind::Negate:
      raw("jet_op_negate(");
      place(e);
      raw(",");
      value(*e.operands[0]);
      return raw(")");
    case ExpressionKind::Arithmetic:
      return arithmetic(e);
    case ExpressionKind::Concat:
      return concat(e);
    case ExpressionKind::Not:
    case ExpressionKind::Logic:
      return bits(e);
    case ExpressionKind::Call:
      return call(e);
    case ExpressionKind::Subquery:
      raw("(");
      query(*e.query);
      return raw(")");
    default:
      return literal(e);
  }
}

void Printer::condition(const Expression& e) {
  if (isTruth(e)) return truth(e);
  if (e.kind == ExpressionKind::Name && e.aliasTarget) return condition(*e.aliasTarget);
  raw("(");
  real(e);
  raw(")");
}

void Printer::real(const Expression& e) {
  if (e.type != Type::Currency) return value(e);
  raw("(");
  value(e);
  raw("/10000.0)");
}

void Printer::scaled(const Expression& e) {
  if (e.type == Type::Currency || e.kind == ExpressionKind::Null) return value(e);
  if (isNumberLiteral(e) && isScaledExactly(e)) return raw(number(std::llround(e.number * 10000)));
  raw("jet_op_as(");
  place(e);
  raw(",");
  value(e);
  raw("," + number(static_cast<int>(Type::Currency)) + "," + number(static_cast<int>(readingOf(e.type))) +
      ")");
}

void Printer::asText(const Expression& e) {
  const Reading reading = readingOf(e.type);
  if (reading == Reading::Plain) return value(e);
  raw("jet_op_text(-1,");
  value(e);
  raw("," + number(static_cast<int>(reading)) + ")");
}

// Into the storage of a type that stands for several.
void Printer::as(const Expression& e, Type type) {
  if (type == e.type || e.kind == ExpressionKind::Null) return value(e);
  if (type == Type::Currency) return scaled(e);
  if (isTextType(type) && !isTextType(e.type)) {
    raw("jet_op_text(-1,");
    value(e);
    return raw("," + number(static_cast<int>(readingOf(e.type))) + ")");
  }
  real(e);
}

// ---- Comparisons

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
  if (isTextType(type) || type == Type::Unknown) raw(" COLLATE JET");
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

void Printer::truth(const Expression& e) {
  const auto& o = e.operands;
  std::vector<const Expression*> all;
  for (const ExpressionPtr& each : o) all.push_back(each.get());
  raw("(");
  switch (e.kind) {
    case ExpressionKind::Compare: {
      const Form form = comparisonForm(all);
      compared(*o[0], all, form);
      raw(e.text);
      raw("(");
      operand(*o[1], form);
      raw(")");
      break;
    }
    case ExpressionKind::Between: {
      const Form form = comparisonForm(all);
      compared(*o[0], all, form);
      raw(e.negated ? " NOT BETWEEN " : " BETWEEN ");
      operand(*o[1], form);
      raw(" AND ");
      operand(*o[2], form);
      break;
    }
    case ExpressionKind::InList: {
      const Form form = comparisonForm(all);
      compared(*o[0], all, form);
      raw(e.negated ? " NOT IN (" : " IN (");
      for (size_t i = 1; i < o.size(); ++i) {
        if (i > 1) raw(",");
        operand(*o[i], form);
      }
      raw(")");
      break;
    }
    case ExpressionKind::IsNull:
    case ExpressionKind::Call:  // IsNull()
      raw("(");
      value(*o[0]);
      raw(e.negated ? ") IS NOT NULL" : ") IS NULL");
      break;
    case ExpressionKind::Like:
      if (e.negated) raw("NOT ");
      raw("jet_op_like(");
      place(e);
      raw(",");
      asText(*o[0]);
      raw(",");
      asText(*o[1]);
      raw(e.text == "ALIKE" ? ",1)<>0" : ",0)<>0");
      break;
    case ExpressionKind::Not:
      raw("NOT ");
      condition(*o[0]);
      break;
    case ExpressionKind::Logic:
      logic(e);
      break;
    case ExpressionKind::Exists:
      raw("EXISTS (");
      query(*e.query);
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
  query(*e.query);
  raw(mixed ? "))" : ")");
}

// ANY is true when one value is; ALL is untrue when one isn't.
void Printer::quantified(const Expression& e) {
  const bool all = e.path[0] == "ALL";
  const Expression& left = *e.operands[0];
  const OutputColumn& column = e.query->columns[0];
  const bool mixed = (left.type == Type::Currency) != (column.type == Type::Currency);
  raw(all ? "NOT EXISTS (SELECT 1 FROM (" : "EXISTS (SELECT 1 FROM (");
  query(*e.query);
  raw(all ? ") AS \"each\" WHERE NOT coalesce((" : ") AS \"each\" WHERE ((");
  mixed ? real(left) : value(left);
  raw(")");
  collate(left.type);
  raw(e.text + "\"each\"." + quotedName(column.name));
  if (mixed && column.type == Type::Currency) raw("/10000.0");
  raw(all ? ",0))" : "))");
}

// ---- Arithmetic and text

void Printer::arithmetic(const Expression& e) {
  const bool currency = std::any_of(e.operands.begin(), e.operands.end(),
                                    [](const ExpressionPtr& o) { return o->type == Type::Currency; });
  if (currency) return arithmeticSteps(e, e.operands.size(), e.type);
  // Long rows go in pieces, each the first operand of the next; this keeps SQLite's nesting low.
  const size_t count = e.operands.size();
  const size_t pieces = (count - 2) / (maxArguments - 3) + 1;
  const size_t step = maxArguments - 3;
  for (size_t piece = pieces; piece-- > 0;) {
    raw("jet_op_chain(");
    place(e);
    raw("," + quotedText(std::string_view(e.text).substr(piece * step, step)) + ",");
  }
  value(*e.operands[0]);
  for (size_t i = 1; i < count; ++i) {
    raw(",");
    value(*e.operands[i]);
    if (i % step == 0 || i + 1 == count) raw(")");
  }
}

// With amounts of currency each step has its own form.
void Printer::arithmeticSteps(const Expression& e, size_t count, Type type) {
  if (count == 1) return;
  Type left = e.operands[0]->type;
  std::string text = [&] {
    Printer inner = *this;
    inner.out_.clear();
    inner.value(*e.operands[0]);
    return inner.take();
  }();
  const std::string at = foreign_ ? "-1" : number(static_cast<int64_t>(e.place));
  for (size_t i = 1; i < count; ++i) {
    const Expression& right = *e.operands[i];
    const char operation = e.text[i - 1];
    const bool both = left == Type::Currency && right.type == Type::Currency;
    const bool whole = isWholeType(left) || isWholeType(right.type);
    const bool any = left == Type::Currency || right.type == Type::Currency;
    const bool exact = any &&
                       (operation == '+' || operation == '-' || (operation == '*' && (both || whole))) &&
                       (isNumberType(left) || right.kind == ExpressionKind::Null) && isNumberType(right.type);
    Printer inner = *this;
    inner.out_.clear();
    if (exact) {
      if (left != Type::Currency)
        text = "jet_op_as(" + at + "," + text + "," + number(static_cast<int>(Type::Currency)) + ",0)";
      inner.scaled(right);
      text = "jet_op_currency(" + at + ",'" + operation + "'," + text + "," + inner.take() + ")";
      left = Type::Currency;
    } else {
      if (left == Type::Currency) text = "(" + text + "/10000.0)";
      inner.real(right);
      text = "jet_op_chain(" + at + ",'" + operation + "'," + text + "," + inner.take() + ")";
      const bool date = left == Type::Date || right.type == Type::Date;
      left = operation == 'm' || operation == '\\'          ? Type::Long
             : date && operation != '*' && operation != '/' ? Type::Date
                                                            : Type::Double;
      if (!any && isWholeType(right.type) && operation != '/' && operation != '^') left = Type::Long;
    }
  }
  if (type == Type::Currency && left != Type::Currency)
    text = "jet_op_as(" + at + "," + text + "," + number(static_cast<int>(type)) + ",0)";
  if (type != Type::Currency && left == Type::Currency) text = "(" + text + "/10000.0)";
  raw(text);
}

void Printer::concat(const Expression& e) {
  const size_t count = e.operands.size();
  const size_t step = maxArguments - 2;
  for (size_t piece = (count - 2) / step + 1; piece-- > 0;) raw("jet_op_concat(-1,");
  asText(*e.operands[0]);
  for (size_t i = 1; i < count; ++i) {
    raw(",");
    asText(*e.operands[i]);
    if (i % step == 0 || i + 1 == count) raw(")");
  }
}

// ---- Calls

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
  if (scale) raw("," + number(static_cast<int>(Type::Currency)) + ",0)");
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
        raw(" WHEN " + number(static_cast<int64_t>(i)) + " THEN ");
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

// ---- Storing

void Printer::stored(const Expression& e, const Column& column) {
  Printer inner = *this;
  inner.out_.clear();
  inner.value(e);
  storedText(inner.out_, e.kind == ExpressionKind::Null ? Type::Unknown : e.type, column,
             foreign_ ? -1 : static_cast<int64_t>(e.place));
}

void Printer::storedText(const std::string& sql, Type from, const Column& column, int64_t at) {
  constexpr int defaultSize = 255;
  const int flags = (column.required && !column.counter ? 1 : 0) | (column.emptyAllowed ? 0 : 2) |
                    (column.inKey && !column.counter ? 4 : 0);
  raw("jet_op_store(" + number(at) + "," + sql + "," + number(static_cast<int>(column.type)) + "," +
      number(static_cast<int>(readingOf(from))) + "," + number(column.size > 0 ? column.size : defaultSize) +
      "," + number(flags) + "," + quotedText(column.name) + ")");
}

}  // namespace jet
