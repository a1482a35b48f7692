#include "engine/compact.h"

#include <cerrno>
#include <filesystem>

#include "engine/catalog.h"
#include "engine/mended_copy.h"
#include "engine/salvage.h"
#include "platform/files/growing_file.h"

namespace {

[[noreturn]] void failMaking(int error, const std::string& path) {
  switch (error) {
    case EEXIST:
      fail(databaseExists, path);
    case EACCES:
    case EROFS:
    case EPERM:
      fail(noRight, path);
    case ENOSPC:
    case EDQUOT:
      fail(diskFull);
    case EIO:
    case ESTALE:
      fail(diskOrNetwork);
    default:
      fail(badPath, path);
  }
}

// A dangling link is one, too.
void requireNoFile(const std::string& path) {
  std::error_code error;
  const std::filesystem::file_type type = std::filesystem::symlink_status(path, error).type();
  if (type == std::filesystem::file_type::none) failMaking(error.value(), path);
  if (type != std::filesystem::file_type::not_found) fail(databaseExists, path);
}

void setUp(Database& database) {
  database.execute("PRAGMA page_size=4096", Access::Schema);
  database.execute("PRAGMA auto_vacuum=NONE", Access::Schema);
  Transaction transaction(database, Transaction::Kind::Write, Access::Schema);
  createSystemTables(database);
  transaction.commit();
}

}  // namespace

void createDatabaseFile(const std::string& path) {
  buildDatabaseFile(path, [](Database&) {});
}

bool isOurDatabase(Database& database) {
  Statement statement(database.handle(),
                      "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = 'zb_tables'", Access::Open,
                      0);
  return statement.step();
}

void buildDatabaseFile(const std::string& path, const std::function<void(Database&)>& fill) {
  requireNoFile(path);
  // Without a journal: until the new file appears it is nothing.
  platform::GrowingFile growing(path);
  if (growing.error() != 0) failMaking(growing.error(), path);
  {
    Database database(growing.path(), Database::Mode::Create);
    database.execute("PRAGMA journal_mode=MEMORY", Access::Schema);
    database.execute("PRAGMA synchronous=OFF", Access::Schema);
    setUp(database);
    fill(database);
  }
  if (!growing.appear()) failMaking(growing.error(), path);
}

std::vector<jet::Error> compactDatabaseFile(const std::string& source, const std::string& destination) {
  Database from(source, Database::Mode::Read, Database::Sharing::NotInThisProcess);
  requireNoFile(destination);
  std::vector<jet::Error> leftOut;
  if (from.examine() == Database::Health::Good) {
    try {
      buildDatabaseFile(destination, [&](Database& to) { leftOut = copyContent(from, to, false); });
      return leftOut;
    } catch (const jet::Failure& failure) {
      // Of a large file not all was looked at: then damage shows on the way.
      if (failure.error.number != notADatabase) throw;
    }
  }
  const platform::GrowingFile copy(destination);
  if (copy.error() != 0) failMaking(copy.error(), destination);
  MendedCopy mended(from, copy.path());
  buildDatabaseFile(destination, [&](Database& to) { leftOut = copyContent(mended.database(), to, true); });
  return leftOut;
}
