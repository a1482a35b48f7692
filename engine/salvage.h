#pragma once

#include <vector>

#include "engine/database.h"

/// Copies all tables with their rows, counters, indexes, relations and queries into a new database. Of a
/// damaged source, what can't be read is left out, row by row; fails (3343) when not even a table's name can
/// be read. Tells the relations that can't be made, which are left out.
std::vector<jet::Error> copyContent(Database& from, Database& to, bool damaged);
