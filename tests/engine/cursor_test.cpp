#include <algorithm>
#include <random>
#include <tuple>

#include "tests/engine/engine_support.h"

namespace {

const std::vector<std::pair<std::wstring, std::wstring>> partDefinition = {
    {L"ixPart", L"counter"},
    {L"sKey", L"text(20)"},
    {L"iSize", L"long"},
    {L"byKeyAndSize", L"index(sKey, iSize DESC)"},
    {L"ixPart", L"index(ixPart) primary"},
    {L"sKey", L"index(sKey)"}};

class CursorTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::string path = folder.file("parts.kv");
  TestEngine engine = TestEngine::fresh(path, L"tblPart", partDefinition);

  void add(const COleVariant& key, const COleVariant& size) {
    ASSERT_EQ(engine.append({{L"sKey", key}, {L"iSize", size}}), 0);
  }
  std::vector<LONG> walk(const std::wstring& index) {
    std::vector<LONG> rows;
    EXPECT_EQ(engine.table(L"tblPart", index), 0);
    for (int code = engine.top(); code == 0; code = engine.skip(1)) rows.push_back(engine.number(L"ixPart"));
    return rows;
  }
};

TEST_F(CursorTest, FollowsTheIndexWithTiesByRowAndNullFirst) {
  ASSERT_EQ(engine.table(L"TBLPART"), 0);
  const COleVariant null = COleVariant::null();
  add(L"b", number(1));  // 1
  add(L"A", number(5));  // 2
  add(null, number(2));  // 3
  add(L"a", null);       // 4
  add(L"B", number(1));  // 5
  add(null, null);       // 6
  add(L"a", number(9));  // 7
  EXPECT_EQ(walk(L"byKeyAndSize"), (std::vector<LONG>{3, 6, 7, 2, 4, 1, 5}));
  EXPECT_EQ(walk(L"sKey"), (std::vector<LONG>{3, 6, 2, 4, 7, 1, 5}));
  EXPECT_EQ(walk(L""), (std::vector<LONG>{3, 6, 2, 4, 7, 1, 5}));  // the table was current: its index stays
  EXPECT_EQ(walk(L"ixPart"), (std::vector<LONG>{1, 2, 3, 4, 5, 6, 7}));
}

TEST_F(CursorTest, EndsAreRealPositions) {
  ASSERT_EQ(engine.table(L"tblPart", L"sKey"), 0);
  EXPECT_TRUE(engine.afterLast());
  EXPECT_TRUE(engine.beforeFirst());
  EXPECT_EQ(engine.top(), 3021);
  EXPECT_EQ(engine.current(), 3021);
  for (const wchar_t* key : {L"a", L"b", L"c"}) add(key, number(0));
  ASSERT_EQ(engine.bottom(), 0);
  EXPECT_FALSE(engine.afterLast());
  EXPECT_EQ(engine.skip(1), 3021);
  EXPECT_TRUE(engine.afterLast());
  EXPECT_FALSE(engine.beforeFirst());
  EXPECT_EQ(engine.skip(0), 3021);
  EXPECT_EQ(engine.skip(1), 3021);
  ASSERT_EQ(engine.skip(-2), 0);
  EXPECT_EQ(engine.text(L"sKey"), L"b");
  EXPECT_EQ(engine.skip(-7), 3021);
  EXPECT_TRUE(engine.beforeFirst());
  ASSERT_EQ(engine.skip(3), 0);
  EXPECT_EQ(engine.text(L"sKey"), L"c");
  EXPECT_EQ(engine.remove(), 0);
  EXPECT_EQ(engine.current(), 3167);
  EXPECT_EQ(engine.skip(1), 3021);
  ASSERT_EQ(engine.skip(-1), 0);
  EXPECT_EQ(engine.text(L"sKey"), L"b");
}

