#pragma once

#include <string>

#include "zarbo/database/engine_client.h"

/// What the user and the application see of a failed engine call.

/// Text of the last database error, "(code) text"; "" when there was none.
std::wstring& lastErrorText();

/// Sets nil, takes the pending error of the active connection, keeps it and prints it. Answers false,
/// and leaves the text as it was, when no error is pending.
bool reportEngineFailure();

/// The same for a connection that is about to become the active one.
bool reportConnectFailure(Engine& engine);

/// The same for a connection of the caller's own: a silent one that only keeps the error, and one that
/// sets nil and prints.
bool keepEngineFailure(Engine& engine);
bool reportEngineFailure(Engine& engine);

/// Keeps and prints an error that was taken already.
void tellEngineError(const PendingError& error);

/// Bodies.
int zbLastError();
int zbResetLastError();
int zbCompact();
