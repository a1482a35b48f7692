#include "engine/mdb/import.h"

#include <algorithm>

#include "engine/catalog.h"
#include "engine/jet_kind.h"
#include "engine/jet_sql/jet_sql.h"
#include "tests/mdb/mdb_support.h"
#include "tests/mdb/sample_file.h"
#include "tools/zarbo_mdb/csv.h"

namespace {

class Lines : public jet::RowSink {
 public:
  std::vector<std::string> lines;
  void begin(const std::vector<jet::ResultColumn>& columns) override { columns_ = columns; }
  void row(sqlite3_stmt* row) override {
    std::string line;
    for (size_t i = 0; i < columns_.size(); ++i)
      line += (i ? "," : "") + csvField(valueOf(row, static_cast<int>(i)), columns_[i].type);
    lines.push_back(line);
  }

 private:
  static Stored valueOf(sqlite3_stmt* row, int i) {
    const auto bytes = [&] {
      const auto* data = static_cast<const char*>(sqlite3_column_blob(row, i));
      return std::string(data ? data : "", static_cast<size_t>(sqlite3_column_bytes(row, i)));
    };
    switch (sqlite3_column_type(row, i)) {
      case SQLITE_INTEGER:
        return Stored::of(int64_t{sqlite3_column_int64(row, i)});
      case SQLITE_FLOAT:
        return Stored::of(sqlite3_column_double(row, i));
      case SQLITE_TEXT:
        return Stored::of(std::string_view(bytes()));
      case SQLITE_BLOB:
        return {Stored::Kind::Blob, 0, 0, bytes()};
      default:
        return {};
    }
  }
  std::vector<jet::ResultColumn> columns_;
};

class ImportTest : public testing::Test {
 protected:
  void SetUp() override { import(sampleJetFile()); }

  void import(jet_writer::File file) {
    catalog_.reset();
    database_.reset();
    std::filesystem::remove(folder_.file("made.kv"));
    losses.clear();
    write(folder_.file("sample.mdb"), file.finish());
    result = mdb::importJetFile(folder_.file("sample.mdb"), folder_.file("made.kv"), {},
                                {[](const std::string&, size_t, size_t) {},
                                 [&](const std::string& what) { losses.push_back(what); }});
    database_.emplace(folder_.file("made.kv"), Database::Mode::Write);
    ASSERT_EQ(database_->examine(), Database::Health::Good);
    catalog_.emplace(*database_);
  }

  using Answer = std::vector<std::string>;
  Answer ask(const std::string& sql) {
    Lines rows;
    try {
      jet::execute(database_->handle(), *catalog_, sql, {}, &rows);
      return rows.lines;
    } catch (const jet::Failure& failure) {
      return {std::to_string(failure.error.number)};
    }
  }
  size_t lossesAbout(const std::string& words) const {
    return static_cast<size_t>(std::count_if(losses.begin(), losses.end(), [&](const std::string& loss) {
      return loss.find(words) != std::string::npos;
    }));
  }

  mdb::ImportResult result;
  std::vector<std::string> losses;

