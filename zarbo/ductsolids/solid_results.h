#pragma once

#include "brx/db_ids.h"
#include "zarbo/frame/list_builder.h"

/// The pair (key . name); nil in place of the name of a null id.
void appendEntity(LispList& list, const ACHAR* key, AcDbObjectId entity);

/// Whether entities can be made. If not, the user is told.
bool solidModuleIsThere();
