#include "host/editor/editor_functions.h"

#include "host/editor/view_variables.h"

namespace host {

void defineEditorFunctions(lisp::Interpreter& interpreter) {
  defineViewVariables();
  for (const auto table : {dragFunctions(), getFunctions(), selectFunctions(), snapFunctions()}) {
    for (const lisp::Builtin& row : table) interpreter.define(row.name, row.body, row.fewest, row.most);
  }
}

}  // namespace host
