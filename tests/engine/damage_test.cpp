#include <sqlite3.h>

#include <cstring>
#include <functional>
#include <random>
#include <set>

#include "tests/engine/engine_support.h"

namespace {

constexpr size_t pageSize = 4096, fileHeader = 100;
constexpr int rows = 3000, deletedUpTo = 600;

// Rows whose values follow from their number, the first ones deleted, beside a table of another shape.
std::string goodDatabase(const std::string& path) {
  TestEngine engine = TestEngine::fresh(path, L"T",
                                        {{L"id", L"counter"},
                                         {L"s", L"text(90)"},
                                         {L"v", L"long"},
                                         {L"id", L"index primary"},
                                         {L"s", L"index(s)"}});
  EXPECT_EQ(engine.createTable(L"Other", {{L"a", L"double"}, {L"b", L"text"}}), 0);
  VARIANT_BOOL ok;
  engine->CloseDatabase(&ok);
  // Plain SQLite fills and empties it in one go.
  sqlite3* database;
  sqlite3_open(path.c_str(), &database);
  sqlite3_create_collation_v2(
      database, "JET", SQLITE_UTF8, nullptr,
      [](void*, int left, const void* a, int right, const void* b) {
        const int order = std::memcmp(a, b, static_cast<size_t>(std::min(left, right)));
        return order != 0 ? order : left - right;
      },
      nullptr);
  const std::string sql =
      "BEGIN; WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " + std::to_string(rows) +
      ") INSERT INTO T SELECT i, 'row number ' || i || '                    and so on', i * 7 FROM n;"
      "INSERT INTO Other(a, b) SELECT 0.5, s FROM T;"
      "DELETE FROM T WHERE id <= " +
      std::to_string(deletedUpTo) + "; COMMIT";
  char* message = nullptr;
  sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message);
  EXPECT_EQ(message, nullptr) << message;
  sqlite3_close(database);
  return contentOf(path);
}

std::set<size_t> freePages(const std::string& file) {
  const auto number = [&](size_t at) {
    size_t value = 0;
    for (size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(file[at + i]);
    return value;
  };
  std::set<size_t> pages;
  for (size_t trunk = number(32); trunk != 0; trunk = number((trunk - 1) * pageSize)) {
    const size_t begin = (trunk - 1) * pageSize;
    pages.insert(trunk - 1);
    for (size_t i = 0; i < number(begin + 4); ++i) pages.insert(number(begin + 8 + 4 * i) - 1);
  }
  return pages;
}

// Numbers, from 0, of the pages in use whose first byte is one of `kinds`.
std::vector<size_t> pagesOfKind(const std::string& file, const std::set<int>& kinds) {
  const std::set<size_t> unused = freePages(file);
  std::vector<size_t> pages;
  for (size_t page = 1; page < file.size() / pageSize; ++page) {
    if (kinds.count(file[page * pageSize]) != 0 && unused.count(page) == 0) pages.push_back(page);
  }
  return pages;
}

/// What a round of damage does, and what of it must not be lost.
struct Kind {
  const char* name;
  std::function<void(std::string& file, std::mt19937& random)> damage;
  int mostLost;  // rows of T
};

struct Tally {
  int healthy = 0, refused = 0, repaired = 0, lost = 0, worst = 0;
};

class DamageTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  const std::string path = folder.file("d.kv"), repaired = folder.file("r.kv");

  // Rows that hold what they should; every row has to be one that was there.
  int rightRows(TestEngine& engine) {
    if (engine.table(L"T", L"id") != 0 && engine.table(L"T") != 0) return 0;
    int right = 0;
    for (int code = engine.top(); code == 0; code = engine.skip(1)) {
      const LONG id = engine.number(L"id");
      EXPECT_TRUE(id > deletedUpTo && id <= rows) << id;
      right += engine.number(L"v") == id * 7;
    }
    return right;
  }

  void runRound(const std::string& damaged, Tally& tally) {
    writeFile(path, damaged);
    TestEngine engine;
    const std::wstring status = engine.connect(path, tally.repaired % 2 == 0);
    if (status == L"OK") {
      ++tally.healthy;
      rightRows(engine);
      return;
    }
    EXPECT_EQ(contentOf(path), damaged);
    if (status.empty()) {
      ++tally.refused;
      EXPECT_NE(engine.error(), 0);
    }
    const int code = engine.compact(path, repaired);
    EXPECT_EQ(contentOf(path), damaged) << "the damaged file was changed";
    EXPECT_EQ(folder.count(), code == 0 ? 2u : 1u) << "something was left behind";
    if (status.empty()) {
      EXPECT_NE(code, 0);
      return;
    }
    ++tally.repaired;
    int right = 0;
    if (code == 0) {
      ASSERT_EQ(engine.connect(repaired), L"OK");
      right = rightRows(engine);
    }
    VARIANT_BOOL ok;
    engine->CloseDatabase(&ok);
    std::filesystem::remove(repaired);
    const int lost = rows - deletedUpTo - right;
    tally.lost += lost;
    tally.worst = std::max(tally.worst, lost);
  }
};

