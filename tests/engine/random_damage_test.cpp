#include <sqlite3.h>

#include <algorithm>
#include <iostream>
#include <random>
#include <set>

#include "tests/engine/engine_support.h"

namespace {

constexpr size_t pageSize = 4096, fileHeader = 100;

using Texts = std::vector<std::string>;

/// All that an application sees of a database: rows by table and mark, and what describes the tables.
struct Content {
  /// By table and mark; damage may turn a row's mark into that of another one.
  std::map<std::string, std::multimap<std::string, std::string>> rows;
  std::map<std::string, std::string> descriptions;
};

std::string written(COleVariant value) {
  if (value.vt == VT_EMPTY || value.vt == VT_NULL) return "null";
  return toUtf8(value.text());
}

Texts textsOf(const COleVariant& array) {
  Texts texts;
  if (array.vt == VT_EMPTY) return texts;
  const COleSafeArray values(array);
  const VariantElements elements(values);
  for (ULONG i = 0; i < elements.size(); ++i) texts.push_back(written(COleVariant(elements[i])));
  return texts;
}

std::string joined(const Texts& texts) {
  std::string all;
  for (const std::string& text : texts) all += text + "|";
  return all;
}

class RandomDamage : public testing::Test {
 protected:
  static constexpr const wchar_t* tables[] = {L"Jobs", L"Twin", L"Parts", L"Plain", L"Small", L"Empty"};

  TemporaryFolder folder;
  const std::string path = folder.file("d.kv"), repaired = folder.file("r.kv");

  static void execute(TestEngine& engine, const std::wstring& sql) {
    VARIANT_BOOL ok;
    engine->ExecuteStatement(Bstr(sql).get(), &ok);
    ASSERT_TRUE(ok) << toUtf8(sql) << engine.error() << toUtf8(engine.errorText());
  }

  static std::wstring mark(const wchar_t* table, int row) {
    return std::wstring(L"<") + table + L"." + std::to_wstring(row) + L">";
  }

  static void fill(TestEngine& engine, const wchar_t* table, int rows) {
    for (int i = 1; i <= rows; ++i) {
      std::wstring memo;
      const int repeats = i % 40 == 7 ? 700 : i % 5;
      for (int k = 0; k < repeats; ++k) memo += mark(table, i);
      execute(engine, std::wstring(L"INSERT INTO ") + table + L" (sMark, sKey, v, d, cCost, m) VALUES ('" +
                          mark(table, i) + L"', 'key " + std::to_wstring(i * 7919 % 1000) + L"', " +
                          std::to_wstring(i * 13) + L", #2020-01-31# + " + std::to_wstring(i) + L", " +
                          std::to_wstring(i) + L".25, '" + memo + L"')");
    }
  }

  /// Tables of equal and of different shapes, of one page and of many, with a relation and a query.
  std::string goodDatabase() {
    TestEngine engine;
    engine.createDatabase(path);
    engine.connect(path);
    for (const wchar_t* table : {L"Jobs", L"Twin"}) {
      execute(engine,
              std::wstring(L"CREATE TABLE ") + table +
                  L" (id COUNTER PRIMARY KEY, sMark TEXT(60), sKey TEXT(20) NOT NULL, v LONG, d DATETIME, "
                  L"cCost CURRENCY, m MEMO)");
      execute(engine, std::wstring(L"CREATE UNIQUE INDEX ixKey ON ") + table + L" (sKey)");
      execute(engine, std::wstring(L"CREATE INDEX ixCost ON ") + table + L" (v, d DESC)");
    }
    execute(engine, L"CREATE TABLE Parts (sMark TEXT(60), ixJob LONG REFERENCES Jobs (id), bOn YESNO)");
    execute(engine, L"CREATE TABLE Plain (sMark TEXT(60), dX DOUBLE, sNote TEXT(50))");
    execute(engine, L"CREATE TABLE Small (sMark TEXT(20) PRIMARY KEY, n SHORT)");
    execute(engine, L"CREATE TABLE Empty (sMark TEXT(20), n LONG)");
    execute(engine, L"CREATE VIEW Dear AS SELECT sMark, cCost FROM Jobs WHERE cCost > 100 ORDER BY cCost");
    fill(engine, L"Jobs", 900);
    fill(engine, L"Twin", 500);
    for (int i = 1; i <= 300; ++i) {
      execute(engine, L"INSERT INTO Parts VALUES ('" + mark(L"Parts", i) + L"', " + std::to_wstring(i) +
                          L", " + std::to_wstring(-(i % 2)) + L")");
      execute(engine, L"INSERT INTO Plain VALUES ('" + mark(L"Plain", i) + L"', " + std::to_wstring(i) +
                          L".5, 'note')");
    }
    for (int i = 1; i <= 20; ++i) {
      execute(engine, L"INSERT INTO Small VALUES ('" + mark(L"Small", i) + L"', 5)");
    }
    execute(engine, L"DELETE FROM Twin WHERE id > 400");
    execute(engine, L"DELETE FROM Jobs WHERE id > 400 AND id <= 500");
    VARIANT_BOOL ok;
    engine->CloseDatabase(&ok);
    return contentOf(path);
  }

