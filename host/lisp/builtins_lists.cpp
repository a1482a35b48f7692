#include <algorithm>

#include "host/lisp/builtins.h"

namespace lisp {
namespace {

// `path` is read from its end: "ad" is the car of the cdr.
Value follow(const Value& list, std::wstring_view path) {
  const Value* at = &list;
  for (size_t i = path.size(); i-- > 0;) {
    if (at->isNil()) return {};
    if (!at->isCons()) failType(L"consp", *at);
    at = path[i] == L'A' ? &car(*at) : &cdr(*at);
  }
  return *at;
}

Value carOf(const Call& call) {
  const Value& list = call.list(0);
  return list.isNil() ? Value() : car(list);
}

Value cdrOf(const Call& call) {
  const Value& list = call.list(0);
  return list.isNil() ? Value() : cdr(list);
}

// One body for cadr to cddddr: the name tells the way.
Value carCdrPath(const Call& call) {
  const std::wstring_view name = call.function.name;
  return follow(call.list(0), name.substr(1, name.size() - 2));
}

Value consOf(const Call& call) { return cons(call[0], call[1]); }

Value list(const Call& call) { return listOf(call.args); }

Value append(const Call& call) {
  ListBuilder result;
  for (size_t i = 0; i < call.count(); ++i) {
    const Value& part = call.list(i);
    if (i + 1 == call.count()) {
      result.end(part);
    } else {
      for (const Value& each : Elements(part)) result.add(each);
    }
  }
  return result.take();
}

Value assoc(const Call& call) {
  for (const Value& pair : Elements(call.list(1))) {
    if (pair.isNil()) continue;
    if (!pair.isCons()) failType(L"consp", pair);
    if (equalValues(car(pair), call[0])) return pair;
  }
  return {};
}

Value member(const Call& call) {
  for (const Value* at = &call.list(1); at->isCons(); at = &cdr(*at)) {
    if (equalValues(car(*at), call[0])) return *at;
  }
  return {};
}

Value length(const Call& call) {
  int32_t count = 0;
  const Value* at = &call.list(0);
  for (; at->isCons(); at = &cdr(*at)) ++count;
  if (at->isTrue()) failType(L"listp", *at);
  return count;
}

Value reverse(const Call& call) {
  Value reversed;
  for (const Value& each : Elements(call.list(0))) reversed = cons(each, std::move(reversed));
  return reversed;
}

Value nth(const Call& call) {
  int32_t place = call.integer(0);
  if (place < 0) failType(L"non-negative integer:", call[0]);
  const Value* at = &call.list(1);
  while (place-- > 0 && at->isCons()) at = &cdr(*at);
  return at->isCons() ? car(*at) : Value();
}

Value last(const Call& call) {
  const Value* at = &call.list(0);
  if (at->isNil()) return {};
  while (cdr(*at).isCons()) at = &cdr(*at);
  // What stands behind a dot is the last as well.
  return cdr(*at).isNil() ? car(*at) : cdr(*at);
}

Value subst(const Call& call) {
  ListBuilder result;
  const Value* at = &call.list(2);
  for (; at->isCons(); at = &cdr(*at)) result.add(equalValues(car(*at), call[1]) ? call[0] : car(*at));
  result.end(*at);
  return result.take();
}

Value atom(const Call& call) { return call.lisp.truth(!call[0].isCons()); }
Value listp(const Call& call) { return call.lisp.truth(call[0].isList()); }
Value isNull(const Call& call) { return call.lisp.truth(call[0].isNil()); }

Value eq(const Call& call) {
  const Value &a = call[0], &b = call[1];
  // Numbers and texts of the same value are one object to the language.
  if (a.isText() && b.isText()) return call.lisp.truth(a.text() == b.text());
  return call.lisp.truth(a.isNumber() ? equalValues(a, b) : a.same(b));
}

Value equal(const Call& call) {
  return call.lisp.truth(equalValues(call[0], call[1], call.has(2) ? call.number(2) : 0.0));
}

Value acadStrlsort(const Call& call) {
  std::vector<Value> texts = elementsOf(call[0]);
  for (const Value& each : texts) {
    if (!each.isText()) failType(L"stringp", each);
  }
  std::stable_sort(texts.begin(), texts.end(), [](const Value& a, const Value& b) {
    const std::wstring upperA = upperCased(a.text()), upperB = upperCased(b.text());
    return upperA != upperB ? upperA < upperB : a.text() < b.text();
  });
  return listOf(texts);
}

Value mapcar(const Call& call) {
  const Value function = call.lisp.functionOf(call[0]);
  std::vector<Value> lists(call.args.begin() + 1, call.args.end());
  for (size_t i = 1; i < call.count(); ++i) call.list(i);
  ListBuilder result;
  for (;;) {
    Interpreter::Frame frame(call.lisp, lists.size());
    for (Value& list : lists) {
      if (!list.isCons()) return result.take();
      frame.add(car(list));
      list = Value(cdr(list));
    }
    call.lisp.step();
    result.add(call.lisp.applyInPlace(*function.function(), frame.values()));
  }
}

Value apply(const Call& call) {
  const Value function = call.lisp.functionOf(call[0]);
  Interpreter::Frame frame(call.lisp, lengthOf(call.list(1)));
  call.lisp.step();
  for (const Value& arg : Elements(call[1])) frame.add(arg);
  return call.lisp.applyInPlace(*function.function(), frame.values());
}

}  // namespace

std::span<const Builtin> listBuiltins() {
  static const Builtin table[] = {
      {L"CAR", carOf, 1, 1},
      {L"CDR", cdrOf, 1, 1},
      {L"CAAR", carCdrPath, 1, 1},
      {L"CADR", carCdrPath, 1, 1},
      {L"CDAR", carCdrPath, 1, 1},
      {L"CDDR", carCdrPath, 1, 1},
      {L"CAAAR", carCdrPath, 1, 1},
      {L"CAADR", carCdrPath, 1, 1},
      {L"CADAR", carCdrPath, 1, 1},
      {L"CADDR", carCdrPath, 1, 1},
      {L"CDAAR", carCdrPath, 1, 1},
      {L"CDADR", carCdrPath, 1, 1},
      {L"CDDAR", carCdrPath, 1, 1},
      {L"CDDDR", carCdrPath, 1, 1},
      {L"CAAAAR", carCdrPath, 1, 1},
      {L"CAAADR", carCdrPath, 1, 1},
      {L"CAADAR", carCdrPath, 1, 1},
      {L"CAADDR", carCdrPath, 1, 1},
      {L"CADAAR", carCdrPath, 1, 1},
      {L"CADADR", carCdrPath, 1, 1},
      {L"CADDAR", carCdrPath, 1, 1},
      {L"CADDDR", carCdrPath, 1, 1},
      {L"CDAAAR", carCdrPath, 1, 1},
      {L"CDAADR", carCdrPath, 1, 1},
      {L"CDADAR", carCdrPath, 1, 1},
      {L"CDADDR", carCdrPath, 1, 1},
      {L"CDDAAR", carCdrPath, 1, 1},
      {L"CDDADR", carCdrPath, 1, 1},
      {L"CDDDAR", carCdrPath, 1, 1},
      {L"CDDDDR", carCdrPath, 1, 1},
      {L"CONS", consOf, 2, 2},
      {L"LIST", list},
      {L"APPEND", append},
      {L"ASSOC", assoc, 2, 2},
      {L"MEMBER", member, 2, 2},
      {L"LENGTH", length, 1, 1},
      {L"REVERSE", reverse, 1, 1},
      {L"NTH", nth, 2, 2},
      {L"LAST", last, 1, 1},
      {L"SUBST", subst, 3, 3},
      {L"ATOM", atom, 1, 1},
      {L"LISTP", listp, 1, 1},
      {L"NULL", isNull, 1, 1},
      {L"NOT", isNull, 1, 1},
      {L"EQ", eq, 2, 2},
      {L"EQUAL", equal, 2, 3},
      {L"ACAD_STRLSORT", acadStrlsort, 1, 1},
      {L"MAPCAR", mapcar, 2},
      {L"APPLY", apply, 2, 2},
  };
  return table;
}

}  // namespace lisp
