#include "engine/statement.h"

#include "engine/database.h"

Statement::Statement(sqlite3* database, std::string_view sql, Access access, unsigned flags)
    : access_(access) {
  const int code =
      sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), flags, &statement_, nullptr);
  if (code != SQLITE_OK) failSqlite(database, code, access);
}

void Statement::check(int code) const {
  if (code != SQLITE_OK) failSqlite(sqlite3_db_handle(statement_), code, access_);
}

void Statement::bind(int place, const Stored& value) {
  switch (value.kind) {
    case Stored::Kind::Null:
      return check(sqlite3_bind_null(statement_, place));
    case Stored::Kind::Integer:
      return check(sqlite3_bind_int64(statement_, place, value.integer));
    case Stored::Kind::Real:
      return check(sqlite3_bind_double(statement_, place, value.real));
    case Stored::Kind::Text:
      return bind(place, value.bytes);
    case Stored::Kind::Blob:
      return check(
          sqlite3_bind_blob64(statement_, place, value.bytes.data(), value.bytes.size(), SQLITE_STATIC));
  }
}

void Statement::bind(int place, int64_t value) { check(sqlite3_bind_int64(statement_, place, value)); }

void Statement::bind(int place, std::string_view text) {
  // A view may have no address, which SQLite would take for null.
  const char* data = text.data() ? text.data() : "";
  check(sqlite3_bind_text64(statement_, place, data, text.size(), SQLITE_STATIC, SQLITE_UTF8));
}

bool Statement::step() {
  const int code = sqlite3_step(statement_);
  if (code == SQLITE_ROW) return true;
  if (code == SQLITE_DONE) return false;
  if ((code & 0xFF) == SQLITE_CORRUPT) noteDamage(sqlite3_db_filename(sqlite3_db_handle(statement_), "main"));
  const jet::Error error = errorOfSqlite(sqlite3_db_handle(statement_), code, access_);
  reset();
  throw jet::Failure{error};
}

std::string_view Statement::text(int column) const {
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (!bytes) return {};
  return {bytes, static_cast<size_t>(sqlite3_column_bytes(statement_, column))};
}