TEST_F(CursorTest, SeeksByValue) {
  ASSERT_EQ(engine.table(L"tblPart", L"sKey"), 0);
  add(L"Übergang 1/4", number(1));
  add(L"12", number(2));
  add(COleVariant::null(), number(3));
  EXPECT_EQ(engine.seek(COleVariant(L"übergang 1/4")), 0);
  EXPECT_EQ(engine.number(L"iSize"), 1);
  EXPECT_EQ(engine.seek(number(12)), 0);
  EXPECT_EQ(engine.number(L"iSize"), 2);
  EXPECT_EQ(engine.seek(COleVariant()), 0);
  EXPECT_EQ(engine.number(L"iSize"), 3);
  EXPECT_EQ(engine.seek(COleVariant(L"none")), 3021);
  EXPECT_EQ(engine.skip(1), 3021);
  EXPECT_EQ(engine.seek(COleVariant(L"12"), number(2)), 3001);
  ASSERT_EQ(engine.table(L"tblPart", L"byKeyAndSize"), 0);
  EXPECT_EQ(engine.seek(COleVariant(L"12"), COleVariant(2.0)), 0);
  EXPECT_EQ(engine.seek(COleVariant(L"12"), COleVariant(L"2")), 0);
  EXPECT_EQ(engine.seek(COleVariant(L"12"), COleVariant(2.5)), 3021);
  EXPECT_EQ(engine.seek(COleVariant(L"12"), COleVariant(L"two")), 3421);
  EXPECT_EQ(engine.table(L"tblPart", L"nothing"), 3015);
  EXPECT_EQ(engine.table(L"tblNothing"), 3078);
  TestEngine other;
  ASSERT_EQ(other.connect(path), L"OK");
  ASSERT_EQ(other.table(L"tblPart"), 0);
  EXPECT_EQ(other.seek(number(1)), 3019);
}

TEST_F(CursorTest, FollowsARowThatMoves) {
  ASSERT_EQ(engine.table(L"tblPart", L"sKey"), 0);
  for (const wchar_t* key : {L"a", L"b", L"c", L"d"}) add(key, number(0));
  ASSERT_EQ(engine.top(), 0);
  ASSERT_EQ(engine.replace({{L"sKey", COleVariant(L"c2")}}), 0);
  ASSERT_EQ(engine.skip(1), 0);
  EXPECT_EQ(engine.text(L"sKey"), L"d");
  EXPECT_EQ(engine.replace({{L"ixPart", number(77)}}), 3164);
  EXPECT_EQ(engine.replace({{L"nothing", number(77)}}), 3265);
}

TEST_F(CursorTest, NeverGivesACounterTwice) {
  ASSERT_EQ(engine.table(L"tblPart"), 0);
  LONG last = 0;
  for (int round = 0; round < 20; ++round) {
    add(L"x", number(round));
    EXPECT_GT(engine.number(L"ixPart"), last);
    last = engine.number(L"ixPart");
    ASSERT_EQ(engine.remove(), 0);
    if (round % 5 == 0) {
      ASSERT_EQ(engine.connect(path), L"OK");
      ASSERT_EQ(engine.table(L"tblPart"), 0);
    }
  }
  const std::string compacted = folder.file("compacted.kv");
  VARIANT_BOOL ok;
  engine->CloseDatabase(&ok);
  ASSERT_EQ(engine.compact(path, compacted), 0);
  ASSERT_EQ(engine.connect(compacted), L"OK");
  ASSERT_EQ(engine.table(L"tblPart"), 0);
  add(L"y", number(0));
  EXPECT_EQ(engine.number(L"ixPart"), last + 1);
}

TEST_F(CursorTest, StandsOnADeletedRowNotOnItsSuccessor) {
  ASSERT_EQ(engine.modifyTable(L"tblPart", {{L"plain", L"long"}}), 0);
  ASSERT_EQ(engine.createTable(L"bare", {{L"s", L"text"}, {L"s", L"index"}}), 0);
  ASSERT_EQ(engine.table(L"bare", L"s"), 0);
  ASSERT_EQ(engine.append({{L"s", COleVariant(L"one")}}), 0);
  TestEngine other;
  ASSERT_EQ(other.connect(path), L"OK");
  ASSERT_EQ(other.table(L"bare", L"s"), 0);
  ASSERT_EQ(other.top(), 0);
  ASSERT_EQ(other.remove(), 0);
  ASSERT_EQ(other.append({{L"s", COleVariant(L"two")}}), 0);
  EXPECT_EQ(engine.current(), 3167);
  EXPECT_EQ(engine.replace({{L"s", COleVariant(L"three")}}), 3167);
  EXPECT_EQ(engine.remove(), 3167);
  ASSERT_EQ(engine.skip(1), 0);
  EXPECT_EQ(engine.text(L"s"), L"two");
}

