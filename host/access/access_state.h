#pragma once

#include <map>
#include <string>

#include "host/access/erased_runs.h"
#include "host/access/making.h"

namespace host {

/// What LISP's calls leave for their next ones, for each drawing.
struct AccessState {
  explicit AccessState(AcDbDatabase& drawing) : maker(drawing) {}
  ObjectMaker maker;
  /// The place in a table and the name in a dictionary behind which a walk goes on.
  std::map<AcDbObjectId, size_t> tableWalks;
  std::map<AcDbObjectId, std::wstring> dictionaryWalks;
  /// Of the entities of a block and the parts of an entity.
  std::map<AcDbObjectId, ErasedRuns> erasedRuns;
};

AccessState& accessStateOf(AcDbDatabase& drawing);
ErasedRuns& erasedRunsOf(AcDbObjectId owner);

/// The drawing of the current document. Raises an error when there is none.
AcDbDatabase& currentDrawing();

}  // namespace host
