#include "bench/database/lisp_host.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace {

constexpr const char* ready = "ready for forms";

[[noreturn]] void giveUp(const std::string& reason) {
  std::fprintf(stderr, "database_bench: %s\n", reason.c_str());
  std::exit(1);
}

}  // namespace

LispHost::LispHost() {
  std::array<int, 2> forms, values;
  if (pipe(forms.data()) != 0 || pipe(values.data()) != 0) giveUp("no pipe");
  process_ = fork();
  if (process_ == 0) {
    dup2(forms[0], STDIN_FILENO);
    dup2(values[1], STDOUT_FILENO);
    for (const int each : {forms[0], forms[1], values[0], values[1]}) close(each);
    execl(HOST_PROGRAM, HOST_PROGRAM, static_cast<char*>(nullptr));
    _exit(127);
  }
  close(forms[0]);
  close(values[1]);
  in_ = fdopen(forms[1], "w");
  out_ = fdopen(values[0], "r");
  // What the program greets with comes before the first value.
  std::fprintf(in_, "\"%s\"\n", ready);
  std::fflush(in_);
  while (line().find(ready) == std::string::npos) {
  }
}

LispHost::~LispHost() {
  std::fclose(in_);
  std::fclose(out_);
  waitpid(process_, nullptr, 0);
}

std::string LispHost::line() {
  std::string text;
  for (int c; (c = std::fgetc(out_)) != '\n'; text += static_cast<char>(c)) {
    if (c == EOF) giveUp("the program ended: " + text);
  }
  return text;
}

std::string LispHost::ask(const std::string& form) {
  std::fputs((form + "\n").c_str(), in_);
  std::fflush(in_);
  return line();
}

void LispHost::expect(const std::string& form, const std::string& value) {
  const std::string got = ask(form);
  if (got != value) giveUp(form.substr(0, 200) + " gave " + got);
}
