#pragma once

#include <memory>
#include <string>

#include "engine/database.h"
#include "engine/recovered_tables.h"

/// A copy of a damaged file in which all is put right that can be told: the header, SQLite's schema, the
/// catalog, and the ways to the rows. Only rows may still be damaged. Removed at the end.
class MendedCopy {
 public:
  /// `path` is the copy's own. The damaged file is only read.
  MendedCopy(const Database& damaged, std::string path);
  ~MendedCopy();
  MendedCopy(const MendedCopy&) = delete;
  MendedCopy& operator=(const MendedCopy&) = delete;

  Database& database() { return *database_; }

 private:
  void copyPages(const Database& damaged);
  void mendHeader();
  void forgetSchema();
  void writeSchema(const RecoveredTables& found);

  std::string path_;
  std::unique_ptr<Database> database_;
};
