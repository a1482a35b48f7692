#pragma once

#include <vector>

#include "engine/database.h"

/// Copies all tables with their rows, counters, indexes, relations and queries into a new database. Of a
/// damaged source, rows that can't be read are left out. Tells the rules and relations that can't be made,
/// which are left out.
std::vector<jet::Error> copyContent(Database& from, Database& to, bool damaged);
