#include <cmath>
#include <limits>
#include <numeric>

#include "host/lisp/builtins.h"

namespace lisp {
namespace {

// Integers are 32 bits wide and wrap.
int32_t wrapped(int64_t value) { return static_cast<int32_t>(static_cast<uint32_t>(value)); }

bool anyReal(const Call& call) {
  bool found = false;
  for (size_t i = 0; i < call.count(); ++i) {
    call.number(i);
    found = found || call[i].isReal();
  }
  return found;
}

template <class Integers, class Reals>
Value fold(const Call& call, int32_t start, Integers integers, Reals reals) {
  if (call.count() == 2 && call[0].isInteger() && call[1].isInteger()) {
    return integers(call[0].integer(), call[1].integer());
  }
  if (call.count() == 0) return start;
  if (!anyReal(call)) {
    int32_t result = call[0].integer();
    for (size_t i = 1; i < call.count(); ++i) result = integers(result, call[i].integer());
    return result;
  }
  double result = call[0].number();
  for (size_t i = 1; i < call.count(); ++i) result = reals(result, call[i].number());
  return result;
}

Value add(const Call& call) {
  return fold(
      call, 0, [](int32_t a, int32_t b) { return wrapped(int64_t{a} + b); },
      [](double a, double b) { return a + b; });
}

Value subtract(const Call& call) {
  if (call.count() == 1) {
    call.number(0);
    return call[0].isInteger() ? Value(wrapped(-int64_t{call[0].integer()})) : Value(-call[0].real());
  }
  return fold(
      call, 0, [](int32_t a, int32_t b) { return wrapped(int64_t{a} - b); },
      [](double a, double b) { return a - b; });
}

Value multiply(const Call& call) {
  return fold(
      call, 0, [](int32_t a, int32_t b) { return wrapped(int64_t{a} * b); },
      [](double a, double b) { return a * b; });
}

Value divide(const Call& call) {
  for (size_t i = 1; i < call.count(); ++i) {
    if (call.number(i) == 0.0) throw LispError(L"divide by zero");
  }
  return fold(
      call, 0, [](int32_t a, int32_t b) { return wrapped(int64_t{a} / b); },
      [](double a, double b) { return a / b; });
}

Value increment(const Call& call) {
  call.number(0);
  return call[0].isInteger() ? Value(wrapped(int64_t{call[0].integer()} + 1)) : Value(call[0].real() + 1.0);
}

Value decrement(const Call& call) {
  call.number(0);
  return call[0].isInteger() ? Value(wrapped(int64_t{call[0].integer()} - 1)) : Value(call[0].real() - 1.0);
}

Value absolute(const Call& call) {
  call.number(0);
  return call[0].isInteger() ? Value(wrapped(std::abs(int64_t{call[0].integer()})))
                             : Value(std::abs(call[0].real()));
}

// Cut toward zero; a real beyond the integers stays a real.
Value fix(const Call& call) {
  const double whole = std::trunc(call.number(0));
  if (call[0].isInteger()) return call[0];
  const bool fits =
      whole >= std::numeric_limits<int32_t>::min() && whole <= std::numeric_limits<int32_t>::max();
  return fits ? Value(static_cast<int32_t>(whole)) : Value(whole);
}

Value toReal(const Call& call) { return call.number(0); }

Value greatestDivisor(const Call& call) {
  int64_t result = 0;
  for (size_t i = 0; i < call.count(); ++i) result = std::gcd(result, int64_t{call.integer(i)});
  return wrapped(result);
}

Value leastMultiple(const Call& call) {
  int64_t result = 1;
  for (size_t i = 0; i < call.count(); ++i) result = std::lcm(result, std::abs(int64_t{call.integer(i)}));
  return wrapped(result);
}

Value remainder(const Call& call) {
  for (size_t i = 1; i < call.count(); ++i) {
    if (call.number(i) == 0.0) throw LispError(L"divide by zero");
  }
  return fold(
      call, 0, [](int32_t a, int32_t b) { return wrapped(int64_t{a} % b); },
      [](double a, double b) { return std::fmod(a, b); });
}

Value smallest(const Call& call) {
  return fold(
      call, 0, [](int32_t a, int32_t b) { return std::min(a, b); },
      [](double a, double b) { return std::min(a, b); });
}

Value greatest(const Call& call) {
  return fold(
      call, 0, [](int32_t a, int32_t b) { return std::max(a, b); },
      [](double a, double b) { return std::max(a, b); });
}

int32_t integerPower(int32_t base, int32_t exponent) {
  uint32_t result = 1, square = static_cast<uint32_t>(base);
  for (; exponent > 0; exponent >>= 1, square *= square) {
    if (exponent & 1) result *= square;
  }
  return static_cast<int32_t>(result);
}

Value power(const Call& call) {
  const double base = call.number(0), exponent = call.number(1);
  if (call[0].isInteger() && call[1].isInteger()) {
    if (call[1].integer() >= 0) return integerPower(call[0].integer(), call[1].integer());
    if (base == 0.0) throw LispError(L"divide by zero");
    return static_cast<int32_t>(std::pow(base, exponent));
  }
  return std::pow(base, exponent);
}

Value logarithm(const Call& call) {
  if (call.number(0) <= 0.0)
    throw LispError(L"cannot evaluate: (LOG " + std::to_wstring(call.number(0)) + L")");
  return std::log(call.number(0));
}

Value squareRoot(const Call& call) {
  if (call.number(0) < 0.0)
    throw LispError(L"function undefined for argument: " + std::to_wstring(call.number(0)));
  return std::sqrt(call.number(0));
}

Value exponential(const Call& call) { return std::exp(call.number(0)); }
Value sine(const Call& call) { return std::sin(call.number(0)); }
Value cosine(const Call& call) { return std::cos(call.number(0)); }
Value arcTangent(const Call& call) {
  return call.has(1) ? std::atan2(call.number(0), call.number(1)) : std::atan(call.number(0));
}

Value complement(const Call& call) { return ~call.integer(0); }

template <class Operation>
Value foldBits(const Call& call, int32_t start, Operation operation) {
  int32_t result = start;
  for (size_t i = 0; i < call.count(); ++i) result = operation(result, call.integer(i));
  return result;
}

Value bitAnd(const Call& call) {
  if (call.count() == 0) return 0;
  return foldBits(call, -1, [](int32_t a, int32_t b) { return a & b; });
}

Value bitOr(const Call& call) {
  return foldBits(call, 0, [](int32_t a, int32_t b) { return a | b; });
}

Value shift(const Call& call) {
  const int32_t places = call.integer(1);
  const auto bits = static_cast<uint32_t>(call.integer(0));
  if (places >= 32 || places <= -32) return 0;
  return static_cast<int32_t>(places >= 0 ? bits << places : bits >> -places);
}

// The four low bits of the operator say the result for the bit pairs 11, 10, 01 and 00.
Value boole(const Call& call) {
  const int32_t table = call.integer(0);
  int32_t result = call.integer(1);
  for (size_t i = 2; i < call.count(); ++i) {
    const int32_t a = result, b = call.integer(i);
    result = (table & 1 ? a & b : 0) | (table & 2 ? a & ~b : 0) | (table & 4 ? ~a & b : 0) |
             (table & 8 ? ~a & ~b : 0);
  }
  return result;
}

Value zerop(const Call& call) { return call.lisp.truth(call.number(0) == 0.0); }
Value minusp(const Call& call) { return call.lisp.truth(call.number(0) < 0.0); }
Value numberp(const Call& call) { return call.lisp.truth(call[0].isNumber()); }

// Numbers are compared with numbers, texts with texts by their characters.
template <class Holds>
Value compareChain(const Call& call, Holds holds) {
  for (size_t i = 0; i + 1 < call.count(); ++i) {
    const Value &a = call[i], &b = call[i + 1];
    bool ok;
    if (a.isInteger() && b.isInteger()) {
      ok = holds(a.integer(), b.integer());
    } else if (a.isText() && b.isText()) {
      ok = holds(a.text().compare(b.text()), 0);
    } else {
      ok = holds(call.number(i), call.number(i + 1));
    }
    if (!ok) return {};
  }
  return call.lisp.t();
}

Value less(const Call& call) {
  return compareChain(call, [](auto a, auto b) { return a < b; });
}
Value lessOrEqual(const Call& call) {
  return compareChain(call, [](auto a, auto b) { return a <= b; });
}
Value greater(const Call& call) {
  return compareChain(call, [](auto a, auto b) { return a > b; });
}
Value greaterOrEqual(const Call& call) {
  return compareChain(call, [](auto a, auto b) { return a >= b; });
}

bool equalAtoms(const Value& a, const Value& b) {
  if (a.isNumber() && b.isNumber()) return a.number() == b.number();
  return equalValues(a, b);
}

Value equalNumbers(const Call& call) {
  for (size_t i = 0; i + 1 < call.count(); ++i) {
    if (!equalAtoms(call[i], call[i + 1])) return {};
  }
  return call.lisp.t();
}

Value notEqual(const Call& call) {
  for (size_t i = 0; i + 1 < call.count(); ++i) {
    if (equalAtoms(call[i], call[i + 1])) return {};
  }
  return call.lisp.t();
}

}  // namespace

std::span<const Builtin> numberBuiltins() {
  static const Builtin table[] = {
      {L"+", add},
      {L"-", subtract},
      {L"*", multiply},
      {L"/", divide},
      {L"1+", increment, 1, 1},
      {L"1-", decrement, 1, 1},
      {L"ABS", absolute, 1, 1},
      {L"FIX", fix, 1, 1},
      {L"FLOAT", toReal, 1, 1},
      {L"GCD", greatestDivisor},
      {L"LCM", leastMultiple},
      {L"REM", remainder},
      {L"MIN", smallest},
      {L"MAX", greatest},
      {L"EXPT", power, 2, 2},
      {L"EXP", exponential, 1, 1},
      {L"LOG", logarithm, 1, 1},
      {L"SQRT", squareRoot, 1, 1},
      {L"SIN", sine, 1, 1},
      {L"COS", cosine, 1, 1},
      {L"ATAN", arcTangent, 1, 2},
      {L"~", complement, 1, 1},
      {L"LOGAND", bitAnd},
      {L"LOGIOR", bitOr},
      {L"LSH", shift, 2, 2},
      {L"BOOLE", boole, 2},
      {L"ZEROP", zerop, 1, 1},
      {L"MINUSP", minusp, 1, 1},
      {L"NUMBERP", numberp, 1, 1},
      {L"<", less, 1},
      {L"<=", lessOrEqual, 1},
      {L">", greater, 1},
      {L">=", greaterOrEqual, 1},
      {L"=", equalNumbers, 1},
      {L"/=", notEqual, 1},
  };
  return table;
}

}  // namespace lisp