TEST_F(DamageTest, CostsTheRowsOnDamagedPagesAndNoOthers) {
  const std::string good = goodDatabase(path);
  const auto flipIn = [](const std::vector<size_t>& pages, int mostPages) {
    return [pages, mostPages](std::string& file, std::mt19937& random) {
      for (int i = 1 + static_cast<int>(random() % static_cast<unsigned>(mostPages)); i > 0; --i) {
        const size_t page = pages[random() % pages.size()];
        for (unsigned flips = 1 + random() % 16; flips > 0; --flips) {
          file[page * pageSize + random() % pageSize] ^= static_cast<char>(1 + random() % 255);
        }
      }
    };
  };
  const auto flipBetween = [](size_t begin, size_t end) {
    return [begin, end](std::string& file, std::mt19937& random) {
      for (unsigned flips = 1 + random() % 8; flips > 0; --flips) {
        file[begin + random() % (end - begin)] ^= static_cast<char>(1 + random() % 255);
      }
    };
  };
  const auto destroyed = [](const std::vector<size_t>& pages) {
    return [pages](std::string& file, std::mt19937& random) {
      const size_t page = pages[random() % pages.size()];
      std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(page * pageSize), pageSize,
                  static_cast<char>(random()));
    };
  };
  const auto leaves = pagesOfKind(good, {13}), ways = pagesOfKind(good, {5}),
             indexes = pagesOfKind(good, {2, 10});
  ASSERT_GT(leaves.size(), 20u);
  ASSERT_FALSE(ways.empty());
  ASSERT_GT(indexes.size(), 5u);
  constexpr int onALeaf = 90, all = rows - deletedUpTo;
  const std::vector<Kind> kinds = {
      {"name of the file", flipBetween(0, 16), all},
      {"header", flipBetween(16, fileHeader), 0},
      {"schema", flipBetween(fileHeader, pageSize), all},
      {"index pages", flipIn(indexes, 3), 0},
      {"pages above the rows", flipIn(ways, 2), 0},
      {"a page above the rows destroyed", destroyed(ways), 0},
      {"pages with rows", flipIn(leaves, 3), 3 * onALeaf},
      {"a page with rows destroyed", destroyed(leaves), onALeaf},
      {"truncated",
       [](std::string& file, std::mt19937& random) { file.resize(1 + random() % (file.size() - 1)); }, all},
      {"anywhere", flipBetween(0, good.size()), all},
  };
  for (const Kind& kind : kinds) {
    SCOPED_TRACE(kind.name);
    std::mt19937 random(7);
    Tally tally;
    for (int round = 0; round < 16 && !HasFatalFailure(); ++round) {
      SCOPED_TRACE(round);
      std::string damaged = good;
      kind.damage(damaged, random);
      if (damaged != good) runRound(damaged, tally);
    }
    std::printf("%-32s healthy %2d, refused %2d, repaired %2d, rows lost %d, at worst %d\n", kind.name,
                tally.healthy, tally.refused, tally.repaired, tally.lost, tally.worst);
    EXPECT_LE(tally.worst, kind.mostLost);
  }
}

// Not all of a large file is looked at when it is opened.
TEST_F(DamageTest, OfALargeFileIsRepairedWhenItIsMet) {
  constexpr int largeRows = 20000;
  const std::string other = folder.file("o.kv");
  { const TestEngine engine = TestEngine::fresh(path, L"T", {{L"id", L"counter"}, {L"m", L"memo"}}); }
  sqlite3* database;
  sqlite3_open(path.c_str(), &database);
  sqlite3_exec(database,
               "BEGIN; WITH n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 20000) "
               "INSERT INTO T SELECT i, printf('%.*c', 3500, 'x') FROM n; COMMIT",
               nullptr, nullptr, nullptr);
  sqlite3_close(database);
  std::string file = contentOf(path);
  ASSERT_GT(file.size(), size_t{64} << 20);
  for (const size_t page : pagesOfKind(file, {5})) file.replace(page * pageSize, pageSize, pageSize, 'x');
  writeFile(path, file);
  writeFile(other, file);

  TestEngine engine;
  ASSERT_EQ(engine.connect(path), L"OK");
  ASSERT_EQ(engine.table(L"T"), 0);
  EXPECT_EQ(engine.top(), 3343);
  EXPECT_EQ(engine.connect(path), L"*REPAIR*") << "what was met is remembered";
  for (const std::string& each : {path, other}) {
    ASSERT_EQ(engine.compact(each, repaired), 0);
    ASSERT_EQ(engine.connect(repaired), L"OK");
    ASSERT_EQ(engine.table(L"T"), 0);
    EXPECT_EQ(engine.count(), largeRows);
    VARIANT_BOOL ok;
    engine->CloseDatabase(&ok);
    std::filesystem::remove(repaired);
  }
}

}  // namespace
