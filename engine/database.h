#pragma once

#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "engine/statement.h"

/// Which state of the file something was read from. Two equal stamps mean that nothing was committed between.
struct FileStamp {
  uint32_t changes = 0;  ///< grows with each commit of any connection
  uint32_t schema = 0;   ///< grows with each change of the schema
  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// One connection with a database file. Modes of journal, synchronisation and locking: docs/database.md.
class Database {
 public:
  enum class Mode { Read, Write, Create };
  enum class Health { Good, Damaged };
  enum class Sharing { Any, NotInThisProcess };

  /// Opens without looking at the content; fails with the number that the file's state has.
  Database(const std::string& path, Mode mode, Sharing sharing = Sharing::Any);
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

  /// The file's state now. Reliable as the state of what is read only inside a read transaction.
  FileStamp stamp(const char* schema = "main") const;
  /// Bytes of the file as they are on it, past all caches; false when there are not so many.
  bool readBytes(int64_t place, void* bytes, int count, const char* schema = "main") const;
  /// True when surely nothing was committed since `then`. Costs one small read of the file, and no lock.
  bool unchangedSince(const FileStamp& then) const;

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
  bool leaveWriteAheadLog();
  Health firstLook();
  bool contentIsGood();
  int firstRead();
  static int waitForLock(void* database, int tries);

  std::string path_;
  bool readOnly_;
  bool stampIsReliable_ = false;
  Identity identity_;
  std::chrono::steady_clock::time_point lastLook_;
  std::chrono::steady_clock::time_point waitingSince_;
  std::unique_ptr<sqlite3, Close> handle_;
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
