#include "platform/desktop/qt/grid_table.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "platform/desktop/qt/grid_delegate.h"
#include "platform/desktop/qt/texts.h"

namespace platform {

namespace {

constexpr int cellMargin = 14, rowMargin = 9;
/// A column isn't made wider for its texts, in average letters; and only so many texts are measured.
constexpr int widestColumn = 90;
constexpr size_t mostMeasured = 40;

class Flag {
 public:
  explicit Flag(bool& flag) : flag_(flag), former_(flag) { flag_ = true; }
  ~Flag() { flag_ = former_; }
  Flag(const Flag&) = delete;
  Flag& operator=(const Flag&) = delete;

 private:
  bool& flag_;
  bool former_;
};

}  // namespace

GridTable::GridTable(Grid& grid, Act act, QWidget* parent)
    : QTableView(parent), grid_(grid), act_(std::move(act)), cells_(grid, this) {
  setModel(&cells_);
  setItemDelegate(new GridDelegate(cells_, this));
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setSelectionMode(SingleSelection);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollMode(ScrollPerPixel);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + rowMargin);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setStretchLastSection(true);
  horizontalHeader()->setMinimumSectionSize(8);
  connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column, int, int width) {
    if (updating_ || !(QApplication::mouseButtons() & Qt::LeftButton)) return;
    const Flag own(updating_);
    grid_.setColumnWidth(column, width);
  });
  dirty_ = true;
  refreshNow();
  grid_.setView(this);
}

GridTable::~GridTable() { grid_.setView(nullptr); }

// What the program changed

void GridTable::cellChanged(GridCell cell) {
  if (!dirty_) cells_.tellChanged(cell);
}

void GridTable::gridChanged() {
  if (updating_ || std::exchange(dirty_, true)) return;
  QMetaObject::invokeMethod(
      this, [this] { refreshNow(); }, Qt::QueuedConnection);
}

void GridTable::refreshNow() {
  if (!std::exchange(dirty_, false)) return;
  const Flag own(updating_);
  const int across = horizontalScrollBar()->value(), down = verticalScrollBar()->value();
  cells_.refresh();
  showShape();
  horizontalScrollBar()->setValue(across);
  verticalScrollBar()->setValue(down);
  focusMoved();
  openCellChanged();
}

void GridTable::showShape() {
  setSelectionBehavior(grid_.hasWholeRows() ? SelectRows : SelectItems);
  horizontalHeader()->setVisible(grid_.fixedRows() > 0);
  for (int column = 0; column < grid_.columns(); ++column) {
    setColumnHidden(column, grid_.isHidden(column));
    if (!grid_.isHidden(column)) setColumnWidth(column, grid_.columnWidth(column));
  }
  clearSpans();
  for (int row = 0; row < cells_.rowCount(); ++row) {
    for (int column = 0; column < grid_.columns(); ++column) {
      const GridCell cell = cells_.cellAt(cells_.index(row, column));
      const int span = std::min(grid_.span(cell.row, cell.column), grid_.columns() - column);
      if (span > 1) setSpan(row, column, 1, span);
    }
  }
}

void GridTable::focusMoved() {
  refreshNow();
  const Flag own(updating_);
  const QModelIndex index = cells_.indexOf(grid_.focus());
  const auto how = grid_.hasWholeRows()
                       ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                       : QItemSelectionModel::SelectionFlags(QItemSelectionModel::ClearAndSelect);
  selectionModel()->setCurrentIndex(index, index.isValid() ? how : QItemSelectionModel::Clear);
  viewport()->update();
}

void GridTable::scrolled(GridCell cell) {
  refreshNow();
  scrollTo(cells_.indexOf(cell));
}

// Before the window is shown the inner part hasn't its size yet.
int GridTable::clientWidth() { return isVisible() ? viewport()->width() : maximumViewportSize().width(); }

int GridTable::neededWidth(int column) {
  std::vector<std::pair<size_t, int>> lengths;
  for (int row = 0; row < grid_.rows(); ++row) {
    if (grid_.span(row, column) == 1) lengths.emplace_back(grid_.text(row, column).size(), row);
  }
  // The texts with the most letters are the widest, or nearly so.
  const size_t measured = std::min(lengths.size(), mostMeasured);
  std::partial_sort(lengths.begin(), lengths.begin() + static_cast<ptrdiff_t>(measured), lengths.end(),
                    std::greater<>());
  const int most = fontMetrics().averageCharWidth() * widestColumn;
  int width =
      horizontalHeader()->fontMetrics().horizontalAdvance(shownStart(grid_.text(0, column), widestColumn));
  for (size_t i = 0; i < measured; ++i) {
    const int row = lengths[i].second;
    if (grid_.kind(row, column) == CellKind::checkBox) continue;
    int wanted = fontMetrics().horizontalAdvance(shownStart(grid_.text(row, column), widestColumn * 2));
    wanted += GridDelegate::indentation(grid_, {row, column});
    if (!grid_.image(row, column).empty()) wanted += iconSize().width() + cellMargin / 2;
    if (const SharedChoices offered = grid_.choices(row, column)) {
      for (size_t k = 0; k < std::min(offered->texts().size(), mostMeasured); ++k) {
        wanted =
            std::max(wanted, fontMetrics().horizontalAdvance(shownStart(offered->texts()[k], widestColumn)));
      }
      wanted += GridDelegate::listArrowWidth;
    }
    width = std::max(width, wanted);
  }
  return std::min(width, most) + cellMargin;
}

