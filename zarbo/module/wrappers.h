#pragma once

#include "zarbo/database/connections.h"
#include "zarbo/frame/guarded_call.h"

/// Entries of the two tables: nothing but the frame around a body.

template <Body body>
int kvEntry() {
  return guardedCall(body);
}

/// What reads files of any kind may be given an open database's.
template <Body body>
int kvFileEntry() {
  settleConnections();
  return guardedCall(body);
}

/// The check of the drawing's connection runs for all database functions, and outside the guard.
template <Body body>
int zbEntry() {
  ensureConnection();
  return guardedCall(body);
}

template <Body body>
int zbFileEntry() {
  ensureConnection();
  settleConnections();
  return guardedCall(body);
}