TEST_F(CursorTest, SeesADeletedRowAlsoAfterAReplaceThatChangedNothing) {
  ASSERT_EQ(engine.createTable(L"bare", {{L"s", L"text"}}), 0);
  ASSERT_EQ(engine.table(L"bare"), 0);
  ASSERT_EQ(engine.append({{L"s", COleVariant(L"one")}}), 0);
  ASSERT_EQ(engine.replace({{L"s", COleVariant(L"one")}}), 0);
  TestEngine other;
  ASSERT_EQ(other.connect(path), L"OK");
  ASSERT_EQ(other.table(L"bare"), 0);
  ASSERT_EQ(other.top(), 0);
  ASSERT_EQ(other.remove(), 0);
  EXPECT_EQ(engine.current(), 3167);
}

TEST_F(CursorTest, SeesChangesOfTheSchemaByOthers) {
  ASSERT_EQ(engine.table(L"tblPart", L"sKey"), 0);
  add(L"a", number(1));
  TestEngine other;
  ASSERT_EQ(other.connect(path), L"OK");
  ASSERT_EQ(other.modifyTable(L"tblPart", {{L"sNote", L"memo"}, {L"iSize", L"rename iLength"}}), 0);
  ASSERT_EQ(other.table(L"tblPart", L"sKey"), 0);
  ASSERT_EQ(other.top(), 0);
  EXPECT_EQ(other.number(L"iLength"), 1);
  EXPECT_EQ(engine.seek(COleVariant(L"a")), 0);
  EXPECT_EQ(engine.number(L"iLength"), 1);
  EXPECT_EQ(engine.field(L"sNote").vt, VT_NULL);
  ASSERT_EQ(other.modifyTable(L"tblPart", {{L"sKey", L"drop index"}}), 0);
  EXPECT_EQ(engine.seek(COleVariant(L"a")), 3015);
}

// One connection walks while two others change the rows; a model in memory says what every step must give.
struct Row {
  std::optional<std::wstring> key;
  std::optional<LONG> size;
};

class Model {
 public:
  std::map<LONG, Row> rows;

  using Place = std::tuple<bool, std::wstring, bool, LONG, LONG>;
  // Null is least; the size descends, so its null is last.
  static Place placeOf(LONG id, const Row& row) {
    std::wstring folded = row.key.value_or(L"");
    std::transform(folded.begin(), folded.end(), folded.begin(), ::towlower);
    if (folded == L"ä") folded = L"a~";  // between "a" and "b"
    return {row.key.has_value(), folded, !row.size.has_value(), -row.size.value_or(0), id};
  }
  // The row number `count` steps from a place, or 0 beyond the end.
  LONG step(const Place& from, LONG count, bool inclusive = false) const {
    std::vector<std::pair<Place, LONG>> order;
    for (const auto& [id, row] : rows) order.emplace_back(placeOf(id, row), id);
    std::sort(order.begin(), order.end());
    const auto lower = std::lower_bound(order.begin(), order.end(), std::pair{from, LONG{0}});
    auto at = static_cast<LONG>(lower - order.begin());
    const bool stands = lower != order.end() && lower->first == from && !inclusive;
    at = count > 0 ? at + (stands ? count : count - 1) : at + count;
    return at < 0 || at >= static_cast<LONG>(order.size()) ? 0 : order[static_cast<size_t>(at)].second;
  }
};

