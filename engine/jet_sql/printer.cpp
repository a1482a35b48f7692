#include "engine/jet_sql/printer.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "engine/jet_sql/convert.h"
#include "engine/text/collation.h"
#include "platform/text/quotes.h"

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

std::string number(int64_t value) { return std::to_string(value); }

}  // namespace

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

std::string quotedText(std::string_view text) { return inQuotes(text, '\''); }

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
      return subqueryValue(e);
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
      if (left != Type::Currency) text = conversionCall(at, text, Reading::Plain, Type::Currency);
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
  if (type == Type::Currency && left != Type::Currency) text = conversionCall(at, text, Reading::Plain, type);
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
