#pragma once

#include <sqlite3.h>

#include <cstdint>

#include "engine/errors/error.h"

namespace jet {

/// Hands an error of the dialect through SQLite, whose errors are texts; `errorOfSqlite` reads it back.
/// `place` below zero is none.
void raise(sqlite3_context* context, const Error& error, int64_t place);

/// The text that carries an error through SQLite.
std::string raisedText(const Error& error, int64_t place);

/// The error that SQLite's text hands through; nothing for any other text.
std::optional<Error> readRaised(std::string_view text);

}  // namespace jet
