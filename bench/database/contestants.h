#pragma once

#include <sqlite3.h>

#include <string>
#include <vector>

#include "bench/database/lisp_host.h"
#include "interfaces/engine.h"
#include "platform/com/com_ptr.h"
#include "platform/com/owners.h"

/// The table T of every contestant: a counter, a text with an index, and ten plain columns, of which the
/// 1st, 4th, … are whole numbers, the 2nd, 5th, … real ones and the 3rd, 6th, … texts.
inline constexpr int plainColumns = 10;
std::string keyOf(int row);
std::string textOf(int row);

/// Work on the table, one round of it at a time. What needs preparation outside the clock is `prepare…`.
class Contestant {
 public:
  virtual ~Contestant() = default;
  virtual const char* name() const = 0;
  virtual void prepareSeek(const std::vector<int>& rows) = 0;
  virtual void seek() = 0;
  virtual void goToTop() = 0;
  virtual void skip(int times) = 0;
  virtual void prepareAppend(const std::vector<int>& rows) = 0;
  virtual void append() = 0;
  /// Goes to a row, whose number is `row`, for `replace` to change it `times` times.
  virtual void prepareReplace(int row, int times) = 0;
  virtual void replace() = 0;
};

/// A C program that uses SQLite as its manual says: statements prepared once, all columns of a row copied
/// out.
class PlainProgram final : public Contestant {
 public:
  explicit PlainProgram(const std::string& path);
  ~PlainProgram() override;
  PlainProgram(const PlainProgram&) = delete;
  PlainProgram& operator=(const PlainProgram&) = delete;

  const char* name() const override { return "plain"; }
  /// Fills the table in one transaction.
  void fill(int rows);
  /// From now on changes don't wait for the disk.
  void flow();
  void prepareSeek(const std::vector<int>& rows) override;
  void seek() override;
  void goToTop() override { sqlite3_reset(walk_); }
  void skip(int times) override;
  void prepareAppend(const std::vector<int>& rows) override;
  void append() override;
  void prepareReplace(int row, int times) override { replaced_ = row, replaceTimes_ = times; }
  void replace() override;

 private:
  void run(const char* sql);
  sqlite3_stmt* prepare(const char* sql);
  void copyRow(sqlite3_stmt* row);
  void insert(int row);

  sqlite3* database_ = nullptr;
  std::vector<sqlite3_stmt*> statements_;
  sqlite3_stmt *find_, *walk_, *insert_, *update_;
  std::vector<std::string> keys_;
  std::vector<int> rows_;
  int replaced_ = 0, replaceTimes_ = 0;
  struct Value {
    double number = 0;
    std::string text;
  };
  std::vector<Value> row_;
};

/// The engine through its interface.
class EngineObjectUser final : public Contestant {
 public:
  explicit EngineObjectUser(const std::string& path);
  /// Makes the file with its empty table.
  static void createFile(const std::string& path);

  const char* name() const override { return "engine"; }
  void prepareSeek(const std::vector<int>& rows) override;
  void seek() override;
  void goToTop() override;
  void skip(int times) override;
  void prepareAppend(const std::vector<int>& rows) override;
  void append() override;
  void prepareReplace(int row, int times) override;
  void replace() override;

 private:
  ComPtr<IZbEngine> engine_;
  std::vector<COleVariant> keys_;
  std::vector<COleSafeArray> rows_;
};

/// The functions that a LISP application calls.
class LispApplication final : public Contestant {
 public:
  explicit LispApplication(const std::string& path);

  const char* name() const override { return "LISP"; }
  void prepareSeek(const std::vector<int>& rows) override;
  void seek() override;
  void goToTop() override;
  void skip(int times) override;
  void prepareAppend(const std::vector<int>& rows) override;
  void append() override;
  void prepareReplace(int row, int times) override;
  void replace() override;

 private:
  LispHost host_;
};
