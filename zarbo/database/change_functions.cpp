#include <limits>

#include "brx/lisp_calls.h"
#include "zarbo/database/bodies.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"
#include "zarbo/database/record_result.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/variant_values.h"

namespace {

const wchar_t* const noMatch = L"error - unable to match index";
const wchar_t* const noDelete = L"error - failed to delete record";

/// Value of a record's first field, which is the table's index field; 0 when it is no number.
int32_t indexValue(const COleVariant& record) {
  int32_t value = 0;
  elementToLong(record, 1, value);
  return value;
}

/// Appends until the table's counter has come to `wanted`, deleting what came before it.
int appendUntil(Engine& engine, int32_t wanted, const COleVariant& fields) {
  COleVariant record;
  const int32_t last = engine.moveBottom(record) ? indexValue(record) : 0;
  const wchar_t* error = wanted < last ? noMatch : nullptr;
  for (int32_t former = std::numeric_limits<int32_t>::min(); !error;) {
    record.Clear();
    if (!engine.append(fields, false, record)) {
      reportEngineFailure();
      return done;
    }
    const int32_t value = indexValue(record);
    if (value == wanted) {
      recordToPairs(record);
      return done;
    }
    // A first field that doesn't count on would never come there.
    if (value > wanted || value <= former) error = noMatch;
    former = value;
    if (!engine.deleteRecord()) error = noDelete;
  }
  acedRetStr(error);
  return done;
}

}  // namespace

// The two appends don't ask for a connection: without one the access itself fails.

int zbAppend() {
  acedRetNil();
  LispArgs args;
  int32_t unused;
  const bool flag = getLong(args.cursor, unused);
  COleVariant fields, record;
  if (!fieldListToArray(args.cursor, fields)) return done;
  if (activeConnection().append(fields, flag, record)) {
    recordToPairs(record);
  } else {
    reportEngineFailure();
  }
  return done;
}

int zbAppendWithindex() {
  acedRetNil();
  LispArgs args;
  int32_t wanted;
  if (!getLong(args.cursor, wanted)) return wrongType;
  COleVariant fields;
  if (!fieldListToArray(args.cursor, fields)) return done;
  return appendUntil(activeConnection(), wanted, fields);
}

int zbReplace() {
  acedRetNil();
  if (!activeConnection()) return done;
  LispArgs args;
  COleVariant fields;
  if (!fieldListToArray(args.cursor, fields)) return done;
  return recordOrFailure([&](Engine& engine, COleVariant& record) { return engine.replace(fields, record); });
}

int zbDelete() {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  if (engine.deleteRecord()) {
    acedRetT();
  } else {
    reportEngineFailure();
  }
  return done;
}
