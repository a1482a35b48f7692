#pragma once

#include <sqlite3.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>

/// The write-ahead log beside a database file while connections have it open, as SQLite's description of it
/// says.

/// Names of the log and of its index.
std::string logName(const std::string& path);
std::string logIndexName(const std::string& path);

/// Takes away a log that isn't the file's: it was left when another file was put in the place of the one that
/// it is of, and SQLite would play it into the new one. A file that says it has no log surely has none. Fails
/// (3051) where that isn't allowed, and (3045) when the file is locked for long.
void removeForeignLog(const std::string& path);

/// Which state of the file the log's index shows: two equal ones mean that nothing was committed between.
using LogState = std::array<uint32_t, 12>;

/// The newest state, without a lock or a call of the system; nothing when it is changing in this moment. The
/// connection must have the log open.
std::optional<LogState> newestLogState(sqlite3* connection);

/// Brings the log's content into the file and takes the log away; false when others have the file open. Never
/// waits. Throws `jet::Failure`.
bool leaveLog(sqlite3* connection);
