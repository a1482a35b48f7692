#pragma once

#include "brx/db_proxy.h"
#include "host/access/list_reader.h"

namespace host {

/// Gives an object whose class isn't here the values of a list for the groups that it keeps. Groups can't be
/// added or left out, since only the class would know what that means: of each code the list has as many as
/// the object, or none. Anything else is refused.
void takeCarriedValues(AcDbObject& object, const ListGroups& groups);

}  // namespace host
