#include "engine/log_flusher.h"

#include "platform/process/process.h"

LogFlusher::LogFlusher(const std::string& path) : process_(processNumber()) {
  sqlite3* opened = nullptr;
  int code = sqlite3_open_v2(path.c_str(), &opened,
                             SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  connection_.reset(opened);
  // The first read opens the log, and may have to wait for another process that does.
  sqlite3_busy_timeout(opened, 3000);
  if (code == SQLITE_OK) code = sqlite3_exec(opened, "PRAGMA schema_version", nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) failSqlite(opened, code, Access::Write, path);
  sqlite3_busy_timeout(opened, 0);
  thread_ = std::thread([this] { run(); });
}

LogFlusher::~LogFlusher() {
  // After a fork the thread is the other process's.
  if (processNumber() != process_) {
    thread_.detach();
    return;
  }
  {
    const std::lock_guard lock(state_);
    stop_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void LogFlusher::written() {
  const std::lock_guard lock(state_);
  if (dirty_) return;
  dirty_ = true;
  changed_.notify_all();
}

void LogFlusher::flush() {
  if (const auto error = tryToFlush()) throw jet::Failure{*error};
}

void LogFlusher::requireHealthy() {
  const std::lock_guard lock(state_);
  if (failure_) throw jet::Failure{*failure_};
}

void LogFlusher::run() {
  std::unique_lock lock(state_);
  while (true) {
    changed_.wait(lock, [this] { return stop_ || dirty_; });
    if (changed_.wait_for(lock, longestDelay, [this] { return stop_; })) return;
    lock.unlock();
    tryToFlush();
    lock.lock();
  }
}

std::optional<jet::Error> LogFlusher::tryToFlush() {
  const std::lock_guard alone(flushing_);
  {
    const std::lock_guard lock(state_);
    if (!dirty_) return std::nullopt;
    dirty_ = false;
  }
  const int code = bringToDisk();
  const std::lock_guard lock(state_);
  failure_.reset();
  if (code != SQLITE_OK) {
    failure_ = errorOfSqlite(nullptr, code, Access::Write);
    dirty_ = true;
  }
  return failure_;
}

int LogFlusher::bringToDisk() {
  int inLog = 0, inFile = 0;
  const int code =
      sqlite3_wal_checkpoint_v2(connection_.get(), "main", SQLITE_CHECKPOINT_PASSIVE, &inLog, &inFile);
  if (code != SQLITE_OK && (code & 0xFF) != SQLITE_BUSY) return code;
  if (code == SQLITE_OK && inLog == inFile) return SQLITE_OK;
  // Readers of older states, or another process that does the same, stand in the way: the log will do.
  sqlite3_file* log = nullptr;
  sqlite3_file_control(connection_.get(), "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
  if (!log || !log->pMethods) return SQLITE_IOERR_FSYNC;
  return log->pMethods->xSync(log, SQLITE_SYNC_NORMAL);
}
