#pragma once

#include <QStyledItemDelegate>

#include "platform/desktop/qt/grid_model.h"

namespace platform {

/// Draws cells: check boxes in their middle, rows of a tree with their indentation and arrow, and an arrow in
/// list cells of the row that has the focus.
class GridDelegate : public QStyledItemDelegate {
 public:
  GridDelegate(const GridModel& cells, QObject* parent) : QStyledItemDelegate(parent), cells_(cells) {}
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  /// How far the text of a tree's row stands from the cell's edge, in pixels; its arrow is the last step.
  static int indentation(const Grid& grid, GridCell cell);
  static constexpr int indentStep = 18;
  static constexpr int listArrowWidth = 18;

 private:
  void paintCheck(QPainter* painter, QStyleOptionViewItem option, bool checked) const;
  void paintTreeArrow(QPainter* painter, const QStyleOptionViewItem& option, GridCell cell) const;

  const GridModel& cells_;
};

}  // namespace platform
