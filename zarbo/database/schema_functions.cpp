#include "brx/lisp_calls.h"
#include "zarbo/database/bodies.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/variant_values.h"

namespace {

/// Nil without a connection, and when `call` answers false, which is reported; else what `give` sets.
template <class Call, class Give>
int callAndGive(Call call, Give give) {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  if (call(engine)) {
    give();
  } else {
    reportEngineFailure();
  }
  return done;
}

/// Lists that the engine tells of what it has open.
template <class Call>
int giveList(Call call, void (*give)(const VARIANT&)) {
  COleVariant list;
  return callAndGive([&](Engine& engine) { return call(engine, list); }, [&] { give(list); });
}

/// A question about `count` names, answered with T or nil.
template <class Call>
int askAbout(int count, Call call) {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring names[2];
  for (int i = 0; i < count; ++i) {
    if (!getString(args.cursor, names[i])) return wrongType;
  }
  bool answer = false;
  return callAndGive([&](Engine& engine) { return call(engine, names[0], names[1], answer); },
                     [&] {
                       if (answer) acedRetT();
                     });
}

/// A table and a list that describes it.
int defineTable(bool (Engine::*define)(const std::wstring&, const COleVariant&)) {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring table;
  if (!getString(args.cursor, table)) return wrongType;
  COleVariant definition;
  if (!treeToArray(args.cursor, definition)) return done;
  return callAndGive([&](Engine& engine) { return (engine.*define)(table, definition); },
                     [&] { acedRetStr(table.c_str()); });
}

}  // namespace

int zbCreateDb() {
  acedRetNil();
  LispArgs args;
  std::wstring path;
  if (!getString(args.cursor, path)) return wrongType;
  Engine engine = Engine::create();
  if (!engine) return done;
  if (engine.createDatabase(path)) {
    acedRetT();
  } else {
    // Looks at the active connection: what this object has to say isn't shown.
    reportEngineFailure();
  }
  return done;
}

int zbCreateTable() { return defineTable(&Engine::createTable); }
int zbModifyTable() { return defineTable(&Engine::modifyTable); }

int zbRenameTable() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring oldName, newName;
  if (!getString(args.cursor, oldName) || !getString(args.cursor, newName)) return wrongType;
  return callAndGive([&](Engine& engine) { return engine.renameTable(oldName, newName); },
                     [&] { acedRetStr(newName.c_str()); });
}

int zbDeleteTable() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring table;
  if (!getString(args.cursor, table)) return wrongType;
  bool flag;
  if (!getFlag(args.cursor, flag)) flag = false;
  return callAndGive([&](Engine& engine) { return engine.deleteTable(table, flag); }, [] {});
}

int zbStructure() {
  return giveList([](Engine& engine, COleVariant& list) { return engine.structure(list); }, recordToPairs);
}

int zbListTables() {
  return giveList([](Engine& engine, COleVariant& list) { return engine.listTables(list); }, arrayToList);
}

int zbListIndexes() {
  return giveList([](Engine& engine, COleVariant& list) { return engine.listIndexes(list); }, arrayToList);
}

int zbAttributes() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring name;
  if (!getString(args.cursor, name)) return wrongType;
  return giveList([&](Engine& engine, COleVariant& list) { return engine.attributes(name, list); },
                  recordToPairs);
}

int zbExist() {
  return askAbout(1, [](Engine& engine, const std::wstring& name, const std::wstring&, bool& answer) {
    return engine.exists(name, answer);
  });
}

int zbFieldRequired() {
  return askAbout(2, [](Engine& engine, const std::wstring& table, const std::wstring& field, bool& answer) {
    return engine.fieldRequired(table, field, answer);
  });
}

int zbRelationExists() {
  return askAbout(1, [](Engine& engine, const std::wstring& name, const std::wstring&, bool& answer) {
    return engine.relationExists(name, answer);
  });
}

int zbRelationDelete() {
  return askAbout(2, [](Engine& engine, const std::wstring& first, const std::wstring& second, bool& answer) {
    return answer = engine.relationDelete(first, second);
  });
}

int zbCreateIndex() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  std::wstring first, second;
  int16_t flag1, flag2;
  if (!getString(args.cursor, first) || !getString(args.cursor, second) ||
      !getVariantFlag(args.cursor, flag1) || !getVariantFlag(args.cursor, flag2)) {
    return wrongType;
  }
  return callAndGive([&](Engine& engine) { return engine.createIndex(first, second, flag1, flag2); },
                     [] { acedRetT(); });
}

int zbLinkTable() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  if (!args.first() || !args.first()->rbnext || !args.first()->rbnext->rbnext) return tooFewArguments;
  std::wstring first, second, third;
  if (!getString(args.cursor, first) || !getString(args.cursor, second)) return wrongType;
  getString(args.cursor, third);
  bool linked = false;
  return callAndGive([&](Engine& engine) { return engine.linkTable(first, second, third, linked); },
                     [&] {
                       if (linked) acedRetT();
                     });
}

/// The names are kept so that old programs find them.
int zbOnlyIn32Bit() {
  acutPrintf(L"\nFunction only works in 32-bit");
  return wrongType;
}
