#include <cmath>
#include <random>

#include "engine/jet_sql/functions.h"

namespace jet {
namespace {

[[noreturn]] void badArgument() { Call::fail(5, "Invalid procedure call: an argument is out of its range"); }

bool isWhole(const Call& call) { return call.storage(0) == SQLITE_INTEGER; }

void integerPart(Call& call) {
  if (isWhole(call)) return call.giveSame(0);
  call.give(std::floor(call.number(0)));
}

void fix(Call& call) {
  if (isWhole(call)) return call.giveSame(0);
  call.give(std::trunc(call.number(0)));
}

void absolute(Call& call) {
  if (isWhole(call)) return call.give(static_cast<int64_t>(std::llabs(call.whole(0))));
  call.give(std::fabs(call.number(0)));
}

void sgn(Call& call) {
  const double value = call.number(0);
  call.give(int64_t{value < 0 ? -1 : value > 0 ? 1 : 0});
}

void sqr(Call& call) {
  if (call.number(0) < 0) badArgument();
  call.give(std::sqrt(call.number(0)));
}

void logarithm(Call& call) {
  if (call.number(0) <= 0) badArgument();
  call.give(std::log(call.number(0)));
}

void exponential(Call& call) { call.give(std::exp(call.number(0))); }
void sine(Call& call) { call.give(std::sin(call.number(0))); }
void cosine(Call& call) { call.give(std::cos(call.number(0))); }
void tangent(Call& call) { call.give(std::tan(call.number(0))); }
void arcTangent(Call& call) { call.give(std::atan(call.number(0))); }

// Half to even in decimal digits: the shortest decimal text of the number decides what a half is.
void round(Call& call) {
  const int64_t digits = call.count() > 1 ? call.whole(1) : 0;
  if (digits < 0) badArgument();
  if (isWhole(call)) return call.giveSame(0);
  const double value = call.number(0);
  if (digits > 15 || std::fabs(value) >= 1e15) return call.give(value);
  const double scale = std::pow(10.0, static_cast<double>(digits));
  const double scaled = value * scale;
  const double nearest = std::floor(scaled + 0.5);
  // A product that is a half but for the last bits of the multiplication counts as a half.
  const bool half =
      std::fabs(scaled - (std::floor(scaled) + 0.5)) < 1e-9 * std::max(1.0, std::fabs(scaled) * 1e-6);
  call.give((half ? std::nearbyint(std::floor(scaled) + 0.5) : nearest) / scale);
}

// Rnd(): the next number; a negative argument starts a sequence of its own; zero repeats the last.
void rnd(Call& call) {
  thread_local std::mt19937 engine{std::random_device{}()};
  thread_local double last = 0;
  const double choice = call.count() > 0 && !call.isNull(0) ? call.number(0) : 1;
  if (choice < 0) engine.seed(static_cast<uint32_t>(std::hash<double>()(choice)));
  if (choice != 0) last = static_cast<double>(engine() >> 8) / (1 << 24);
  call.give(last);
}

constexpr FunctionRow rows[] = {
    {"INT", "n", Type::Double, integerPart, ResultRule::SameAsFirst},
    {"FIX", "n", Type::Double, fix, ResultRule::SameAsFirst},
    {"ABS", "n", Type::Double, absolute, ResultRule::SameAsFirst},
    {"ROUND", "n|n", Type::Double, round, ResultRule::SameAsFirst},
    {"SGN", "n", Type::Long, sgn},
    {"SQR", "n", Type::Double, sqr},
    {"LOG", "n", Type::Double, logarithm},
    {"EXP", "n", Type::Double, exponential},
    {"SIN", "n", Type::Double, sine},
    {"COS", "n", Type::Double, cosine},
    {"TAN", "n", Type::Double, tangent},
    {"ATN", "n", Type::Double, arcTangent},
    {"RND", "|n", Type::Double, rnd, ResultRule::Fixed, false, false},
};

}  // namespace

std::span<const FunctionRow> mathFunctions() { return rows; }

}  // namespace jet