  static Content contentOfDatabase(TestEngine& engine) {
    Content content;
    for (const wchar_t* table : tables) {
      auto& rows = content.rows[toUtf8(table)];
      VARIANT_BOOL ok;
      COleVariant names, fields, answer;
      if (engine.table(table) != 0) continue;
      engine->Structure(fields.put(), &ok);
      engine->ListIndexes(names.put(), &ok);
      content.descriptions[toUtf8(table)] = joined(textsOf(fields)) + joined(textsOf(names));
      engine->ExecuteSql(Bstr(std::wstring(L"SELECT * FROM ") + table).get(), answer.put(), &ok);
      EXPECT_TRUE(ok) << toUtf8(table) << engine.error() << toUtf8(engine.errorText());
      std::string key, row;
      for (const std::string& text : textsOf(answer)) {
        if (text == "*NewRecord*") {
          if (!row.empty()) rows.emplace(key, row);
          key.clear();
          row.clear();
          continue;
        }
        if (text.starts_with("<")) key = key.empty() ? text : key;
        row += text + "|";
      }
      if (!row.empty()) rows.emplace(key, row);
    }
    VARIANT_BOOL ok, exists = 0;
    engine->RelationExists(Bstr(L"Parts_Jobs").get(), &exists, &ok);
    COleVariant answer;
    engine->ExecuteSql(Bstr(L"SELECT * FROM Dear WHERE cCost > 1E9").get(), answer.put(), &ok);
    content.descriptions["Dear"] = ok ? "there" : "gone";
    return content;
  }

  /// Rows of which a byte lies near the damage, by table and mark.
  static std::set<std::string> rowsOn(const std::string& good, size_t begin, size_t end) {
    std::set<std::string> marks;
    const size_t page = begin / pageSize * pageSize;
    // A row's numbers stand beside its mark; one whose page says where it goes on has marks right behind.
    constexpr size_t beside = 40;
    const size_t from = begin > page + beside ? begin - beside : page;
    const std::string near =
        good.substr(from, std::min(end + beside, (end - 1) / pageSize * pageSize + pageSize) - from);
    // A mark that is cut off at the window's edge is found in the wider one, too.
    for (size_t at = 0; (at = near.find('<', at)) != std::string::npos; ++at) {
      const size_t close = good.find('>', from + at);
      marks.insert(good.substr(from + at, close + 1 - from - at));
    }
    return marks;
  }

  struct Tally {
    int harmless = 0, repaired = 0, refused = 0, changed = 0, lost = 0;
    /// Rows that differ although nothing of theirs was damaged, as far as the test can tell.
    int strays = 0;
  };

  /// Nothing but rows on the damage may differ.
  static int compare(const Content& before, const Content& after, const std::set<std::string>& damaged,
                     Tally& tally) {
    EXPECT_EQ(after.descriptions, before.descriptions);
    int differing = 0;
    for (const auto& [table, rows] : before.rows) {
      const auto& left = after.rows.at(table);
      for (const auto& [key, row] : rows) {
        const auto [first, last] = left.equal_range(key);
        if (std::any_of(first, last, [&](const auto& each) { return each.second == row; })) continue;
        ++differing;
        if (damaged.contains(key)) continue;
        ++tally.strays;
        std::cout << table << ' ' << key << " was not on the damage\n";
      }
      for (const auto& [key, row] : left) {
        EXPECT_TRUE(rows.contains(key) || !damaged.empty()) << table << " has a row " << row;
      }
    }
    return differing;
  }