 private:
  Folder folder_;
  std::optional<Database> database_;
  std::optional<DatabaseCatalog> catalog_;
};

TEST_F(ImportTest, KeepsAValueOfEveryType) {
  EXPECT_EQ(ask("SELECT yes, tiny, short, whole, money, half, number, at, raw, name FROM Types"),
            (Answer{"True,200,-300,-70000,-1234.5678,0.1,0.3333333333333333,2020-01-31 18:00:00,0001FF,"
                    "\"Straße, \"\"Жук\"\" 😀\"",
                    "False,,,,,,,,,",
                    "False,0,32767,2147483647,922337203685477.5807,-1e+30,,1899-12-29 06:00:00,,\"\"",
                    "True,,,,,,,,,plain"}));
  EXPECT_EQ(ask("SELECT blob, note, key, exact, wide FROM Types WHERE tiny = 200"),
            (Answer{"000A0D,\"a\r\nb\",{12345678-ABCD-3412-0102-030405060708},-123.45,12345678901234.568"}));
  EXPECT_EQ(ask("SELECT Len(note), Right(note, 2), Len(blob) > 0 FROM Types WHERE whole > 0"),
            (Answer{"20001,mé,True"}));
  EXPECT_EQ(ask("SELECT Len(note) FROM Types WHERE name = 'plain'"), (Answer{"1000"}));
  EXPECT_EQ(lossesAbout("no finite number"), 1u);
  EXPECT_EQ(lossesAbout("digits of 'wide' beyond the fifteenth"), 1u);
}

TEST_F(ImportTest, KeepsRulesIndexesAndCounters) {
  ASSERT_EQ(result.tables, 4u);
  EXPECT_EQ(ask("INSERT INTO Rooms (area) VALUES (1)"), Answer{"3314"});
  EXPECT_EQ(ask("INSERT INTO Rooms (name) VALUES ('')"), Answer{"3315"});
  EXPECT_EQ(ask("INSERT INTO Rooms (id, name) VALUES (5, 'twice')"), Answer{"3022"});
  EXPECT_EQ(ask("INSERT INTO Rooms (name) VALUES ('new')"), Answer());
  EXPECT_EQ(ask("SELECT id, area, made = Date() FROM Rooms WHERE name = 'new'"), Answer{"8,12.5,True"})
      << "the counter goes on where it stood, the defaults hold";
  EXPECT_EQ(ask("SELECT [a column with quite a long name 199] FROM Wide"), Answer{"v199"});
  EXPECT_EQ(lossesAbout("'files': attachments"), 1u);
  EXPECT_EQ(lossesAbout("the rule of 'area': >0"), 1u);
  EXPECT_EQ(lossesAbout("'byWall'"), 1u) << "an index that is unique in the file, where two rows are equal";
}

TEST_F(ImportTest, KeepsRelationsAndQueriesAndTellsWhatItCant) {
  EXPECT_EQ(ask("INSERT INTO Doors (room) VALUES (9)"), Answer{"3201"});
  EXPECT_EQ(ask("UPDATE Rooms SET id = 6 WHERE id = 5"), Answer());
  EXPECT_EQ(ask("SELECT room FROM Doors WHERE id = 2"), Answer{"6"});
  EXPECT_EQ(ask("DELETE FROM Rooms WHERE id = 6"), Answer());
  EXPECT_EQ(ask("SELECT Count(*) FROM Doors"), Answer{"1"});
  EXPECT_EQ(ask("SELECT * FROM [Big rooms]"), (Answer{"Hall,1"}));
  EXPECT_EQ(ask("EXECUTE Grow 2"), Answer());
  EXPECT_EQ(ask("SELECT area FROM Rooms"), Answer{"22.5"});
  EXPECT_EQ(ask("SELECT Count(*) FROM [All names]"), Answer{"5"});
  for (const char* words :
       {"'loose' is not imported: it guards nothing", "'Far away' is not imported", "forms (1)",
        "linked table 'Elsewhere', which is 'Things' of C:\\data\\other.mdb"}) {
    EXPECT_EQ(lossesAbout(words), 1u) << words;
  }
}

TEST_F(ImportTest, RowsComeBeforeRules) {
  using namespace jet_writer;
  File file;
  file.add({"Broken",
            {{"id", longInteger, 0, true}, {"name", text, 20, false, 0, 0, {{"Required", "yes"}}}},
            {{"PrimaryKey", {{0, false}}, 9, 1}},
            {{int64_t{1}, "a"}, {int64_t{1}, "b"}, {{}, {}}}});
  import(std::move(file));
  EXPECT_EQ(ask("SELECT id, name FROM Broken ORDER BY name"), (Answer{",", "1,a", "1,b"}));
  EXPECT_EQ(lossesAbout("became a number"), 1u);
  EXPECT_EQ(lossesAbout("'name' of the table 'Broken' is not required"), 1u);
}

TEST_F(ImportTest, LargeTablesComeWhole) {
  jet_writer::File file;
  file.add(manyRows(60'000));
  import(std::move(file));
  EXPECT_EQ(result.rows, 60'000u);
  EXPECT_EQ(ask("SELECT Count(*), Max(ix), Sum(iCount), Min(sKey) FROM Many"),
            Answer{"60000,60000,29970000,K1"});
  EXPECT_TRUE(losses.empty()) << losses[0];
}

}  // namespace
