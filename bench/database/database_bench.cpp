// The functions of LISP and the engine beside a plain C program on SQLite: the same work on copies of the
// same file, with the same durability, in turns, so that whatever else the machine does falls on all of them.
//
//   database_bench [FOLDER [ROWS …]]
//
// Prints microseconds for each operation of the plain program, the yardstick, and of the others (medians of
// the rounds), how many times as long these take (median of the rounds' ratios), and what is aimed at.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>

#include "bench/database/contestants.h"

namespace {

using Contestants = std::vector<std::unique_ptr<Contestant>>;

double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

/// `prepare` runs outside the clock; `times` operations are in a round. `aim` is for LISP.
void compete(int rows, const char* what, const char* aim, Contestants& contestants, int rounds, int times,
             const std::function<void(Contestant&, int round)>& prepare,
             const std::function<void(Contestant&)>& work) {
  std::vector<std::vector<double>> spent(contestants.size());
  for (int round = -1; round < rounds; ++round) {
    for (size_t i = 0; i < contestants.size(); ++i) {
      prepare(*contestants[i], round);
      const auto begin = std::chrono::steady_clock::now();
      work(*contestants[i]);
      const std::chrono::duration<double, std::micro> passed = std::chrono::steady_clock::now() - begin;
      if (round >= 0) spent[i].push_back(passed.count() / times);  // the first round only warms up
    }
  }
  const std::vector<double>& plain = spent.back();
  for (size_t i = 0; i + 1 < contestants.size(); ++i) {
    std::vector<double> ratios;
    for (size_t r = 0; r < plain.size(); ++r) ratios.push_back(spent[i][r] / plain[r]);
    std::printf("%8d  %-8s %-8s %12.2f %9.2f %7.2f   %s\n", rows, what, contestants[i]->name(), median(plain),
                median(spent[i]), median(ratios), i == 0 ? aim : "");
  }
  std::fflush(stdout);
}

void measure(const std::string& folder, int rows) {
  const auto path = [&](const char* name) {
    return folder + "/database-bench-" + std::to_string(rows) + "-" + name + ".kv";
  };
  const char* const names[] = {"lisp", "engine", "plain"};
  for (const char* name : names) std::filesystem::remove(path(name));
  EngineObjectUser::createFile(path("plain"));
  PlainProgram(path("plain")).fill(rows);
  for (const char* name : {"lisp", "engine"}) std::filesystem::copy_file(path("plain"), path(name));

  Contestants all;
  all.push_back(std::make_unique<LispApplication>(path("lisp")));
  all.push_back(std::make_unique<EngineObjectUser>(path("engine")));
  all.push_back(std::make_unique<PlainProgram>(path("plain")));
  auto& plain = static_cast<PlainProgram&>(*all.back());
  // Rounds of some ten milliseconds, so that waking another process counts for nothing.
  constexpr int seeks = 2000, writes = 50, rounds = 11;
  compete(
      rows, "seek", "", all, rounds, seeks,
      [&](Contestant& each, int round) {
        std::vector<int> wanted;
        for (int i = 0; i < seeks; ++i)
          wanted.push_back(static_cast<int>((round + 2) * 48271LL * (i + 1) % rows));
        each.prepareSeek(wanted);
      },
      [](Contestant& each) { each.seek(); });
  const int steps = std::min(8000, rows - 1);
  compete(
      rows, "skip", "plain + 0.5 us", all, rounds, steps, [](Contestant& each, int) { each.goToTop(); },
      [&](Contestant& each) { each.skip(steps); });
  // The walk of the plain program holds a read lock until it ends. Its writes flow, too.
  all.back()->goToTop();
  plain.flow();
  compete(
      rows, "append", "2", all, rounds, writes,
      [&](Contestant& each, int round) {
        std::vector<int> added;
        for (int i = 0; i < writes; ++i) added.push_back(rows + (round + 1) * writes + i);
        each.prepareAppend(added);
      },
      [](Contestant& each) { each.append(); });
  compete(
      rows, "replace", "2", all, rounds, writes,
      [&](Contestant& each, int round) { each.prepareReplace(1 + (round + 2) * 131 % rows, writes); },
      [](Contestant& each) { each.replace(); });
  all.clear();
  for (const char* name : names) std::filesystem::remove(path(name));
}

}  // namespace

int main(int count, char** arguments) {
  const std::string folder = count > 1 ? arguments[1] : std::filesystem::temp_directory_path().string();
  std::vector<int> sizes = {10'000, 100'000, 1'000'000};
  if (count > 2) sizes.clear();
  for (int i = 2; i < count; ++i) sizes.push_back(std::max(1000, std::atoi(arguments[i])));
  std::printf("%8s  %-8s %-8s %12s %9s %7s   %s\n", "rows", "", "", "yardstick us", "ours us", "ratio",
              "aim");
  for (const int rows : sizes) measure(folder, rows);
}
