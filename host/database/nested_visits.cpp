#include "host/database/nested_visits.h"

#include "brx/lisp_calls.h"

namespace host {
namespace {

struct State {
  int operations = 0, depth = 0;
  size_t visits = 0;
  bool tooMany = false, tooDeep = false;
};
thread_local State state;

}  // namespace

NestedOperation::NestedOperation() {
  if (state.operations++ == 0) state.visits = 0, state.tooMany = state.tooDeep = false;
}

NestedOperation::~NestedOperation() {
  if (--state.operations > 0) return;
  if (state.tooMany) {
    acutPrintf(L"\nThe blocks hold too much: all beyond %d entities was left out.\n",
               static_cast<int>(mostNestedVisits));
  }
  if (state.tooDeep) {
    acutPrintf(L"\nThe blocks are nested too deep: all beyond %d levels was left out.\n", deepestNesting);
  }
}

NestedDescent::NestedDescent() { ++state.depth; }
NestedDescent::~NestedDescent() { --state.depth; }

bool NestedDescent::isAllowed() const {
  if (state.depth <= deepestNesting) return true;
  return state.tooDeep = true, false;
}

bool countNestedVisit(size_t weight) {
  if (state.visits < mostNestedVisits) return state.visits += weight, true;
  return state.tooMany = true, false;
}

}  // namespace host
