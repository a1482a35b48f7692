#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "tests/engine/engine_support.h"

namespace {

using Clock = std::chrono::steady_clock;

/// Appends as fast as it can for longer than a call waits for a lock. Gives the first error, else 0.
int appendWithoutPause(const std::string& path, int writer) {
  TestEngine engine;
  if (engine.connect(path) != L"OK") return 1;
  if (engine.table(L"T", L"id") != 0) return 2;
  for (const auto end = Clock::now() + std::chrono::milliseconds(3500); Clock::now() < end;) {
    if (engine.append({{L"v", number(writer)}}) != 0) return 3;
  }
  return 0;
}

TEST(Sharing, NoWriterIsKeptOutByOthersThatNeverPause) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv");
  {
    const TestEngine engine =
        TestEngine::fresh(path, L"T", {{L"id", L"counter"}, {L"v", L"long"}, {L"id", L"index primary"}});
  }
  constexpr int writers = 3;
  pid_t children[writers];
  for (int i = 0; i < writers; ++i) {
    children[i] = fork();
    if (children[i] == 0) _exit(appendWithoutPause(path, i));
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << WEXITSTATUS(status);
  }
  TestEngine engine;
  ASSERT_EQ(engine.connect(path), L"OK");
  ASSERT_EQ(engine.table(L"T", L"id"), 0);
  std::map<LONG, int> rows;
  for (int code = engine.top(); code == 0; code = engine.skip(1)) ++rows[engine.number(L"v")];
  std::printf("rows by writer: %d, %d, %d\n", rows[0], rows[1], rows[2]);
  EXPECT_EQ(rows.size(), size_t{writers});
}

}  // namespace
