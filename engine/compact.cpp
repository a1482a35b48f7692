#include "engine/compact.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "engine/catalog.h"
#include "engine/description.h"
#include "engine/mended_copy.h"
#include "engine/salvage.h"

namespace {

// Makes the file, empty, or fails when there is one.
void reserve(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
  if (descriptor < 0) {
    if (errno == EEXIST) fail(databaseExists, path);
    if (errno == EACCES || errno == EROFS || errno == EPERM) fail(noRight, path);
    if (errno == ENOSPC || errno == EDQUOT) fail(diskFull);
    fail(badPath, path);
  }
  ::close(descriptor);
}

void syncFile(const std::string& path) {
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  const bool good = descriptor >= 0 && fsync(descriptor) == 0;
  if (descriptor >= 0) ::close(descriptor);
  if (!good) fail(diskOrNetwork);
}

// Removes a file that didn't come to be.
class Unfinished {
 public:
  explicit Unfinished(std::string path) : path_(std::move(path)) {}
  Unfinished(const Unfinished&) = delete;
  Unfinished& operator=(const Unfinished&) = delete;
  ~Unfinished() {
    if (!path_.empty()) ::unlink(path_.c_str());
  }
  void finish() { path_.clear(); }

 private:
  std::string path_;
};

void setUp(Database& database) {
  database.execute("PRAGMA page_size=4096", Access::Schema);
  database.execute("PRAGMA auto_vacuum=NONE", Access::Schema);
  Transaction transaction(database, Transaction::Kind::Write, Access::Schema);
  createSystemTables(database);
  transaction.commit();
}

// What happens to the copy is told of the file that it is of.
void repair(const Database& from, const std::string& destination) {
  const std::string copy = destination + ".mended";
  try {
    MendedCopy mended(from, copy);
    buildDatabaseFile(destination, [&](Database& to) { copyContent(mended.database(), to, true); });
  } catch (jet::Failure& failure) {
    std::string& text = failure.error.text;
    if (const size_t place = text.find(copy); place != std::string::npos) {
      text.replace(place, copy.size(), from.path());
    }
    throw;
  }
}

}  // namespace

void createDatabaseFile(const std::string& path) {
  reserve(path);
  Unfinished unfinished(path);
  Database database(path, Database::Mode::Create);
  setUp(database);
  syncFolderOf(path);
  unfinished.finish();
}

bool isOurDatabase(Database& database) {
  Statement statement(database.handle(),
                      "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name IN "
                      "('zb_tables', 'zb_columns', 'zb_indexes', 'zb_relations', 'zb_queries')",
                      Access::Open, 0);
  return statement.step();
}

void buildDatabaseFile(const std::string& path, const std::function<void(Database&)>& fill) {
  struct stat attributes {};
  if (::lstat(path.c_str(), &attributes) == 0) fail(databaseExists, path);
  // The new file grows under another name, in the same folder, without a journal: until it is renamed it is
  // nothing.
  const std::string growing = path + ".new";
  ::unlink(growing.c_str());
  reserve(growing);
  Unfinished unfinished(growing);
  {
    Database database(growing, Database::Mode::Create);
    database.execute("PRAGMA journal_mode=MEMORY", Access::Schema);
    database.execute("PRAGMA synchronous=OFF", Access::Schema);
    setUp(database);
    fill(database);
  }
  syncFile(growing);
  if (::link(growing.c_str(), path.c_str()) != 0) {
    if (errno == EEXIST) fail(databaseExists, path);
    // A file system without hard links.
    if (::rename(growing.c_str(), path.c_str()) != 0) fail(diskOrNetwork);
    unfinished.finish();
  }
  syncFolderOf(path);
}

void compactDatabaseFile(const std::string& source, const std::string& destination) {
  Database from(source, Database::Mode::Read, Database::Sharing::NotInThisProcess);
  struct stat attributes {};
  if (::lstat(destination.c_str(), &attributes) == 0) fail(databaseExists, destination);
  if (from.examine() == Database::Health::Good && describesItself(from)) {
    try {
      return buildDatabaseFile(destination, [&](Database& to) { copyContent(from, to, false); });
    } catch (const jet::Failure& failure) {
      // Of a large file not all was looked at: then damage shows on the way.
      if (failure.error.number != notADatabase) throw;
    }
  }
  repair(from, destination);
}
