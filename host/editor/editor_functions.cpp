#include "host/editor/editor_functions.h"

namespace host {

void defineEditorFunctions(lisp::Interpreter& interpreter) {
  for (const auto table : {dragFunctions(), getFunctions(), selectFunctions(), snapFunctions()}) {
    for (const lisp::Builtin& row : table) interpreter.define(row.name, row.body, row.fewest, row.most);
  }
}

}  // namespace host
