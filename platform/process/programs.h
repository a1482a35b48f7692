#pragma once

#include <string>
#include <vector>

/// Other programs. `words` are UTF-8: the program, by path or as the shell finds it, and its arguments; no
/// shell reads them.

/// Starts a program that goes its own way, with our input and output. False when it can't be started.
bool startProgram(const std::vector<std::string>& words);

/// Runs a program to its end, without input and with its output thrown away. Gives its exit status, -1 when
/// it can't be started or a signal ends it, and what it printed on standard error.
int runProgram(const std::vector<std::string>& words, std::string& errors);
