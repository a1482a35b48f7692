#include "platform/desktop/qt/widget_hands.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>

#include "platform/desktop/qt/swatches.h"
#include "platform/desktop/qt/texts.h"
#include "platform/desktop/qt/themes.h"
#include "platform/files/native_path.h"

namespace platform {

namespace {

void pressKey(QWidget* target, int key, const QString& text = {}) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text),
      up(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QApplication::sendEvent(target, &down);
  QApplication::sendEvent(target, &up);
}

// A press may end the widget's window, but not the widget.
void click(QWidget* target, QPoint at) {
  const QPointF place(at), global(target->mapToGlobal(at));
  QMouseEvent down(QEvent::MouseButtonPress, place, global, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QMouseEvent up(QEvent::MouseButtonRelease, place, global, Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
  QApplication::sendEvent(target, &down);
  QApplication::sendEvent(target, &up);
}

/// As an input method types, so that long texts don't take long. An empty text deletes.
void typeOver(QWidget* target, const std::wstring& text) {
  if (text.empty()) return pressKey(target, Qt::Key_Delete);
  QInputMethodEvent event;
  event.setCommitString(shownText(text));
  QApplication::sendEvent(target, &event);
}

}  // namespace

bool WidgetHands::acted(const std::function<void()>& deed) {
  window_.takeActed();
  deed();
  QCoreApplication::processEvents();
  window_.refresh();
  return window_.takeActed();
}

bool WidgetHands::usable(int number) const {
  const QWidget* const widget = window_.widgetOf(number);
  return widget && widget->isEnabled() && widget->isVisible();
}

bool WidgetHands::press(int button) {
  if (!usable(button)) return false;
  QWidget* const widget = window_.widgetOf(button);
  // To leave a cell may disable the button.
  acted([&] { widget->setFocus(Qt::MouseFocusReason); });
  return usable(button) && acted([&] { click(widget, widget->rect().center()); });
}

bool WidgetHands::setText(int edit, const std::wstring& text) {
  if (!usable(edit)) return false;
  QWidget* const widget = window_.widgetOf(edit);
  acted([&] {
    widget->setFocus(Qt::MouseFocusReason);
    if (auto* const line = qobject_cast<QLineEdit*>(widget)) line->selectAll();
    if (auto* const lines = qobject_cast<QPlainTextEdit*>(widget)) lines->selectAll();
    typeOver(widget, text);
  });
  // Writing the same once more is done, too.
  return true;
}

bool WidgetHands::check(int box, bool checked) {
  if (!usable(box)) return false;
  auto* const widget = qobject_cast<QCheckBox*>(window_.widgetOf(box));
  if (widget->isChecked() == checked) return true;
  return acted([&] {
    widget->setFocus(Qt::MouseFocusReason);
    pressKey(widget, Qt::Key_Space, QStringLiteral(" "));
  });
}

bool WidgetHands::select(int list, int index) {
  if (!usable(list)) return false;
  QWidget* const widget = window_.widgetOf(list);
  auto* const rows = qobject_cast<QListWidget*>(widget);
  const auto* const swatches = dynamic_cast<Swatches*>(widget);
  const int count = static_cast<int>(window_.form().control(list).items().size());
  if (index < 0 || index >= count) return false;
  acted([&] {
    widget->setFocus(Qt::MouseFocusReason);
    if (swatches) return click(widget, swatches->place(index).center());
    QListWidgetItem* const item = rows->item(index);
    rows->scrollToItem(item);
    click(rows->viewport(), rows->visualItemRect(item).center());
  });
  return selected(list) == index;
}

bool WidgetHands::moveTo(int grid, GridCell cell) {
  if (!usable(grid)) return false;
  GridTable* const table = window_.tableOf(grid);
  const QModelIndex index = table->cells().indexOf(cell);
  if (!index.isValid()) return false;
  acted([&] {
    table->setFocus(Qt::MouseFocusReason);
    table->setCurrentIndex(index);
  });
  return table->grid().focus() == cell;
}

bool WidgetHands::openCell(int grid, GridCell cell) {
  if (!moveTo(grid, cell)) return false;
  GridTable* const table = window_.tableOf(grid);
  return acted([&] { pressKey(table, Qt::Key_F2); });
}

QLineEdit* WidgetHands::cellEdit(int grid) const {
  QWidget* const editor = window_.tableOf(grid)->editor();
  const auto* const list = qobject_cast<QComboBox*>(editor);
  return list ? list->lineEdit() : qobject_cast<QLineEdit*>(editor);
}

bool WidgetHands::typeInCell(int grid, const std::wstring& text) {
  QLineEdit* const edit = cellEdit(grid);
  if (!edit) return false;
  acted([&] {
    edit->selectAll();
    typeOver(edit, text);
  });
  return true;
}

bool WidgetHands::commitCell(int grid) {
  QWidget* const editor = window_.tableOf(grid)->editor();
  return editor && acted([&] { pressKey(editor, Qt::Key_Return); });
}

// As in the list that drops down: to the entry, and Enter.
bool WidgetHands::choose(int grid, const std::wstring& entry) {
  auto* const list = qobject_cast<QComboBox*>(window_.tableOf(grid)->editor());
  const int place = list ? list->findText(shownText(entry), Qt::MatchExactly | Qt::MatchCaseSensitive) : -1;
  if (place < 0) return false;
  return acted([&] {
    list->showPopup();
    list->view()->setCurrentIndex(list->model()->index(place, 0));
    pressKey(list->view(), Qt::Key_Return);
  });
}

bool WidgetHands::fold(int grid, int row, bool folded) {
  const int column = window_.tableOf(grid)->grid().fixedColumns();
  if (!moveTo(grid, {row, column}) || window_.tableOf(grid)->grid().isFolded(row) == folded) return false;
  return acted([&] { pressKey(window_.tableOf(grid), folded ? Qt::Key_Left : Qt::Key_Right); });
}

bool WidgetHands::key(const std::wstring& name) {
  const int key = name == L"Enter" ? Qt::Key_Return : name == L"Escape" ? Qt::Key_Escape : 0;
  QWidget* const target = window_.focusWidget() ? window_.focusWidget() : &window_;
  return key != 0 && acted([&] { pressKey(target, key); });
}

void WidgetHands::cancel() {
  acted([&] { window_.close(); });
}

std::wstring WidgetHands::shot(const std::wstring& file, int width, int height, bool dark) {
  return drawWindow(window_, file, width, height, dark);
}

// What is shown

std::wstring WidgetHands::title() { return window_.windowTitle().toStdWString(); }

// Where a widget shows just what the model holds, the model's text is given: widgets drop some characters.
std::wstring WidgetHands::text(int control) {
  QWidget* const widget = window_.widgetOf(control);
  const std::wstring& model = window_.form().text(control);
  const bool isLabel = window_.form().control(control).kind() == ControlKind::label;
  QString seen, meant = isLabel ? withoutMnemonics(shownText(model)) : shownText(model);
  if (const auto* const line = qobject_cast<QLineEdit*>(widget)) {
    seen = line->text();
  } else if (const auto* const lines = qobject_cast<QPlainTextEdit*>(widget)) {
    seen = lines->toPlainText();
    meant.remove(QLatin1Char('\r'));
  } else if (const auto* const button = qobject_cast<QAbstractButton*>(widget)) {
    seen = button->text();
  } else if (const auto* const label = qobject_cast<QLabel*>(widget)) {
    seen = label->text();
  }
  return seen == meant ? model : seen.toStdWString();
}

bool WidgetHands::isChecked(int box) { return qobject_cast<QCheckBox*>(window_.widgetOf(box))->isChecked(); }

int WidgetHands::selected(int list) {
  const auto* const rows = qobject_cast<QListWidget*>(window_.widgetOf(list));
  if (rows && rows->selectedItems().isEmpty()) return -1;
  return rows ? rows->currentRow() : window_.form().control(list).selected();
}

bool WidgetHands::isEnabled(int control) { return window_.widgetOf(control)->isEnabled(); }

bool WidgetHands::isVisible(int control) { return window_.widgetOf(control)->isVisible(); }

int WidgetHands::focus() {
  for (QWidget* each = window_.focusWidget(); each && each != &window_; each = each->parentWidget()) {
    if (window_.widgetOf(each->objectName().toInt()) == each) return each->objectName().toInt();
  }
  return 0;
}

std::wstring WidgetHands::cellText(int grid, GridCell cell) {
  const GridTable& table = *window_.tableOf(grid);
  const std::wstring& model = table.grid().text(cell.row, cell.column);
  const bool isHeader = table.grid().fixedRows() > 0 && cell.row == 0;
  const QModelIndex index = table.cells().indexOf(cell);
  if (table.grid().isHidden(cell.column) || (!isHeader && !index.isValid())) return model;
  if (table.grid().kind(cell.row, cell.column) == CellKind::checkBox)
    return index.data(Qt::CheckStateRole).toInt() == Qt::Unchecked ? L"0" : L"-1";
  const QString seen = isHeader ? table.model()->headerData(cell.column, Qt::Horizontal).toString()
                                : index.data(Qt::DisplayRole).toString();
  return seen == shownStart(model, 1000) ? model : seen.toStdWString();
}

std::wstring drawWindow(FormWindow& window, const std::wstring& file, int width, int height, bool dark) {
  QApplication::setPalette(themePalette(dark));
  const QSize former = window.size();
  if (width > 0 && height > 0) window.resize(width, height);
  QCoreApplication::processEvents();
  const bool saved = window.grab().save(QString::fromStdString(nativePath(file)), "PNG");
  window.resize(former);
  QApplication::setPalette(QPalette());
  return saved ? L"" : L"the file can't be written";
}

}  // namespace platform
