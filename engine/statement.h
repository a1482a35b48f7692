#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "engine/errors/errors.h"

/// A value as SQLite keeps it.
struct Stored {
  enum class Kind { Null, Integer, Real, Text, Blob } kind = Kind::Null;
  int64_t integer = 0;
  double real = 0;
  std::string bytes;  ///< of a text, in UTF-8, or a blob

  static Stored of(int64_t value) { return {Kind::Integer, value, 0, {}}; }
  static Stored of(double value) { return {Kind::Real, 0, value, {}}; }
  static Stored of(std::string_view text) { return {Kind::Text, 0, 0, std::string(text)}; }
  bool isNull() const { return kind == Kind::Null; }
};

/// A prepared statement; what fails throws `jet::Failure` with the number that `access` gives it.
class Statement {
 public:
  Statement() = default;
  Statement(sqlite3* database, std::string_view sql, Access access,
            unsigned flags = SQLITE_PREPARE_PERSISTENT);
  Statement(Statement&& other) noexcept
      : statement_(std::exchange(other.statement_, nullptr)), access_(other.access_) {}
  Statement& operator=(Statement&& other) noexcept {
    std::swap(statement_, other.statement_);
    std::swap(access_, other.access_);
    return *this;
  }
  ~Statement() { sqlite3_finalize(statement_); }

  explicit operator bool() const { return statement_ != nullptr; }
  void setAccess(Access access) { access_ = access; }
  sqlite3_stmt* get() const { return statement_; }

  /// Texts and blobs are not copied: `value` must outlive the run.
  void bind(int place, const Stored& value);
  void bind(int place, int64_t value);
  void bind(int place, std::string_view text);
  /// True on a row, false when the statement is done.
  bool step();
  void reset() { sqlite3_reset(statement_); }

  int64_t integer(int column) const { return sqlite3_column_int64(statement_, column); }
  std::string_view text(int column) const;

 private:
  void check(int code) const;

  sqlite3_stmt* statement_ = nullptr;
  Access access_ = Access::Read;
};

/// Resets a statement when it goes, so that no read lock is left behind.
class Run {
 public:
  explicit Run(Statement& statement) : statement_(statement) {}
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;
  ~Run() { statement_.reset(); }

 private:
  Statement& statement_;
};
