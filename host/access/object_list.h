#pragma once

#include "brx/db_tables.h"
#include "host/lisp/value.h"

namespace host {

/// Objects as LISP sees them: association lists of group codes and values.

/// The list of an object: name, type, handle, owner, then what it files. Null objects give nil. A module may
/// have the object open.
lisp::Value objectList(const AcDbObject& object);
/// The same with the extended data, under -3, of applications whose names match a pattern of the list.
/// What isn't a text in the list is passed over.
lisp::Value objectList(const AcDbObject& object, const lisp::Value& applications);
/// Extended data as `-3` holds it: `(("APP" (1000 . "x") …) …)`.
lisp::Value xdataList(const AcDbObject& object, const lisp::Value& applications);

/// The name of an object's type in lists and files: "LINE". What stands for objects of a class that isn't
/// here has that class's name.
std::wstring typeNameOf(const AcDbObject& object);

/// What LISP sees of a block under 70: whether it is anonymous, has attributes, comes from elsewhere.
int32_t blockFlags(const AcDbBlockTableRecord& block);

}  // namespace host
