#include "brx/lisp_calls.h"
#include "zarbo/database/bodies.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/record_result.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"
#include "zarbo/frame/variant_values.h"

namespace {

/// The body's way out when there is no connection is nil.
template <class Work>
int withConnection(Work work) {
  acedRetNil();
  Engine& engine = activeConnection();
  if (engine) work(engine);
  return done;
}

template <class Close>
int closeTables(Close close) {
  return withConnection([&](Engine& engine) {
    if (!close(engine)) reportEngineFailure();
  });
}

/// Coordinates of a point: the host makes points of lists of two or three numbers.
int seekByNumbers(const ads_real* numbers, int32_t count) {
  SeekKeys keys;
  for (int32_t i = 0; i < count; ++i) keys[static_cast<size_t>(i)] = COleVariant(numbers[i]);
  return recordOrFailure([&](Engine& engine, COleVariant& record) {
    return count == 2 ? engine.seek2(keys[0], keys[1], record)
                      : engine.seek3(keys[0], keys[1], keys[2], record);
  });
}

int seekByList(ArgCursor cursor) {
  skipListBegin(cursor);
  SeekKeys keys;
  size_t count = 0;
  for (; cursor && cursor->restype != RTLE && count < keys.size(); skipItem(cursor)) {
    if (!resbufToVariant(*cursor, keys[count++])) return wrongType;
  }
  return recordOrFailure([&](Engine& engine, COleVariant& record) {
    return engine.seekN(keys, static_cast<int32_t>(count), record);
  });
}

int seekByOne(const resbuf& buffer) {
  COleVariant key;
  if (!resbufToVariant(buffer, key)) return wrongType;
  return recordOrFailure([&](Engine& engine, COleVariant& record) { return engine.seek1(key, record); });
}

}  // namespace

int zbTable() {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  LispArgs args;
  if (args.empty()) return tooFewArguments;
  std::wstring table, index;
  if (!getString(args.cursor, table)) return wrongType;
  getString(args.cursor, index);
  if (engine.setTable(table, index)) {
    acedRetStr(table.c_str());
  } else {
    reportEngineFailure();
  }
  return done;
}

int zbTop() {
  return recordOrFailure([](Engine& engine, COleVariant& record) { return engine.moveTop(record); });
}

int zbBottom() {
  return recordOrFailure([](Engine& engine, COleVariant& record) { return engine.moveBottom(record); });
}

int zbGetrec() {
  return recordOrFailure([](Engine& engine, COleVariant& record) { return engine.currentRecord(record); });
}

int zbSkip() {
  LispArgs args;
  int32_t count;
  if (!getLong(args.cursor, count)) count = 1;
  return recordOrFailure([&](Engine& engine, COleVariant& record) { return engine.skip(count, record); });
}

int zbSeek() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  if (args.empty()) return tooFewArguments;
  const resbuf& first = *args.first();
  if (first.restype == RT3DPOINT) return seekByNumbers(first.resval.rpoint, 3);
  if (first.restype == RTPOINT) return seekByNumbers(first.resval.rpoint, 2);
  if (first.rbnext) return seekByList(args.cursor);
  if (first.restype == RTNIL) return done;
  return seekByOne(first);
}

int zbCount() {
  return withConnection([](Engine& engine) {
    int32_t count;
    if (engine.recordCount(count)) {
      retNumber(count);
    } else {
      reportEngineFailure();
    }
  });
}

int zbCloseTable() {
  return closeTables([](Engine& engine) { return engine.closeTable(); });
}

int zbCloseallTables() {
  return closeTables([](Engine& engine) { return engine.closeAllTables(); });
}

int zbCurrentTable() {
  return withConnection([](Engine& engine) { acedRetStr(engine.currentTableName().c_str()); });
}

int zbCurrentIndex() {
  return withConnection([](Engine& engine) { acedRetStr(engine.currentIndexName().c_str()); });
}
