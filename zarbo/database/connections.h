#pragma once

#include <string>

#include "zarbo/database/engine_client.h"

/// Which drawing holds which database, and the connection that the database functions work on.

/// The active connection; empty when there is none. Established again before every database call.
Engine& activeConnection();
const std::wstring& activePath();
bool activeReadOnly();

/// The pre-call of every database function: makes the connection of the current drawing the active
/// one and checks that it is alive.
void ensureConnection();

/// A drawing was loaded: adds its record. Answers a `BodyResult`.
int addDrawingRecord();
/// The drawing that the head record stands for is closing: closes its database and drops the record.
void dropHeadRecord();
void closeAllConnections();
/// Brings what was written through all connections to the disk; prints what can't be.
void settleConnections();
/// Closes the active database when the head record holds it, unless the head record's drawing has
/// this name already.
void closeWhenRenamed(const std::wstring& savedName);

/// Bodies.
int zbConnect();
int zbCloseDb();
int zbMdb();
int zbReadonly();
