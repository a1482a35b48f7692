#pragma once

#include <string>
#include <vector>

#include "platform/desktop/grid.h"
#include "zarbo/dialogs/standards_tables.h"

/// The layer keys of one system, as the application shows, names and orders them, each with its layer.
class KeyGrid {
 public:
  enum Column { key, counter, sortText, layerCounter, layerName, columnCount };
  static constexpr int control = 1049;

  KeyGrid(platform::Grid& grid, StandardsTables& tables) : grid_(grid), tables_(tables) {}
  platform::Grid& grid() { return grid_; }

  void setUp();
  /// No wider than half of the grid.
  void sizeColumns();
  /// `FillKeyGrid`. False, and nothing done, when the system is on show already: the user's changes of keys
  /// stay.
  bool fill(int32_t system);
  /// The system on show counts as none, so that the next `fill` reads it. `General`'s number means the same,
  /// and isn't read again.
  void forgetSystem() { iShownSystem = -1; }
  /// `FillKeyLayerChoices`: by the table.
  void fillChoices();
  /// `RefreshKeyLayerChoices`: by rows that are on show.
  void setChoices(std::vector<std::wstring> names, std::vector<int64_t> counters);
  /// Of the layer that the row shows; 0 for none.
  int64_t layerOf(int row) const { return grid_.choiceNumber(row, layerName); }
  /// A layer has another name.
  void renameLayer(const std::wstring& ofCounter, const std::wstring& newName);
  /// `SaveKeyLayers`.
  void save();

 private:
  void addKey(const std::wstring& ofCounter, int32_t layer, const std::wstring& sKey);

  platform::Grid& grid_;
  StandardsTables& tables_;
  int32_t iShownSystem = -100;
};
