#pragma once

#include "brx/db_database.h"

/// Fills model space with `count` entities of all common kinds, on layers with colours and linetypes of
/// their own, in several text styles, with extended data at every tenth: the same ones at every call.
void drawMixed(AcDbDatabase& drawing, int count);