TEST_F(CursorTest, AgreesWithTheModelUnderRandomChangesByOthers) {
  for (const unsigned seed : {1u, 2u, 3u, 4u}) {
    std::mt19937 random(seed);
    const auto upTo = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most)); };
    const std::wstring name = L"t" + std::to_wstring(seed);
    auto definition = partDefinition;
    ASSERT_EQ(engine.createTable(name, definition), 0);
    TestEngine other;
    ASSERT_EQ(other.connect(path), L"OK");
    ASSERT_EQ(engine.table(name, L"byKeyAndSize"), 0);
    ASSERT_EQ(other.table(name, L"ixPart"), 0);
    Model model;
    const auto randomRow = [&] {
      const wchar_t* keys[] = {L"a", L"A", L"b", L"B", L"ä", L"Ä", L"long key"};
      Row row;
      if (upTo(6)) row.key = keys[upTo(7)];
      if (upTo(6)) row.size = upTo(4);
      return row;
    };
    const auto fieldsOf = [](const Row& row) {
      return Fields{{L"sKey", row.key ? COleVariant(*row.key) : COleVariant::null()},
                    {L"iSize", row.size ? COleVariant(*row.size) : COleVariant::null()}};
    };
    setlocale(LC_CTYPE, "C.UTF-8");
    std::optional<Model::Place> place;
    LONG on = 0;
    const auto expectAt = [&](int code, LONG expected, bool forward) {
      if (expected == 0) {
        EXPECT_EQ(code, 3021);
        EXPECT_TRUE(forward ? engine.afterLast() : engine.beforeFirst());
        place.reset();
        return;
      }
      ASSERT_EQ(code, 0);
      ASSERT_EQ(engine.number(L"ixPart"), expected);
      const Row& row = model.rows.at(expected);
      EXPECT_EQ(engine.field(L"sKey").vt, row.key ? VT_BSTR : VT_NULL);
      EXPECT_EQ(engine.text(L"sKey"), row.key.value_or(L""));
      on = expected;
      place = Model::placeOf(expected, row);
    };
    for (int i = 0; i < 1500 && !HasFatalFailure(); ++i) {
      SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << i);
      const int action = upTo(20);
      if (action < 3 || model.rows.empty()) {
        const Row row = randomRow();
        ASSERT_EQ(other.append(fieldsOf(row)), 0);
        model.rows[other.number(L"ixPart")] = row;
      } else if (action < 6) {
        auto victim = std::next(model.rows.begin(), upTo(static_cast<int>(model.rows.size())));
        ASSERT_EQ(other.seek(number(victim->first)), 0);
        if (action == 3 || model.rows.size() > 60) {
          ASSERT_EQ(other.remove(), 0);
          model.rows.erase(victim);
        } else {
          victim->second = randomRow();
          ASSERT_EQ(other.replace(fieldsOf(victim->second)), 0);
        }
      } else if (action < 8) {
        const auto least = Model::Place{false, L"", false, INT32_MIN, 0};
        if (action == 6) {
          expectAt(engine.top(), model.step(least, 1, true), true);
        } else {
          const auto most = Model::Place{true, L"\x10FFFF", true, INT32_MAX, INT32_MAX};
          expectAt(engine.bottom(), model.step(most, -1), false);
        }
      } else if (place) {
        // The cursor goes with a row that moved, and keeps the place of one that was deleted.
        const bool there = model.rows.count(on) != 0;
        if (there && action != 8) place = Model::placeOf(on, model.rows.at(on));
        if (action == 8) {
          const int code = engine.current();
          EXPECT_EQ(code, there ? 0 : 3167);
          if (there) {
            EXPECT_EQ(engine.text(L"sKey"), model.rows.at(on).key.value_or(L""));
            place = Model::placeOf(on, model.rows.at(on));
          }
        } else {
          LONG count = action < 17 ? 1 : upTo(9) - 4;
          if (action > 12 && count > 0) count = -count;
          if (count == 0) continue;
          expectAt(engine.skip(count), model.step(*place, count), count > 0);
        }
      }
    }
  }
}

}  // namespace
