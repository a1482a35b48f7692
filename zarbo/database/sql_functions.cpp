#include <optional>
#include <utility>

#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "zarbo/database/bodies.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/frame/variant_values.h"

namespace {

/// What the caller sees when a statement can't be run: a box and perhaps an error; nil; or a text.
enum SqlMode : int32_t { askUser = 0, giveNil = 1, giveText = 2 };

void returnRows(COleVariant& rows) {
  if (rows.isArray()) {
    rowsToList(std::move(rows));
  } else {
    acedRetNil();
  }
}

bool userWantsReport() {
  platform::Box box;
  box.caption = L"Korvane";
  box.text =
      L"Database connection error.\nClose and reopen AutoCAD.\n\nIf you are getting this error frequently, "
      L"press \"Yes\" to send an error report to Korvane Support.";
  box.style = 0x114;  // yes and no, the stop icon, no as default
  return platform::desktop().messageBox(box) == platform::BoxAnswer::yes;
}

/// The end of a statement that failed for good; `attempt` tells which of the two it was.
int giveUp(int32_t mode, const std::wstring& attempt, const std::wstring& sql) {
  acedRetNil();
  if (mode == giveNil) return done;
  if (mode == giveText) {
    acedRetStr(L"*ERROR*");
    return done;
  }
  if (!userWantsReport()) return done;
  // The statement is the format itself: a "%" in it is taken as a mark.
  acutPrintf((attempt + sql).c_str());
  reportEngineFailure();
  return badData;
}

int giveUpReconnecting(int32_t mode) {
  reportEngineFailure();
  if (mode == giveNil) return done;
  if (mode != giveText) return badData;
  acedRetStr(L"*ERROR*");
  return done;
}

struct Reconnection {
  std::wstring path;
  bool readOnly;
};

/// The database that a failed statement was run on, closed. A connection that has lost it is known by the
/// path with which it was opened.
Reconnection closeForReconnection(Engine& engine) {
  const std::wstring name = engine.databaseName();
  if (name.empty()) return {activePath(), activeReadOnly()};
  const Reconnection known{name, !engine.isWritable()};
  engine.closeDatabase();
  return known;
}

/// A statement that fails gets a second chance on the database opened anew.
int runSql(const std::wstring& sql, int32_t mode) {
  Engine& engine = activeConnection();
  COleVariant rows;
  if (engine.executeSql(sql, rows)) {
    returnRows(rows);
    return done;
  }
  const Reconnection database = closeForReconnection(engine);
  if (database.path.empty()) return giveUp(mode, L"\nQuery 1: ", sql);
  const std::wstring status = engine.connect(database.path, database.readOnly);
  if (status == repairStatus || status.empty()) return giveUpReconnecting(mode);
  rows.Clear();
  if (!engine.executeSql(sql, rows)) return giveUp(mode, L"\nQuery 2: ", sql);
  returnRows(rows);
  return done;
}

/// The mode that the function stands for.
int sqlFunction(SqlMode mode) {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring sql;
  if (!getString(args.cursor, sql)) return wrongType;
  return runSql(sql, mode);
}

}  // namespace

int zbSql() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  if (args.empty()) return tooFewArguments;
  std::wstring sql;
  if (!getString(args.cursor, sql)) return wrongType;
  int32_t mode;
  if (!getLong(args.cursor, mode)) mode = askUser;
  return runSql(sql, mode);
}

int zbSqlNil() { return sqlFunction(giveNil); }
int zbSqlError() { return sqlFunction(giveText); }

int zbCommand() {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  LispArgs args;
  if (args.empty()) return tooFewArguments;
  std::wstring sql;
  if (!getString(args.cursor, sql)) return wrongType;
  int32_t count;
  if (engine.executeCommand(sql, count)) {
    retNumber(count);
  } else {
    reportEngineFailure();
  }
  return done;
}

int zbQuery() {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  LispArgs args;
  std::wstring name;
  if (!getString(args.cursor, name)) return wrongType;
  COleVariant parameters, rows;
  if (!treeToArray(args.cursor, parameters)) return done;
  if (engine.runQuery(name, parameters, rows)) {
    returnRows(rows);
  } else {
    reportEngineFailure();
  }
  return done;
}

int zbCreateQuery() {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  LispArgs args;
  std::wstring name, sql;
  if (!getString(args.cursor, name) || !getString(args.cursor, sql)) return wrongType;
  if (engine.createQuery(name, sql)) {
    acedRetT();
  } else {
    reportEngineFailure();
  }
  return done;
}
