#pragma once

#include "host/database/group_list.h"
#include "host/lisp/value.h"

namespace host {

/// Extended data of a list's -3, `(("APP" (1000 . "x") …) …)`, as buffers. Throws LispError "bad DXF group"
/// for what is no such list, ObjectRefusal for braces that don't match.
GroupList xdataGroups(const lisp::Value& applications);

}  // namespace host
