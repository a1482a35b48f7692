#pragma once

#include <sys/types.h>

#include <cstdio>
#include <string>

/// The program at its LISP prompt, as a second process: forms go in, values come out.
class LispHost {
 public:
  LispHost();
  ~LispHost();
  LispHost(const LispHost&) = delete;
  LispHost& operator=(const LispHost&) = delete;

  /// The value of a form of one line, as the prompt prints it.
  std::string ask(const std::string& form);
  /// Ends the benchmark when the value is another one.
  void expect(const std::string& form, const std::string& value);

 private:
  std::string line();

  pid_t process_ = 0;
  FILE* in_ = nullptr;
  FILE* out_ = nullptr;
};
