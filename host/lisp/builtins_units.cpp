#include <cmath>
#include <map>

#include "host/lisp/builtins.h"
#include "host/lisp/interpreter.h"
#include "host/lisp/units.h"
#include "host/root/host.h"

namespace lisp {
namespace {

int32_t hostInteger(const Call& call, const wchar_t* name, int32_t otherwise) {
  const auto value = call.lisp.services().variable(name);
  return value && value->isInteger() ? value->integer() : otherwise;
}

/// Argument `place`, else the host's variable, else the variable's initial value.
int32_t choice(const Call& call, size_t place, const wchar_t* variable, int32_t initial) {
  if (call.has(place) && call[place].isTrue()) return call.integer(place);
  return hostInteger(call, variable, initial);
}

LengthUnits lengthUnits(int32_t mode) {
  if (mode < 1 || mode > 5) throw LispError(L"bad argument value: units mode " + std::to_wstring(mode));
  return static_cast<LengthUnits>(mode);
}

AngleUnits angleUnits(int32_t mode) {
  if (mode < 0 || mode > 4) throw LispError(L"bad argument value: units mode " + std::to_wstring(mode));
  return static_cast<AngleUnits>(mode);
}

Value textValue(std::wstring_view text) { return Value(text); }

UnitForm unitForm(const Call& call) {
  return hostInteger(call, L"UNITMODE", 0) == 1 ? UnitForm::typed : UnitForm::shown;
}

Value rtos(const Call& call) {
  const LengthUnits units = lengthUnits(choice(call, 1, L"LUNITS", 2));
  const int32_t precision = choice(call, 2, L"LUPREC", 4);
  const ZeroRules zeros = ZeroRules::ofDimzin(hostInteger(call, L"DIMZIN", 0));
  return textValue(lengthText(call.number(0), units, precision, zeros, unitForm(call)));
}

Value angtos(const Call& call) {
  const AngleUnits units = angleUnits(choice(call, 1, L"AUNITS", 0));
  const bool dropTrailing = (hostInteger(call, L"DIMZIN", 0) & 8) != 0;
  const int32_t precision = choice(call, 2, L"AUPREC", 0);
  return textValue(angleText(call.number(0), units, precision, dropTrailing, unitForm(call)));
}

Value distof(const Call& call) {
  if (call.has(1)) lengthUnits(call.integer(1));
  const auto value = parseLength(call.text(0));
  return value ? Value(*value) : Value();
}

Value angtof(const Call& call) {
  const auto value = parseAngle(call.text(0), angleUnits(choice(call, 1, L"AUNITS", 0)));
  if (!value) return {};
  constexpr double turn = 6.283185307179586477;
  const double within = std::fmod(*value, turn);
  return Value(within < 0 ? within + turn : within);
}

/// Names and values that all documents see. Symbols belong to an interpreter, so names are kept as texts, and
/// the symbols among the values belong to an interpreter of no document.
struct Blackboard {
  Services services;
  Interpreter interpreter{services};
  std::map<std::wstring, Value> entries;
};

std::map<std::wstring, Value>& blackboard() { return host::theOne<Blackboard>().entries; }

Value moved(const Value& value, Interpreter& to) {
  if (value.isSymbol()) return Value(to.intern(value.symbol()->name));
  if (!value.isCons()) return value;
  ListBuilder list;
  const Value* at = &value;
  for (; at->isCons(); at = &cdr(*at)) list.add(moved(car(*at), to));
  list.end(moved(*at, to));
  return list.take();
}

Value blackboardSet(const Call& call) {
  blackboard()[call.symbol(0)->name] = moved(call[1], host::theOne<Blackboard>().interpreter);
  return call[1];
}

Value blackboardRef(const Call& call) {
  const auto found = blackboard().find(call.symbol(0)->name);
  return found == blackboard().end() ? Value() : moved(found->second, call.lisp);
}

Value documentSet(const Call& call) { return call.symbol(0)->value = call[1]; }
Value documentRef(const Call& call) { return call.symbol(0)->value; }

}  // namespace

std::span<const Builtin> unitBuiltins() {
  static const Builtin table[] = {
      {L"RTOS", rtos, 1, 3},
      {L"ANGTOS", angtos, 1, 3},
      {L"DISTOF", distof, 1, 2},
      {L"ANGTOF", angtof, 1, 2},
      {L"VL-BB-SET", blackboardSet, 2, 2},
      {L"VL-BB-REF", blackboardRef, 1, 1},
      {L"VL-DOC-SET", documentSet, 2, 2},
      {L"VL-DOC-REF", documentRef, 1, 1},
  };
  return table;
}

}  // namespace lisp
