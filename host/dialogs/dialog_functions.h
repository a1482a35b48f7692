#pragma once

#include "host/lisp/interpreter.h"

namespace host {

/// Gives LISP the host's dialogs: `acad_colordlg`, `acad_truecolordlg`; and `startapp`.
void defineDialogFunctions(lisp::Interpreter& interpreter);

}  // namespace host
