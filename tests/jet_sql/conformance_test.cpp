#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "engine/jet_sql/date.h"
#include "engine/jet_sql/functions.h"
#include "tests/jet_sql/memory_catalog.h"

// Each file of tests/jet_sql/cases is one database. Lines:
//   # feature          a row of the table; nothing else
//   > statement        runs; without an expectation below it must succeed
//     more             continues the statement
//   : name|name        names of the columns
//   = value|value      a row, in order
//   = none             no rows
//   ~ 3                rows touched
//   ! 3075 text        the error's number, and a part of its text
//   < value            a parameter for the next statement, by place: Long, Double or 'text'

namespace {

class Rows : public jet::RowSink {
 public:
  std::vector<jet::ResultColumn> columns;
  std::vector<std::string> lines;

  void begin(const std::vector<jet::ResultColumn>& c) override { columns = c; }
  void row(sqlite3_stmt* row) override {
    std::string line;
    for (size_t i = 0; i < columns.size(); ++i)
      line += (i ? "|" : "") + show(row, static_cast<int>(i), columns[i].type);
    lines.push_back(line);
  }

 private:
  static std::string real(double value) {
    const std::string text = jet::numberText(value);
    return text.find_first_of(".E") == std::string::npos ? text + ".0" : text;
  }
  static std::string show(sqlite3_stmt* row, int i, jet::Type type) {
    const int storage = sqlite3_column_type(row, i);
    if (storage == SQLITE_NULL) return "null";
    switch (type) {
      case jet::Type::YesNo:
        return sqlite3_column_int64(row, i) == -1  ? "True"
               : sqlite3_column_int64(row, i) == 0 ? "False"
                                                   : "?";
      case jet::Type::Currency:
        return "$" + jet::currencyText(sqlite3_column_int64(row, i));
      case jet::Type::Date:
        return "#" + jet::dateText(sqlite3_column_double(row, i)) + "#";
      case jet::Type::Single:
        return jet::numberText(sqlite3_column_double(row, i), 7) + "f";
      case jet::Type::Double:
        return real(sqlite3_column_double(row, i));
      default:
        break;
    }
    if (storage == SQLITE_FLOAT) return real(sqlite3_column_double(row, i));
    const std::string text = reinterpret_cast<const char*>(sqlite3_column_text(row, i));
    return text.empty() ? "\"\"" : text;
  }
};

struct Step {
  size_t line = 0;
  std::string statement;
  std::vector<jet::Parameter> parameters;
  std::vector<std::string> expected;
};

jet::Parameter parameter(const std::string& text) {
  if (text.starts_with('\'')) return {"", jet::Type::Text, text.substr(1, text.size() - 2)};
  if (text.find('.') != std::string::npos) return {"", jet::Type::Double, std::stod(text)};
  return {"", jet::Type::Long, int64_t{std::stol(text)}};
}

std::vector<Step> readSteps(const std::filesystem::path& file) {
  std::ifstream in(file);
  std::vector<Step> steps;
  std::vector<jet::Parameter> parameters;
  std::string line;
  for (size_t number = 1; std::getline(in, line); ++number) {
    if (line.starts_with("> ")) {
      steps.push_back({number, line.substr(2), std::exchange(parameters, {}), {}});
    } else if (line.starts_with("  ") && !steps.empty()) {
      steps.back().statement += "\n" + line.substr(2);
    } else if (line.starts_with("< ")) {
      parameters.push_back(parameter(line.substr(2)));
    } else if (!line.empty() && line[0] != '#') {
      steps.back().expected.push_back(line);
    }
  }
  return steps;
}

void check(const Step& step, const Outcome& outcome, const Rows& rows) {
  if (!step.expected.empty() && step.expected[0].starts_with("! ")) {
    const std::string want = step.expected[0].substr(2);
    const size_t blank = std::min(want.find(' '), want.size());
    ASSERT_TRUE(outcome.error) << "no error, but " << want << " is expected";
    EXPECT_EQ(outcome.error->number, std::stoi(want)) << outcome.error->text;
    if (blank < want.size()) {
      EXPECT_NE(outcome.error->text.find(want.substr(blank + 1)), std::string::npos) << outcome.error->text;
    }
    return;
  }
  ASSERT_TRUE(outcome.ok()) << outcome.error->number << " " << outcome.error->text;
  std::vector<std::string> expected;
  for (const std::string& line : step.expected) {
    if (line.starts_with("~ ")) {
      EXPECT_EQ(outcome.affected, std::stol(line.substr(2)));
    } else if (line.starts_with(": ")) {
      std::string names;
      for (const auto& column : rows.columns) names += (names.empty() ? "" : "|") + column.name;
      EXPECT_EQ(names, line.substr(2));
    } else if (line != "= none") {
      expected.push_back(line.substr(2));
    }
  }
  const bool asksRows = std::any_of(step.expected.begin(), step.expected.end(),
                                    [](const std::string& l) { return l[0] == '='; });
  if (asksRows) {
    EXPECT_EQ(rows.lines, expected);
  }
}

class Conformance : public testing::TestWithParam<std::string> {};

TEST_P(Conformance, AnswersAsTheTableSays) {
  const auto file = std::filesystem::path(JET_SQL_CASES) / GetParam();
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
  ASSERT_EQ(jet::registerFunctions(database), SQLITE_OK);
  MemoryCatalog catalog(database);
  const auto steps = readSteps(file);
  EXPECT_FALSE(steps.empty());
  for (const Step& step : steps) {
    SCOPED_TRACE(GetParam() + ":" + std::to_string(step.line) + ": " + step.statement);
    Rows rows;
    catalog.checkpoint();
    const Outcome outcome = outcomeOf(database, catalog, step.statement, step.parameters, &rows);
    check(step, outcome, rows);
  }
  EXPECT_EQ(sqlite3_get_autocommit(database), 1) << "a transaction was left open";
  sqlite3_close(database);
}

std::vector<std::string> caseFiles() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(JET_SQL_CASES)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

INSTANTIATE_TEST_SUITE_P(Files, Conformance, testing::ValuesIn(caseFiles()), [](const auto& info) {
  std::string name = info.param.substr(0, info.param.find('.'));
  return name;
});

}  // namespace
