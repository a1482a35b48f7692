#pragma once

#include <deque>
#include <string>
#include <vector>

#include "host/lisp/value.h"

namespace host {

/// What scripts lay ready for the host, and what it keeps for them.
struct ScriptQueues {
  /// Answers of the next prompts, drags and selections, first come first served.
  std::deque<lisp::Value> input;
  /// Prompts shown since a script last asked.
  std::vector<std::wstring> prompts;
  /// The program writes a transcript: a script that reads the output keeps it from being shown.
  bool transcript = false;
};

ScriptQueues& scriptQueues();

}  // namespace host
