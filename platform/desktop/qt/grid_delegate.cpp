#include "platform/desktop/qt/grid_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <algorithm>

namespace platform {

namespace {

void paintArrow(QPainter* painter, const QStyleOptionViewItem& option, QRect place,
                QStyle::PrimitiveElement arrow) {
  QStyleOption shape;
  shape.initFrom(option.widget);
  const int side = std::min(9, place.height());
  shape.rect = QRect(place.center() - QPoint(side / 2, side / 2), QSize(side, side));
  shape.state = QStyle::State_Enabled;
  shape.palette = option.palette;
  QApplication::style()->drawPrimitive(arrow, &shape, painter, option.widget);
}

}  // namespace

int GridDelegate::indentation(const Grid& grid, GridCell cell) {
  if (grid.kind(cell.row, cell.column) != CellKind::tree) return 0;
  return grid.level(cell.row) * indentStep;
}

void GridDelegate::paintCheck(QPainter* painter, QStyleOptionViewItem option, bool checked) const {
  QStyle* const style = QApplication::style();
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  QStyleOptionViewItem box = option;
  const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, &option, option.widget),
                   style->pixelMetric(QStyle::PM_IndicatorHeight, &option, option.widget));
  box.rect = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, option.rect);
  box.state &= ~(QStyle::State_HasFocus | QStyle::State_On | QStyle::State_Off);
  box.state |= checked ? QStyle::State_On : QStyle::State_Off;
  style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, option.widget);
}

void GridDelegate::paintTreeArrow(QPainter* painter, const QStyleOptionViewItem& option,
                                  GridCell cell) const {
  const Grid& grid = cells_.grid();
  if (!grid.hasRowsBelow(cell.row)) return;
  QRect place = option.rect;
  place.setLeft(place.left() + indentation(grid, cell) - indentStep);
  place.setWidth(indentStep);
  paintArrow(painter, option, place,
             grid.isFolded(cell.row) ? QStyle::PE_IndicatorArrowRight : QStyle::PE_IndicatorArrowDown);
}

void GridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  const GridCell cell = cells_.cellAt(index);
  if (cell.row < 0) return;
  const Grid& grid = cells_.grid();
  QStyleOptionViewItem item = option;
  initStyleOption(&item, index);
  if (cells_.isFixedLooking(cell)) item.font.setBold(grid.looksFixed(cell.row, cell.column));
  if (grid.kind(cell.row, cell.column) == CellKind::checkBox) {
    item.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    return paintCheck(painter, item, grid.text(cell.row, cell.column) != L"0");
  }
  QStyle* const style = QApplication::style();
  if (const int indent = indentation(grid, cell); indent > 0) {
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &item, painter, option.widget);
    paintTreeArrow(painter, item, cell);
    item.rect.setLeft(item.rect.left() + indent);
    item.backgroundBrush = Qt::NoBrush;
  }
  const bool isList = grid.choices(cell.row, cell.column) && grid.focusRow() == cell.row;
  style->drawControl(QStyle::CE_ItemViewItem, &item, painter, option.widget);
  if (!isList) return;
  QRect place = option.rect;
  place.setLeft(place.right() - listArrowWidth);
  paintArrow(painter, item, place, QStyle::PE_IndicatorArrowDown);
}

}  // namespace platform
