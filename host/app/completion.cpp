#include "host/app/completion.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

// The header of the line editor needs C's FILE declared first.
#include <cstdio>

#include <editline/readline.h>

#include "host/bridge/document_lisp.h"
#include "host/commands/commands.h"
#include "host/documents/variables.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::wstring>;

/// Of the names those that the word begins, in the word's case.
std::vector<std::string> beginningWith(const std::string& word, const Names& names) {
  const std::wstring wanted = upperCased(fromUtf8(word));
  const bool lower = fromUtf8(word) == lowerCased(wanted);
  std::vector<std::string> found;
  for (const std::wstring& each : names) {
    if (upperCased(each).starts_with(wanted)) found.push_back(toUtf8(lower ? lowerCased(each) : each));
  }
  return found;
}

Names symbolNames() {
  Names names;
  for (const lisp::Symbol* each : currentInterpreter().symbols()) {
    if (each->value.isTrue() && !each->name.empty()) names.push_back(each->name);
  }
  return names;
}

Names namesAtBegin() {
  Names names = commandNames();
  for (const std::wstring& each : symbolNames()) {
    names.push_back(each.starts_with(L"C:") ? each.substr(2) : each);
  }
  return names;
}

std::vector<std::string> filesBeginningWith(const std::string& word) {
  const size_t slash = word.rfind('/');
  const std::string folder = slash == std::string::npos ? "" : word.substr(0, slash + 1);
  const std::string begin = word.substr(folder.size());
  std::vector<std::string> found;
  std::error_code problem;
  for (fs::directory_iterator at(folder.empty() ? "." : folder, problem), end; !problem && at != end;
       at.increment(problem)) {
    const std::string name = at->path().filename().string();
    const bool isHidden = name.starts_with('.') && !begin.starts_with('.');
    if (!isHidden && name.starts_with(begin)) {
      found.push_back(folder + name + (at->is_directory(problem) ? "/" : ""));
    }
  }
  return found;
}

bool isWithinQuotes(const std::string& text) {
  bool within = false;
  for (size_t i = 0; i < text.size(); ++i) {
    if (within && text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      within = !within;
    }
  }
  return within;
}

bool asksForVariable(const std::string& lineBefore) {
  const std::wstring text = upperCased(fromUtf8(lineBefore));
  return text.ends_with(L"GETVAR \"") || text.ends_with(L"SETVAR \"");
}

// ---- the line editor's side

char* copyOf(const std::string& text) { return strdup(text.c_str()); }

/// The matches, behind what they have in common, for the editor to free.
char** matchesFor(const char* word, int start, int) {
  rl_attempted_completion_over = 1;
  const std::vector<std::string> found =
      completionsOf(std::string(rl_line_buffer, static_cast<size_t>(start)), word);
  if (found.empty()) return nullptr;
  std::string common = found.front();
  for (const std::string& each : found) {
    size_t length = 0;
    while (length < common.size() && length < each.size() && common[length] == each[length]) ++length;
    common.resize(length);
  }
  rl_completion_append_character = 0;
  auto** const matches = static_cast<char**>(std::calloc(found.size() + 2, sizeof(char*)));
  if (!matches) return nullptr;
  matches[0] = copyOf(common);
  for (size_t i = 0; i < found.size(); ++i) matches[i + 1] = copyOf(found[i]);
  return matches;
}

}  // namespace

std::vector<std::string> completionsOf(const std::string& lineBefore, const std::string& word) {
  std::vector<std::string> found;
  if (isWithinQuotes(lineBefore)) {
    found = asksForVariable(lineBefore) ? beginningWith(word, variableNames()) : filesBeginningWith(word);
  } else {
    const bool isFirst = lineBefore.find_first_not_of(' ') == std::string::npos;
    found = beginningWith(word, isFirst ? namesAtBegin() : symbolNames());
  }
  std::sort(found.begin(), found.end());
  found.erase(std::unique(found.begin(), found.end()), found.end());
  return found;
}

void completeByTab() {
  static char breaks[] = " \t\n\"'()";
  rl_completer_word_break_characters = breaks;
  rl_basic_word_break_characters = breaks;
  rl_attempted_completion_function = matchesFor;
}

}  // namespace host
