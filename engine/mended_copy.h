#pragma once

#include <memory>
#include <string>

#include "engine/database.h"
#include "engine/growing_file.h"

/// A copy of a damaged file in which all is put right that can be told without its content: the header and
/// the ways to the rows. Removed at the end.
class MendedCopy {
 public:
  /// Lies beside `destination`. The damaged file is only read.
  MendedCopy(const Database& damaged, const std::string& destination);
  MendedCopy(const MendedCopy&) = delete;
  MendedCopy& operator=(const MendedCopy&) = delete;

  Database& database() { return *database_; }

 private:
  void copyPages(const Database& damaged);
  void mendHeader();
  void mendTables();

  GrowingFile file_;
  std::unique_ptr<Database> database_;
};
