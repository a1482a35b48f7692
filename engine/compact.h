#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/database.h"

/// A new database without tables, permanent when this returns. An existing file is refused (3204).
void createDatabaseFile(const std::string& path);

/// Makes a database file that `fill` fills, fast, since nothing of it counts before it is complete: it grows
/// under another name in the same folder, and appears when it is on disk. An existing file is refused (3204).
void buildDatabaseFile(const std::string& path, const std::function<void(Database&)>& fill);

/// True for a file that this engine made. Inside a read transaction.
bool isOurDatabase(Database& database);

/// Writes a new file with all rows, indexes, relations and queries of `source`; of a damaged one, all that
/// can be read. An existing destination, also the source itself, is refused (3204), and so is a source that
/// this process has open (3045). `destination` appears when it is complete and on disk. The source is only
/// read. Tells what had to be left out.
std::vector<jet::Error> compactDatabaseFile(const std::string& source, const std::string& destination);
