#include <fcntl.h>
#include <signal.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <set>
#include <thread>

#include "tests/engine/engine_support.h"
#include "tests/engine/lock_holder.h"

namespace {

const std::vector<std::pair<std::wstring, std::wstring>> definition = {{L"id", L"counter"},
                                                                       {L"s", L"text(40)"},
                                                                       {L"v", L"long"},
                                                                       {L"id", L"index primary"},
                                                                       {L"s", L"index(s)"}};

void fill(TestEngine& engine, int rows) {
  ASSERT_EQ(engine.table(L"T", L"id"), 0);
  for (int i = 1; i <= rows; ++i) {
    ASSERT_EQ(
        engine.append({{L"s", COleVariant(L"row number " + std::to_wstring(i))}, {L"v", number(i * 7)}}), 0);
  }
}

void close(TestEngine& engine) {
  VARIANT_BOOL ok;
  engine->CloseDatabase(&ok);
}

TEST(Files, ThatAreNoDatabaseAreRefusedAndLeftAlone) {
  const TemporaryFolder folder;
  writeFile(folder.file("text.kv"), std::string(5000, 'x'));
  writeFile(folder.file("short.kv"), "SQLite format 3");
  writeFile(folder.file("empty.kv"), "");
  mkfifo(folder.file("pipe.kv").c_str(), 0600);
  std::filesystem::create_directory(folder.file("folder.kv"));
  sqlite3* foreign;
  sqlite3_open(folder.file("foreign.kv").c_str(), &foreign);
  sqlite3_exec(foreign, "CREATE TABLE t(a)", nullptr, nullptr, nullptr);
  sqlite3_close(foreign);
  const std::vector<std::pair<std::string, int>> cases = {{"text.kv", 3343},
                                                          {"short.kv", 3343},
                                                          {"empty.kv", 3343},
                                                          {"pipe.kv", 3343},
                                                          {"folder.kv", 3051},
                                                          {"foreign.kv", 3343},
                                                          {"missing.kv", 3024},
                                                          {"text.kv/x", 3044},
                                                          {std::string(5000, 'p'), 3044},
                                                          {std::string("a\0b", 3), 3055}};
  for (const auto& [name, code] : cases) {
    SCOPED_TRACE(name.substr(0, 20));
    const std::string path = folder.file(name);
    const std::string before = contentOf(path);
    for (const bool readOnly : {true, false}) {
      TestEngine engine;
      EXPECT_EQ(engine.connect(path, readOnly), L"");
      VARIANT_BOOL pending;
      engine->ErrorPending(&pending);
      EXPECT_TRUE(pending);
      EXPECT_EQ(engine.error(), code);
      EXPECT_FALSE(engine.errorText().empty());
    }
    EXPECT_EQ(contentOf(path), before);
  }
  EXPECT_EQ(folder.count(), 6u);
}

TEST(Files, WithoutRightAreRefused) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), secret = folder.file("b.kv");
  TestEngine engine = TestEngine::fresh(path, L"T", definition);
  close(engine);
  std::filesystem::copy_file(path, secret);
  chmod(folder.file("").c_str(), 0755);
  chmod(path.c_str(), 0444);
  chmod(secret.c_str(), 0);
  const pid_t child = fork();
  if (child == 0) {
    // Root may do everything.
    if (geteuid() == 0 && setuid(65534) != 0) _exit(2);
    EXPECT_EQ(engine.connect(path), L"");
    EXPECT_EQ(engine.error(), 3051);
    EXPECT_EQ(engine.connect(secret, true), L"");
    EXPECT_EQ(engine.error(), 3051);
    EXPECT_EQ(engine.compact(path, folder.file("c.kv")), 3051) << "the folder may not be written";
    EXPECT_EQ(engine.connect(path, true), L"OK");
    VARIANT_BOOL readOnly, ok;
    engine->OpenPrivate(Bstr(fromUtf8(path)).get(), &readOnly, &ok);
    EXPECT_TRUE(ok && readOnly);
    std::fflush(stdout);
    _exit(testing::Test::HasFailure() ? 1 : 0);
  }
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
}

TEST(Files, OpenForReadingAreNotWrittenNorTheirFolder) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv");
  {
    TestEngine engine = TestEngine::fresh(path, L"T", definition);
    fill(engine, 5);
  }
  const std::string before = contentOf(path);
  const auto written = std::filesystem::last_write_time(path);
  TestEngine reader;
  ASSERT_EQ(reader.connect(path, true), L"OK");
  ASSERT_EQ(reader.table(L"T", L"s"), 0);
  EXPECT_EQ(reader.seek(COleVariant(L"ROW NUMBER 3")), 0);
  EXPECT_EQ(reader.append({{L"s", COleVariant(L"x")}}), 3027);
  EXPECT_EQ(reader.replace({{L"s", COleVariant(L"x")}}), 3027);
  EXPECT_EQ(reader.remove(), 3027);
  EXPECT_EQ(reader.createTable(L"U", definition), 3027);
  EXPECT_EQ(folder.count(), 1u);
  EXPECT_EQ(contentOf(path), before);
  EXPECT_EQ(std::filesystem::last_write_time(path), written);
}

