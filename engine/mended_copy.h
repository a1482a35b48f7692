#pragma once

#include <memory>
#include <string>

#include "engine/database.h"

/// A copy of a damaged file in which all is put right that can be told without its content: the header and
/// the ways to the rows.
class MendedCopy {
 public:
  /// Fills the empty file at `path`. The damaged file is only read.
  MendedCopy(const Database& damaged, std::string path);
  MendedCopy(const MendedCopy&) = delete;
  MendedCopy& operator=(const MendedCopy&) = delete;

  Database& database() { return *database_; }

 private:
  void copyPages(const Database& damaged);
  void mendHeader();
  void mendTables();

  std::string path_;
  std::unique_ptr<Database> database_;
};
