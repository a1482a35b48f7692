#include "zarbo/support/current_drawing.h"

#include "brx/documents.h"

AcDbDatabase* currentDatabase() {
  const AcApDocument* const document = acDocManagerPtr()->curDocument();
  return document ? document->database() : nullptr;
}
