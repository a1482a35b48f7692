#pragma once

#include <QTreeWidget>
#include <functional>
#include <string>
#include <vector>

#include "brx/db_database.h"

namespace host {

/// The layers of the current drawing: on, frozen, locked, colour, and which is current. What a person
/// changes is asked of the listener, and shown when the drawing has it.
class LayerPanel : public QTreeWidget {
 public:
  enum class Change { current, on, off, freeze, thaw, lock, unlock, colour };
  using Listener = std::function<void(const std::wstring& layer, Change)>;
  explicit LayerPanel(Listener listener);

  /// Shows the layers as they are now.
  void refresh();
  /// As a click on a column of the layer's row; false when there is no such layer.
  bool click(const std::wstring& layer, int column);

  /// In pixels, so that the names show whole, up to a bound.
  int wantedWidth() const { return wantedWidth_; }
  /// The names as the rows show them, cut off where the column ends.
  QStringList shownNames() const;

  enum Column { nameColumn, onColumn, frozenColumn, lockedColumn, colourColumn };

 private:
  struct Row {
    std::wstring name;
    bool current, off, frozen, locked;
    /// The index of the palette, or 0xRRGGBB where the colour is `exact`.
    bool exact;
    std::uint32_t colour;
    bool operator==(const Row&) const = default;
  };
  static std::vector<Row> rowsOf(AcDbDatabase* drawing);
  void show(QTreeWidgetItem& item, const Row& row);
  void measure();
  void onClick(QTreeWidgetItem* item, int column);

  const Listener listener_;
  std::vector<Row> rows_;
  int wantedWidth_ = 0;
};

}  // namespace host
