#include "engine/errors/errors.h"

#include <algorithm>
#include <iterator>

#include "engine/errors/raised.h"

namespace {

struct Message {
  int number;
  const char* text;  // "%" stands for the detail
};

constexpr Message messages[] = {
    {6, "Overflow."},
    {3000, "The database engine failed unexpectedly: %."},
    {3001, "An argument is not valid: %."},
    {3010, "The table '%' exists already."},
    {3012, "An object named '%' exists already."},
    {3015, "The table has no index '%'."},
    {3019, "There is no current index to seek in."},
    {3021, "There is no current record."},
    {3022, "The record would repeat a value that must be unique in an index or primary key."},
    {3024, "The file '%' can't be found."},
    {3026, "There is not enough room on the disk."},
    {3027, "The database is open for reading only."},
    {3043, "The disk or network failed while the database was read or written."},
    {3044, "'%' is not a valid path."},
    {3045, "The file '%' is in use by somebody else."},
    {3051, "The file '%' can't be opened: it is not a file, or the right to use it is missing."},
    {3055, "'%' is not a valid file name."},
    {3057, "'%' is a linked table: its definition can be changed in its own file only."},
    {3058, "A primary key or required index can't have an empty value."},
    {3059, "The operation was cancelled."},
    {3078, "The table '%' can't be found."},
    {3125, "'%' is not a valid name."},
    {3163, "The text is too long for the field '%'."},
    {3164, "The field '%' can't be changed."},
    {3167, "The record has been deleted."},
    {3183, "There is not enough memory."},
    {3187, "The record can't be read: the database is locked by somebody else."},
    {3190, "The table would have too many fields."},
    {3191, "The field '%' is defined twice."},
    {3200, "The record can't be deleted or changed: the table '%' has related records."},
    {3201, "A related record is needed in the table '%'."},
    {3204, "The file '%' exists already."},
    {3211, "The table is in use and can't be locked."},
    {3218, "The record can't be changed: the database is locked at the moment."},
    {3260, "The record can't be changed: it is locked by somebody else."},
    {3262, "The table can't be locked: it is in use by somebody else."},
    {3265, "There is no %."},
    {3280, "A field that an index needs can't be deleted: %."},
    {3281, "A table or index that a relation needs can't be deleted: %."},
    {3292, "The definition is not valid: %."},
    {3303, "A field of a relation can't be deleted: %."},
    {3314, "The field '%' must have a value."},
    {3315, "The field '%' can't be an empty text."},
    {3317, "A value breaks a rule of the table: %."},
    {3343, "The file '%' is not a database, or it is damaged."},
    {3360, "The statement or a value is too large or too complex."},
    {3372, "There is no index '%' in the table."},
    {3376, "The table or query '%' can't be found."},
    {3349, "The number is too large for the field '%'."},
    {3380, "The field '%' exists already."},
    {3381, "There is no field '%' in the table."},
    {3420, "No % is open."},
    {3421, "The value doesn't fit the type of the field '%'."},
};

struct Meaning {
  int code;
  int number;
};

// Extended results stand before their plain ones.
constexpr Meaning meanings[] = {
    {SQLITE_CONSTRAINT_NOTNULL, jet::valueRequired},
    {SQLITE_CONSTRAINT_PRIMARYKEY, jet::duplicateValue},
    {SQLITE_CONSTRAINT_UNIQUE, jet::duplicateValue},
    {SQLITE_CONSTRAINT_ROWID, jet::duplicateValue},
    {SQLITE_CONSTRAINT_DATATYPE, wrongValueType},
    {SQLITE_CONSTRAINT, ruleBroken},
    {SQLITE_LOCKED, cantLockTable},
    {SQLITE_READONLY, jet::readOnlyDatabase},
    {SQLITE_IOERR, diskOrNetwork},
    {SQLITE_FULL, diskFull},
    {SQLITE_NOMEM, outOfMemory},
    {SQLITE_CORRUPT, notADatabase},
    {SQLITE_NOTADB, notADatabase},
    {SQLITE_CANTOPEN, noRight},
    {SQLITE_PERM, noRight},
    {SQLITE_AUTH, noRight},
    {SQLITE_TOOBIG, jet::tooComplex},
    {SQLITE_INTERRUPT, cancelled},
};

int busyNumber(Access access) {
  switch (access) {
    case Access::Open:
      return fileInUse;
    case Access::Read:
      return cantReadLocked;
    case Access::Write:
      return cantUpdateLocked;
    case Access::Schema:
      return cantLockTable;
  }
  return cantUpdateLocked;
}

// Of SQLite's words only the names go into a text: the field at the end, behind the table, or the rule.
std::string_view detailOf(int number, std::string_view message, std::string_view file) {
  switch (number) {
    case jet::valueRequired:
    case wrongValueType:
      return message.substr(message.rfind('.') + 1);
    case ruleBroken:
      return message.substr(message.rfind(": ") == std::string_view::npos ? 0 : message.rfind(": ") + 2);
    default:
      return file;
  }
}

// Plain errors, which only their texts tell apart: SQLite's own limits on nesting and the like, and sums.
jet::Error errorByMessage(std::string_view message) {
  const auto says = [&](std::string_view words) { return message.find(words) != std::string_view::npos; };
  for (const char* limit :
       {"parser stack overflow", "too large", "too many", "too big", "depth", "at most"}) {
    if (says(limit)) return engineError(jet::tooComplex);
  }
  if (says("integer overflow")) return engineError(jet::overflow);
  return engineError(unexpectedFailure, message);
}

}  // namespace

jet::Error engineError(int number, std::string_view detail) {
  const auto* found = std::find_if(std::begin(messages), std::end(messages),
                                   [&](const Message& each) { return each.number == number; });
  std::string text = found == std::end(messages) ? "The operation failed: %." : found->text;
  if (const size_t mark = text.find('%'); mark != std::string::npos) text.replace(mark, 1, detail);
  return {number, text, std::nullopt};
}

jet::Error errorOfSqlite(sqlite3* database, int code, Access access, std::string_view path) {
  const std::string_view message = database ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  // What the dialect's functions and the guards of relations raise is complete already.
  if (const auto raised = jet::readRaised(message)) return *raised;
  const char* const main = database && path.empty() ? sqlite3_db_filename(database, "main") : nullptr;
  const std::string_view file = main ? main : path;
  const int extended = database ? sqlite3_extended_errcode(database) : code, plain = code & 0xFF;
  if (plain == SQLITE_BUSY) return engineError(busyNumber(access), file);
  if (plain == SQLITE_ERROR) return errorByMessage(message);
  for (const int wanted : {extended, plain}) {
    for (const Meaning& meaning : meanings) {
      if (meaning.code == wanted) return engineError(meaning.number, detailOf(meaning.number, message, file));
    }
  }
  return engineError(unexpectedFailure, message);
}

void fail(int number, std::string_view detail) { throw jet::Failure{engineError(number, detail)}; }

void failAtFile(platform::FileProblem problem, std::string_view path) {
  switch (problem) {
    case platform::FileProblem::exists:
      fail(databaseExists, path);
    case platform::FileProblem::noRight:
      fail(noRight, path);
    case platform::FileProblem::diskFull:
      fail(diskFull);
    case platform::FileProblem::disk:
      fail(diskOrNetwork);
    default:
      fail(badPath, path);
  }
}

void failSqlite(sqlite3* database, int code, Access access, std::string_view path) {
  throw jet::Failure{errorOfSqlite(database, code, access, path)};
}