// The open cell

void GridTable::openCellChanged() {
  const auto& open = grid_.openCell();
  if (!open) return dropEditor();
  refreshNow();
  if (editor_ && open->cell != edited_) dropEditor();
  if (!editor_) return makeEditor();
  auto* const list = qobject_cast<QComboBox*>(editor_);
  QLineEdit* const edit = list ? list->lineEdit() : qobject_cast<QLineEdit*>(editor_);
  if (edit && edit_.model() != open->text) {
    edit_.set(open->text);
    edit->setText(edit_.shown());
    edit_.setSeen(edit->text());
  }
}

void GridTable::makeEditor() {
  edited_ = grid_.openCell()->cell;
  edit_.set(grid_.openCell()->text);
  const CellKind kind = grid_.kind(edited_.row, edited_.column);
  if (isList(edited_)) {
    makeList(kind == CellKind::editableList);
  } else {
    makeLineEdit();
  }
  editor_->installEventFilter(this);
  scrollTo(cells_.indexOf(edited_));
  placeEditor();
  editor_->show();
  editor_->setFocus(Qt::OtherFocusReason);
}

void GridTable::watch(QLineEdit& edit) {
  edit.setMaxLength(INT_MAX);
  edit.setText(edit_.shown());
  edit_.setSeen(edit.text());
  edit.selectAll();
  edit.installEventFilter(this);
  connect(&edit, &QLineEdit::textEdited, this, [this](const QString& now) {
    edit_.edit(now);
    edit_.setSeen(now);
    act_([this] { return person().type(edit_.model()); });
  });
}

void GridTable::makeLineEdit() {
  auto* const edit = new QLineEdit(viewport());
  editor_ = edit;
  edit->setFrame(false);
  edit->setAutoFillBackground(true);
  watch(*edit);
}

void GridTable::makeList(bool editable) {
  auto* const list = new QComboBox(viewport());
  editor_ = list;
  const SharedChoices offered = grid_.choices(edited_.row, edited_.column);
  for (const std::wstring& each : offered->texts()) list->addItem(shownText(each));
  list->setEditable(editable);
  list->setInsertPolicy(QComboBox::NoInsert);
  list->setCurrentIndex(list->findText(edit_.shown(), Qt::MatchExactly | Qt::MatchCaseSensitive));
  if (editable) {
    list->setCompleter(nullptr);
    watch(*list->lineEdit());
  }
  connect(list, &QComboBox::activated, this, [this, offered](int entry) {
    if (entry < 0) return;
    act_([&] { return person().choose(offered->texts()[static_cast<size_t>(entry)]); });
  });
}

void GridTable::placeEditor() {
  if (editor_) editor_->setGeometry(visualRect(cells_.indexOf(edited_)));
}

// The editor may be what has called.
void GridTable::dropEditor() {
  if (!editor_) return;
  QWidget* const former = std::exchange(editor_, nullptr);
  const bool hadFocus = former->hasFocus() || former->isAncestorOf(QApplication::focusWidget());
  former->removeEventFilter(this);
  // Before it is hidden: else the focus would go on from it as by Tab.
  if (hadFocus) setFocus(Qt::OtherFocusReason);
  former->hide();
  former->deleteLater();
}

void GridTable::updateGeometries() {
  QTableView::updateGeometries();
  placeEditor();
}

void GridTable::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  placeEditor();
}

bool GridTable::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && editor_) return editorKey(static_cast<QKeyEvent*>(event));
  return QTableView::eventFilter(watched, event);
}

bool GridTable::editorKey(QKeyEvent* event) {
  const bool isLine = qobject_cast<QLineEdit*>(editor_) != nullptr;
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return act_([this] { return person().commit(); }), true;
    case Qt::Key_Escape:
      return act_([this] { return person().abandon(); }), true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
      act_([this] { return person().commit(); });
      return moveByTab(event->key() == Qt::Key_Tab), true;
    case Qt::Key_Up:
    case Qt::Key_Down:
      return isLine && (moveByRow(event->key() == Qt::Key_Down ? 1 : -1), true);
    default:
      return false;
  }
}

// Keys and clicks

bool GridTable::goTo(GridCell cell) {
  refreshNow();
  // The way to a fixed cell ends at the first of its row that can have the focus.
  const int wanted = std::max(cell.column, grid_.fixedColumns());
  cell.column = wanted;
  while (cell.column < grid_.columns() && grid_.isHidden(cell.column)) ++cell.column;
  if (cell.column >= grid_.columns()) cell.column = wanted;
  if (grid_.focus() == cell) return true;
  return act_([&] { return person().moveTo(cell.row, cell.column); });
}

void GridTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (updating_ || !current.isValid()) return;
  goTo(cells_.cellAt(current));
  focusMoved();
}

// The toolkit would go to the first cell by itself.
void GridTable::focusInEvent(QFocusEvent* event) {
  {
    const Flag own(updating_);
    QTableView::focusInEvent(event);
  }
  focusMoved();
}

bool GridTable::openCurrent(bool withList) {
  const GridCell cell = current();
  if (cell.row < 0 || !act_([&] { return person().open(cell.row, cell.column); })) return false;
  auto* const list = qobject_cast<QComboBox*>(editor_);
  if (list && withList) list->showPopup();
  return true;
}

bool GridTable::typeFirst(QKeyEvent* event) {
  const bool isText = !event->text().isEmpty() && event->text().front().isPrint() &&
                      !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
  if (!isText) return false;
  const GridCell cell = current();
  const bool isCheck = grid_.kind(cell.row, cell.column) == CellKind::checkBox;
  if (isCheck && event->key() != Qt::Key_Space) return true;
  if (!openCurrent(false) || isCheck || !editor_) return true;
  auto* const list = qobject_cast<QComboBox*>(editor_);
  if (list && !list->isEditable()) {
    list->showPopup();
    QApplication::sendEvent(list->view(), event);
  } else {
    QApplication::sendEvent(list ? list->lineEdit() : editor_, event);
  }
  return true;
}

bool GridTable::foldCurrent(bool folded) {
  const int row = current().row;
  if (row < 0 || !grid_.hasRowsBelow(row)) return false;
  act_([&] { return person().fold(row, folded); });
  return true;
}

void GridTable::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_F2:
      openCurrent(false);
      return;
    case Qt::Key_F4:
      openCurrent(true);
      return;
    case Qt::Key_Down:
      if (!(event->modifiers() & Qt::AltModifier)) break;
      openCurrent(true);
      return;
    case Qt::Key_Left:
    case Qt::Key_Right:
      if (foldCurrent(event->key() == Qt::Key_Left)) return;
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      event->ignore();
      return;
    default:
      if (typeFirst(event)) return;
  }
  QTableView::keyPressEvent(event);
}

bool GridTable::moveByTab(bool next) {
  QModelIndex index = currentIndex();
  const int columns = grid_.columns();
  int place = index.isValid() ? index.row() * columns + index.column() : -1;
  for (place += next ? 1 : -1; place >= 0 && place < cells_.rowCount() * columns; place += next ? 1 : -1) {
    const GridCell cell = cells_.cellAt(cells_.index(place / columns, place % columns));
    if (grid_.isFixed(cell) || grid_.isHidden(cell.column) || grid_.span(cell.row, cell.column) == 0)
      continue;
    return goTo(cell);
  }
  return false;
}

bool GridTable::moveByRow(int rows) {
  act_([this] { return person().commit(); });
  const GridCell cell = cells_.cellAt(currentIndex().siblingAtRow(currentIndex().row() + rows));
  return cell.row >= 0 && goTo(cell);
}

bool GridTable::focusNextPrevChild(bool next) {
  return moveByTab(next) || QTableView::focusNextPrevChild(next);
}

bool GridTable::isOnArrow(const QModelIndex& index, QPoint place) const {
  const GridCell cell = cells_.cellAt(index);
  if (cell.row < 0 || !grid_.hasRowsBelow(cell.row)) return false;
  const int indent = GridDelegate::indentation(grid_, cell);
  return indent > 0 && place.x() < visualRect(index).left() + indent;
}

bool GridTable::isOnCheck(const QModelIndex& index, QPoint place) const {
  const GridCell cell = cells_.cellAt(index);
  if (cell.row < 0 || grid_.kind(cell.row, cell.column) != CellKind::checkBox) return false;
  constexpr int reach = 14;
  return std::abs(place.x() - visualRect(index).center().x()) <= reach;
}

void GridTable::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->pos());
  const bool wasCurrent = index.isValid() && index == currentIndex();
  QTableView::mousePressEvent(event);
  if (event->button() != Qt::LeftButton || !index.isValid()) return;
  refreshNow();
  if (isOnArrow(index, event->pos())) {
    foldCurrent(!grid_.isFolded(current().row));
  } else if (isOnCheck(index, event->pos()) || (wasCurrent && isList(current()))) {
    openCurrent(true);
  }
}

void GridTable::mouseDoubleClickEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->pos());
  if (event->button() != Qt::LeftButton || !index.isValid()) return;
  if (isOnCheck(index, event->pos())) {
    openCurrent(false);
  } else if (!isOnArrow(index, event->pos()) && grid_.looksFixed(current().row, current().column)) {
    foldCurrent(!grid_.isFolded(current().row));
  } else {
    openCurrent(true);
  }
}

}  // namespace platform
