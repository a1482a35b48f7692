#include "platform/desktop/grid.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/desktop/grid_person.h"

namespace {

using namespace platform;
using testing::ElementsAre;

std::vector<std::wstring> column(const Grid& grid, int at) {
  std::vector<std::wstring> texts;
  for (int row = 0; row < grid.rows(); ++row) texts.push_back(grid.text(row, at));
  return texts;
}

/// Two columns, a header, and the letters of `names` as rows.
void fill(Grid& grid, const std::wstring& names) {
  grid.setText(0, 0, L"Name");
  for (const wchar_t each : names) grid.setText(grid.insertRow(), 0, std::wstring(1, each));
}

/// Tells what a person's deeds let handlers hear.
struct Heard {
  std::vector<std::wstring> lines;
  explicit Heard(Grid& grid) {
    grid.onBeginEdit = [this](int row, int column) { return add(L"begin", row, column), true; };
    grid.onChoice = [this](int row, int column, const std::wstring& text) {
      add(L"choice " + text, row, column);
    };
    grid.onEndEdit = [this](int row, int column) { add(L"end", row, column); };
    grid.onSelectionChanged = [this](int row) { lines.push_back(L"selected " + std::to_wstring(row)); };
  }
  void add(const std::wstring& what, int row, int column) {
    lines.push_back(what + L" " + std::to_wstring(row) + L" " + std::to_wstring(column));
  }
  std::vector<std::wstring> take() { return std::exchange(lines, {}); }
};

TEST(Grid, KeepsItsRowsInOrder) {
  Grid grid(2);
  fill(grid, L"bca");
  grid.setFocus(2, 0);
  grid.sort(0);
  EXPECT_THAT(column(grid, 0), ElementsAre(L"Name", L"a", L"b", L"c"));
  grid.sort(0, false);
  grid.swapRows(1, 3);
  EXPECT_EQ(grid.insertRow(1), 1);
  EXPECT_EQ(grid.insertRow(0), 1) << "the header stays first";
  grid.deleteRow(0);
  grid.deleteRow(99);
  EXPECT_THAT(column(grid, 0), ElementsAre(L"Name", L"", L"", L"a", L"b", L"c"));
  EXPECT_EQ(grid.focusRow(), 2) << "the focus keeps its place";
  grid.setFocus(5, 0);
  grid.deleteRow(5);
  EXPECT_EQ(grid.focusRow(), 4);
  grid.setRowCount(0);
  EXPECT_EQ(grid.rows(), 1);
  EXPECT_EQ(grid.focusRow(), -1);
}

TEST(Grid, SortsByTheCharactersAndKeepsEqualRowsInOrder) {
  Grid grid(2);
  for (const wchar_t* const each : {L"b1", L"B2", L"a3", L"b4", L"\u00e45"}) {
    const int row = grid.insertRow();
    grid.setText(row, 0, std::wstring(each, 1));
    grid.setText(row, 1, each + 1);
  }
  grid.sort(0);
  EXPECT_THAT(column(grid, 1), ElementsAre(L"", L"2", L"3", L"1", L"4", L"5"));
}

TEST(Grid, ChecksReadAsNumbersAndTakeAnyText) {
  Grid grid(1);
  grid.setColumnKind(0, CellKind::checkBox);
  grid.setText(0, 0, L"Display");
  const int row = grid.insertRow();
  EXPECT_EQ(grid.text(row, 0), L"0");
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"1", L"-1"}, {L"0", L"0"}, {L"-1", L"-1"}, {L"", L"-1"}, {L"Display", L"-1"}};
  for (const auto& [written, read] : cases) {
    grid.setText(row, 0, written);
    EXPECT_EQ(grid.text(row, 0), read) << written;
  }
  EXPECT_EQ(grid.text(0, 0), L"Display") << "the header is a text";
}

