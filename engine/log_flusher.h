#pragma once

#include <sqlite3.h>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "engine/errors/errors.h"

/// Brings what stands in a file's write-ahead log to the disk and into the file: on a thread of its own at
/// the latest `longestDelay` after it was written, whatever the writer does meanwhile, and at once when
/// asked. It has a connection of its own and never waits for a lock, so that neither side holds the other up.
class LogFlusher {
 public:
  /// From a commit to the begin of the flush; a slow disk has as long again before half a second is over.
  static constexpr std::chrono::milliseconds longestDelay{200};

  /// The file is open elsewhere in this process, and has a log.
  explicit LogFlusher(const std::string& path);
  /// What wasn't flushed stays in the log.
  ~LogFlusher();
  LogFlusher(const LogFlusher&) = delete;
  LogFlusher& operator=(const LogFlusher&) = delete;

  /// To be told after each commit.
  void written();
  /// Everything that was told is on the disk when this returns; throws `jet::Failure` when it can't be.
  void flush();
  /// Tries to bring the log into the file, so that it begins anew. A failure is `requireHealthy`'s.
  void relieve() { tryToFlush(); }
  /// Throws what the thread's last flush failed with, unless one has succeeded since.
  void requireHealthy();

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  void run();
  std::optional<jet::Error> tryToFlush();
  int bringToDisk();

  std::unique_ptr<sqlite3, Close> connection_;
  std::mutex flushing_;  // for the connection
  std::mutex state_;     // for what follows
  std::condition_variable changed_;
  bool dirty_ = false, stop_ = false;
  std::optional<jet::Error> failure_;
  int process_;
  std::thread thread_;
};
