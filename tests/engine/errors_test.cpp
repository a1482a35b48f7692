#include <sqlite3.h>

#include <functional>
#include <memory>
#include <thread>

#include "tests/engine/engine_support.h"
#include "tests/engine/lock_holder.h"

// The same fault has the same number and the same text, whichever road leads to it.

namespace {

struct Told {
  int number;
  std::wstring text;
  bool operator==(const Told&) const = default;
};

void PrintTo(const Told& told, std::ostream* out) { *out << "(" << told.number << ") " << toUtf8(told.text); }

/// A fault, what it is told as ("%" stands for the file), and the two forms of the call that meets it.
struct Fault {
  struct Message {
    int number;
    const wchar_t* text;
  };
  const char* name;
  Message told;
  std::function<int(TestEngine&)> cursor;
  const wchar_t* sql;
};

class ErrorsTest : public testing::Test {
 protected:
  void SetUp() override {
    TestEngine engine = TestEngine::fresh(path, L"T",
                                          {{L"k", L"long"},
                                           {L"r", L"text(5) required"},
                                           {L"n", L"text noempty"},
                                           {L"b", L"byte"},
                                           {L"k", L"index primary"}});
    ASSERT_EQ(engine.createTable(L"Many", {{L"k", L"long"}, {L"s", L"memo"}}), 0);
    ASSERT_EQ(engine.command(L"INSERT INTO T (k, r) VALUES (1, 'a')"), 0);
    ASSERT_EQ(engine.command(L"INSERT INTO Many (k) VALUES (1)"), 0);
    ASSERT_EQ(engine.command(L"ALTER TABLE Many ADD CONSTRAINT rel FOREIGN KEY (k) REFERENCES T (k)"), 0);
    ASSERT_EQ(engine.createDatabase(other), 0);
    ASSERT_EQ(engine.connect(other), L"OK");
    ASSERT_EQ(engine.createTable(L"Far", {{L"a", L"long"}}), 0);
    ASSERT_EQ(engine.command(L"INSERT INTO Far VALUES (1)"), 0);
    ASSERT_EQ(engine.connect(path), L"OK");
    ASSERT_EQ(engine.link(L"Far", other, L"Far"), 0);
  }

  /// Meets each fault on all roads, with a connection of its own on each; the slow ones wait at the same
  /// time.
  void expectSame(const std::vector<Fault>& faults, bool readOnly = false,
                  const std::function<void()>& harm = {}) {
    struct Way {
      TestEngine engine;
      std::string name;
      std::function<int(TestEngine&)> call;
      Told expected, told;
    };
    std::vector<Way> ways;
    for (const Fault& fault : faults) {
      Told expected = {fault.told.number, fault.told.text};
      if (const size_t mark = expected.text.find(L'%'); mark != std::wstring::npos)
        expected.text.replace(mark, 1, fromUtf8(file));
      const std::wstring query = L"q" + std::to_wstring(++queries);
      TestEngine preparing;
      EXPECT_EQ(preparing.connect(path), L"OK");
      EXPECT_EQ(preparing.createQuery(query, fault.sql), 0) << toUtf8(preparing.errorText());
      const auto sql = [text = std::wstring(fault.sql)](TestEngine& engine) { return engine.sql(text); };
      const auto stored = [query](TestEngine& engine) { return engine.query(query); };
      for (const auto& [road, call] :
           {std::pair("cursor", fault.cursor), std::pair("SQL", std::function<int(TestEngine&)>(sql)),
            std::pair("stored query", std::function<int(TestEngine&)>(stored))}) {
        ways.push_back({TestEngine(), std::string(fault.name) + " by " + road, call, expected, {}});
      }
    }
    for (Way& way : ways) {
      ASSERT_EQ(way.engine.connect(path, readOnly), L"OK");
      ASSERT_EQ(way.engine.table(L"T", L"k"), 0);
    }
    if (harm) harm();
    std::vector<std::thread> threads;
    for (Way& way : ways) {
      threads.emplace_back([&way] { way.told = {way.call(way.engine), way.engine.errorText()}; });
    }
    for (std::thread& each : threads) each.join();
    for (const Way& way : ways) EXPECT_EQ(way.told, way.expected) << way.name;
  }

