#pragma once

#include <span>

#include "brx/db_database.h"

namespace host {

/// A symbol table with its name in drawing exchange files.
struct TableName {
  const char* name;
  AcRxClass* (*table)();
  AcRxClass* (*record)();
};

/// In the order of files.
std::span<const TableName> tableNames();

}  // namespace host
