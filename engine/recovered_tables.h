#pragma once

#include "engine/description.h"
#include "engine/tree_mender.h"

/// What can be told of the tables of a damaged file: from SQLite's schema, from the catalog, and from its
/// copies, each of which may be damaged.
struct RecoveredTables {
  Descriptions objects;
  /// One for each table of `objects`, by its name in SQLite; without its rows being mended.
  std::vector<StoredTable> tables;
  /// The greatest numbers that rows were given, by the table's name in SQLite.
  std::map<std::string, int64_t> lastRows;
};

/// `file` is the repair's own: the tables that the file has about itself are mended in it. Fails (3343) when
/// nothing tells how the rows of a table are to be read.
RecoveredTables recoverTables(PageFile& file);

/// SQLite's statement for a table as it lies in the file, without rules.
std::string plainStorage(const Description& table);
