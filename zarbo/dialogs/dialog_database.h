#pragma once

#include <optional>
#include <string>

#include "zarbo/database/engine_client.h"

/// An engine object of a dialog's own, on a database that is opened for the dialog alone.
class PrivateDatabase {
 public:
  PrivateDatabase() : engine_(Engine::create()) {}
  /// Closes what was opened for writing.
  ~PrivateDatabase();
  PrivateDatabase(const PrivateDatabase&) = delete;
  PrivateDatabase& operator=(const PrivateDatabase&) = delete;

  /// False where the engine's class isn't there.
  explicit operator bool() const { return static_cast<bool>(engine_); }
  /// False when the database can't be opened, which `report` tells, or only be read, which a box tells.
  bool open(const std::wstring& path, bool (*report)(Engine&));
  Engine& engine() { return engine_; }

 private:
  Engine engine_;
  bool isOpen_ = false;
};

/// The database that a dialog edits: the one of a path, opened for the dialog, or the active connection's.
class DialogConnection {
 public:
  explicit DialogConnection(const std::optional<std::wstring>& path);
  /// Empty when there is none; what there is to tell has been told. It stays the same, whatever becomes the
  /// active connection meanwhile.
  const Engine& engine() const { return engine_; }

 private:
  std::optional<PrivateDatabase> own_;
  Engine engine_;
};

/// Reports of a private database's failure: printed, the second behind the error that the active connection
/// has to tell.
bool printFailure(Engine& engine);
bool reportActiveFailure(Engine& engine);

/// Stores the error of a statement that failed, and says nothing.
void runStatement(Engine& engine, const std::wstring& sql);

/// For a dialog that wasn't given a connection.
void printNoStandardsDatabase();
