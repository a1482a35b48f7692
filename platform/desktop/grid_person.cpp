#include "platform/desktop/grid_person.h"

namespace platform {

bool GridPerson::moveTo(int row, int column) {
  commit();
  const GridCell cell{row, column};
  if (!grid_.contains(cell) || grid_.isFixed(cell) || grid_.isFoldedAway(row)) return false;
  const GridCell former = grid_.focus();
  grid_.setFocus(row, column);
  const bool isOther = grid_.hasWholeRows() ? former.row != row : former != cell;
  if (isOther && grid_.onSelectionChanged) grid_.onSelectionChanged(row);
  return true;
}

bool GridPerson::mayEdit(GridCell cell) const {
  return grid_.isEditable() && !grid_.isHidden(cell.column) && !grid_.isReadOnly(cell.row, cell.column) &&
         !grid_.looksFixed(cell.row, cell.column) && grid_.span(cell.row, cell.column) == 1;
}

// The handlers of the focus and of the edit may have changed the rows.
bool GridPerson::begin(GridCell cell) {
  if (!moveTo(cell.row, cell.column) || !grid_.contains(cell) || !mayEdit(cell)) return false;
  grid_.lastEdited_ = cell;
  grid_.before_ = grid_.text(cell.row, cell.column);
  return (!grid_.onBeginEdit || grid_.onBeginEdit(cell.row, cell.column)) && grid_.contains(cell) &&
         grid_.lastEdited_ == cell;
}

bool GridPerson::open(int row, int column) {
  const GridCell cell{row, column};
  if (grid_.open_ && grid_.open_->cell == cell) return true;
  if (!begin(cell)) return false;
  if (grid_.kind(row, column) == CellKind::checkBox) {
    turnCheck(cell);
  } else {
    grid_.open_ = {cell, grid_.text(row, column)};
    if (grid_.view_) grid_.view_->openCellChanged();
  }
  return true;
}

void GridPerson::turnCheck(GridCell cell) {
  finish(cell, grid_.text(cell.row, cell.column) == L"0" ? L"-1" : L"0");
}

void GridPerson::finish(GridCell cell, std::wstring text) {
  grid_.setText(cell.row, cell.column, text);
  if (grid_.onEndEdit) grid_.onEndEdit(cell.row, cell.column);
}

bool GridPerson::type(std::wstring text) {
  if (!grid_.open_) return false;
  const GridCell cell = grid_.open_->cell;
  if (grid_.kind(cell.row, cell.column) == CellKind::dropDownList) return false;
  grid_.open_->text = std::move(text);
  return true;
}

bool GridPerson::choose(const std::wstring& entry) {
  if (!grid_.open_) return false;
  const GridCell cell = grid_.open_->cell;
  const SharedChoices offered = grid_.choices(cell.row, cell.column);
  if (!offered || !offered->has(entry)) return false;
  grid_.dropOpenCell();
  grid_.choosing_ = cell;
  grid_.chosenWritten_ = false;
  struct Chosen {
    Grid& grid;
    ~Chosen() { grid.choosing_ = {}; }
  };
  GridCell now;
  {
    const Chosen ended{grid_};
    if (grid_.onChoice) grid_.onChoice(cell.row, cell.column, entry);
    now = grid_.choosing_;
  }
  if (now.row >= 0) finish(now, grid_.chosenWritten_ ? grid_.text(now.row, now.column) : entry);
  return true;
}

bool GridPerson::commit() {
  if (!grid_.open_) return false;
  const Grid::OpenCell open = *grid_.open_;
  grid_.dropOpenCell();
  finish(open.cell, open.text);
  return true;
}

bool GridPerson::abandon() {
  if (!grid_.open_) return false;
  grid_.dropOpenCell();
  return true;
}

bool GridPerson::fold(int row, bool folded) {
  if (!grid_.hasRowsBelow(row) || grid_.isFolded(row) == folded) return false;
  commit();
  const GridCell former = grid_.focus();
  grid_.setFolded(row, folded);
  if (grid_.focus() != former && grid_.onSelectionChanged) grid_.onSelectionChanged(grid_.focus().row);
  return true;
}

}  // namespace platform
