#include "engine/text/collation.h"

#include <sqlite3.h>

#include <algorithm>
#include <random>

#include "tests/engine/engine_support.h"

namespace {

TEST(Collation, SortsAsAPersonsLanguageDoes) {
  const std::vector<std::string> sorted = {
      "",      " a",      "_a",     "-a",   "(b)",   "1",    "10",    "2",     "a b",    "a-1 b",  "A1",
      "ab",    "Äb",      "abc",    "æ",    "af",    "cote", "coté",  "côte",  "ÉCOLE",  "école2", "Ecoles",
      "Füße",  "Fusse 1", "Fussel", "Łódź", "lodzi", "Ñu",   "nubes", "Øre",   "orf",    "Straße", "strassen",
      "Zebra", "Αθήνα",   "αθηνών", "Ёлка", "ель",   "Жук",  "мир",   "місто", "місяць", "漢字"};
  std::vector<std::string> wanted = sorted;
  std::reverse(wanted.begin(), wanted.end());
  std::sort(wanted.begin(), wanted.end(),
            [](const auto& a, const auto& b) { return compareLanguage(a, b) < 0; });
  std::string got, list;
  for (size_t i = 0; i < sorted.size(); ++i) {
    got += wanted[i] + "|";
    list += sorted[i] + "|";
  }
  EXPECT_EQ(got, list);
}

TEST(Collation, IsATotalOrderWithTheEqualityOfNames) {
  const std::vector<std::string> parts = {"a", "A",  "á", "Á", "a\u0301", "\u0301", "æ",     "AE",
                                          "ß", "ss", "ẞ", "ω", "Ω",       "ς",      "σ",     "Σ",
                                          "z", "-",  " ", "1", "\xFF",    "漢",     "\u00AD"};
  std::mt19937 random(5);
  std::vector<std::string> texts;
  for (int i = 0; i < 250; ++i) {
    std::string text;
    for (unsigned length = random() % 4; length > 0; --length) text += parts[random() % parts.size()];
    texts.push_back(text);
  }
  const auto sign = [](int order) { return (order > 0) - (order < 0); };
  for (const std::string& a : texts) {
    for (const std::string& b : texts) {
      const int order = sign(compareLanguage(a, b));
      ASSERT_EQ(order, -sign(compareLanguage(b, a))) << a << ' ' << b;
      ASSERT_EQ(order == 0, sameText(a, b)) << a << ' ' << b;
      for (size_t k = 0; k < texts.size(); k += 7) {
        if (order < 0 && compareLanguage(b, texts[k]) < 0) {
          ASSERT_LT(compareLanguage(a, texts[k]), 0) << a << ' ' << b << ' ' << texts[k];
        }
      }
    }
  }
}

// A file whose texts are in the order of names goes on working, and is sorted by language when it is
// compacted.
TEST(Collation, OfAnOlderFileStaysUntilItIsCompacted) {
  const TemporaryFolder folder;
  const std::string path = folder.file("old.kv"), compacted = folder.file("new.kv");
  {
    TestEngine engine = TestEngine::fresh(path, L"T", {{L"s", L"text(20)"}, {L"s", L"index(s)"}});
    ASSERT_EQ(engine.table(L"T", L"s"), 0);
    for (const wchar_t* text : {L"Zebra", L"École", L"Apfel"}) {
      ASSERT_EQ(engine.append({{L"s", COleVariant(std::wstring(text))}}), 0);
    }
  }
  sqlite3* database;
  sqlite3_open(path.c_str(), &database);
  const auto byName = [](void*, int left, const void* a, int right, const void* b) {
    return compareText({static_cast<const char*>(a), static_cast<size_t>(left)},
                       {static_cast<const char*>(b), static_cast<size_t>(right)});
  };
  const auto byLanguage = [](void*, int left, const void* a, int right, const void* b) {
    return compareLanguage({static_cast<const char*>(a), static_cast<size_t>(left)},
                           {static_cast<const char*>(b), static_cast<size_t>(right)});
  };
  sqlite3_create_collation_v2(database, nameOrder, SQLITE_UTF8, nullptr, byName, nullptr);
  sqlite3_create_collation_v2(database, languageOrder, SQLITE_UTF8, nullptr, byLanguage, nullptr);
  // As files were made before: without copies of what describes them, texts in the order of names.
  const char* sql =
      "PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = replace(sql, 'LANGUAGE1', 'JET');"
      "PRAGMA writable_schema=RESET; DROP TABLE zb_copies; REINDEX;";
  char* message = nullptr;
  sqlite3_exec(database, sql, nullptr, nullptr, &message);
  ASSERT_EQ(message, nullptr) << message;
  sqlite3_close(database);

  const auto order = [](const std::string& file) {
    TestEngine engine;
    EXPECT_EQ(engine.connect(file), L"OK");
    EXPECT_EQ(engine.table(L"T", L"s"), 0);
    std::wstring texts;
    for (int code = engine.top(); code == 0; code = engine.skip(1)) texts += engine.text(L"s") + L" ";
    EXPECT_EQ(engine.seek(COleVariant(L"ÉCOLE")), 0);
    EXPECT_EQ(engine.append({{L"s", COleVariant(L"Öl")}}), 0);
    EXPECT_EQ(engine.seek(COleVariant(L"öl")), 0);
    EXPECT_EQ(engine.remove(), 0);
    VARIANT_BOOL ok;
    engine->CloseDatabase(&ok);
    EXPECT_EQ(engine.connect(file), L"OK") << "the index agrees with its order";
    return texts;
  };
  EXPECT_EQ(order(path), L"Apfel Zebra École ");
  TestEngine engine;
  ASSERT_EQ(engine.compact(path, compacted), 0) << toUtf8(engine.errorText());
  EXPECT_EQ(order(compacted), L"Apfel École Zebra ");
}

}  // namespace
