#include "platform/desktop/qt/grid_model.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <algorithm>

#include "platform/desktop/qt/texts.h"
#include "platform/files/native_path.h"

namespace platform {

namespace {

/// More of a text can't be seen in a cell.
constexpr size_t mostLetters = 1000;

QVariant colourSquare(const QColor& colour) {
  const int side = QApplication::style()->pixelMetric(QStyle::PM_SmallIconSize);
  QPixmap square(side, side);
  square.fill(colour);
  QPainter painter(&square);
  painter.setPen(QColor(128, 128, 128));
  painter.drawRect(0, 0, side - 1, side - 1);
  return square;
}

}  // namespace

void GridModel::refresh() {
  beginResetModel();
  shown_ = grid_.shownRows();
  if (grid_.fixedRows() > 0 && !shown_.empty()) shown_.erase(shown_.begin());
  endResetModel();
}

void GridModel::tellChanged(GridCell cell) {
  if (grid_.fixedRows() > 0 && cell.row == 0)
    return emit headerDataChanged(Qt::Horizontal, cell.column, cell.column);
  const QModelIndex index = indexOf(cell);
  if (index.isValid()) emit dataChanged(index, index);
}

GridCell GridModel::cellAt(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= static_cast<int>(shown_.size())) return {};
  return {shown_[static_cast<size_t>(index.row())], index.column()};
}

QModelIndex GridModel::indexOf(GridCell cell) const {
  const auto found = std::lower_bound(shown_.begin(), shown_.end(), cell.row);
  if (found == shown_.end() || *found != cell.row) return {};
  return index(static_cast<int>(found - shown_.begin()), cell.column);
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : grid_.columns(); }

QVariant GridModel::decoration(GridCell cell) const {
  const std::wstring& image = grid_.image(cell.row, cell.column);
  if (image.empty()) return {};
  if (image.front() == L'#') return colourSquare(QColor(shownText(image)));
  return QIcon(QString::fromStdString(nativePath(image)));
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const GridCell cell = cellAt(index);
  if (cell.row < 0) return {};
  const bool isCheck = grid_.kind(cell.row, cell.column) == CellKind::checkBox;
  switch (role) {
    case Qt::DisplayRole:
      return isCheck ? QVariant() : shownStart(grid_.text(cell.row, cell.column), mostLetters);
    case Qt::CheckStateRole:
      if (!isCheck) return {};
      return static_cast<int>(grid_.text(cell.row, cell.column) == L"0" ? Qt::Unchecked : Qt::Checked);
    case Qt::DecorationRole:
      return decoration(cell);
    case Qt::BackgroundRole:
      return isFixedLooking(cell) ? QApplication::palette().brush(QPalette::Button) : QVariant();
    case Qt::ForegroundRole:
      return isFixedLooking(cell) ? QApplication::palette().brush(QPalette::ButtonText) : QVariant();
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || grid_.fixedRows() == 0) return {};
  if (role == Qt::DisplayRole) return shownStart(grid_.text(0, section), mostLetters);
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  const GridCell cell = cellAt(index);
  return cell.row < 0 || grid_.isFixed(cell) ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

}  // namespace platform
