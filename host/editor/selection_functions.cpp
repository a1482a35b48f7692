#include "host/access/arguments.h"
#include "host/bridge/lisp_points.h"
#include "host/bridge/values.h"
#include "host/documents/variables.h"
#include "host/editor/drawing_state.h"
#include "host/editor/editor_functions.h"
#include "host/editor/entity_pick.h"
#include "host/editor/selection_request.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

Value newSetValue(SelectionSet set) {
  return Value(static_cast<lisp::Opaque*>(new PickSet(selectionSets().add(std::move(set)))));
}

// Picks

/// "[prompt]"
std::wstring promptOf(const Call& call) {
  return call.has(0) && call[0].isTrue() ? call.text(0) : L"\nSelect object: ";
}

Value keywordOf(const Call& call, const Pick& pick) {
  if (pick.status == RTCAN) call.lisp.fail(L"Function cancelled");
  return pick.status == RTKWORD ? Value(std::wstring_view(lastKeyword())) : Value();
}

Value entSel(const Call& call) {
  const Pick pick = pickEntity(promptOf(call));
  if (pick.status != RTNORM) return keywordOf(call, pick);
  const Value parts[] = {nameOf(pick.hit.entity), pointValue(pick.point)};
  return lisp::listOf(parts);
}

/// The map from the block to the world: axes and origin as rows of three, or a matrix of four rows.
Value matrixValue(const AcGeMatrix3d& matrix, bool fourByFour) {
  lisp::ListBuilder rows;
  for (unsigned i = 0; i < 4; ++i) {
    lisp::ListBuilder row;
    for (unsigned j = 0; j < (fourByFour ? 4u : 3u); ++j) {
      row.add(Value(fourByFour ? matrix(i, j) : matrix(j, i)));
    }
    rows.add(row.take());
  }
  return rows.take();
}

Value nestedValue(const Pick& pick, bool fourByFour) {
  const OutlineSource& innermost = pick.hit.innermost;
  lisp::ListBuilder list;
  list.add(nameOf(innermost.entity));
  list.add(pointValue(pick.point));
  if (innermost.references.empty()) return list.take();
  list.add(matrixValue(innermost.toWorld, fourByFour));
  lisp::ListBuilder references;
  for (const AcDbObjectId& each : innermost.references) references.add(nameOf(each));
  list.add(references.take());
  return list.take();
}

Value nEntSel(const Call& call) {
  const Pick pick = pickEntity(promptOf(call));
  return pick.status == RTNORM ? nestedValue(pick, false) : keywordOf(call, pick);
}

/// "[prompt] [point]"
Value nEntSelP(const Call& call) {
  const size_t last = call.count() - 1;
  const bool hasPoint = call.count() > 0 && call[last].isCons();
  const Pick pick = hasPoint ? pickAt(pointArgument(call, last)) : pickEntity(promptOf(call));
  return pick.status == RTNORM ? nestedValue(pick, true) : keywordOf(call, pick);
}

// Sets

bool isPoint(const Value& value) {
  return value.isCons() && lisp::car(value).isNumber() && lisp::cdr(value).isCons();
}

/// "[mode] [points or prompts] [filter]"
struct SsgetArguments {
  explicit SsgetArguments(const Call& call) : call_(call) {}

  SelectionRequest request() {
    SelectionRequest made;
    const std::wstring mode = place_ < call_.count() && call_[place_].isText() ? call_.text(place_++) : L"";
    const auto parsed = parseSelectionMode(mode);
    if (!parsed) call_.lisp.fail(L"bad argument value: ssget mode \"" + mode + L"\"");
    made.mode = *parsed;
    made.wish = wishOf(*parsed);
    if (made.mode.prompts) takePrompts(made.wish);
    if (made.mode.keywords && place_ < call_.count()) {
      made.wish.keywords = KeywordList(call_[place_].isTrue() ? call_.text(place_) : L"");
      ++place_;
    }
    takePoints(made);
    return made;
  }
  const Value* filter() const {
    if (place_ + 1 < call_.count()) call_.lisp.fail(L"too many arguments");
    return place_ < call_.count() && call_[place_].isTrue() ? &call_.list(place_) : nullptr;
  }

 private:
  void takePrompts(SelectionWish& wish) {
    if (place_ >= call_.count()) call_.lisp.fail(L"too few arguments");
    const std::vector<Value> texts = lisp::elementsOf(call_[place_]);
    if (texts.size() != 2 || !texts[0].isText() || !texts[1].isText()) {
      lisp::failType(L"listp", call_[place_]);
    }
    ++place_;
    wish.addPrompt = texts[0].text();
    wish.removePrompt = texts[1].text();
  }

  void takePoints(SelectionRequest& made) {
    if (made.mode.needsPoints() && place_ < call_.count()) {
      for (const Value& each : lisp::elementsOf(call_[place_++])) made.points.push_back(pointArgument(each));
    }
    const size_t most =
        made.mode.needsCorners()                                                                 ? 2
        : made.mode.way == SelectionMode::Way::user || made.mode.way == SelectionMode::Way::pick ? 1
                                                                                                 : 0;
    while (made.points.size() < most && place_ < call_.count() && isPoint(call_[place_])) {
      made.points.push_back(pointArgument(call_, place_++));
    }
  }

  const Call& call_;
  size_t place_ = 0;
};

EntityFilter filterOf(const Call& call, const Value* list) {
  if (!list) return EntityFilter();
  try {
    return EntityFilter(*list);
  } catch (const FilterError& problem) {
    setVariable(L"ERRNO", problem.number);
    call.lisp.fail(L"bad SSGET list");
  }
}

Value ssGet(const Call& call) {
  SsgetArguments arguments(call);
  SelectionRequest request = arguments.request();
  EntityFilter filter = filterOf(call, arguments.filter());
  request.wish.filter = &filter;
  Selected selected = select(request);
  if (selected.status == RTCAN) call.lisp.fail(L"Function cancelled");
  if (selected.status == RTREJ) call.lisp.fail(L"bad point argument");
  if (selected.status == RTKWORD) return Value(std::wstring_view(lastKeyword()));
  return selected.status == RTNORM ? newSetValue(std::move(selected.set)) : Value();
}

/// "grips [set]": the set is what commands then find chosen.
Value ssSetFirst(const Call& call) {
  DrawingState* const state = currentState();
  if (!state) return {};
  const size_t place = call.count() - 1;
  state->chosenBefore = call[place].isTrue() ? selectionArgument(call, place).entities() : Entities();
  const Value parts[] = {Value(), call[place]};
  return lisp::listOf(parts);
}

Value ssGetFirst(const Call&) {
  const DrawingState* const state = currentState();
  Value chosen;
  if (state && !state->chosenBefore.empty()) chosen = newSetValue(accepted(state->chosenBefore, {}));
  const Value parts[] = {Value(), std::move(chosen)};
  return lisp::listOf(parts);
}

constexpr lisp::Builtin rows[] = {
    {L"entsel", entSel, 0, 1}, {L"nentsel", nEntSel, 0, 1},       {L"nentselp", nEntSelP, 0, 2},
    {L"ssget", ssGet, 0, 4},   {L"sssetfirst", ssSetFirst, 1, 2}, {L"ssgetfirst", ssGetFirst, 0, 0},
};

}  // namespace

std::span<const lisp::Builtin> selectFunctions() { return rows; }

}  // namespace host
