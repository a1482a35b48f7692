#pragma once

#include <string>

#include "platform/desktop/grid.h"

namespace platform {

/// What a person does to a grid. Every front end turns its events into these calls, so that handlers hear the
/// same of all. False means that nothing happened: the grid, the cell or a handler didn't let it.
class GridPerson {
 public:
  explicit GridPerson(Grid& grid) : grid_(grid) {}

  /// Commits an open cell, then moves the focus.
  bool moveTo(int row, int column);
  /// Moves the focus there and opens the cell's control. A check box has none: it is turned at once, and its
  /// edit is over.
  bool open(int row, int column);
  /// Writes into the open cell's control. A drop-down list has nothing to write into.
  bool type(std::wstring text);
  /// Takes an entry of the open list cell, and closes it.
  bool choose(const std::wstring& entry);
  /// The control's text goes into the cell. In a drop-down list nothing was chosen, and the cell is left
  /// alone.
  bool commit();
  /// The cell keeps its text.
  bool abandon();
  bool fold(int row, bool folded);

 private:
  bool mayEdit(GridCell cell) const;
  bool begin(GridCell cell);
  void finish(GridCell cell, std::wstring text);
  void turnCheck(GridCell cell);

  Grid& grid_;
};

}  // namespace platform
