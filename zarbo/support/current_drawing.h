#pragma once

#include "brx/resbuf.h"

class AcDbDatabase;

/// Database of the current document; null when none is open.
AcDbDatabase* currentDatabase();

/// Erases each entity of a selection set; one that is erased already comes back.
void eraseSelection(const ads_name set);
