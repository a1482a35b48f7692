#pragma once

#include <functional>
#include <string>

#include "host/app/options.h"
#include "host/lisp/interpreter.h"

namespace host {

/// The running host: search path, documents and modules, from start to end.
class Session {
 public:
  /// Opens the drawings, or an empty one, and loads the modules. A module that can't be loaded is
  /// told on standard error and left out. Throws `std::runtime_error` for a drawing that can't be read.
  /// `defineMore` gives each document's LISP what the options don't tell of.
  explicit Session(const Options& options, std::function<void(lisp::Interpreter&)> defineMore = {});
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

}  // namespace host
