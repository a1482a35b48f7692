#include "zarbo/module/function_table.h"

#include "brx/lisp_calls.h"

void registerTable(std::span<const TableRow> table, int base) {
  for (const TableRow& row : table) {
    acedDefun(row.name, base);
    acedRegFunc(row.wrapper, base);
    ++base;
  }
}

void undoTable(std::span<const TableRow> table, int base) {
  for (const TableRow& row : table) {
    acedRegFunc(nullptr, base);
    acedUndef(row.name, base);
    ++base;
  }
}
