#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <set>

#include "tests/engine/engine_support.h"

namespace {

// Appends rows and tells the number of each one that the engine has acknowledged.
[[noreturn]] void writeUntilKilled(const std::string& path, int acknowledged) {
  TestEngine engine;
  if (engine.connect(path) != L"OK" || engine.table(L"T", L"id") != 0) _exit(1);
  while (true) {
    if (engine.append({{L"s", COleVariant(std::wstring(300, L'x'))}}) != 0) _exit(2);
    const LONG id = engine.number(L"id");
    if (write(acknowledged, &id, sizeof id) != sizeof id) _exit(3);
  }
}

TEST(Crash, KeepsWhatWasAcknowledgedAndNothingElse) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv");
  {
    const TestEngine engine =
        TestEngine::fresh(path, L"T", {{L"id", L"counter"}, {L"s", L"memo"}, {L"id", L"index primary"}});
  }
  std::mt19937 random(11);
  std::set<LONG> acknowledged;
  constexpr int kills = 200;
  for (int kill_ = 0; kill_ < kills; ++kill_) {
    int channel[2];
    ASSERT_EQ(pipe(channel), 0);
    const pid_t child = fork();
    if (child == 0) writeUntilKilled(path, channel[1]);
    close(channel[1]);
    // Most writers live until their first row is told, so that the moments lie in the midst of the work.
    std::set<LONG> now;
    LONG id;
    if (kill_ % 4 != 0 && read(channel[0], &id, sizeof id) == sizeof id) now.insert(id);
    usleep(static_cast<useconds_t>(random() % 3000));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the writer ended by itself with " << WEXITSTATUS(status);
    while (read(channel[0], &id, sizeof id) == sizeof id) now.insert(id);
    close(channel[0]);

    // A row that the writer had no time to tell may be there: one at most, the next one.
    TestEngine engine;
    ASSERT_EQ(engine.connect(path, kill_ % 2 == 0), L"OK") << engine.error() << toUtf8(engine.errorText());
    ASSERT_EQ(engine.table(L"T", L"id"), 0);
    const LONG last = acknowledged.empty() ? 0 : *acknowledged.rbegin();
    const LONG lastNow = now.empty() ? last : *now.rbegin();
    for (const LONG each : now) ASSERT_EQ(engine.seek(number(each)), 0) << "acknowledged row " << each;
    acknowledged.insert(now.begin(), now.end());
    if (engine.bottom() == 0) {
      ASSERT_LE(engine.number(L"id"), lastNow + 1);
      acknowledged.insert(engine.number(L"id"));
    }
    ASSERT_EQ(engine.count(), static_cast<int>(acknowledged.size()));
  }
  std::printf("%d kills, %zu rows\n", kills, acknowledged.size());
  EXPECT_GT(acknowledged.size(), static_cast<size_t>(kills));
}

}  // namespace