TEST(Grid, ChoicesHaveNumbersByColumnOrByCell) {
  Grid grid(2);
  grid.setColumnChoices(0, {L"A", L"B", L"A"}, {7, 8, 9});
  const int row = grid.insertRow(), other = grid.insertRow();
  grid.setText(row, 0, L"A");
  grid.setText(other, 0, L"C");
  EXPECT_EQ(grid.choiceNumber(row, 0), 7);
  EXPECT_EQ(grid.choiceNumber(other, 0), 0);
  grid.setCellChoices(other, 0, L"|C|D");
  EXPECT_EQ(grid.kind(other, 0), CellKind::editableList);
  EXPECT_EQ(grid.kind(row, 0), CellKind::dropDownList);
  EXPECT_THAT(grid.choices(other, 0)->texts(), ElementsAre(L"C", L"D"));
  grid.setCellKind(other, 0, CellKind::text);
  EXPECT_EQ(grid.choices(other, 0), nullptr);
  EXPECT_EQ(grid.choices(0, 0), nullptr) << "the header offers none";
}

TEST(Grid, HiddenColumnsStayReadableAndNamed) {
  Grid grid(2);
  grid.setColumnName(1, L"sKey");
  grid.setColumnHidden(1);
  const int row = grid.insertRow();
  grid.setText(row, L"sKey", L"k");
  EXPECT_EQ(grid.text(row, 1), L"k");
  EXPECT_EQ(grid.text(row, L"none"), L"");
  grid.autoSize();
  EXPECT_TRUE(grid.isHidden(1));
  EXPECT_GT(grid.columnWidth(0), 0);
  grid.setText(row, 99, L"x");
  EXPECT_EQ(grid.text(-1, 0), L"");
}

TEST(Grid, FoldsRowsOfHigherLevels) {
  Grid grid(1);
  fill(grid, L"abcdefg");
  const int levels[] = {0, 1, 2, 3, 2, 1, 0, 1};
  for (int row = 1; row < 8; ++row) grid.setLevel(row, levels[row]);
  EXPECT_TRUE(grid.hasRowsBelow(1));
  EXPECT_FALSE(grid.hasRowsBelow(5));
  EXPECT_FALSE(grid.hasRowsBelow(6)) << "outside the tree";
  grid.setFocus(3, 0);
  grid.setFolded(2, true);
  EXPECT_EQ(grid.focusRow(), 2);
  EXPECT_THAT(grid.shownRows(), ElementsAre(0, 1, 2, 4, 5, 6, 7));
  grid.setFolded(1, true);
  EXPECT_THAT(grid.shownRows(), ElementsAre(0, 1, 5, 6, 7));
  grid.setFolded(1, false);
  for (int row = 0; row < 8; ++row) EXPECT_EQ(grid.isFoldedAway(row), row == 3) << row;
}

TEST(GridPerson, IsHeardAndTheProgramIsNot) {
  Grid grid(2);
  fill(grid, L"ab");
  grid.setWholeRows(true);
  Heard heard(grid);
  grid.setFocus(1, 0);
  grid.setText(1, 0, L"x");
  grid.swapRows(1, 2);
  EXPECT_THAT(heard.take(), ElementsAre());
  GridPerson person(grid);
  EXPECT_TRUE(person.moveTo(2, 0));
  EXPECT_TRUE(person.moveTo(2, 1)) << "the same row";
  EXPECT_TRUE(person.open(1, 0));
  EXPECT_TRUE(person.type(L"new"));
  EXPECT_EQ(grid.text(1, 0), L"b") << "not before it is committed";
  EXPECT_TRUE(person.moveTo(2, 0));
  EXPECT_EQ(grid.text(1, 0), L"new");
  EXPECT_EQ(grid.textBeforeEdit(1, 0), L"b");
  EXPECT_EQ(grid.textBeforeEdit(2, 0), L"x");
  EXPECT_THAT(heard.take(),
              ElementsAre(L"selected 2", L"selected 1", L"begin 1 0", L"end 1 0", L"selected 2"));
  EXPECT_TRUE(person.open(1, 0));
  EXPECT_TRUE(person.abandon());
  EXPECT_FALSE(person.commit());
  EXPECT_THAT(heard.take(), ElementsAre(L"selected 1", L"begin 1 0"));
}

