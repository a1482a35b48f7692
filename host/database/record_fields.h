#pragma once

#include "host/database/fields.h"

/// Every record has these; files have them among the fields of its class.
template <class Visitor, class Self>
void AcDbSymbolTableRecord::head(Visitor& v, Self& o) {
  v.name(2, o), v.flags(70, o.flags_);
}
