#pragma once

#include <span>

#include "brx/adesk.h"

/// A LISP name and the wrapper that the host calls for it.
struct TableRow {
  const ACHAR* name;
  int (*wrapper)();
};

/// Defines the rows for the current drawing, in order, under the codes `base`, `base` + 1, …
void registerTable(std::span<const TableRow> table, int base);
void undoTable(std::span<const TableRow> table, int base);

/// The two tables, 63 and 108 rows. Codes count through both, so the base of the second is the length
/// of the first.
std::span<const TableRow> zbFunctions();
std::span<const TableRow> kvFunctions();
inline int zbFunctionCount() { return static_cast<int>(zbFunctions().size()); }