  void runRound(const std::string& good, const Content& before, size_t begin, size_t end,
                const std::string& damaged, Tally& tally) {
    const std::set<std::string> marks = rowsOn(good, begin, end);
    writeFile(path, damaged);
    TestEngine engine;
    const std::wstring status = engine.connect(path);
    if (status == L"OK") {
      const int differing = compare(before, contentOfDatabase(engine), marks, tally);
      differing == 0 ? ++tally.harmless : ++tally.changed;
      return;
    }
    if (status.empty()) {
      ++tally.refused;
      EXPECT_FALSE((engine.error(), engine.errorText().empty()));
      return;
    }
    const int code = engine.compact(path, repaired);
    EXPECT_EQ(contentOf(path), damaged) << "the damaged file was changed";
    if (code != 0) {
      ++tally.refused;
      const std::string text = toUtf8(engine.errorText());
      EXPECT_EQ(code, 3343) << text;
      EXPECT_EQ(text.find("mended"), std::string::npos) << text;
      std::printf("refused, bytes %zu to %zu: %s\n", begin, end, text.c_str());
      return;
    }
    ++tally.repaired;
    ASSERT_EQ(engine.connect(repaired), L"OK");
    tally.lost += compare(before, contentOfDatabase(engine), marks, tally);
    VARIANT_BOOL ok;
    engine->CloseDatabase(&ok);
    std::filesystem::remove(repaired);
  }
};

// ZARBO_DAMAGE_ROUNDS sets how many; ZARBO_DAMAGE_SEED others than the usual ones.
TEST_F(RandomDamage, CostsAtMostTheRowsThatItLiesOn) {
  const char* wanted = std::getenv("ZARBO_DAMAGE_ROUNDS");
  const char* seed = std::getenv("ZARBO_DAMAGE_SEED");
  const int rounds = wanted ? std::atoi(wanted) : 200;
  const std::string good = goodDatabase();
  Content before;
  {
    TestEngine engine;
    ASSERT_EQ(engine.connect(path), L"OK");
    before = contentOfDatabase(engine);
  }
  ASSERT_EQ(before.rows["Jobs"].size(), 800u);
  std::mt19937 random(seed ? static_cast<unsigned>(std::atoi(seed)) : 3);
  Tally tally;
  int refusedOnWholePage = 0;
  for (int round = 0; round < rounds && !HasFatalFailure(); ++round) {
    std::string damaged = good;
    size_t byte = random() % good.size();
    while (round % 2 == 0 && good[byte] == '\0') byte = random() % good.size();
    size_t begin = byte, end = byte + 1;
    switch (random() % 4) {
      case 0:
      case 1:
        damaged[byte] ^= static_cast<char>(1 << random() % 8);
        break;
      case 2:
        damaged[byte] ^= static_cast<char>(1 + random() % 255);
        break;
      default: {
        const size_t size = size_t{64} << random() % 7;
        begin = byte / size * size;
        end = begin + size;
        std::fill(damaged.begin() + static_cast<std::ptrdiff_t>(begin),
                  damaged.begin() + static_cast<std::ptrdiff_t>(end), '\0');
      }
    }
    if (damaged == good) {
      ++tally.harmless;
      continue;
    }
    SCOPED_TRACE("round " + std::to_string(round) + ", bytes " + std::to_string(begin) + " to " +
                 std::to_string(end) + ", page " + std::to_string(begin / pageSize + 1));
    const int refusedBefore = tally.refused;
    runRound(good, before, begin, end, damaged, tally);
    if (tally.refused > refusedBefore) refusedOnWholePage += end - begin >= pageSize || begin < 16;
  }
  std::printf(
      "%d rounds on %zu pages: %d harmless, %d changed a value unseen, %d repaired with %d rows lost, "
      "%d refused\n",
      rounds, good.size() / pageSize, tally.harmless, tally.changed, tally.repaired, tally.lost,
      tally.refused);
  EXPECT_GT(tally.repaired, rounds / 10);
  EXPECT_EQ(tally.strays, 0);
  EXPECT_EQ(tally.refused, refusedOnWholePage) << "only the file's name and whole pages may be beyond repair";
}

// Files of earlier versions have no copies of what describes their tables: a name may come out damaged, but
// no table is lost, and no row.
TEST_F(RandomDamage, LosesNoTableOfAnOlderFile) {
  goodDatabase();
  sqlite3* database;
  sqlite3_open(path.c_str(), &database);
  sqlite3_exec(database, "DROP TABLE zb_copies; DROP TABLE zb_rules", nullptr, nullptr, nullptr);
  sqlite3_close(database);
  const std::string good = contentOf(path);
  TestEngine engine;
  ASSERT_EQ(engine.connect(path), L"OK");
  const Content before = contentOfDatabase(engine);
  std::mt19937 random(4);
  int repaired_ = 0, refused = 0;
  // Where SQLite's schema and the catalog lie.
  std::vector<size_t> places;
  for (size_t place = fileHeader; place < good.size(); ++place) {
    const size_t page = place / pageSize;
    const bool isSchema = good.find("CREATE ", page * pageSize) < (page + 1) * pageSize;
    if (good[place] != '\0' && (isSchema || page < 12)) places.push_back(place);
  }
  for (int round = 0; round < 120; ++round) {
    std::string damaged = good;
    const size_t byte = places[random() % places.size()];
    damaged[byte] ^= static_cast<char>(1 << random() % 8);
    SCOPED_TRACE("round " + std::to_string(round) + ", byte " + std::to_string(byte));
    writeFile(path, damaged);
    const std::wstring status = engine.connect(path);
    if (status == L"OK") {
      EXPECT_EQ(contentOfDatabase(engine).rows, before.rows);
    } else if (engine.compact(path, repaired) != 0) {
      ++refused;
      EXPECT_FALSE(engine.errorText().empty());
    } else {
      ++repaired_;
      ASSERT_EQ(engine.connect(repaired), L"OK");
      EXPECT_EQ(contentOfDatabase(engine).rows, before.rows);
      VARIANT_BOOL ok;
      engine->CloseDatabase(&ok);
      std::filesystem::remove(repaired);
    }
  }
  std::printf("120 rounds: %d repaired, %d refused\n", repaired_, refused);
  EXPECT_GT(repaired_, 40);
  EXPECT_LT(refused, 40);
}

}  // namespace
