#pragma once

#include "brx/db_database.h"
#include "host/lisp/value.h"

namespace host {

/// Gives the object of a list's -1 what the list says; groups that the list lacks stay as they are. Throws
/// ObjectRefusal and LispError; then nothing was changed.
void modifyObject(AcDbDatabase& drawing, const lisp::Value& list);

}  // namespace host
