#include "tests/support/lisp_script.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

const std::string valueMark = ";=> ";
const std::string outputMark = ";|";

std::string readFile(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream text;
  text << stream.rdbuf();
  if (!stream) throw std::runtime_error(file + ": can't be read");
  return text.str();
}

/// Cuts forms and comments out of a source; it knows only strings, comments and parentheses.
class Cutter {
 public:
  Cutter(const std::string& source, const std::string& file) : source_(source), file_(file) {}

  std::vector<LispCase> cut() {
    while (at_ < source_.size()) {
      if (source_[at_] == ';') {
        takeComment();
      } else if (std::isspace(static_cast<unsigned char>(source_[at_]))) {
        next();
      } else {
        takeForm();
      }
    }
    return std::move(cases_);
  }

 private:
  void next() {
    if (source_[at_++] == '\n') ++line_;
  }

  void takeComment() {
    const size_t end = std::min(source_.find('\n', at_), source_.size());
    const std::string comment = source_.substr(at_, end - at_);
    at_ = end;
    if (cases_.empty()) return;
    LispCase& last = cases_.back();
    if (comment.rfind(valueMark, 0) == 0) {
      last.expectsValue = true;
      last.value = comment.substr(valueMark.size());
    } else if (comment.rfind(outputMark, 0) == 0) {
      if (last.expectsOutput) last.output += '\n';
      last.expectsOutput = true;
      const size_t text = comment.size() > 2 && comment[2] == ' ' ? 3 : 2;
      last.output += comment.substr(std::min(text, comment.size()));
    }
  }

  void takeText() {
    next();
    while (at_ < source_.size() && source_[at_] != '"') {
      if (source_[at_] == '\\') next();
      if (at_ < source_.size()) next();
    }
    if (at_ < source_.size()) next();
  }

  void takeForm() {
    LispCase made;
    made.line = line_;
    const size_t start = at_;
    int depth = 0;
    do {
      if (at_ >= source_.size())
        throw std::runtime_error(file_ + ":" + std::to_string(made.line) + ": form without end");
      const char c = source_[at_];
      if (c == '"') {
        takeText();
        continue;
      }
      if (c == ';') {
        at_ = std::min(source_.find('\n', at_), source_.size());
        continue;
      }
      depth += c == '(' ? 1 : c == ')' ? -1 : 0;
      next();
    } while (depth > 0 || (at_ < source_.size() && depth == 0 && source_[at_ - 1] != ')' &&
                           source_[at_ - 1] != '"' && !endsAtom(source_[at_])));
    made.form = source_.substr(start, at_ - start);
    cases_.push_back(std::move(made));
  }

  static bool endsAtom(char c) { return std::isspace(static_cast<unsigned char>(c)) || c == ';'; }

  const std::string& source_;
  std::string file_;
  size_t at_ = 0;
  int line_ = 1;
  std::vector<LispCase> cases_;
};

std::string runProgram(const std::vector<std::string>& command) {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) throw std::runtime_error("pipe");
  const pid_t child = fork();
  if (child == 0) {
    // A prompt that no script answers must not wait for who runs the tests.
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
    std::vector<char*> words;
    for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);
    execv(words[0], words.data());
    _exit(127);
  }
  close(ends[1]);
  std::string output;
  std::array<char, 65536> buffer;
  for (ssize_t got; (got = read(ends[0], buffer.data(), buffer.size())) > 0;) {
    output.append(buffer.data(), static_cast<size_t>(got));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    throw std::runtime_error("the host ended with status " + std::to_string(status) + " after:\n" +
                             output.substr(output.size() > 2000 ? output.size() - 2000 : 0));
  }
  return output;
}

/// What stands between the form's line and the next form's: printed text, then "=> " and the value on one
/// line, and what was printed behind it.
LispResult splitResult(const std::string& part) {
  size_t mark = part.rfind("\n=> ");
  mark = mark != std::string::npos ? mark + 1 : part.rfind("=> ", 0) == 0 ? 0 : std::string::npos;
  if (mark == std::string::npos) throw std::runtime_error("no value in the transcript: " + part);
  const size_t end = std::min(part.find('\n', mark), part.size());
  LispResult result{part.substr(mark + 3, end - mark - 3), part.substr(0, mark) + part.substr(end)};
  // Printing may begin and end with a fresh line.
  while (!result.output.empty() && result.output.front() == '\n') result.output.erase(0, 1);
  while (!result.output.empty() && result.output.back() == '\n') result.output.pop_back();
  return result;
}

}  // namespace

std::vector<LispCase> readLispCases(const std::string& file) {
  const std::string source = readFile(file);
  return Cutter(source, file).cut();
}

std::vector<LispResult> runLispFile(const std::vector<std::string>& command, const std::string& file,
                                    const std::vector<LispCase>& cases, const std::string& scratch) {
  std::vector<std::string> words = command;
  // The forms alone: to the language the mark of expected output begins a comment over many lines.
  const std::string forms = scratch + "/forms.lsp";
  std::ofstream stream(forms, std::ios::binary);
  for (const LispCase& each : cases) stream << each.form << '\n';
  stream.close();
  words.insert(words.end(), {"--batch", forms});
  const std::string transcript = runProgram(words);
  std::vector<LispResult> results;
  size_t at = 0;
  for (size_t i = 0; i < cases.size(); ++i) {
    const std::string head = "> " + cases[i].form + "\n";
    const size_t start = transcript.find(head, at);
    if (start == std::string::npos) {
      throw std::runtime_error(file + ":" + std::to_string(cases[i].line) + ": not in the transcript");
    }
    const size_t body = start + head.size();
    size_t end = transcript.size();
    if (i + 1 < cases.size())
      end = std::min(transcript.find("\n> " + cases[i + 1].form + "\n", body - 1), end);
    results.push_back(splitResult(transcript.substr(body, end - std::min(end, body))));
    at = std::min(end, transcript.size());
  }
  return results;
}