TEST(GridPerson, EditsOnlyWhatMayBeEdited) {
  Grid grid(4, 1, 1);
  for (int i = 0; i < 3; ++i) grid.insertRow();
  grid.setColumnHidden(3);
  grid.setReadOnly(1, 1);
  grid.setLooksFixed(1, 2);
  grid.merge(2, 1, 2);
  Heard heard(grid);
  GridPerson person(grid);
  for (const GridCell cell :
       {GridCell{0, 1}, {1, 0}, {1, 1}, {1, 2}, {2, 1}, {2, 2}, {3, 3}, {4, 1}, {-1, 1}}) {
    EXPECT_FALSE(person.open(cell.row, cell.column)) << cell.row << " " << cell.column;
  }
  EXPECT_FALSE(person.type(L"x"));
  for (const std::wstring& line : heard.take()) EXPECT_EQ(line.substr(0, 8), L"selected") << "not even asked";
  grid.onBeginEdit = [](int, int) { return false; };
  EXPECT_FALSE(person.open(3, 1));
  grid.onBeginEdit = nullptr;
  EXPECT_TRUE(person.open(3, 1));
  person.abandon();
  grid.setEditable(false);
  EXPECT_FALSE(person.open(3, 1));
}

TEST(GridPerson, ChoosesBetweenBeginAndEnd) {
  Grid grid(1);
  grid.setColumnChoices(0, L"|A|Select. . .");
  grid.insertRow();
  grid.setText(1, 0, L"old");
  Heard heard(grid);
  GridPerson person(grid);
  EXPECT_FALSE(person.choose(L"A")) << "nothing is open";
  person.open(1, 0);
  EXPECT_FALSE(person.choose(L"B"));
  EXPECT_TRUE(person.choose(L"A"));
  EXPECT_EQ(grid.text(1, 0), L"A");
  EXPECT_THAT(heard.take(), ElementsAre(L"selected 1", L"begin 1 0", L"choice A 1 0", L"end 1 0"));
  // What the handler writes wins, and until then the cell is as it was.
  grid.onChoice = [&](int row, int column, const std::wstring&) {
    EXPECT_FALSE(grid.openCell());
    EXPECT_EQ(grid.text(row, column), L"A");
    grid.setText(row, column, L"picked");
  };
  person.open(1, 0);
  EXPECT_TRUE(person.choose(L"Select. . ."));
  EXPECT_EQ(grid.text(1, 0), L"picked");
  person.open(1, 0);
  EXPECT_TRUE(person.type(L"typed"));
  EXPECT_TRUE(person.commit());
  EXPECT_EQ(grid.text(1, 0), L"typed");
}

TEST(GridPerson, SurvivesHandlersThatMoveRows) {
  Grid grid(1);
  fill(grid, L"abc");
  grid.setColumnChoices(0, L"|X");
  GridPerson person(grid);
  grid.onChoice = [&](int, int, const std::wstring&) { grid.swapRows(1, 3); };
  person.open(1, 0);
  EXPECT_TRUE(person.choose(L"X"));
  EXPECT_THAT(column(grid, 0), ElementsAre(L"Name", L"c", L"b", L"X")) << "the entry follows its row";
  grid.onChoice = [&](int row, int, const std::wstring&) { grid.deleteRow(row); };
  grid.onEndEdit = [&](int, int) { ADD_FAILURE() << "there is no cell to tell of"; };
  person.open(3, 0);
  EXPECT_TRUE(person.choose(L"X"));
  grid.onBeginEdit = [&](int, int) { return grid.setRowCount(1), true; };
  EXPECT_FALSE(person.open(1, 0));
  EXPECT_EQ(grid.rows(), 1);
  fill(grid, L"ab");
  grid.onBeginEdit = nullptr;
  person.open(2, 0);
  grid.deleteRow(1);
  EXPECT_EQ(grid.openCell()->cell.row, 1);
  grid.setRowCount(1);
  EXPECT_FALSE(grid.openCell());
}

TEST(GridPerson, TurnsCheckBoxesAtOnce) {
  Grid grid(1);
  grid.setColumnKind(0, CellKind::checkBox);
  grid.insertRow();
  Heard heard(grid);
  GridPerson person(grid);
  EXPECT_TRUE(person.open(1, 0));
  EXPECT_EQ(grid.text(1, 0), L"-1");
  EXPECT_EQ(grid.textBeforeEdit(1, 0), L"0");
  EXPECT_FALSE(grid.openCell());
  EXPECT_THAT(heard.take(), ElementsAre(L"selected 1", L"begin 1 0", L"end 1 0"));
}

}  // namespace
