#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "platform/desktop/grid.h"

namespace platform {

/// A grid's rows as the table shows them: without the header, which is the table's own, and without those
/// that are folded away.
class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {}

  /// Everything may be new.
  void refresh();
  void tellChanged(GridCell cell);

  GridCell cellAt(const QModelIndex& index) const;
  /// Not valid for a cell that isn't shown.
  QModelIndex indexOf(GridCell cell) const;
  const Grid& grid() const { return grid_; }
  bool isFixedLooking(GridCell cell) const {
    return grid_.isFixed(cell) || grid_.looksFixed(cell.row, cell.column);
  }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  QVariant decoration(GridCell cell) const;

  const Grid& grid_;
  /// The grid's row for each of the table's.
  std::vector<int> shown_;
};

}  // namespace platform
