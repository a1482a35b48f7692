#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <new>
#include <optional>
#include <stdexcept>

#include "host/app/batch.h"
#include "host/app/idle.h"
#include "host/app/memory_reserve.h"
#include "host/app/options.h"
#include "host/app/output.h"
#include "host/app/prompt.h"
#include "host/app/session.h"
#include "host/app/terminal_line.h"
#include "host/bridge/document_lisp.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/editor/user_input.h"
#include "host/root/host.h"
#include "platform/desktop/scripted.h"
#include "platform/files/file_facts.h"
#include "platform/terminal/terminal.h"
#include "platform/text/utf.h"

namespace {

enum ExitStatus { succeeded = 0, lispError = 1, wrongUsage = 2 };

int refuse(const std::string& problem) {
  std::fprintf(stderr, "zarbo-host: %s\n", problem.c_str());
  return wrongUsage;
}

std::optional<std::string> readWhole(const std::string& file) {
  if (file == "-") return std::string(std::istreambuf_iterator<char>(std::cin), {});
  std::ifstream stream(file, std::ios::binary);
  if (!stream || stream.peek() == std::ifstream::traits_type::eof()) {
    // A folder opens, and fails at the first read; an empty file just ends.
    if (!stream.is_open() || stream.bad() || !stream.eof()) return std::nullopt;
  }
  std::string text(std::istreambuf_iterator<char>(stream), {});
  if (stream.bad()) return std::nullopt;
  return text;
}

/// Loads the files and evaluates the expressions, in this order; the value of the last expression is
/// printed.
int runScripts(const host::Options& options) {
  try {
    for (const std::string& file : options.files) {
      {
        const host::DocumentManager::Busy busy(host::documents());
        host::currentInterpreter().load(fromUtf8(file));
      }
      host::goIdle();
    }
    std::wstring value;
    for (const std::string& each : options.expressions) {
      value = host::evaluate(each, L"");
      host::goIdle();
    }
    host::commandLine().freshLine();
    if (!options.expressions.empty()) host::commandLine().show(value + L"\n");
  } catch (const lisp::LispExit&) {
    host::commandLine().freshLine();
  } catch (const lisp::LispError& error) {
    host::showError(error);
    return lispError;
  }
  return succeeded;
}

int checkFiles(const host::Options& options) {
  for (const std::string& each : options.files) {
    if (!platform::mayUse(each, platform::FileUse::read)) return refuse(each + ": can't be read");
  }
  if (options.window) return refuse("--window: this host has no window yet");
  if (options.meshes && !host::isDxf(options.output)) return refuse("--meshes: only with --output of a .dxf");
  if (!options.output.empty() && !host::canOutput(options.output)) {
    return refuse(options.output +
                  ": the ending must be .dxf, .dwg, .png, .svg, .pdf, .ifc, .step, .stl or .glb");
  }
  return succeeded;
}

/// Where the user types, or what the options say.
int run(const host::Options& options) {
  host::Host host;
  const bool scripted = !options.files.empty() || !options.expressions.empty();
  std::optional<std::string> batch;
  if (!options.batch.empty()) {
    batch = readWhole(options.batch);
    if (!batch) return refuse(options.batch + ": can't be read");
  }
  // Prompts of scripts wait for a person only where there is one.
  if (platform::isTerminal(platform::Stream::input)) host::setLineReader(host::readTerminalLine);
  // A script's output is its own; the modules' greetings are for the person at the prompt.
  host::commandLine().setShown(!scripted && !batch);
  if (options.widgets) platform::scriptedDesktop()->useWidgets();
  const host::Session session(options);
  host::commandLine().freshLine();
  host::commandLine().setShown(true);
  int status = scripted ? runScripts(options) : succeeded;
  if (batch && status == succeeded) {
    host::runBatch(*batch, options.batch == "-" ? L"" : fromUtf8(options.batch));
  }
  if (!scripted && !batch) {
    host::runPrompt(options.settings.empty() ? "" : options.settings + "/history");
  }
  std::string problem;
  if (!options.output.empty() && !host::writeOutput(options, problem)) return refuse(problem);
  return status;
}

}  // namespace

int main(int count, char** words) {
  int status = succeeded;
  const auto options = host::readOptions(count, words, status);
  if (!options) return status;
  status = checkFiles(*options);
  if (status != succeeded) return status;
  host::holdMemoryReserve();
  try {
    return run(*options);
  } catch (const std::runtime_error& problem) {
    return refuse(problem.what());
  } catch (const std::bad_alloc&) {
    return refuse("insufficient memory");
  }
}
