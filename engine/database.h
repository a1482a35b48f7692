#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "engine/file_log.h"
#include "engine/log_flusher.h"
#include "engine/statement.h"

/// Which state of the file something was read from. Two equal stamps mean that nothing was committed between;
/// one that tells nothing is equal to none.
class FileStamp {
 public:
  FileStamp() = default;
  /// Of a file without a log: its counter of changes, which grows with each commit of any connection.
  explicit FileStamp(uint32_t changes) : kind_(Kind::Counter), state_{changes} {}
  explicit FileStamp(const LogState& state) : kind_(Kind::Log), state_(state) {}

  bool isOfLog() const { return kind_ == Kind::Log; }
  friend bool operator==(const FileStamp& a, const FileStamp& b) {
    return a.kind_ == b.kind_ && a.kind_ != Kind::Nothing && a.state_ == b.state_;
  }

 private:
  enum class Kind { Nothing, Counter, Log } kind_ = Kind::Nothing;
  LogState state_{};
};

/// One connection with a database file. Modes of journal, synchronisation and locking: docs/database.md.
class Database {
 public:
  enum class Mode { Read, Write, Create };
  enum class Health { Good, Damaged };
  enum class Sharing { Any, NotInThisProcess };
  /// When a change is on the disk: before it is acknowledged, or half a second later at most.
  enum class Writing { Full, Flow };

  /// Opens without looking at the content; fails with the number that the file's state has.
  Database(const std::string& path, Mode mode, Sharing sharing = Sharing::Any,
           Writing writing = Writing::Full);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  /// Device and number of a file.
  using Identity = platform::FileIdentity;

  sqlite3* handle() const { return handle_.get(); }
  const std::string& path() const { return path_; }
  bool readOnly() const { return readOnly_; }

  /// True when somebody has put another file in the place of the open one. Fails when there is none now.
  /// Looks a hundred times a second at most, since a walk through a table asks at every step.
  bool isReplaced();
  /// Opens the file that is at the path now, in the mode of before; `examine` comes next. What was prepared
  /// and attached is gone.
  void reopen();

  /// Reads the file for the first time: finishes what a killed writer left, takes a write-ahead log away that
  /// another program gave it, and fails for what is no database. How deep the content is checked depends on
  /// the file's size.
  Health examine();

  /// From now on entries of SQLite's schema that it can't understand are passed over. Before the first
  /// statement, and only for a file of our own.
  void tolerateDamagedSchema();
  void execute(std::string_view sql, Access access);
  /// A prepared statement that is kept for the next time.
  Statement& prepared(const std::string& sql, Access access);
  /// Drops the kept statements; nothing may hold one.
  void forgetStatements() { statements_.clear(); }

  /// Adds another database file under a name; fails as opening it would. One that is read only is that here,
  /// too.
  void attach(const std::string& path, const std::string& schema);
  void detach(const std::string& schema);
  static Identity fileIdentity(const std::string& path);  ///< zeroes when there is no file

  /// Before a transaction that changes something: gives the file its log when writes flow. Fails when what
  /// was written before can't be brought to the disk.
  void beginWriting(Access access);
  /// All that was answered is on the disk when this returns; fails when that can't be done.
  void settle();
  /// Takes the file's stamp: before a transaction that reads, or inside one that writes.
  void beginReading();
  /// Of what the transaction reads: the file's state when it began, or an older one.
  const FileStamp& stamp() const { return stamp_; }
  /// Grows with each change of the schema. Inside a transaction.
  uint32_t schemaVersion(const char* schema = "main");
  /// Bytes of the file as they are on it, past all caches and logs; false when there are not so many.
  bool readBytes(int64_t place, void* bytes, int count, const char* schema = "main") const;
  /// True when nothing was committed since `then`: by connections of this process surely, by others up to
  /// `longestTrust` ago. Costs no lock, and where the file has no log a small read of it after that time.
  bool unchangedSince(const FileStamp& then);
  static constexpr std::chrono::microseconds longestTrust{50};

 private:
  struct Close {
    void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
  };
  void enter(Sharing sharing);
  void openChecked(Mode mode);
  void open(int flags);
  void configure();
  void setModes();
  void withRightToWrite(const std::function<void()>& work);
  void close();
  bool meetLog();
  bool hasLog() const;
  void flow();
  static int committed(void* database, sqlite3* handle, const char* schema, int pages);
  Health firstLook();
  bool contentIsGood();
  int firstRead();
  static int waitForLock(void* database, int tries);

  std::string path_;
  bool readOnly_;
  bool onNetwork_ = true;
  bool flows_;
  bool logIsOpen_ = false;  // by this connection, which keeps the others from taking it away
  int attached_ = 0;
  FileStamp stamp_, schemaStamp_;
  uint32_t schema_ = 0;
  Identity identity_;
  std::chrono::steady_clock::time_point lastLook_, stampTime_;
  FileStamp newest_;            // what the file showed at that time
  uint64_t commitsBefore_ = 0;  // of this process
  std::chrono::steady_clock::time_point waitingSince_;
  std::unique_ptr<sqlite3, Close> handle_;
  std::unique_ptr<LogFlusher> flusher_;  // once this connection has written to the log
  std::map<std::string, Statement, std::less<>> statements_;
};

/// A transaction that is undone unless it is committed. Inside another one it is a part of that.
class Transaction {
 public:
  enum class Kind { Read, Write };
  Transaction(Database& database, Kind kind, Access access);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();
  void commit();

 private:
  Database& database_;
  Access access_;
  bool outer_;
  bool done_ = false;
};

/// Remembers that damage showed while the file was in use: its next opening checks all of it.
void noteDamage(const char* path);

/// A name between double quotes, as SQL wants it.
std::string quoted(std::string_view name);

/// The full path of a file that a caller named: "\" may stand for "/", a relative path is one of the
/// process's current folder. Fails for what can't be a path.
std::string fullPath(std::wstring_view path);
