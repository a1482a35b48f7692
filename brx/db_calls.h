#pragma once

#include "brx/db_object.h"

/// Calls between names of LISP and database ids. A name's first word is the object's id.
Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
Acad::ErrorStatus acdbGetAdsName(ads_name name, AcDbObjectId id);
/// Registers an application name for extended data in the working database; `RTERROR` for a bad name.
int acdbRegApp(const ACHAR* name);
int acdbHandEnt(const ACHAR* handle, ads_name name);
int acdbEntDel(const ads_name name);
/// The entity behind `after` that isn't erased, or the first of all with null. Vertices of polylines and
/// attributes of block references follow their owners. `RTERROR` at the end.
int acdbEntNext(const ads_name after, ads_name name);
/// The last entity of the current space that isn't erased, without its parts.
int acdbEntLast(ads_name name);
