#include "zarbo/widgets/grid_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "zarbo/widgets/sql_text.h"

namespace {

using platform::Grid;
using testing::ElementsAre;

std::vector<std::wstring> row(const Grid& grid, int at) {
  std::vector<std::wstring> texts;
  for (int column = 0; column < grid.columns(); ++column) texts.push_back(grid.text(at, column));
  return texts;
}

/// A hidden counter, a name and two more columns, under their headers.
class GridRows : public testing::Test {
 protected:
  GridRows() {
    grid.setColumnHidden(0);
    put(0, {L"ixLayer", L"Layer Name", L"To Scale", L"Can Rotate"});
  }
  void put(int at, const std::vector<std::wstring>& texts) {
    if (at == grid.rows()) grid.insertRow();
    for (size_t i = 0; i < texts.size(); ++i) grid.setText(at, static_cast<int>(i), texts[i]);
  }
  Grid grid{4};
};

TEST_F(GridRows, NewOnesHaveANameOfTheirOwn) {
  EXPECT_EQ(AddUniqueRow(grid, L"New Layer", 1, 0, false), 1);
  EXPECT_THAT(row(grid, 1), ElementsAre(L"-1", L"New Layer", L"0", L"0")) << "not the header's words";
  put(1, {L"7", L"New Layer", L"a", L"b"});
  EXPECT_EQ(AddUniqueRow(grid, L"New Layer", 1, 0, false), 2);
  EXPECT_THAT(row(grid, 2), ElementsAre(L"-1", L"New Layer (1)", L"a", L"b"));
  EXPECT_EQ(AddUniqueRow(grid, L"New Layer", 1, 0, false), 3);
  EXPECT_EQ(grid.text(3, 1), L"New Layer (2)");
  EXPECT_EQ(AddUniqueRow(grid, L"new layer", 1, 0, false), 4);
  EXPECT_EQ(grid.text(4, 1), L"new layer") << "case counts";
  EXPECT_EQ(grid.focus(), (platform::GridCell{4, 1}));
  EXPECT_EQ(grid.scrolledTo().row, 4);
  EXPECT_EQ(AddUniqueRow(grid, L"X", 1, 0, false, 2), 2);
  EXPECT_THAT(row(grid, 2), ElementsAre(L"-1", L"X", L"a", L"b")) << "a copy of the row above";
}

TEST_F(GridRows, FocusGoesToTheGridWhenAsked) {
  int grabbed = 0;
  grid.setFocusGrabber([&] { ++grabbed; });
  AddUniqueRow(grid, L"A", 1, 0, false);
  EXPECT_EQ(grabbed, 0);
  AddUniqueRow(grid, L"A", 1, 0, true);
  EXPECT_EQ(grabbed, 1);
}

TEST_F(GridRows, FocusStaysWhereOneWasRemoved) {
  for (const wchar_t* const name : {L"a", L"b", L"c"}) put(grid.rows(), {L"1", name});
  grid.setFocus(2, 1);
  RemoveSelectedRow(grid);
  EXPECT_EQ(grid.text(2, 1), L"c");
  EXPECT_EQ(grid.focusRow(), 2);
  RemoveSelectedRow(grid);
  EXPECT_EQ(grid.focusRow(), 1);
  RemoveSelectedRow(grid);
  RemoveSelectedRow(grid);
  EXPECT_EQ(grid.rows(), 1) << "the header stays";
}

TEST_F(GridRows, CopiesGoBelowTheLastOfTheirGroup) {
  put(1, {L"1", L"g", L"x", L"p"});
  put(2, {L"2", L"g", L"y", L"q"});
  put(3, {L"3", L"h", L"z", L"r"});
  grid.setImage(1, 2, L"#ff0000");
  EXPECT_EQ(CopyRowBelow(grid, 1, 1, 0, false), 3);
  EXPECT_THAT(row(grid, 3), ElementsAre(L"-1", L"g", L"x", L"p"));
  EXPECT_EQ(grid.image(3, 2), L"#ff0000");
  EXPECT_EQ(grid.focusRow(), 3);
  grid.setColumnHidden(3);
  EXPECT_EQ(CopyRowBelow(grid, 4, 1, 0, false), 5) << "at the end";
  EXPECT_EQ(grid.text(5, 3), L"");
  EXPECT_EQ(CopyRowBelow(grid, 4, 1, 0, true), 6) << "behind its first copy";
  EXPECT_EQ(grid.text(6, 3), L"r");
  for (const auto& [at, column] : {std::pair{0, 1}, {7, 1}, {-1, 1}, {1, -1}, {1, 4}}) {
    EXPECT_EQ(CopyRowBelow(grid, at, column, 0, true), -1) << at << " " << column;
  }
}

TEST_F(GridRows, CategoriesSpanTwoColumns) {
  AddCategoryRow(grid, L"Title");
  EXPECT_THAT(row(grid, 1), ElementsAre(L"Title", L"", L"Title", L""));
  EXPECT_EQ(grid.level(1), 1);
  EXPECT_EQ(grid.span(1, 0), 2);
  EXPECT_TRUE(grid.looksFixed(1, 1));
  EXPECT_EQ(AddSettingRow(grid, L"Label", true), 2);
  EXPECT_EQ(grid.level(2), 2);
  EXPECT_THAT(grid.choices(2, 1)->texts(), ElementsAre(L"Yes", L"No"));
}

TEST(SqlText, DoublesApostrophes) {
  EXPECT_EQ(sqlText(L"O'Brien's"), L"'O''Brien''s'");
  EXPECT_EQ(sqlText(L""), L"' '");
  EXPECT_EQ(sqlText(L" "), L"' '");
}

}  // namespace
