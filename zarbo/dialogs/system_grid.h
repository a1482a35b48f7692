#pragma once

#include <string>

#include "platform/desktop/grid.h"
#include "zarbo/dialogs/standards_tables.h"

/// The layer systems, in their order; the first is `General`, whose keys belong to no system.
class SystemGrid {
 public:
  enum Column { nothing, counter, name, sortOrder, columnCount };
  static constexpr int control = 1051;
  static constexpr int generalRow = 1;
  static constexpr int32_t general = -1;

  SystemGrid(platform::Grid& grid, StandardsTables& tables) : grid_(grid), tables_(tables) {}
  platform::Grid& grid() { return grid_; }

  void setUp();
  /// `FillSystemGrid`; the row of `system` gets the focus.
  void fill(int32_t system = general);
  /// Of the row that has the focus.
  int32_t selected() const;
  /// Asks for a name and a system to copy from, and makes the system with a copy of its keys. False when the
  /// user cancelled.
  bool make();
  /// Up or down by one; `General` stays first. Written by OK.
  void move(int by);
  /// Opens the options of the system's discipline.
  void edit(int row);
  /// With its keys, after a question.
  void remove();
  void save();

 private:
  bool mayBeRemoved(int row);
  int32_t counterOf(int row) const;
  int32_t largestSortOrder() const;

  platform::Grid& grid_;
  StandardsTables& tables_;
};
