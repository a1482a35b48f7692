#include "zarbo/frame/object_args.h"

#include "brx/db_calls.h"

bool getObjectId(ArgCursor& cursor, AcDbObjectId& id) {
  ArgCursor ahead = cursor;
  ads_name name;
  if (!getEntityName(ahead, name) || acdbGetObjectId(id, name) != Acad::eOk) return false;
  cursor = ahead;
  return true;
}
