#pragma once

#include <string>
#include <vector>

/// Tests written in LISP: a form, and beside or under it what it must give.
///
///     (setq a 1)        ;=> 1         the value, as prin1 writes it
///     (princ "x\ny")                  what it prints on the command line, a comment for each line
///     ;| x
///     ;| y
///     (car 1)           ;=> ; error: bad argument type: listp 1
///
/// A form without an expected value must not end in an error; what it prints is looked at only when a
/// `;|` says so.

struct LispCase {
  int line = 0;
  std::string form;
  bool expectsValue = false;
  std::string value;
  bool expectsOutput = false;
  std::string output;
};

/// Throws std::runtime_error for a file that can't be read or has an unbalanced form.
std::vector<LispCase> readLispCases(const std::string& file);

struct LispResult {
  std::string value, output;
};

/// Runs the cases of the file in a fresh host: `command` is the program with its options, `scratch` a folder
/// for what the run needs. One result for each form.
/// Throws std::runtime_error when the program fails.
std::vector<LispResult> runLispFile(const std::vector<std::string>& command, const std::string& file,
                                    const std::vector<LispCase>& cases, const std::string& scratch);
