#pragma once

#include <memory>
#include <string>

#include "engine/database.h"
#include "engine/recovered_tables.h"

/// A copy of a damaged file in which all is put right that can be told: the header, SQLite's schema, the
/// catalog, and the ways to the rows. Only rows may still be damaged.
class MendedCopy {
 public:
  /// Fills the empty file at `path`. The damaged file is only read.
  MendedCopy(const Database& damaged, std::string path);
  MendedCopy(const MendedCopy&) = delete;
  MendedCopy& operator=(const MendedCopy&) = delete;

  Database& database() { return *database_; }

 private:
  void copyPages(const Database& damaged);
  void takeOverLog(const std::string& log);
  void mendHeader(FileHeader::Journal journal = FileHeader::Journal::Rollback);
  void forgetSchema();
  void writeSchema(const RecoveredTables& found);

  std::string path_;
  std::unique_ptr<Database> database_;
};
