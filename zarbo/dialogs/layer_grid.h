#pragma once

#include <string>
#include <vector>

#include "platform/desktop/grid.h"
#include "zarbo/dialogs/standards_tables.h"

/// The layers of the standards.
class LayerGrid {
 public:
  enum Column { counter, name, color, linetype, plot, lineweight, plotStyle, columnCount };
  static constexpr int control = 1050;

  LayerGrid(platform::Grid& grid, StandardsTables& tables) : grid_(grid), tables_(tables) {}
  platform::Grid& grid() { return grid_; }

  void setUp();
  /// `FillLayerGrid`: what isn't in the database yet is dropped.
  void fill();
  /// Shows the layer's row.
  void show(int64_t layer);
  void showByName(const std::wstring& layerName);

  /// In the database at once, like the last row but for its name.
  void add();
  /// Unless a key uses it, after a question. True when it is gone.
  bool remove();
  /// All that no key uses, after a question. True when the user agreed.
  bool removeUnused();
  /// The user typed a name in the row, which is checked and written at once. False for one with characters
  /// that no layer may have.
  bool renamed(int row);
  /// An entry of a list cell: colours and linetypes are chosen in dialogs of their own.
  void chosen(int row, int column, const std::wstring& entry);
  /// `SaveLayerRows`.
  void save();

  std::vector<std::wstring> names() const;
  std::vector<int64_t> counters() const;

 private:
  void toRecord(int row);
  bool existsElsewhere(const std::wstring& layerName, int32_t layer);
  void refuse(int row, const wchar_t* message, const std::wstring& former);
  int32_t counterOf(int row) const;
  void pickColor(int row);
  void pickLinetype(int row);

  platform::Grid& grid_;
  StandardsTables& tables_;
};
