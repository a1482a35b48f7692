#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/jet_sql/catalog.h"
#include "platform/com/owners.h"

/// The text that describes a field, as `Structure` gives it and a definition takes it: "text(50) required".
std::string describeColumn(const jet::Column& column);

/// One change that a definition asks for.
struct DefinitionEntry {
  enum class Kind { Column, Index, DropColumn, DropIndex, RenameColumn } kind = Kind::Column;
  jet::Column column;
  jet::Index index;
  std::string name, newName;  ///< of what is dropped or renamed
};

/// Reads a definition array (see docs/database.md). Fails with 3292 and the place for what can't be read.
std::vector<DefinitionEntry> readDefinition(const VARIANT& definition);

/// The columns of an index in the form "a, b DESC".
std::vector<jet::IndexColumn> readIndexColumns(std::string_view list);
