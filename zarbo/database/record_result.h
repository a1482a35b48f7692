#pragma once

#include "brx/lisp_calls.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/variant_values.h"

/// The usual end of a body: `work(engine, record)` answers whether the engine gave a record, which is
/// then the result; else the failure is reported and the result is nil, as it is without a connection.
template <class Work>
int recordOrFailure(Work work) {
  acedRetNil();
  Engine& engine = activeConnection();
  if (!engine) return done;
  COleVariant record;
  if (work(engine, record)) {
    recordToPairs(record);
  } else {
    reportEngineFailure();
  }
  return done;
}
