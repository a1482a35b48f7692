#pragma once

#include <vector>

#include "engine/page_file.h"

/// What SQLite's schema says of one table.
struct StoredTable {
  enum class Storage { Any, Integer, Real, Text, Blob };
  uint32_t root = 0;
  /// No row of the table has a greater number.
  int64_t lastRow = int64_t{1} << 40;
  std::vector<Storage> columns;
};

/// Gives the tables of a damaged file their rows back that lie on good pages to which no way leads any more.
///
/// A table is a tree of pages: rows in the order of their numbers on the leaves, and above them pages that
/// only tell the way. A row whose number can't be where it stands is taken off its leaf, so that it doesn't
/// hide the rows behind it. Where a page above is damaged, all pages above the leaves are made anew, from the
/// leaves that are still found through the tree and those that no tree and no list of free pages leads to, if
/// the kinds of their values fit this table and no other damaged one.
void mendTrees(PageFile& file, const std::vector<StoredTable>& tables);
