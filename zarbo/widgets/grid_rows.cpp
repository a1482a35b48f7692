#include "zarbo/widgets/grid_rows.h"

#include <unordered_set>

namespace {

using platform::CellKind;
using platform::Grid;
using platform::RedrawOff;

const std::wstring notStored = L"-1";

// A grid without rows offers only its header as the row above; check boxes don't start from its words.
std::wstring copiedText(const std::wstring& above) {
  return above == L"To Scale" || above == L"Can Rotate" ? L"0" : above;
}

std::wstring uniqueName(const Grid& grid, const std::wstring& name, int column) {
  std::unordered_set<std::wstring> taken;
  for (int row = 1; row < grid.rows(); ++row) taken.insert(grid.text(row, column));
  std::wstring candidate = name;
  for (int number = 1; taken.contains(candidate); ++number) {
    candidate = name + L" (" + std::to_wstring(number) + L")";
  }
  return candidate;
}

}  // namespace

int AddUniqueRow(Grid& grid, const std::wstring& name, int nameColumn, int counterColumn, bool grabFocus,
                 std::optional<int> before) {
  int row = 0;
  {
    const RedrawOff off(grid);
    row = grid.insertRow(before.value_or(-1));
    for (int column = nameColumn; column < grid.columns(); ++column) {
      grid.setText(row, column, copiedText(grid.text(row - 1, column)));
    }
    grid.setText(row, counterColumn, notStored);
    grid.setText(row, nameColumn, uniqueName(grid, name, nameColumn));
    grid.setFocus(row, nameColumn);
  }
  grid.scrollTo(row, nameColumn);
  if (grabFocus) grid.grabFocus();
  return row;
}

void RemoveSelectedRow(Grid& grid) {
  const RedrawOff off(grid);
  // The focus keeps its place, or goes to the new last row.
  grid.deleteRow(grid.focusRow());
}

int CopyRowBelow(Grid& grid, int row, int column, int counterColumn, bool hiddenToo) {
  if (row < 1 || row >= grid.rows() || column < 0 || column >= grid.columns()) return -1;
  const RedrawOff off(grid);
  int end = row + 1;
  while (end < grid.rows() && grid.text(end, column) == grid.text(row, column)) ++end;
  const int copy = grid.insertRow(end);
  for (int each = 0; each < grid.columns(); ++each) {
    if (grid.isHidden(each) && !hiddenToo) continue;
    grid.setText(copy, each, grid.text(row, each));
    grid.setImage(copy, each, grid.image(row, each));
  }
  grid.setText(copy, counterColumn, notStored);
  grid.setFocus(copy, column);
  return copy;
}

void AddCategoryRow(Grid& grid, const std::wstring& title) {
  const RedrawOff off(grid);
  const int row = grid.insertRow();
  grid.setLevel(row, 1);
  grid.setText(row, 0, title);
  grid.setText(row, 2, title);
  grid.setLooksFixed(row, 0);
  grid.setLooksFixed(row, 1);
  grid.merge(row, 0, 2);
}

int AddSettingRow(Grid& grid, const std::wstring& label, bool isYesNo) {
  const RedrawOff off(grid);
  const int row = grid.insertRow();
  grid.setLevel(row, 2);
  grid.setText(row, 0, label);
  if (isYesNo) grid.setCellChoices(row, 1, yesNoChoices);
  return row;
}
