#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <set>

#include "tests/engine/engine_support.h"

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
  EXPECT_EQ(folder.entries(), 6u);
}

TEST(Files, WithoutRightAreRefused) {
  if (geteuid() == 0) GTEST_SKIP() << "root may do everything";
  const TemporaryFolder folder;
  TestEngine engine = TestEngine::fresh(folder.file("a.kv"), L"T", definition);
  chmod(folder.file("a.kv").c_str(), 0400);
  EXPECT_EQ(engine.connect(folder.file("a.kv")), L"");
  EXPECT_EQ(engine.error(), 3051);
  EXPECT_EQ(engine.connect(folder.file("a.kv"), true), L"OK");
  VARIANT_BOOL readOnly, ok;
  engine->OpenPrivate(Bstr(fromUtf8(folder.file("a.kv"))).get(), &readOnly, &ok);
  EXPECT_TRUE(ok && readOnly);
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
  EXPECT_EQ(folder.entries(), 1u);
  EXPECT_EQ(contentOf(path), before);
  EXPECT_EQ(std::filesystem::last_write_time(path), written);
}

TEST(Files, LockedByAnotherGiveAnErrorAfterAWait) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv");
  TestEngine engine = TestEngine::fresh(path, L"T", definition);
  fill(engine, 2);
  int ready[2], finish[2];
  ASSERT_EQ(pipe(ready), 0);
  ASSERT_EQ(pipe(finish), 0);
  const pid_t child = fork();
  if (child == 0) {
    sqlite3* database;
    sqlite3_open(path.c_str(), &database);
    sqlite3_exec(database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr);
    char go = 'x';
    const bool told = write(ready[1], &go, 1) == 1 && read(finish[0], &go, 1) == 1;
    _exit(told ? 0 : 1);
  }
  char go = 'x';
  ASSERT_EQ(read(ready[0], &go, 1), 1);
  EXPECT_EQ(engine.append({{L"v", number(1)}}), 3218);
  ASSERT_EQ(write(finish[1], &go, 1), 1);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(engine.append({{L"v", number(1)}}), 0);
  for (const int descriptor : {ready[0], ready[1], finish[0], finish[1]}) ::close(descriptor);
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
  EXPECT_EQ(folder.entries(), 2u);
  ASSERT_EQ(engine.connect(compacted), L"OK");
  ASSERT_EQ(engine.table(L"T", L"s"), 0);
  EXPECT_EQ(engine.count(), 150);
  EXPECT_EQ(engine.seek(COleVariant(L"row number 42")), 0);
  EXPECT_EQ(engine.number(L"id"), 42);
}

// Every flip of bytes ends in a good connection, a demand for repair or an error, and a repair gives rows
// that were in the table. Nothing of it changes the damaged file.
TEST(Damage, IsToldAndRepairedWithoutLosingMore) {
  const TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), damagedPath = folder.file("d.kv"),
                    repaired = folder.file("r.kv");
  constexpr int rows = 400;
  {
    TestEngine engine = TestEngine::fresh(path, L"T", definition);
    fill(engine, rows);
  }
  const std::string good = contentOf(path);
  std::mt19937 random(7);
  int repairs = 0, refusals = 0, healthy = 0, savedAll = 0;
  for (int round = 0; round < 150; ++round) {
    SCOPED_TRACE(testing::Message() << "round " << round);
    std::string damaged = good;
    const int flips = 1 + static_cast<int>(random() % 8);
    const bool header = round % 5 == 0;
    for (int i = 0; i < flips; ++i) {
      const size_t at = header ? random() % 200 : random() % damaged.size();
      damaged[at] = static_cast<char>(random());
    }
    if (round % 10 == 9) damaged.resize(4096 * (1 + random() % (damaged.size() / 4096)));
    writeFile(damagedPath, damaged);
    TestEngine engine;
    const std::wstring status = engine.connect(damagedPath);
    if (status == L"OK") {
      ++healthy;
      if (engine.table(L"T", L"id") == 0) {
        for (int code = engine.top(); code == 0; code = engine.skip(1)) {
        }
      }
      close(engine);
      continue;
    }
    EXPECT_EQ(contentOf(damagedPath), damaged);
    if (status.empty()) {
      ++refusals;
      EXPECT_NE(engine.error(), 0);
      continue;
    }
    ASSERT_EQ(status, L"*REPAIR*");
    ++repairs;
    const int code = engine.compact(damagedPath, repaired);
    EXPECT_EQ(contentOf(damagedPath), damaged);
    if (code != 0) {
      EXPECT_FALSE(std::filesystem::exists(repaired));
      continue;
    }
    ASSERT_EQ(engine.connect(repaired), L"OK");
    if (engine.table(L"T") == 0) {
      int right = 0;
      for (int step = engine.top(); step == 0; step = engine.skip(1))
        right += engine.number(L"v") == engine.number(L"id") * 7;
      savedAll += right >= rows * 3 / 4;
    }
    close(engine);
    std::filesystem::remove(repaired);
  }
  std::printf("healthy %d, refused %d, to be repaired %d, of these with 3/4 of the rows or more %d\n",
              healthy, refusals, repairs, savedAll);
  EXPECT_GT(repairs, 40);
  EXPECT_GT(savedAll, repairs / 2);
}

}  // namespace
