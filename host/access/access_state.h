#pragma once

#include <map>
#include <string>

#include "host/access/making.h"

namespace host {

/// What LISP's calls leave for their next ones, for each drawing.
struct AccessState {
  explicit AccessState(AcDbDatabase& drawing) : maker(drawing) {}
  ObjectMaker maker;
  /// The place in a table and the name in a dictionary behind which a walk goes on.
  std::map<AcDbObjectId, size_t> tableWalks;
  std::map<AcDbObjectId, std::wstring> dictionaryWalks;
};

AccessState& accessStateOf(AcDbDatabase& drawing);

/// The drawing of the current document. Raises an error when there is none.
AcDbDatabase& currentDrawing();

}  // namespace host
