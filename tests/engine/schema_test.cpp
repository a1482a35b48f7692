#include <sqlite3.h>

#include <map>

#include "tests/engine/engine_support.h"

namespace {

/// Runs statements on a file as a plain SQLite program would.
void runPlainly(const std::string& path, const std::string& sql) {
  sqlite3* database;
  sqlite3_open(path.c_str(), &database);
  const auto compare = [](void*, int left, const void* a, int right, const void* b) {
    return std::string_view(static_cast<const char*>(a), static_cast<size_t>(left))
        .compare({static_cast<const char*>(b), static_cast<size_t>(right)});
  };
  sqlite3_create_collation_v2(database, "JET", SQLITE_UTF8, nullptr, compare, nullptr);
  char* message = nullptr;
  sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &message);
  EXPECT_EQ(message, nullptr) << message;
  sqlite3_close(database);
}

class SchemaTest : public testing::Test {
 protected:
  /// A file with a relation of two tables, closed.
  std::string fileWithRelation() {
    TestEngine engine = TestEngine::fresh(path, L"One", {{L"id", L"long"}, {L"id", L"index primary"}});
    EXPECT_EQ(engine.createTable(L"Many", {{L"one", L"long"}, {L"s", L"text"}}), 0);
    EXPECT_EQ(engine.command(L"INSERT INTO One VALUES (1)"), 0);
    EXPECT_EQ(engine.command(L"INSERT INTO Many VALUES (1, 'a')"), 0);
    EXPECT_EQ(
        engine.command(
            L"ALTER TABLE Many ADD CONSTRAINT rel FOREIGN KEY (one) REFERENCES One (id) ON UPDATE CASCADE"),
        0);
    return path;
  }
  /// The guards of the relation in the form that names the database.
  static std::string oldGuards(const std::string& column) {
    return "DROP TRIGGER \"zb_rel.insert\"; CREATE TRIGGER \"zb_rel.insert\" AFTER INSERT ON \"Many\" WHEN "
           "NEW.\"" +
           column + "\" IS NOT NULL AND NOT EXISTS(SELECT 1 FROM \"main\".\"One\" WHERE \"id\" = NEW.\"" +
           column + "\") BEGIN SELECT RAISE(ABORT, '\x01jet 3201 -1 A related record is needed.'); END;";
  }

  TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), other = folder.file("b.kv");
};

struct Loss {
  const char* sql;
  int number;
  const wchar_t* reason;
};

TEST_F(SchemaTest, CompactionLeavesBrokenRelationsOutAndTellsThem) {
  const std::string good = contentOf(fileWithRelation());
  const Loss losses[] = {
      {"UPDATE zb_relations SET columns = 'gone'", 3381, L"There is no field 'gone'"},
      {"UPDATE zb_relations SET foreign_columns = 'gone'", 3292, L"unique index"},
      {"UPDATE zb_relations SET foreign_table = 'Gone'", 3078, L"'Gone'"},
      {"DELETE FROM zb_indexes", 3292, L"unique index"},
      {"DROP TRIGGER \"zb_rel.changed\"; DROP TRIGGER \"zb_rel.update\"; UPDATE One SET id = 7", 3201,
       L"'One'"},
  };
  for (const Loss& loss : losses) {
    SCOPED_TRACE(loss.sql);
    writeFile(path, good);
    runPlainly(path, std::string(loss.sql) + ";" + oldGuards("gone"));
    TestEngine engine;
    ASSERT_EQ(engine.compact(path, other), 0);
    EXPECT_EQ(engine.error(), loss.number);
    EXPECT_NE(engine.errorText().find(L"The relation 'rel' of the table 'Many' is left out"),
              std::wstring::npos)
        << toUtf8(engine.errorText());
    EXPECT_NE(engine.errorText().find(loss.reason), std::wstring::npos) << toUtf8(engine.errorText());
    ASSERT_EQ(engine.connect(other), L"OK");
    ASSERT_EQ(engine.table(L"Many"), 0);
    EXPECT_EQ(engine.count(), 1);
    EXPECT_EQ(engine.append({{L"one", number(99)}}), 0);
    VARIANT_BOOL exists, ok;
    engine->RelationExists(Bstr(L"rel").get(), &exists, &ok);
    EXPECT_FALSE(exists);
    engine->CloseDatabase(&ok);
    std::filesystem::remove(other);
  }
}

TEST_F(SchemaTest, ABrokenRelationDoesntStandInTheWayOfOtherTables) {
  runPlainly(fileWithRelation(), "UPDATE zb_relations SET columns = 'gone';" + oldGuards("gone"));
  TestEngine engine;
  ASSERT_EQ(engine.connect(path), L"OK");
  ASSERT_EQ(engine.createTable(L"New", {{L"a", L"long"}}), 0);
  EXPECT_EQ(engine.modifyTable(L"New", {{L"b", L"text"}, {L"a", L"double"}}), 0);
  VARIANT_BOOL ok;
  engine->RenameTable(Bstr(L"New").get(), Bstr(L"Newer").get(), &ok);
  EXPECT_TRUE(ok) << engine.error() << toUtf8(engine.errorText());
  // Deleting it is a way out as well.
  engine->RelationDelete(Bstr(L"Many").get(), Bstr(L"rel").get(), &ok);
  EXPECT_TRUE(ok);
  EXPECT_EQ(engine.command(L"INSERT INTO Many VALUES (5, 'b')"), 0);
}

TEST_F(SchemaTest, FilesOfOlderRelationsCanBeLinked) {
  runPlainly(fileWithRelation(), oldGuards("one"));
  TestEngine engine;
  ASSERT_EQ(engine.createDatabase(other), 0);
  ASSERT_EQ(engine.connect(other), L"OK");
  VARIANT_BOOL linked, ok;
  engine->LinkTable(Bstr(L"Many").get(), Bstr(fromUtf8(path)).get(), Bstr(L"Many").get(), &linked, &ok);
  ASSERT_TRUE(ok) << engine.error() << toUtf8(engine.errorText());
  EXPECT_EQ(engine.command(L"INSERT INTO Many VALUES (1, 'b')"), 0);
  EXPECT_EQ(engine.command(L"INSERT INTO Many VALUES (2, 'c')"), 3201);
}

}  // namespace
