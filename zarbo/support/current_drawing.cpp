#include "zarbo/support/current_drawing.h"

#include "brx/db_calls.h"
#include "brx/documents.h"
#include "brx/editor_input.h"

AcDbDatabase* currentDatabase() {
  const AcApDocument* const document = acDocManagerPtr()->curDocument();
  return document ? document->database() : nullptr;
}

void eraseSelection(const ads_name set) {
  Adesk::Int32 length = 0;
  if (acedSSLength(set, &length) != RTNORM) return;
  for (Adesk::Int32 i = 0; i < length; ++i) {
    ads_name entity;
    if (acedSSName(set, i, entity) == RTNORM) acdbEntDel(entity);
  }
}