TEST(Files, LockedByAnotherGiveTheirErrorAfterABoundedWait) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv");
  {
    TestEngine engine = TestEngine::fresh(path, L"T", definition);
    fill(engine, 2);
  }
  struct Case {
    const char* name;
    int code;
    std::function<int(TestEngine&)> call;
  };
  const std::vector<Case> cases = {
      {"append", 3218,
       [](TestEngine& engine) {
         return engine.append({{L"v", number(1)}});
       }},
      {"replace", 3218,
       [](TestEngine& engine) {
         return engine.replace({{L"v", number(1)}});
       }},
      {"delete", 3218, [](TestEngine& engine) { return engine.remove(); }},
      {"read", 3187, [](TestEngine& engine) { return engine.bottom(); }},
      {"schema", 3262, [](TestEngine& engine) { return engine.createTable(L"U", definition); }},
      {"open", 3045, [&](TestEngine& engine) { return engine.connect(path) == L"OK" ? 0 : engine.error(); }},
      {"compact", 3045,
       [&](TestEngine&) {
         TestEngine other;
         return other.compact(path, folder.file("b.kv"));
       }},
  };
  // Each on a thread of its own, so that all wait at the same time.
  std::vector<TestEngine> engines(cases.size());
  for (TestEngine& each : engines) {
    ASSERT_EQ(each.connect(path), L"OK");
    ASSERT_EQ(each.table(L"T", L"id"), 0);
    ASSERT_EQ(each.top(), 0);
  }
  {
    const LockHolder holder(path);
    std::vector<std::thread> threads;
    std::vector<int> codes(cases.size());
    const auto begin = std::chrono::steady_clock::now();
    for (size_t i = 0; i < cases.size(); ++i) {
      threads.emplace_back([&, i] { codes[i] = cases[i].call(engines[i]); });
    }
    for (std::thread& each : threads) each.join();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(8));
    for (size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(codes[i], cases[i].code) << cases[i].name;
  }
  EXPECT_EQ(engines[0].append({{L"v", number(1)}}), 0);
  EXPECT_EQ(engines[0].count(), 3);
}

TEST(Files, LoseAWriteAheadLogThatAnotherProgramGaveThem) {
  for (const bool readOnly : {false, true}) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.kv");
    {
      TestEngine engine = TestEngine::fresh(path, L"T", definition);
      fill(engine, 2);
    }
    // A program that is killed leaves what it wrote in the log.
    const pid_t child = fork();
    if (child == 0) {
      sqlite3* database;
      sqlite3_open(path.c_str(), &database);
      sqlite3_exec(database, "PRAGMA journal_mode=WAL; UPDATE T SET v = 99 WHERE id = 1", nullptr, nullptr,
                   nullptr);
      _exit(0);
    }
    waitpid(child, nullptr, 0);
    ASSERT_GT(folder.count(), 1u);
    TestEngine engine;
    ASSERT_EQ(engine.connect(path, readOnly), L"OK");
    ASSERT_EQ(engine.table(L"T", L"id"), 0);
    ASSERT_EQ(engine.top(), 0);
    EXPECT_EQ(engine.number(L"v"), 99);
    close(engine);
    EXPECT_EQ(folder.count(), 1u);
  }
}

TEST(Files, AreSharedByProcesses) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv");
  TestEngine engine = TestEngine::fresh(path, L"T", definition);
  constexpr int writers = 3, rowsOfEach = 40;
  std::vector<pid_t> children;
  for (int w = 0; w < writers; ++w) {
    const pid_t child = fork();
    if (child == 0) {
      TestEngine own;
      int failures = own.connect(path) != L"OK" || own.table(L"T", L"id") != 0;
      for (int i = 0; i < rowsOfEach; ++i) failures += own.append({{L"v", number(w * 1000 + i)}}) != 0;
      _exit(failures);
    }
    children.push_back(child);
  }
  for (const pid_t child : children) {
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
  }
  ASSERT_EQ(engine.table(L"T", L"id"), 0);
  std::set<LONG> values;
  for (int code = engine.top(); code == 0; code = engine.skip(1)) values.insert(engine.number(L"v"));
  EXPECT_EQ(values.size(), static_cast<size_t>(writers * rowsOfEach));
}

