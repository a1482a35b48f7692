#include <algorithm>
#include <cmath>

#include "engine/jet_sql/convert.h"
#include "engine/jet_sql/like.h"
#include "engine/text/collation.h"
#include "platform/text/utf.h"

namespace jet {
namespace {

/// A number inside a chain of operators: whole as long as whole numbers make it.
struct Number {
  bool whole = false;
  int64_t integer = 0;
  double real = 0;

  double value() const { return whole ? static_cast<double>(integer) : real; }
};

Number readNumber(const Call& call, int i) {
  if (call.storage(i) == SQLITE_INTEGER) return {true, call.whole(i), 0};
  return {false, 0, call.number(i)};
}

int64_t roundedLong(const Number& number) {
  const double value = number.whole ? static_cast<double>(number.integer) : roundEven(number.real);
  if (!(value >= INT32_MIN && value <= INT32_MAX)) Call::fail(overflow, "Overflow");
  return static_cast<int64_t>(value);
}

Number wholeResult(int64_t value) {
  if (value < INT32_MIN || value > INT32_MAX) Call::fail(overflow, "Overflow");
  return {true, value, 0};
}

Number realResult(double value) {
  if (!std::isfinite(value)) Call::fail(overflow, "Overflow");
  return {false, 0, value};
}

Number combine(char operation, const Number& a, const Number& b) {
  // Whole operands within 32 bits keep products within 64; wider ones go through reals.
  const auto isLong = [](const Number& n) {
    return n.whole && n.integer >= INT32_MIN && n.integer <= INT32_MAX;
  };
  const bool whole = isLong(a) && isLong(b);
  switch (operation) {
    case '+':
      return whole ? wholeResult(a.integer + b.integer) : realResult(a.value() + b.value());
    case '-':
      return whole ? wholeResult(a.integer - b.integer) : realResult(a.value() - b.value());
    case '*':
      return whole ? wholeResult(a.integer * b.integer) : realResult(a.value() * b.value());
    case '^': {
      if (a.value() < 0 && b.value() != std::trunc(b.value())) Call::fail(5, "Invalid procedure call");
      if (a.value() == 0 && b.value() < 0) Call::fail(divisionByZero, "Division by zero");
      return realResult(std::pow(a.value(), b.value()));
    }
    case '/':
      if (b.value() == 0) Call::fail(divisionByZero, "Division by zero");
      return realResult(a.value() / b.value());
    default: {
      const int64_t left = roundedLong(a), right = roundedLong(b);
      if (right == 0) Call::fail(divisionByZero, "Division by zero");
      return wholeResult(operation == 'm' ? left % right : left / right);
    }
  }
}

// chain(operators, a, b, …): from the left. Two texts joined by + are one text.
void chain(Call& call) {
  const std::string operators = call.text(0);
  Number result;
  std::string text;
  bool isText = call.storage(1) == SQLITE_TEXT;
  if (isText) text = call.text(1);
  if (!isText) result = readNumber(call, 1);
  for (int i = 2; i < call.count(); ++i) {
    const char operation = operators[std::min<size_t>(static_cast<size_t>(i) - 2, operators.size() - 1)];
    if (isText && operation == '+' && call.storage(i) == SQLITE_TEXT) {
      text += call.text(i);
      continue;
    }
    if (isText) {
      const auto value = parseNumber(text);
      if (!value) Call::fail(typeMismatch, "Data type mismatch: a number is expected");
      result = {false, 0, *value};
      isText = false;
    }
    result = combine(operation, result, readNumber(call, i));
  }
  if (isText) return call.give(std::string_view(text));
  if (result.whole) return call.give(result.integer);
  call.give(result.real);
}

// currency(operator, a, b): both in ten-thousandths, and so the result.
void currency(Call& call) {
  const char operation = call.text(0)[0];
  const __int128 a = call.whole(1), b = call.whole(2);
  __int128 result = operation == '+' ? a + b : operation == '-' ? a - b : a * b;
  if (operation == '*') {  // half to even
    const __int128 size = result < 0 ? -result : result;
    __int128 quotient = size / 10000;
    const __int128 rest = size % 10000;
    if (rest > 5000 || (rest == 5000 && quotient % 2 == 1)) ++quotient;
    result = result < 0 ? -quotient : quotient;
  }
  if (result < INT64_MIN || result > INT64_MAX) Call::fail(overflow, "Overflow");
  call.give(static_cast<int64_t>(result));
}

void negate(Call& call) {
  const Number value = readNumber(call, 0);
  if (!value.whole) return call.give(-value.real);
  if (value.integer == INT64_MIN) Call::fail(overflow, "Overflow");
  call.give(-value.integer);
}

// Null is an empty text here, but nothing but nulls is null.
void concat(Call& call) {
  std::string text;
  bool any = false;
  for (int i = 0; i < call.count(); ++i) {
    any = any || !call.isNull(i);
    text += call.text(i);
  }
  if (!any) return call.null();
  call.give(std::string_view(text));
}

void asText(Call& call) { call.give(std::string_view(textOf(call, 0, static_cast<Reading>(call.whole(1))))); }

// as(value, type, reading)
void asType(Call& call) {
  giveAs(call, 0, static_cast<Type>(call.whole(1)), static_cast<Reading>(call.whole(2)));
}

void checkText(const Call& call, const std::string& text, Type type, int64_t size, bool emptyRefused) {
  const std::string field = call.text(5);
  if (text.empty() && emptyRefused) {
    Call::failField(emptyText, field);
  }
  if (type != Type::Text || text.size() <= static_cast<size_t>(size)) return;
  if (fromUtf8(text).size() > static_cast<size_t>(size)) {
    Call::failField(textTooLong, field);
  }
}

// store(value, type, reading, size, flags, field); flags: 1 required, 2 no empty text, 4 null refused by an
// index.
void store(Call& call) {
  const auto type = static_cast<Type>(call.whole(1));
  const int64_t flags = call.whole(4);
  if (call.isNull(0)) {
    if (type == Type::YesNo) return call.giveTruth(false);  // it knows no null
    if (flags & 1) Call::failField(valueRequired, call.text(5));
    if (flags & 4) Call::failField(indexNull, call.text(5));
    return call.null();
  }
  const auto reading = static_cast<Reading>(call.whole(2));
  if (type == Type::Text || type == Type::Memo) {
    const std::string text = textOf(call, 0, reading);
    checkText(call, text, type, call.whole(3), flags & 2);
    return call.give(std::string_view(text));
  }
  try {
    giveAs(call, 0, type, reading);
  } catch (const Failure& failure) {
    if (failure.error.number == overflow) Call::failField(numberTooLarge, call.text(5));
    throw;
  }
}

// like(text, pattern, ansi): the decoded pattern stays with the statement as long as it doesn't change.
void like(Call& call) {
  auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(call.context(), 2));
  std::unique_ptr<LikePattern> own;
  if (!pattern) {
    own = std::make_unique<LikePattern>(call.text(1), call.whole(2) != 0);
    pattern = own.get();
  }
  call.giveTruth(pattern->matches(call.text(0)));
  if (own) {
    sqlite3_set_auxdata(call.context(), 2, own.release(),
                        [](void* p) { delete static_cast<LikePattern*>(p); });
  }
}

// Bits of whole numbers; a null decides nothing unless the other operand does.
void bitAnd(Call& call) {
  for (int i : {0, 1}) {
    if (!call.isNull(i) && call.longNumber(i) == 0) return call.give(int64_t{0});
  }
  if (call.isNull(0) || call.isNull(1)) return call.null();
  call.give(int64_t{call.longNumber(0) & call.longNumber(1)});
}
void bitOr(Call& call) {
  for (int i : {0, 1}) {
    if (!call.isNull(i) && call.longNumber(i) == -1) return call.give(int64_t{-1});
  }
  if (call.isNull(0) || call.isNull(1)) return call.null();
  call.give(int64_t{call.longNumber(0) | call.longNumber(1)});
}
void bitImp(Call& call) {
  if (!call.isNull(0) && call.longNumber(0) == 0) return call.give(int64_t{-1});
  if (!call.isNull(1) && call.longNumber(1) == -1) return call.give(int64_t{-1});
  if (call.isNull(0) || call.isNull(1)) return call.null();
  call.give(int64_t{~call.longNumber(0) | call.longNumber(1)});
}
void bitXor(Call& call) { call.give(int64_t{call.longNumber(0) ^ call.longNumber(1)}); }
void bitEqv(Call& call) { call.give(int64_t{~(call.longNumber(0) ^ call.longNumber(1))}); }
void bitNot(Call& call) { call.give(int64_t{~call.longNumber(0)}); }

constexpr FunctionRow rows[] = {
    {"OP_CHAIN", "", Type::Unknown, chain},
    {"OP_CURRENCY", "", Type::Currency, currency},
    {"OP_NEGATE", "", Type::Unknown, negate},
    {"OP_CONCAT", "", Type::Text, concat, ResultRule::Fixed, false},
    {"OP_TEXT", "", Type::Text, asText},
    {"OP_AS", "", Type::Unknown, asType},
    {"OP_STORE", "", Type::Unknown, store, ResultRule::Fixed, false},
    {"OP_LIKE", "", Type::YesNo, like},
    {"OP_AND", "", Type::Long, bitAnd, ResultRule::Fixed, false},
    {"OP_OR", "", Type::Long, bitOr, ResultRule::Fixed, false},
    {"OP_IMP", "", Type::Long, bitImp, ResultRule::Fixed, false},
    {"OP_XOR", "", Type::Long, bitXor},
    {"OP_EQV", "", Type::Long, bitEqv},
    {"OP_NOT", "", Type::Long, bitNot},
};

}  // namespace

std::span<const FunctionRow> operatorFunctions() { return rows; }

}  // namespace jet
