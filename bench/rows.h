#pragma once

#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

/// What programs that measure share: rows for bench/all, at whose head the form of a row stands.

namespace bench {

using Times = std::vector<double>;

inline double processorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// Seconds of the processor.
template <class Work>
double secondsOf(Work work) {
  const double start = processorSeconds();
  work();
  return processorSeconds() - start;
}

/// What one of `things` takes, in `unit`: s, ms, us or ns.
inline double inUnit(const std::string& unit, double seconds, double things = 1) {
  const double scale = unit == "s" ? 1 : unit == "ms" ? 1e3 : unit == "us" ? 1e6 : 1e9;
  return seconds * scale / things;
}

/// Without a yardstick its name and times are empty; an aim of 0 is none.
inline void printRow(const std::string& what, const std::string& unit, const std::string& yardstick,
                     const Times& theirs, const Times& ours, double aim) {
  const auto list = [](const Times& times) {
    for (const double each : times) std::printf(" %.5g", each);
    if (times.empty()) std::printf(" -");
  };
  std::printf("row: %s | %s | %s |", what.c_str(), unit.c_str(), yardstick.empty() ? "-" : yardstick.c_str());
  list(theirs);
  std::printf(" |");
  list(ours);
  if (aim > 0)
    std::printf(" | %g\n", aim);
  else
    std::printf(" | -\n");
  std::fflush(stdout);
}

/// Runs both by turns, `rounds` times after once to warm up, and prints what one of `things` takes.
template <class Theirs, class Ours>
void compare(const std::string& what, const std::string& unit, const std::string& yardstick, Theirs theirs,
             Ours ours, double aim, int rounds = 5, double things = 1) {
  Times their, our;
  theirs(), ours();
  for (int round = 0; round < rounds; ++round) {
    their.push_back(inUnit(unit, secondsOf(theirs), things));
    our.push_back(inUnit(unit, secondsOf(ours), things));
  }
  printRow(what, unit, yardstick, their, our, aim);
}

}  // namespace bench
