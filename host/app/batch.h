#pragma once

#include <string>

namespace host {

/// Evaluates a source text form by form in the current document's LISP, and writes a transcript to
/// standard output: each form after "> ", what it prints, and its value after "=> ".
void runBatch(const std::string& bytes, const std::wstring& fileName);

}  // namespace host
