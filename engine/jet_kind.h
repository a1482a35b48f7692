#pragma once

#include <string>

namespace mdb {

/// True when the file's first bytes are those of a Jet or ACE database. Opens and closes the file by itself,
/// so it is not for a file that this process may have open as a database of SQLite, whose locks that would
/// drop.
bool isJetFile(const std::string& path);

}  // namespace mdb