  TemporaryFolder folder;
  const std::string path = folder.file("a.kv"), other = folder.file("b.kv");
  std::string file = path;
  int queries = 0;
};

int addFar(TestEngine& engine) {
  const int code = engine.table(L"Far");
  return code != 0 ? code : engine.append({{L"a", number(1)}});
}

TEST_F(ErrorsTest, ValuesThatAreRefused) {
  const auto append = [](Fields fields) {
    return [fields](TestEngine& engine) { return engine.append(fields); };
  };
  const std::pair<std::wstring, COleVariant> key = {L"k", number(2)}, text = {L"r", COleVariant(L"x")};
  expectSame({
      {"a value twice",
       {3022, L"The record would repeat a value that must be unique in an index or primary key."},
       append({{L"k", number(1)}, text}),
       L"INSERT INTO T (k, r) VALUES (1, 'x')"},
      {"null in a key",
       {3058, L"A primary key or required index can't have an empty value."},
       append({text}),
       L"INSERT INTO T (r) VALUES ('x')"},
      {"null put into a key",
       {3058, L"A primary key or required index can't have an empty value."},
       [](TestEngine& engine) {
         return engine.top() + engine.replace({{L"k", COleVariant::null()}});
       },
       L"UPDATE T SET k = Null"},
      {"no value",
       {3314, L"The field 'r' must have a value."},
       append({key}),
       L"INSERT INTO T (k) VALUES (2)"},
      {"an empty text",
       {3315, L"The field 'n' can't be an empty text."},
       append({key, text, {L"n", COleVariant(L"")}}),
       L"INSERT INTO T (k, r, n) VALUES (2, 'x', '')"},
      {"a long text",
       {3163, L"The text is too long for the field 'r'."},
       append({key, {L"r", COleVariant(L"sixsix")}}),
       L"INSERT INTO T (k, r) VALUES (2, 'sixsix')"},
      {"a large number",
       {3349, L"The number is too large for the field 'b'."},
       append({key, text, {L"b", number(256)}}),
       L"INSERT INTO T (k, r, b) VALUES (2, 'x', 256)"},
      {"a change of a key that others need",
       {3200, L"The record can't be deleted or changed: the table 'Many' has related records."},
       [](TestEngine& engine) {
         return engine.top() + engine.replace({{L"k", number(5)}});
       },
       L"UPDATE T SET k = 5"},
      {"a deletion that others need",
       {3200, L"The record can't be deleted or changed: the table 'Many' has related records."},
       [](TestEngine& engine) { return engine.top() + engine.remove(); },
       L"DELETE FROM T"},
      {"a reference to nothing",
       {3201, L"A related record is needed in the table 'T'."},
       [](TestEngine& engine) {
         return engine.table(L"Many") + engine.append({{L"k", number(9)}});
       },
       L"INSERT INTO Many (k) VALUES (9)"},
  });
}

TEST_F(ErrorsTest, FilesThatCantBeWritten) {
  const Fault::Message told = {3027, L"The database is open for reading only."};
  expectSame({{"an insert", told,
               [](TestEngine& engine) {
                 return engine.append({{L"k", number(2)}, {L"r", COleVariant(L"x")}});
               },
               L"INSERT INTO T (k, r) VALUES (2, 'x')"},
              {"an insert through a link", told, addFar, L"INSERT INTO Far VALUES (2)"},
              {"a deletion", told, [](TestEngine& engine) { return engine.top() + engine.remove(); },
               L"DELETE FROM Many"}},
             true);
}

TEST_F(ErrorsTest, FilesThatOthersHaveLocked) {
  const Fault change = {"a change",
                        {3218, L"The record can't be changed: the database is locked at the moment."},
                        [](TestEngine& engine) {
                          return engine.append({{L"k", number(2)}, {L"r", COleVariant(L"x")}});
                        },
                        L"INSERT INTO T (k, r) VALUES (2, 'x')"};
  {
    std::unique_ptr<LockHolder> holder;
    expectSame({change}, false, [&] { holder = std::make_unique<LockHolder>(path, "BEGIN IMMEDIATE"); });
  }
  std::unique_ptr<LockHolder> holder;
  expectSame({{"reading",
               {3187, L"The record can't be read: the database is locked by somebody else."},
               [](TestEngine& engine) { return engine.top(); },
               L"SELECT * FROM T"}},
             false, [&] { holder = std::make_unique<LockHolder>(path); });
}

TEST_F(ErrorsTest, LinkedFilesThatCantBeReached) {
  file = other;
  const auto far = [](Fault::Message told) {
    return std::vector<Fault>{
        {"reading", told, [](TestEngine& engine) { return engine.table(L"Far"); }, L"SELECT * FROM Far"},
        {"writing", told, addFar, L"INSERT INTO Far VALUES (2)"}};
  };
  const std::string good = contentOf(other);
  {
    std::unique_ptr<LockHolder> holder;
    expectSame(far({3045, L"The file '%' is in use by somebody else."}), false,
               [&] { holder = std::make_unique<LockHolder>(other); });
  }
  writeFile(other, std::string(5000, 'x'));
  expectSame(far({3343, L"The file '%' is not a database, or it is damaged."}));
  std::filesystem::remove(other);
  expectSame(far({3024, L"The file '%' can't be found."}));
  std::filesystem::create_directory(other);
  expectSame(
      far({3051, L"The file '%' can't be opened: it is not a file, or the right to use it is missing."}));
}

TEST_F(ErrorsTest, DamageThatShowsWhileReading) {
  {
    TestEngine engine;
    ASSERT_EQ(engine.connect(path), L"OK");
    for (int i = 0; i < 40; ++i) {
      ASSERT_EQ(engine.command(L"INSERT INTO Many (k, s) VALUES (1, '" + std::wstring(3000, L'x') + L"')"),
                0);
    }
  }
  const auto harm = [&] {
    // Behind the engine's back, and the file's counter makes it look again.
    sqlite3* database;
    sqlite3_open(path.c_str(), &database);
    sqlite3_exec(database, "UPDATE zb_queries SET sql = sql || ' '", nullptr, nullptr, nullptr);
    sqlite3_close(database);
    std::string bytes = contentOf(path);
    constexpr size_t pageSize = 4096;
    for (size_t at = pageSize; at < bytes.size(); at += pageSize) {
      if (bytes.find("xxxx", at) < at + pageSize) bytes.replace(at, pageSize, std::string(pageSize, '\0'));
    }
    std::ofstream(path, std::ios::binary | std::ios::in)
        .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  };
  expectSame({{"reading",
               {3343, L"The file '%' is not a database, or it is damaged."},
               [](TestEngine& engine) {
                 const int code = engine.table(L"Many");
                 return code != 0 ? code : engine.bottom();
               },
               L"SELECT * FROM Many"}},
             false, harm);
}

}  // namespace
