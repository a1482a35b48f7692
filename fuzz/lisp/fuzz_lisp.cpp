// Reads and evaluates any bytes as a program, with bounded steps. Functions that touch the machine are
// taken away first.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "host/lisp/builtins.h"
#include "host/lisp/printer.h"
#include "host/lisp/reader.h"

namespace {

constexpr uint64_t mostSteps = 20000;
constexpr size_t longestProgram = 4096;

/// A program may leave definitions to the next ones; after some hundred, all is new again.
lisp::Interpreter& interpreterOfRun() {
  static lisp::Services services;
  static std::unique_ptr<lisp::Interpreter> interpreter;
  static int runs = 0;
  if (runs++ % 500 == 0) {
    interpreter = std::make_unique<lisp::Interpreter>(services);
    for (const lisp::Builtin& row : lisp::fileBuiltins()) interpreter->undefine(row.name);
    for (const wchar_t* name : {L"LOAD", L"SETENV", L"STRCAT"}) interpreter->undefine(name);
  }
  return *interpreter;
}

void run(std::string_view source) {
  lisp::Interpreter& interpreter = interpreterOfRun();
  interpreter.limitSteps(mostSteps);
  lisp::Reader reader(interpreter, source, L"fuzz");
  while (const std::optional<lisp::Value> form = reader.next()) {
    try {
      lisp::printed(interpreter.eval(*form), lisp::Style::readable);
    } catch (const lisp::LispError&) {
      // The next form runs, as at the prompt.
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size > longestProgram) return 0;
  try {
    run({reinterpret_cast<const char*>(data), size});
  } catch (const lisp::LispError&) {
    // A form that is malformed ends the program.
  }
  return 0;
}
