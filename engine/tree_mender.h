#pragma once

#include <set>
#include <string>
#include <vector>

#include "engine/table_leaf.h"

/// A table of a damaged file.
struct StoredTable {
  std::string name;   ///< for messages
  uint32_t root = 0;  ///< 0 when it isn't known
  /// No row of the table has a greater number.
  int64_t lastRow = RowRange().last;
  StoredColumns columns;
  bool needed = true;  ///< the repair fails when nothing is left of it
};

/// Gives the tables of a damaged file their rows back that lie on good pages to which no way leads any more.
///
/// A table is a tree of pages: rows in the order of their numbers on the leaves, and above them pages that
/// only tell the way. A leaf that isn't whole is written anew with the rows that can be told on it; a row
/// whose number can't be where it stands is none of them, so that it doesn't hide the rows behind it. Where a
/// page above is damaged, all pages above the leaves are made anew, from the leaves that are still found
/// through the tree and those that no tree and no list of free pages leads to, if the kinds of their values
/// fit this table.
///
/// Fails (3343) when a page may belong to two tables, and when nothing is left of a table that had rows.
/// Roots that weren't known are new pages then.
void mendTrees(PageFile& file, std::vector<StoredTable>& tables);

/// The pages with rows of a table, found in the same way; nothing is written.
std::vector<uint32_t> leavesOf(PageFile& file, const StoredTable& table);

/// Pages to which another one leads, as far as it is whole.
std::set<uint32_t> pagesBelow(const PageFile& file);

/// Whether a page can be the first one of a table: it leads to rows of the table's kinds, or to none.
bool canBeRoot(const PageFile& file, uint32_t root, const StoredColumns& columns);
