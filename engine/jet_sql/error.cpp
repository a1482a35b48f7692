#include "engine/jet_sql/error.h"

#include <sqlite3.h>

#include <algorithm>
#include <charconv>
#include <cstring>

#include "engine/jet_sql/raised.h"

namespace jet {
namespace {

constexpr std::string_view mark = "\x01jet ";

struct Meaning {
  int code;
  int number;
  const char* text;
};

// Extended codes stand before their plain ones.
constexpr Meaning meanings[] = {
    {SQLITE_CONSTRAINT_FOREIGNKEY, relatedRecordNeeded,
     "A related record is required or exists in another table"},
    {SQLITE_CONSTRAINT_NOTNULL, valueRequired, "A field that is required has no value"},
    {SQLITE_CONSTRAINT_PRIMARYKEY, duplicateValue,
     "The change would make duplicate values in an index or primary key"},
    {SQLITE_CONSTRAINT_UNIQUE, duplicateValue,
     "The change would make duplicate values in an index or primary key"},
    {SQLITE_CONSTRAINT_ROWID, duplicateValue,
     "The change would make duplicate values in an index or primary key"},
    {SQLITE_CONSTRAINT, 3317, "A value is prohibited by the validation rule of the table"},
    {SQLITE_BUSY, 3260, "The record or table is locked by another user"},
    {SQLITE_LOCKED, 3211, "The table is in use and could not be locked"},
    {SQLITE_READONLY, readOnlyDatabase, "The database or object is read-only"},
    {SQLITE_IOERR, 3043, "Disk or network error"},
    {SQLITE_FULL, 3026, "Not enough space on disk"},
    {SQLITE_NOMEM, 3183, "Not enough memory"},
    {SQLITE_CORRUPT, 3343, "The database's format is not recognized or it is damaged"},
    {SQLITE_NOTADB, 3343, "The database's format is not recognized or it is damaged"},
    {SQLITE_CANTOPEN, 3024, "The file could not be opened"},
    {SQLITE_TOOBIG, tooComplex, "The statement or a value is too large"},
    {SQLITE_INTERRUPT, 3059, "The operation was cancelled by the user"},
};

}  // namespace

std::optional<Error> readRaised(std::string_view text) {
  if (!text.starts_with(mark)) return std::nullopt;
  Error error;
  int64_t place = -1;
  const char* end = text.data() + text.size();
  auto next = std::from_chars(text.data() + mark.size(), end, error.number);
  if (next.ptr == end) return std::nullopt;
  next = std::from_chars(next.ptr + 1, end, place);
  if (place >= 0) error.place = static_cast<size_t>(place);
  if (next.ptr != end) error.text = std::string(next.ptr + 1, end);
  return error;
}

void raise(sqlite3_context* context, const Error& error, int64_t place) {
  std::string text(mark);
  text += std::to_string(error.number) + " " + std::to_string(place) + " " + error.text;
  sqlite3_result_error(context, text.c_str(), static_cast<int>(text.size()));
}

std::string raiseInTrigger(const Error& error) {
  std::string message = std::string(mark) + std::to_string(error.number) + " -1 " + error.text;
  for (size_t at = 0; (at = message.find('\'', at)) != std::string::npos; at += 2)
    message.insert(at, 1, '\'');
  return "RAISE(ABORT, '" + message + "')";
}

Error errorAt(int number, std::string text, std::string_view statement, size_t place) {
  place = std::min(place, statement.size());
  const auto isTrail = [](char c) { return (c & 0xC0) == 0x80; };
  const auto before = statement.substr(0, place);
  const auto position = 1 + static_cast<size_t>(std::count_if(before.begin(), before.end(),
                                                              [&](char c) { return !isTrail(c); }));
  constexpr size_t shown = 40;
  size_t length = std::min(shown, statement.size() - place);
  while (place + length < statement.size() && length > 0 && isTrail(statement[place + length])) --length;
  std::string words(statement.substr(place, length));
  std::replace_if(
      words.begin(), words.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  text += " at position " + std::to_string(position);
  text += words.empty() ? ", the end of the statement." : " near '" + words + "'.";
  return {number, std::move(text), place};
}

Error errorOfDatabase(sqlite3* database, int code) {
  const char* message = database ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  if (auto raised = readRaised(message)) return *raised;
  const int extended = database ? sqlite3_extended_errcode(database) : code;
  // SQLite's own limits on nesting and the like are plain errors that only their texts tell apart.
  if ((code & 0xFF) == SQLITE_ERROR) {
    for (const char* limit :
         {"parser stack overflow", "too large", "too many", "too big", "depth", "at most"}) {
      if (std::strstr(message, limit)) return {tooComplex, "The statement is too complex", std::nullopt};
    }
    if (std::strstr(message, "integer overflow")) return {overflow, "Overflow", std::nullopt};
    if (std::strstr(message, "constraint failed")) return {3317, message, std::nullopt};
  }
  for (const int wanted : {extended, code & 0xFF}) {
    for (const Meaning& meaning : meanings) {
      if (meaning.code != wanted) continue;
      std::string text = meaning.text;
      if ((code & 0xFF) == SQLITE_CONSTRAINT) text += std::string(" (") + message + ")";
      return {meaning.number, text + ".", std::nullopt};
    }
  }
  return {3000, std::string("Unexpected database error: ") + message, std::nullopt};
}

}  // namespace jet
