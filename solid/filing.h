#pragma once

#include <string>
#include <string_view>

#include "solid/body.h"

namespace solid {

/// Bodies as bytes, counts and corners in 16 bits where they fit.
std::string packed(const std::vector<Body>& bodies);

/// Why bytes couldn't be read, in words for a message; empty when all could.
struct UnpackProblems {
  std::vector<std::wstring> texts;
};

/// Reads what can be read. A body that is none (numbers out of range, open, not convex) is left out and told
/// of; bytes that end early or make no sense end the reading.
std::vector<Body> unpacked(std::string_view bytes, UnpackProblems& problems);

}  // namespace solid
