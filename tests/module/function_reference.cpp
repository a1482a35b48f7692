#include <fstream>
#include <iostream>
#include <span>
#include <sstream>

#include "platform/text/utf.h"
#include "zarbo/module/kv_help.h"
#include "zarbo/module/zb_help.h"

/// The reference of all functions, docs/functions.md: `function_reference FILE` says where the file differs
/// from what the tables' help makes of it, and `function_reference FILE --write` writes it.

namespace {

/// A cell of a table, in which a bar would end it.
std::string cell(const std::wstring& text) {
  std::string made;
  for (const char c : toUtf8(text)) made += c == '|' ? "\\|" : std::string(1, c);
  return made;
}

std::string section(const std::string& title, std::span<const FunctionHelp> help) {
  std::string made = "\n## " + title + "\n\n| call | result | what it does |\n|---|---|---|\n";
  for (const FunctionHelp& each : help) {
    const std::wstring call =
        std::wstring(L"(") + each.name + (*each.arguments ? L" " : L"") + each.arguments + L")";
    made += "| `" + cell(call) + "` | " + cell(each.result) + " | " + cell(each.meaning) + " |\n";
  }
  return made;
}

std::string reference() {
  return "# The functions of the module\n\n"
         "Made from the lines of help beside the module's tables (`zarbo/module/zb_help.h`, `kv_help.h`); at "
         "the\n"
         "prompt `(help \"zb_seek\")` shows the same. Arguments in brackets may be missing, and `…` repeats "
         "the one\n"
         "before. Entities are entity names, angles are radians, distances and points are in drawing units; "
         "a pair is\n"
         "a dotted pair of a key and its value, and a record a list of pairs of field and value. An argument "
         "of the\n"
         "wrong type ends the call with an error where nothing else is said.\n" +
         section("Databases, and small services of the family", zbHelp) +
         section("Drawings, placement, ducts, dialogs, files", kvHelp);
}

std::string contents(const char* path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

/// The number of the first line in which the texts differ; 0 when they don't.
int firstDifference(const std::string& one, const std::string& other) {
  std::istringstream first(one), second(other);
  for (int line = 1;; ++line) {
    std::string a, b;
    const bool more = static_cast<bool>(std::getline(first, a));
    if (more != static_cast<bool>(std::getline(second, b)) || a != b) return line;
    if (!more) return 0;
  }
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return std::cerr << "usage: function_reference FILE [--write]\n", 2;
  const char* const path = arguments[1];
  if (count > 2 && std::string(arguments[2]) == "--write") {
    std::ofstream file(path, std::ios::binary);
    return file << reference() && file.flush() ? 0 : (std::cerr << path << ": can't be written\n", 1);
  }
  const int line = firstDifference(contents(path), reference());
  if (line == 0) return 0;
  std::cerr << path << ":" << line << ": is not what the help says; write it anew with\n  " << arguments[0]
            << " " << path << " --write\n";
  return 1;
}
