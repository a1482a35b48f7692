#include "engine/compact.h"

#include <filesystem>

#include "engine/catalog.h"
#include "engine/description.h"
#include "engine/mended_copy.h"
#include "engine/salvage.h"
#include "platform/files/growing_file.h"

namespace {

// A dangling link is one, too.
void requireNoFile(const std::string& path) {
  std::error_code error;
  const std::filesystem::file_type type = std::filesystem::symlink_status(path, error).type();
  if (type == std::filesystem::file_type::none) failAtFile(platform::fileProblemOf(error.value()), path);
  if (type != std::filesystem::file_type::not_found) fail(databaseExists, path);
}

void setUp(Database& database) {
  database.execute("PRAGMA page_size=4096", Access::Schema);
  database.execute("PRAGMA auto_vacuum=NONE", Access::Schema);
  Transaction transaction(database, Transaction::Kind::Write, Access::Schema);
  createSystemTables(database);
  transaction.commit();
}

// What happens to the copy is told of the file that it is of.
std::vector<jet::Error> repair(const Database& from, const std::string& destination) {
  const platform::GrowingFile copy(destination);
  if (copy.problem() != platform::FileProblem::none) failAtFile(copy.problem(), destination);
  try {
    std::vector<jet::Error> leftOut;
    MendedCopy mended(from, copy.path());
    buildDatabaseFile(destination, [&](Database& to) { leftOut = copyContent(mended.database(), to, true); });
    return leftOut;
  } catch (jet::Failure& failure) {
    std::string& text = failure.error.text;
    if (const size_t place = text.find(copy.path()); place != std::string::npos) {
      text.replace(place, copy.path().size(), from.path());
    }
    throw;
  }
}

}  // namespace

void createDatabaseFile(const std::string& path) {
  buildDatabaseFile(path, [](Database&) {});
}

bool isOurDatabase(Database& database) {
  Statement statement(database.handle(),
                      "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name IN "
                      "('zb_tables', 'zb_columns', 'zb_indexes', 'zb_relations', 'zb_queries')",
                      Access::Open, 0);
  return statement.step();
}

void buildDatabaseFile(const std::string& path, const std::function<void(Database&)>& fill) {
  requireNoFile(path);
  // Without a journal: until the new file appears it is nothing.
  platform::GrowingFile growing(path);
  if (growing.problem() != platform::FileProblem::none) failAtFile(growing.problem(), path);
  {
    Database database(growing.path(), Database::Mode::Create);
    database.execute("PRAGMA journal_mode=MEMORY", Access::Schema);
    database.execute("PRAGMA synchronous=OFF", Access::Schema);
    setUp(database);
    fill(database);
  }
  if (!growing.appear()) failAtFile(growing.problem(), path);
}

std::vector<jet::Error> compactDatabaseFile(const std::string& source, const std::string& destination) {
  Database from(source, Database::Mode::Read, Database::Sharing::NotInThisProcess);
  requireNoFile(destination);
  std::vector<jet::Error> leftOut;
  if (from.examine() == Database::Health::Good && describesItself(from)) {
    try {
      buildDatabaseFile(destination, [&](Database& to) { leftOut = copyContent(from, to, false); });
      return leftOut;
    } catch (const jet::Failure& failure) {
      // Of a large file not all was looked at: then damage shows on the way.
      if (failure.error.number != notADatabase) throw;
    }
  }
  return repair(from, destination);
}
