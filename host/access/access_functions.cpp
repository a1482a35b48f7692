#include "host/access/access_functions.h"

namespace host {

void defineAccessFunctions(lisp::Interpreter& interpreter) {
  for (const auto table : {entityFunctions(), tableFunctions(), dictionaryFunctions(), xdataFunctions(),
                           coordinateFunctions(), selectionFunctions(), solidFunctions()}) {
    for (const lisp::Builtin& row : table) interpreter.define(row.name, row.body, row.fewest, row.most);
  }
}

}  // namespace host
