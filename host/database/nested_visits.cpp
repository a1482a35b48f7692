#include "host/database/nested_visits.h"

#include "brx/lisp_calls.h"

namespace host {
namespace {

struct State {
  int operations = 0, depth = 0;
  size_t visits = 0;
  NestedLoss loss;
};
thread_local State state;

}  // namespace

void tellLoss(const NestedLoss& loss) {
  if (loss.tooMany) {
    acutPrintf(L"\nThe blocks hold too much: all beyond %d entities was left out.\n",
               static_cast<int>(mostNestedVisits));
  }
  if (loss.tooDeep) {
    acutPrintf(L"\nThe blocks are nested too deep: all beyond %d levels was left out.\n", deepestNesting);
  }
}

NestedOperation::NestedOperation() {
  if (state.operations++ == 0) state.visits = 0, state.loss = {};
}
NestedOperation::NestedOperation(size_t visitedBefore) : tells_(false) {
  if (state.operations++ == 0) state.visits = visitedBefore, state.loss = {};
}
NestedOperation::~NestedOperation() {
  if (--state.operations == 0 && tells_) tellLoss(state.loss);
}
size_t NestedOperation::visits() { return state.visits; }
NestedLoss NestedOperation::loss() { return state.loss; }

NestedDescent::NestedDescent() { ++state.depth; }
NestedDescent::~NestedDescent() { --state.depth; }

bool NestedDescent::isAllowed() const {
  if (state.depth <= deepestNesting) return true;
  return state.loss.tooDeep = true, false;
}

bool countNestedVisit(size_t weight) {
  if (state.visits < mostNestedVisits) return state.visits += weight, true;
  return state.loss.tooMany = true, false;
}

}  // namespace host
