#pragma once

#include <string>

#include "host/app/options.h"

namespace host {

/// The running host: search path, documents and modules, from start to end.
class Session {
 public:
  /// Opens the drawings, or an empty one, and loads the modules. A module that can't be loaded is
  /// told on standard error and left out. Throws `std::runtime_error` for a drawing that can't be read.
  explicit Session(const Options& options);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

}  // namespace host
