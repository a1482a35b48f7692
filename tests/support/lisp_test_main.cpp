// lisp-test [--widgets | --window] PROGRAM FOLDER FILE.lsp …: runs each file in a fresh host with settings of
// its own, and reports each miss with file and line. Files find the project's data through (getenv
// "ZARBO_SHARE"), and a folder that is theirs alone through (getenv "ZARBO_SCRATCH").
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "tests/support/lisp_script.h"

namespace {

namespace fs = std::filesystem;

int countMisses(const std::string& file, const std::vector<LispCase>& cases,
                const std::vector<LispResult>& results) {
  int misses = 0;
  const auto report = [&](const LispCase& at, const char* what, const std::string& wanted,
                          const std::string& got) {
    std::printf("%s:%d: %s\n  form:     %s\n  expected: %s\n  got:      %s\n", file.c_str(), at.line, what,
                at.form.c_str(), wanted.c_str(), got.c_str());
    ++misses;
  };
  for (size_t i = 0; i < cases.size(); ++i) {
    const bool failed = results[i].value.rfind("; error:", 0) == 0;
    if (cases[i].expectsValue ? results[i].value != cases[i].value : failed) {
      report(cases[i], "value", cases[i].expectsValue ? cases[i].value : "no error", results[i].value);
    }
    if (cases[i].expectsOutput && results[i].output != cases[i].output) {
      report(cases[i], "output", cases[i].output, results[i].output);
    }
  }
  return misses;
}

/// The file's own folder and the shared one are on the search path.
int testFile(const std::string& program, const std::string& share, const std::string& file,
             const std::string& option, size_t& forms) {
  std::string pattern = (fs::temp_directory_path() / "zarbo-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
  const fs::path scratch = pattern;
  fs::create_directory(scratch / "settings");
  setenv("ZARBO_SCRATCH", scratch.c_str(), 1);
  int misses = 1;
  try {
    const std::vector<LispCase> cases = readLispCases(file);
    forms += cases.size();
    std::vector<std::string> command = {program,
                                        "--settings",
                                        (scratch / "settings").string(),
                                        "--support",
                                        fs::path(file).parent_path().string(),
                                        "--support",
                                        share};
    if (!option.empty()) command.push_back(option);
    misses = countMisses(file, cases, runLispFile(command, file, cases, scratch.string()));
  } catch (const std::runtime_error& error) {
    std::printf("%s\n", error.what());
  }
  fs::remove_all(scratch);
  return misses;
}

}  // namespace

int main(int count, char** words) {
  const bool hasOption = count > 1 && std::string(words[1]).starts_with("--");
  const std::string option = hasOption ? words[1] : "";
  const int first = hasOption ? 2 : 1;
  if (count < first + 3) {
    std::fprintf(stderr, "usage: lisp-test [--widgets | --window] PROGRAM SHARE-FOLDER FILE.lsp ...\n");
    return 2;
  }
  setenv("ZARBO_SHARE", words[first + 1], 1);
  int misses = 0;
  size_t forms = 0;
  for (int i = first + 2; i < count; ++i)
    misses += testFile(words[first], words[first + 1], words[i], option, forms);
  std::printf("%zu forms, %d misses\n", forms, misses);
  return misses == 0 ? 0 : 1;
}
