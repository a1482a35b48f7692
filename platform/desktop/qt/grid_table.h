#pragma once

#include <QTableView>
#include <functional>

#include "platform/desktop/grid_person.h"
#include "platform/desktop/qt/grid_model.h"
#include "platform/desktop/qt/shown_text.h"

class QComboBox;
class QLineEdit;

namespace platform {

/// Runs what a person does, and tells whether it did anything.
using Act = std::function<bool(const std::function<bool()>&)>;

/// Shows a grid, and turns keys and clicks into what a person does to it. F2, a double click or typing opens
/// a cell, Enter and Tab commit it, Escape abandons it; Left and Right fold; Tab walks through the cells and
/// then out.
class GridTable : public QTableView, public GridView {
 public:
  /// The grid must live longer.
  GridTable(Grid& grid, Act act, QWidget* parent);
  ~GridTable() override;

  Grid& grid() const { return grid_; }
  const GridModel& cells() const { return cells_; }
  /// Of the open cell, else null.
  QWidget* editor() const { return editor_; }
  /// Changes are collected until the loop comes round; this shows them at once.
  void refreshNow();
  bool goTo(GridCell cell);

  void cellChanged(GridCell cell) override;
  void gridChanged() override;
  void focusMoved() override;
  void scrolled(GridCell cell) override;
  void openCellChanged() override;
  int neededWidth(int column) override;
  int clientWidth() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void updateGeometries() override;
  void scrollContentsBy(int dx, int dy) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  GridPerson person() { return GridPerson(grid_); }
  GridCell current() const { return cells_.cellAt(currentIndex()); }
  bool openCurrent(bool withList);
  bool typeFirst(QKeyEvent* event);
  bool foldCurrent(bool folded);
  bool moveByTab(bool next);
  bool moveByRow(int rows);
  bool editorKey(QKeyEvent* event);
  void makeEditor();
  void makeLineEdit();
  void makeList(bool editable);
  void watch(QLineEdit& edit);
  void dropEditor();
  void placeEditor();
  void showShape();
  bool isOnArrow(const QModelIndex& index, QPoint place) const;
  bool isOnCheck(const QModelIndex& index, QPoint place) const;
  bool isList(GridCell cell) const { return grid_.choices(cell.row, cell.column) != nullptr; }

  Grid& grid_;
  Act act_;
  GridModel cells_;
  QWidget* editor_ = nullptr;
  GridCell edited_;
  ShownText edit_{ShownText::Lines::one};
  /// What comes from the program isn't taken for the person's.
  bool updating_ = false;
  bool dirty_ = false;
};

}  // namespace platform
