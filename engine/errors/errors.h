#pragma once

#include <sqlite3.h>

#include <string>
#include <string_view>

#include "engine/errors/error.h"
#include "platform/files/file_facts.h"

/// Numbers of the desktop database engine that this server answers, beside those of the SQL dialect.
enum EngineError : int {
  unexpectedFailure = 3000,
  invalidArgument = 3001,
  indexNotFound = 3015,
  noCurrentIndex = 3019,
  noCurrentRecord = 3021,
  fileNotFound = 3024,
  diskFull = 3026,
  diskOrNetwork = 3043,
  badPath = 3044,
  fileInUse = 3045,
  noRight = 3051,
  badFileName = 3055,
  linkedTable = 3057,
  cancelled = 3059,
  neededByIndex = 3280,
  neededByRelation = 3281,
  definitionSyntax = 3292,
  fieldOfRelation = 3303,
  tableNotFound = 3078,
  badName = 3125,
  notUpdatable = 3164,
  recordDeleted = 3167,
  outOfMemory = 3183,
  cantReadLocked = 3187,
  databaseExists = 3204,
  cantUpdateLocked = 3218,
  lockedByOther = 3260,
  cantLockTable = 3262,
  ruleMessage = 3316,
  ruleBroken = 3317,
  notADatabase = 3343,
  notOpen = 3420,
  wrongValueType = 3421,
};

/// What an operation wanted of the database: the same lock has another number for each.
enum class Access { Open, Read, Write, Schema };

/// The error with the text of its number; `detail`, a name as a rule, is put into it.
jet::Error engineError(int number, std::string_view detail = {});

/// The one way from SQLite's results to the engine's errors, for cursors and statements alike. `path` is the
/// file that was asked for, where that isn't the connection's main one.
jet::Error errorOfSqlite(sqlite3* database, int code, Access access, std::string_view path = {});

/// Failures are thrown as `jet::Failure` everywhere inside the engine; its object turns them into the pending
/// error.
[[noreturn]] void fail(int number, std::string_view detail = {});
/// What the system says of a file. `path` is what the caller was asked for.
[[noreturn]] void failAtFile(platform::FileProblem problem, std::string_view path);
[[noreturn]] void failSqlite(sqlite3* database, int code, Access access, std::string_view path = {});
