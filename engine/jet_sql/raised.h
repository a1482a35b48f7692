#pragma once

#include <sqlite3.h>

#include "engine/jet_sql/error.h"

namespace jet {

/// Hands an error of the dialect through SQLite, whose errors are texts; `errorOfDatabase` reads it back.
/// `place` below zero is none.
void raise(sqlite3_context* context, const Error& error, int64_t place);

/// The same within a trigger: the function call that raises it.
std::string raiseInTrigger(const Error& error);

/// The error that SQLite's text hands through; nothing for any other text.
std::optional<Error> readRaised(std::string_view text);

}  // namespace jet