TEST(Files, ThatArePutInThePlaceOfAnOpenOneAreFollowed) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), compacted = folder.file("b.kv");
  TestEngine engine = TestEngine::fresh(path, L"T", definition);
  fill(engine, 20);
  const auto nextLook = [] { std::this_thread::sleep_for(std::chrono::milliseconds(20)); };
  for (const bool readOnly : {false, true}) {
    SCOPED_TRACE(readOnly);
    ASSERT_EQ(engine.connect(path, readOnly), L"OK");
    ASSERT_EQ(engine.table(L"T", L"s"), 0);
    ASSERT_EQ(engine.seek(COleVariant(L"row number 12")), 0);
    ASSERT_EQ(engine.skip(1), 0);  // reads ahead
    // Another process compacts the file, changes a row and puts the result in its place.
    const pid_t child = fork();
    if (child == 0) {
      close(engine);
      TestEngine other;
      int failures = other.compact(path, compacted);
      failures += other.connect(compacted) != L"OK" || other.table(L"T", L"id") != 0 ||
                  other.seek(number(14)) != 0 || other.replace({{L"v", number(-1)}}) != 0;
      close(other);
      std::filesystem::rename(compacted, path);
      _exit(failures);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_EQ(status, 0);
    nextLook();
    ASSERT_EQ(engine.skip(1), 0);
    EXPECT_EQ(engine.number(L"id"), 14);
    EXPECT_EQ(engine.number(L"v"), -1);
    EXPECT_EQ(engine.replace({{L"v", number(98)}}), readOnly ? 3027 : 0);
    EXPECT_EQ(engine.count(), 20);
  }
  // While there is none, calls say so; what is no database ends the connection.
  std::filesystem::rename(path, compacted);
  nextLook();
  EXPECT_EQ(engine.top(), 3024);
  std::filesystem::rename(compacted, path);
  nextLook();
  EXPECT_EQ(engine.top(), 0);
  std::filesystem::rename(path, compacted);
  writeFile(path, std::string(5000, 'x'));
  nextLook();
  EXPECT_EQ(engine.top(), 3343);
  EXPECT_EQ(engine.top(), 3420);
}

TEST(Compaction, TakesAwayWhatKilledOnesLeftAndNothingElse) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), compacted = folder.file("b.kv");
  {
    TestEngine engine = TestEngine::fresh(path, L"T", definition);
    ASSERT_EQ(engine.command(L"INSERT INTO T (s, v) VALUES ('a', 1)"), 0);
    for (int i = 0; i < 14; ++i) ASSERT_EQ(engine.command(L"INSERT INTO T (s, v) SELECT s, v FROM T"), 0);
  }
  int left = 0;
  for (int delay = 5; left == 0 && delay < 3000; delay += delay / 2) {
    const pid_t child = fork();
    if (child == 0) {
      TestEngine engine;
      _exit(engine.compact(path, compacted));
    }
    usleep(static_cast<useconds_t>(delay) * 1000);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    ASSERT_FALSE(std::filesystem::exists(compacted)) << "too slow to kill it";
    left = static_cast<int>(folder.count()) - 1;
  }
  ASSERT_EQ(left, 1);
  std::string hidden;
  for (const auto& each : std::filesystem::directory_iterator(folder.file(""))) {
    if (each.path().filename() != "a.kv") hidden = each.path().filename();
  }
  ASSERT_TRUE(hidden.starts_with('.'));
  // That of a process that lives is locked.
  std::string live = hidden;
  live.back() = live.back() == 'a' ? 'b' : 'a';
  writeFile(folder.file(live), "growing");
  const int lock = open(folder.file(live).c_str(), O_RDONLY);
  ASSERT_EQ(flock(lock, LOCK_EX), 0);
  for (const char* name : {".zarbo-notes", ".hidden", "b.kv.new", "b.kv.mended"})
    writeFile(folder.file(name), "mine");
  TestEngine engine;
  EXPECT_EQ(engine.compact(path, compacted), 0);
  EXPECT_FALSE(std::filesystem::exists(folder.file(hidden)));
  EXPECT_EQ(contentOf(folder.file(live)), "growing");
  EXPECT_EQ(folder.count(), 7u);
  ::close(lock);
}

TEST(Compaction, KeepsEverythingAndRefusesWhatExists) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), compacted = folder.file("b.kv");
  TestEngine engine = TestEngine::fresh(path, L"T", definition);
  fill(engine, 300);
  for (int i = 1; i <= 300; i += 2) {
    ASSERT_EQ(engine.seek(number(i)), 0);
    ASSERT_EQ(engine.remove(), 0);
  }
  TestEngine compactor;
  EXPECT_EQ(compactor.compact(path, compacted), 3045);  // open here
  close(engine);
  EXPECT_EQ(compactor.compact(folder.file("none.kv"), compacted), 3024);
  EXPECT_EQ(compactor.compact(path, path), 3204);
  EXPECT_EQ(compactor.compact(path, folder.file("no/such/folder.kv")), 3044);
  EXPECT_EQ(compactor.createDatabase(path), 3204);
  ASSERT_EQ(compactor.compact(path, compacted), 0);
  EXPECT_LT(std::filesystem::file_size(compacted), std::filesystem::file_size(path));
  EXPECT_EQ(folder.count(), 2u);
  ASSERT_EQ(engine.connect(compacted), L"OK");
  ASSERT_EQ(engine.table(L"T", L"s"), 0);
  EXPECT_EQ(engine.count(), 150);
  EXPECT_EQ(engine.seek(COleVariant(L"row number 42")), 0);
  EXPECT_EQ(engine.number(L"id"), 42);
}

}  // namespace
