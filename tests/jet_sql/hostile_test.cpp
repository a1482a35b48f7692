#include <gtest/gtest.h>

#include <chrono>

#include "tests/jet_sql/memory_catalog.h"

namespace {

class Hostile : public testing::Test {
 protected:
  Hostile() : catalog(open()) {
    run("CREATE TABLE Jobs (id COUNTER PRIMARY KEY, name TEXT(20) NOT NULL, cost CURRENCY, due DATE, done "
        "YESNO)");
    run("CREATE TABLE Parts (job LONG, what TEXT(20))");
    for (const char* name : {"Duct", "Pipe", "Lamp"})
      run(std::string("INSERT INTO Jobs (name, cost) VALUES ('") + name + "', 12.5)");
  }
  ~Hostile() override { sqlite3_close(database); }

  sqlite3* open() {
    sqlite3_open(":memory:", &database);
    jet::registerFunctions(database);
    return database;
  }

  Outcome run(const std::string& sql) {
    catalog.checkpoint();
    return outcomeOf(database, catalog, sql);
  }

  int64_t count(const std::string& table) { return run("SELECT * FROM " + table).affected; }

  int number(const std::string& sql) {
    const Outcome outcome = run(sql);
    return outcome.error ? outcome.error->number : 0;
  }

  sqlite3* database = nullptr;
  MemoryCatalog catalog;
};

std::string repeated(std::string_view text, size_t count) {
  std::string all;
  for (size_t i = 0; i < count; ++i) all += text;
  return all;
}

TEST_F(Hostile, StatementsCutAnywhereEndInAnAnswerAndLeaveNoTransaction) {
  const std::string statements[] = {
      "SELECT DISTINCT j.name AS n, Count(*) AS c FROM [Jobs] AS j INNER JOIN Parts ON j.id = Parts.job "
      "WHERE j.due > #1/31/2020 5:00 PM# "
      "And j.name Like '[!a-c]*' GROUP BY j.name HAVING Count(*) > 1 ORDER BY j.name DESC",
      "TRANSFORM Sum(cost) SELECT name FROM Jobs WHERE id In (SELECT job FROM Parts) GROUP BY name PIVOT "
      "Format(due, \"yyyy\") In ('2020', '2021')",
      "UPDATE Jobs INNER JOIN Parts ON Jobs.id = Parts.job SET Jobs.name = Left('abc', 2) & {guid "
      "{12345678-1234-1234-1234-123456789abc}}",
      "ALTER TABLE Parts ADD CONSTRAINT r FOREIGN KEY (job) REFERENCES Jobs (id) ON DELETE CASCADE",
  };
  for (const std::string& statement : statements) {
    for (size_t length = 0; length <= statement.size(); ++length) run(statement.substr(0, length));
  }
  EXPECT_EQ(sqlite3_get_autocommit(database), 1);
  EXPECT_EQ(count("Jobs"), 3);
}

TEST_F(Hostile, DeepNestingIsRefused) {
  const size_t deep = 200000;
  for (const auto& [opening, closing] : {std::pair("(", ")"),
                                         {"Abs(", ")"},
                                         {"-(", ")"},
                                         {"Not ", ""},
                                         {"- ", ""},
                                         {"(SELECT ", ")"},
                                         {"1 IN (", ")"},
                                         {"IIf(1,", ",2)"}}) {
    const std::string sql = "SELECT " + repeated(opening, deep) + "1" + repeated(closing, deep);
    EXPECT_EQ(number(sql), jet::tooComplex) << opening;
  }
  EXPECT_EQ(number("SELECT * FROM " + repeated("(", deep) + "Jobs" + repeated(")", deep)), jet::tooComplex);
  EXPECT_EQ(number("SELECT 1" + repeated(" = 1", deep)), jet::tooComplex);
  std::string aliases = "SELECT 1 AS a0";
  for (int i = 1; i < 60; ++i)
    aliases += ", a" + std::to_string(i - 1) + " + a" + std::to_string(i - 1) + " AS a" + std::to_string(i);
  EXPECT_EQ(number(aliases), jet::tooComplex) << "aliases that double each time";
}

TEST_F(Hostile, LongStatementsRunInTimeThatGrowsWithTheirLength) {
  const auto seconds = [&](const std::string& sql) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(number(sql), 0) << sql.substr(0, 60);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  const size_t many = 60000;
  for (const auto& [head, item, tail] : {std::tuple("SELECT id FROM Jobs WHERE id IN (0", ", 12345678", ")"),
                                         {"SELECT id FROM Jobs WHERE id = 0", " Or id = 1234567", ""}}) {
    EXPECT_LT(seconds(head + repeated(item, many) + tail), 5) << head;
  }
  EXPECT_LT(seconds("SELECT 0" + repeated(" + 1", 900)), 5);
  EXPECT_LT(seconds("SELECT 'a'" + repeated(" & 'b'", 900)), 5);
  EXPECT_LT(seconds("SELECT '" + std::string(1 << 20, 'x') + "'"), 5);
}

TEST_F(Hostile, NamesAreNeverRead) {
  EXPECT_EQ(number("CREATE TABLE [x\"; DROP TABLE Jobs; --] ([a\"b'c] TEXT(40), [select] LONG)"), 0);
  EXPECT_EQ(
      number(
          "INSERT INTO [x\"; DROP TABLE Jobs; --] ([a\"b'c], [select]) VALUES ('''; DELETE FROM Jobs', 1)"),
      0)
      << "an apostrophe in a value";
  EXPECT_EQ(number("INSERT INTO [x\"; DROP TABLE Jobs; --] ([a\"b'c]) VALUES ('ok')"), 0);
  EXPECT_EQ(
      run("SELECT [a\"b'c] AS [q\"; --] FROM [x\"; DROP TABLE Jobs; --] WHERE [a\"b'c] = 'OK'").affected, 1);
  EXPECT_EQ(number("SELECT 1; DELETE FROM Jobs"), jet::trailingText);
  EXPECT_EQ(number("SELECT * FROM sqlite_master"), jet::unknownTable);
  EXPECT_EQ(number("SELECT load_extension('x')"), jet::unknownFunction);
  EXPECT_EQ(number("SELECT jet_op_add(1, 2)"), jet::unknownFunction);
  EXPECT_EQ(count("Jobs"), 3);
}

TEST_F(Hostile, AFailedStatementChangesNothing) {
  // The third row fails in each; the first two must not stay.
  EXPECT_EQ(number("UPDATE Jobs SET cost = 10 / (id - 3)"), jet::divisionByZero);
  EXPECT_EQ(
      number("INSERT INTO Jobs (name) SELECT Left(name, 5 - 3 * Int(id / 3)) & Space(16 + id) FROM Jobs"),
      jet::textTooLong);
  EXPECT_EQ(number("SELECT name, CByte(254 + id) AS b INTO Copy FROM Jobs"), jet::overflow);
  EXPECT_EQ(count("Jobs"), 3);
  EXPECT_EQ(run("SELECT * FROM Jobs WHERE cost = 12.5").affected, 3);
  EXPECT_EQ(number("SELECT * FROM Copy"), jet::unknownTable);
  EXPECT_EQ(number("CREATE TABLE Copy (a LONG)"), 0) << "the name is free in the database, too";
}

TEST_F(Hostile, AStatementInsideATransactionUndoesOnlyItself) {
  sqlite3_exec(database, "BEGIN", nullptr, nullptr, nullptr);
  EXPECT_EQ(number("DELETE FROM Jobs WHERE id = 1"), 0);
  EXPECT_EQ(number("UPDATE Jobs SET cost = 1 / (id - 3)"), jet::divisionByZero);
  EXPECT_EQ(count("Jobs"), 2);
  sqlite3_exec(database, "ROLLBACK", nullptr, nullptr, nullptr);
  EXPECT_EQ(count("Jobs"), 3);
}

}  // namespace
