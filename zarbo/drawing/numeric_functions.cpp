#include "zarbo/drawing/numeric_functions.h"

#include <cmath>
#include <cstdlib>

#include "platform/text/digits.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"

namespace {

constexpr int32_t noLimit = -1;

/// The next number of the process's random sequence, 0 to 32767: the range that applications are written for,
/// whatever `RAND_MAX` is here. An integer of that size reaches LISP as an integer, never as a real.
int drawRandom() { return std::rand() & 0x7fff; }

int applyToReal(double (*function)(double)) {
  acedRetNil();
  LispArgs args;
  double x;
  if (!getReal(args.cursor, x)) return wrongType;
  acedRetReal(function(x));
  return done;
}

}  // namespace

int zbRandom() {
  acedRetInt(drawRandom());
  return done;
}

int kvRand() {
  LispArgs args;
  int32_t limit;
  if (!getLong(args.cursor, limit)) limit = noLimit;
  const int drawn = drawRandom();
  // A limit of 0 leaves no number to choose from but 0.
  retNumber(limit == noLimit ? drawn : limit == 0 ? 0 : drawn % limit);
  return done;
}

int kvAtof() {
  acedRetNil();
  LispArgs args;
  std::wstring text;
  if (!getString(args.cursor, text)) return done;
  acedRetReal(readReal(text));
  return done;
}

int kvPow() {
  acedRetNil();
  LispArgs args;
  double base, exponent;
  if (!getReal(args.cursor, base) || !getReal(args.cursor, exponent)) return wrongType;
  acedRetReal(std::pow(base, exponent));
  return done;
}

int asinOf() {
  return applyToReal([](double x) { return std::asin(x); });
}

int acosOf() {
  return applyToReal([](double x) { return std::acos(x); });
}
