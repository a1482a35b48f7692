#include <algorithm>
#include <numeric>

#include "host/lisp/builtins.h"

namespace lisp {
namespace {

/// Calls the function of argument 0, which was made callable once, with each element.
class EachCaller {
 public:
  explicit EachCaller(const Call& call) : lisp_(call.lisp), function_(call.lisp.functionOf(call[0])) {}
  bool operator()(const Value& element) const {
    return lisp_.apply(*function_.function(), Arguments(&element, 1)).isTrue();
  }

 private:
  Interpreter& lisp_;
  Value function_;
};

/// A predicate of the program's need not be a strict order, which the library's sort demands: this merge
/// sort ends with some order whatever it answers, and keeps equals in place.
template <class Less>
void mergeSort(std::vector<size_t>& places, const Less& less) {
  std::vector<size_t> merged(places.size());
  for (size_t width = 1; width < places.size(); width *= 2) {
    for (size_t start = 0; start < places.size(); start += 2 * width) {
      const size_t middle = std::min(start + width, places.size());
      const size_t end = std::min(start + 2 * width, places.size());
      size_t left = start, right = middle;
      for (size_t at = start; at < end; ++at) {
        const bool takeRight = left == middle || (right < end && less(places[right], places[left]));
        merged[at] = places[takeRight ? right++ : left++];
      }
    }
    places.swap(merged);
  }
}

std::vector<size_t> sortedPlaces(const Call& call, const std::vector<Value>& elements) {
  const Value function = call.lisp.functionOf(call[1]);
  std::vector<size_t> places(elements.size());
  std::iota(places.begin(), places.end(), size_t{0});
  mergeSort(places, [&](size_t a, size_t b) {
    const Value pair[] = {elements[a], elements[b]};
    return call.lisp.apply(*function.function(), pair).isTrue();
  });
  return places;
}

// Reals are objects of their own, so that equal ones stay apart.
bool sameElement(const Value& a, const Value& b) {
  if (a.isReal() || b.isReal()) return false;
  return a.isNumber() || a.isText() ? equalValues(a, b) : a.same(b);
}

// Elements that are `eq` to one before them are dropped, as the language's own sort does.
Value sort(const Call& call) {
  const std::vector<Value> elements = elementsOf(call[0]);
  std::vector<Value> sorted;
  for (const size_t place : sortedPlaces(call, elements)) {
    if (sorted.empty() || !sameElement(sorted.back(), elements[place]) || elements[place].isCons()) {
      sorted.push_back(elements[place]);
    }
  }
  return listOf(sorted);
}

Value sortIndices(const Call& call) {
  ListBuilder list;
  for (const size_t place : sortedPlaces(call, elementsOf(call[0]))) list.add(static_cast<int32_t>(place));
  return list.take();
}

template <class Keep>
Value filtered(const Value& list, Keep keep) {
  ListBuilder kept;
  for (const Value& each : Elements(list)) {
    if (keep(each)) kept.add(each);
  }
  return kept.take();
}

Value remove(const Call& call) {
  return filtered(call.list(1), [&](const Value& each) { return !equalValues(each, call[0]); });
}

Value removeIf(const Call& call) {
  const EachCaller test(call);
  return filtered(call.list(1), [&](const Value& each) { return !test(each); });
}

Value removeIfNot(const Call& call) {
  const EachCaller test(call);
  return filtered(call.list(1), [&](const Value& each) { return test(each); });
}

/// Walks the lists side by side; `visit` answers whether to go on.
template <class Visit>
void walkTogether(const Call& call, Visit visit) {
  const Value function = call.lisp.functionOf(call[0]);
  std::vector<Value> lists;
  for (size_t i = 1; i < call.count(); ++i) lists.push_back(call.list(i));
  for (;;) {
    std::vector<Value> args;
    for (Value& list : lists) {
      if (!list.isCons()) return;
      args.push_back(car(list));
      list = Value(cdr(list));
    }
    if (!visit(call.lisp.apply(*function.function(), args))) return;
  }
}

Value some(const Call& call) {
  Value found;
  walkTogether(call, [&](Value value) {
    found = std::move(value);
    return found.isNil();
  });
  return found;
}

Value every(const Call& call) {
  bool all = true;
  walkTogether(call, [&](const Value& value) { return all = value.isTrue(); });
  return call.lisp.truth(all);
}

template <bool wanted>
Value memberIf(const Call& call) {
  const EachCaller test(call);
  for (const Value* at = &call.list(1); at->isCons(); at = &cdr(*at)) {
    if (test(car(*at)) == wanted) return *at;
  }
  return {};
}

Value position(const Call& call) {
  int32_t place = 0;
  for (const Value& each : Elements(call.list(1))) {
    if (equalValues(each, call[0])) return place;
    ++place;
  }
  return {};
}

Value listStar(const Call& call) {
  ListBuilder list;
  for (size_t i = 0; i + 1 < call.count(); ++i) list.add(call[i]);
  list.end(call[call.count() - 1]);
  return list.take();
}

// Nil for a dotted list.
Value listLength(const Call& call) {
  int32_t count = 0;
  const Value* at = &call.list(0);
  for (; at->isCons(); at = &cdr(*at)) ++count;
  return at->isNil() ? Value(count) : Value();
}

Value consp(const Call& call) { return call.lisp.truth(call[0].isCons()); }

}  // namespace

std::span<const Builtin> vlListBuiltins() {
  static const Builtin table[] = {
      {L"VL-SORT", sort, 2, 2},
      {L"VL-SORT-I", sortIndices, 2, 2},
      {L"VL-REMOVE", remove, 2, 2},
      {L"VL-REMOVE-IF", removeIf, 2, 2},
      {L"VL-REMOVE-IF-NOT", removeIfNot, 2, 2},
      {L"VL-SOME", some, 2},
      {L"VL-EVERY", every, 2},
      {L"VL-MEMBER-IF", memberIf<true>, 2, 2},
      {L"VL-MEMBER-IF-NOT", memberIf<false>, 2, 2},
      {L"VL-POSITION", position, 2, 2},
      {L"VL-LIST*", listStar, 1},
      {L"VL-LIST-LENGTH", listLength, 1, 1},
      {L"VL-CONSP", consp, 1, 1},
  };
  return table;
}

}  // namespace lisp
