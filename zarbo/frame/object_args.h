#pragma once

#include "brx/db_ids.h"
#include "zarbo/frame/lisp_args.h"

/// An entity name that names an object; false, without advancing, for anything else.
bool getObjectId(ArgCursor& cursor, AcDbObjectId& id);
