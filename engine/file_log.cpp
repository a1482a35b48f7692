#include "engine/file_log.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <thread>

#include "engine/errors/errors.h"
#include "engine/file_header.h"
#include "engine/statement.h"

namespace {

using namespace std::chrono_literals;

constexpr int indexRegion = 32768;  // bytes that SQLite maps at a time

struct Close {
  void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};

bool isThere(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::exists(std::filesystem::symlink_status(path, ignored));
}

sqlite3_file* fileOf(sqlite3* connection) {
  sqlite3_file* file = nullptr;
  sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file);
  return file && file->pMethods ? file : nullptr;
}

void removeFile(const std::string& name, const std::string& path) {
  std::error_code error;
  if (!std::filesystem::remove(name, error) && error) fail(noRight, path);
}

}  // namespace

std::string logName(const std::string& path) { return path + "-wal"; }
std::string logIndexName(const std::string& path) { return path + "-shm"; }

void removeForeignLog(const std::string& path) {
  if (!isThere(logName(path)) && !isThere(logIndexName(path))) return;
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, SQLITE_OPEN_READONLY, nullptr);
  const std::unique_ptr<sqlite3, Close> connection(opened);
  sqlite3_file* const file = code == SQLITE_OK ? fileOf(opened) : nullptr;
  if (!file) return;  // whoever opens it for good tells why
  // Who begins or ends a log locks the file against this.
  for (int tries = 0; file->pMethods->xLock(file, SQLITE_LOCK_SHARED) != SQLITE_OK; ++tries) {
    if (tries == 300) fail(fileInUse, path);
    std::this_thread::sleep_for(10ms);
  }
  FileHeader header;
  const bool read = file->pMethods->xRead(file, header.bytes(), FileHeader::size, 0) == SQLITE_OK;
  if (read && header.hasName() && header.journal() == FileHeader::Journal::Rollback) {
    removeFile(logName(path), path);
    removeFile(logIndexName(path), path);
  }
  file->pMethods->xUnlock(file, SQLITE_LOCK_NONE);
}

std::optional<LogState> newestLogState(sqlite3* connection) {
  sqlite3_file* const file = fileOf(connection);
  void volatile* index = nullptr;
  if (!file || file->pMethods->iVersion < 2 ||
      file->pMethods->xShmMap(file, 0, indexRegion, 0, &index) != SQLITE_OK || !index) {
    return std::nullopt;
  }
  // The header stands there twice: a writer changes the second first. Unequal, or not made yet: no state.
  const auto* const words = static_cast<const volatile uint32_t*>(index);
  LogState first, second;
  for (size_t i = 0; i < first.size(); ++i) first[i] = words[i];
  file->pMethods->xShmBarrier(file);
  for (size_t i = 0; i < second.size(); ++i) second[i] = words[first.size() + i];
  if (first != second || first[0] == 0) return std::nullopt;
  return first;
}

bool leaveLog(sqlite3* connection) {
  sqlite3_busy_handler(connection, nullptr, nullptr);
  // The change of the file's header goes through a rollback journal.
  sqlite3_exec(connection, "PRAGMA main.synchronous=EXTRA", nullptr, nullptr, nullptr);
  Statement mode(connection, "PRAGMA main.journal_mode=DELETE", Access::Open, 0);
  int code = sqlite3_step(mode.get());
  const bool left = code == SQLITE_ROW && mode.text(0) == "delete";
  if (code == SQLITE_ROW) code = sqlite3_step(mode.get());  // with which it is done
  if ((code & 0xFF) == SQLITE_BUSY) return false;
  if (code != SQLITE_DONE) failSqlite(connection, code, Access::Open);
  return left;
}
