#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engine/database.h"

/// What a file says of one of its tables, relations, queries or links: the rows of the zb_ tables that are
/// about it, and SQLite's own statements for it. A copy of it lies elsewhere in the file, in zb_copies:
/// damage shows by the difference, and what is damaged is known by the copy's checksum.

/// Its kind, 't', 'r', 'q' or 'l', and its name, folded.
using ObjectKey = std::pair<char, std::string>;
/// A row of a zb_ table, whose name is the first value.
using DescriptionRow = std::vector<Stored>;
using Description = std::vector<DescriptionRow>;
using Descriptions = std::map<ObjectKey, Description>;

/// Gives a file that was made earlier what it doesn't have of the system tables. Part of the caller's
/// transaction.
void completeSystemTables(Database& database);

/// The tables that a file of this engine has about itself; that of links comes with the first one.
extern const char* const systemTables;
extern const char* const linksTable;

/// Adds a row of a zb_ table to the object that it is about; passed over when it isn't complete.
void addRow(Descriptions& objects, std::string_view table, std::vector<Stored> values);
/// A value in the first row that a description has of a zb_ table; null when there is none.
const Stored* valueOf(const Description& description, std::string_view table, size_t column);

/// A copy, and where the table began when it was made.
struct DescriptionCopy {
  Description description;
  uint32_t root = 0;  ///< 0: not a table
};
/// Adds a row of zb_copies, if its checksum is right; tells whether it is.
bool addCopy(std::map<ObjectKey, DescriptionCopy>& copies, const std::vector<Stored>& row);

/// Whether the catalog and the copies say the same, and SQLite's schema what the catalog does. Files that
/// were made before there were copies have none. Inside a read transaction.
bool describesItself(Database& database);

/// Makes the copies say what the catalog says. Part of the caller's transaction.
void copyDescriptions(Database& database);

/// Puts the rows of an object into the zb_ tables.
void restoreDescription(Database& database, const Description& description);
