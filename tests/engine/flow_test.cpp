#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <thread>

#include "tests/engine/engine_support.h"
#include "tests/engine/lossy_disk.h"
#include "tests/engine/writing_mode.h"

namespace {

using namespace std::chrono_literals;

/// Databases of two rows, in a folder of their own, where writes flow.
class Flow : public testing::Test {
 protected:
  Flow() {
    TestEngine engine =
        TestEngine::fresh(path(), L"T", {{L"id", L"counter"}, {L"v", L"long"}, {L"id", L"index primary"}});
    open(engine);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(engine.append({{L"v", number(i)}}), 0);
    close(engine);
  }
  std::string path() const { return folder_.file("a.kv"); }
  static void open(TestEngine& engine) { EXPECT_EQ(engine.table(L"T", L"id"), 0); }
  static void close(TestEngine& engine) {
    VARIANT_BOOL ok;
    engine->CloseDatabase(&ok);
    EXPECT_TRUE(ok);
  }
  void connect(TestEngine& engine, bool readOnly = false) const {
    ASSERT_EQ(engine.connect(path(), readOnly), L"OK") << engine.error() << toUtf8(engine.errorText());
    open(engine);
  }
  /// The file says that it has no log, and nothing lies beside it.
  bool isPlain() const { return contentOf(path()).substr(18, 2) == "\1\1" && folder_.count() == 1; }
  static LONG sum(TestEngine& engine) {
    LONG result = 0;
    for (int code = engine.top(); code == 0; code = engine.skip(1)) result += engine.number(L"v");
    return result;
  }
  /// Runs `work` in a process of its own; true when it answers so and ends by itself.
  static bool inAnotherProcess(const std::function<bool()>& work) {
    const pid_t child = fork();
    if (child == 0) _exit(work() ? 0 : 1);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }
  /// A writer appends a row of this value and is killed.
  void leaveLogOfKilled(LONG value) const {
    const pid_t child = fork();
    if (child == 0) {
      TestEngine engine;
      engine.connect(path());
      engine.table(L"T", L"id");
      engine.append({{L"v", number(value)}});
      kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    ASSERT_TRUE(std::filesystem::exists(path() + "-wal"));
  }

  const TemporaryFolder settings_, folder_;
  const WritingMode mode_{settings_.file(""), L"flow"};
};

TEST_F(Flow, LeavesAPlainFileAtRestWhoeverClosesLast) {
  EXPECT_TRUE(isPlain());
  TestEngine writer, other, reader;
  connect(writer);
  connect(other);
  EXPECT_TRUE(isPlain()) << "who only reads changes nothing";
  EXPECT_EQ(writer.append({{L"v", number(5)}}), 0);
  EXPECT_FALSE(isPlain());
  connect(reader, true);
  EXPECT_EQ(sum(reader), 6);
  close(writer);
  EXPECT_FALSE(isPlain());
  close(other);
  EXPECT_EQ(sum(reader), 6);
  close(reader);
  EXPECT_TRUE(isPlain());
}

TEST_F(Flow, ShowsEveryChangeToAllAtOnceInWhateverModeTheyAre) {
  TestEngine flowing, reader, before;
  connect(before, true);
  ASSERT_EQ(before.skip(1), 0);  // reads ahead while there is no log
  connect(flowing);
  ASSERT_EQ(flowing.append({{L"v", number(10)}}), 0);
  connect(reader, true);
  ASSERT_TRUE(inAnotherProcess([&] {
    const TemporaryFolder settings;
    const WritingMode full(settings.file(""), L"full");
    TestEngine other;
    return other.connect(path()) == L"OK" && other.table(L"T", L"id") == 0 && sum(other) == 11 &&
           other.top() == 0 && other.skip(1) == 0 && other.replace({{L"v", number(100)}}) == 0 &&
           other.append({{L"v", number(1000)}}) == 0;
  }));
  for (TestEngine* each : {&flowing, &reader, &before}) EXPECT_EQ(sum(*each), 1110);
  // Rows that were read ahead are as true as others.
  ASSERT_EQ(reader.top(), 0);
  ASSERT_EQ(reader.skip(1), 0);
  ASSERT_EQ(flowing.seek(number(3)), 0);
  ASSERT_EQ(flowing.replace({{L"v", number(11)}}), 0);
  ASSERT_EQ(reader.skip(1), 0);
  EXPECT_EQ(reader.number(L"v"), 11);
  // And the schema.
  ASSERT_EQ(flowing.modifyTable(L"T", {{L"w", L"long default 4"}}), 0);
  ASSERT_EQ(reader.skip(1), 0);
  EXPECT_EQ(reader.field(L"w").vt, VT_NULL);
}

TEST_F(Flow, IsReadByThoseWhoMayNotWriteBesideIt) {
  TestEngine writer, reader;
  connect(writer);
  ASSERT_EQ(writer.append({{L"v", number(5)}}), 0);
  chmod(folder_.file("").c_str(), 0755);
  for (const auto& each : std::filesystem::directory_iterator(folder_.file("")))
    chmod(each.path().c_str(), 0644);
  EXPECT_TRUE(inAnotherProcess([&] {
    if (geteuid() == 0 && setuid(65534) != 0) return false;
    return reader.connect(path(), true) == L"OK" && reader.table(L"T", L"id") == 0 && sum(reader) == 6;
  }));
}

TEST_F(Flow, GoesOnWithWhatAKilledWriterLeft) {
  for (const bool readOnly : {true, false}) {
    leaveLogOfKilled(5);
    TestEngine engine;
    connect(engine, readOnly);
    EXPECT_EQ(sum(engine), readOnly ? 6 : 11);
    close(engine);
    EXPECT_TRUE(isPlain());
  }
  leaveLogOfKilled(5);
  TestEngine engine;
  EXPECT_EQ(engine.compact(path(), folder_.file("b.kv")), 0);
  ASSERT_EQ(engine.connect(folder_.file("b.kv")), L"OK");
  open(engine);
  EXPECT_EQ(sum(engine), 16);
}

TEST_F(Flow, RepairKeepsTheRowsInTheLog) {
  leaveLogOfKilled(5);
  std::string content = contentOf(path());
  content[18] = content[19] = 7;
  writeFile(path(), content);
  TestEngine engine;
  EXPECT_EQ(engine.connect(path()), L"*REPAIR*");
  EXPECT_EQ(engine.compact(path(), folder_.file("b.kv")), 0) << toUtf8(engine.errorText());
  ASSERT_EQ(engine.connect(folder_.file("b.kv")), L"OK");
  open(engine);
  EXPECT_EQ(sum(engine), 6);
}

TEST_F(Flow, TheLogOfAReplacedFileIsNotTakenForTheNewOnes) {
  TestEngine engine;
  ASSERT_EQ(engine.compact(path(), folder_.file("b.kv")), 0);
  leaveLogOfKilled(5);
  std::filesystem::rename(folder_.file("b.kv"), path());
  for (const bool readOnly : {true, false}) {
    connect(engine, readOnly);
    EXPECT_EQ(sum(engine), 1);
    close(engine);
  }
  EXPECT_TRUE(isPlain());
  // The same while another process still has the old one open, whose last changes go with it.
  ASSERT_EQ(engine.compact(path(), folder_.file("b.kv")), 0);
  connect(engine);
  ASSERT_EQ(engine.append({{L"v", number(5)}}), 0);
  ASSERT_TRUE(inAnotherProcess([&] {
    std::filesystem::rename(folder_.file("b.kv"), path());
    TestEngine other;
    return other.connect(path()) == L"OK" && other.table(L"T", L"id") == 0 &&
           other.append({{L"v", number(50)}}) == 0 && sum(other) == 51;
  }));
  std::this_thread::sleep_for(20ms);
  EXPECT_EQ(sum(engine), 51);
  close(engine);
  EXPECT_TRUE(isPlain());
}

TEST_F(Flow, TellsWhenChangesCannotBeBroughtToTheDisk) {
  const std::string folder = std::filesystem::path(path()).parent_path();
  LossyDisk disk(folder);
  TestEngine engine;
  connect(engine);
  ASSERT_EQ(engine.append({{L"v", number(5)}}), 0);
  disk.failSyncs(true);
  ASSERT_EQ(engine.append({{L"v", number(6)}}), 0);
  EXPECT_FALSE(settled(engine));
  EXPECT_EQ(engine.error(), 3043);
  EXPECT_EQ(engine.append({{L"v", number(7)}}), 3043);
  disk.failSyncs(false);
  EXPECT_TRUE(settled(engine));
  EXPECT_EQ(engine.append({{L"v", number(8)}}), 0);
  EXPECT_EQ(sum(engine), 20);
  close(engine);
}

TEST_F(Flow, WritesToLinkedFilesAreOfOnePieceAndStay) {
  TestEngine engine;
  ASSERT_EQ(engine.compact(path(), folder_.file("b.kv")), 0);
  connect(engine);
  ASSERT_EQ(engine.append({{L"v", number(5)}}), 0);
  ASSERT_EQ(engine.link(L"L", folder_.file("b.kv"), L"T"), 0);
  ASSERT_EQ(engine.command(L"UPDATE T INNER JOIN L ON T.id = L.id SET T.v = 30, L.v = 40"), 0);
  EXPECT_FALSE(std::filesystem::exists(path() + "-wal")) << "no log stands between two files";
  EXPECT_EQ(sum(engine), 65);
  ASSERT_EQ(engine.append({{L"v", number(1)}}), 0);
  close(engine);
  EXPECT_EQ(folder_.count(), 2u);
  ASSERT_EQ(engine.connect(folder_.file("b.kv")), L"OK");
  open(engine);
  EXPECT_EQ(sum(engine), 80);
}

}  // namespace
