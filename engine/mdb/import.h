#pragma once

#include <functional>
#include <string>
#include <vector>

namespace mdb {

/// What an import tells while it runs.
struct ImportProgress {
  /// The table that is being read, and rows of all tables so far, out of so many.
  std::function<void(const std::string& table, size_t rows, size_t allRows)> at;
  /// Something that doesn't come over, or comes over changed: a whole sentence.
  std::function<void(const std::string& what)> loss;
};

struct ImportOptions {
  /// What can't be read, or not whole, becomes a loss, and the rest is read. Otherwise it is an error.
  bool keepGoing = false;
};

struct ImportResult {
  size_t tables = 0, rows = 0, queries = 0, relations = 0;
};

/// Makes a database of the engine at `target` from the Jet file `source`: all tables of the user with their
/// rows, indexes and rules, relations, stored queries. `target` appears when it is complete; one that exists
/// is refused. Throws `JetError` for what can't be read and `jet::Failure` for what can't be written.
ImportResult importJetFile(const std::string& source, const std::string& target, const ImportOptions& options,
                           const ImportProgress& progress);

}  // namespace mdb
