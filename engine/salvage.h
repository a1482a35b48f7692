#pragma once

#include "engine/database.h"

/// Copies all tables with their rows, counters, indexes, relations and queries into a new database. Of a
/// damaged source, rows that can't be read are left out, and rules that damage has broken.
void copyContent(Database& from, Database& to, bool damaged);
