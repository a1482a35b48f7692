#include "platform/desktop/qt/form_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>

#include "platform/desktop/qt/qt_desktop.h"
#include "platform/desktop/qt/shown_text.h"
#include "platform/settings/settings.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;

void press(QWidget* target, int key, const QString& text = {}) {
  QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text),
      up(QEvent::KeyRelease, key, Qt::NoModifier, text);
  QApplication::sendEvent(target, &down);
  QApplication::sendEvent(target, &up);
}

/// A form's window as a person has it before them.
class Window : public testing::Test {
 protected:
  void SetUp() override {
    setSettingsFolder(settings_.path());
    form_.addOkAndCancel();
  }
  FormWindow& open() {
    window_ = std::make_unique<FormWindow>(form_, nullptr);
    window_->start();
    window_->activateWindow();
    QApplication::setActiveWindow(window_.get());
    QCoreApplication::processEvents();
    return *window_;
  }
  GridTable& table(int number) { return *window_->tableOf(number); }
  void key(int key, const QString& text = {}) {
    press(QApplication::focusWidget(), key, text);
    QCoreApplication::processEvents();
  }

  const TemporaryFolder settings_;
  const QtDesktop desktop_;
  Form form_{L"Title", L"test:Window"};
  std::unique_ptr<FormWindow> window_;
};

TEST_F(Window, KeysWalkThroughCellsAndEdit) {
  Grid& grid = form_.addGrid(1048, 3, 1, 1);
  for (int i = 0; i < 2; ++i) grid.insertRow();
  grid.setText(1, 1, L"old");
  grid.setCellChoices(1, 2, L"Yes|No");
  form_.addEdit(1000);
  form_.setLayout(column({1048, 1000, okAndCancel()}));
  form_.setFocus(1048);
  grid.setFocus(1, 1);
  open();
  key(Qt::Key_F2);
  ASSERT_NE(qobject_cast<QLineEdit*>(table(1048).editor()), nullptr);
  key(Qt::Key_Escape);
  EXPECT_EQ(grid.text(1, 1), L"old");
  EXPECT_FALSE(form_.isClosed()) << "Escape was the cell's";
  // Typing replaces the text, Enter commits it and isn't the button's.
  key(Qt::Key_N, "n");
  key(Qt::Key_W, "w");
  key(Qt::Key_Return);
  EXPECT_EQ(grid.text(1, 1), L"nw");
  EXPECT_FALSE(form_.isClosed());
  key(Qt::Key_Tab);
  EXPECT_EQ(grid.focus(), (GridCell{1, 2}));
  key(Qt::Key_F2);
  EXPECT_NE(qobject_cast<QComboBox*>(table(1048).editor()), nullptr);
  key(Qt::Key_Tab);
  EXPECT_EQ(grid.focus(), (GridCell{2, 1})) << "past the fixed column";
  key(Qt::Key_Backtab);
  EXPECT_EQ(grid.focus(), (GridCell{1, 2}));
  key(Qt::Key_Down);
  EXPECT_EQ(grid.focus(), (GridCell{2, 2}));
  key(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), window_->widgetOf(1000)) << "out of the grid at its end";
  EXPECT_EQ(form_.focus(), 1000);
  key(Qt::Key_Return);
  EXPECT_EQ(form_.endedBy(), okButton);
}

TEST_F(Window, LeavingACellCommitsItUnlessToCancel) {
  Grid& grid = form_.addGrid(1048, 1);
  grid.insertRow();
  form_.addEdit(1000);
  form_.setLayout(column({1048, 1000, okAndCancel()}));
  grid.setFocus(1, 0);
  form_.setFocus(1048);
  open();
  key(Qt::Key_A, "a");
  window_->widgetOf(1000)->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(grid.text(1, 0), L"a");
  table(1048).setFocus();
  key(Qt::Key_B, "b");
  window_->widgetOf(cancelButton)->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(grid.text(1, 0), L"a");
}

TEST_F(Window, AListCellIsClosedBeforeItsChoiceIsHeard) {
  Grid& grid = form_.addGrid(1048, 1);
  grid.setColumnChoices(0, L"|A|Select. . .");
  grid.insertRow();
  form_.setLayout(column({1048, okAndCancel()}));
  grid.setFocus(1, 0);
  form_.setFocus(1048);
  open();
  grid.onChoice = [&](int row, int column, const std::wstring& chosen) {
    EXPECT_EQ(chosen, L"Select. . .");
    EXPECT_EQ(table(1048).editor(), nullptr);
    grid.setText(row, column, L"picked");
  };
  key(Qt::Key_F2);
  auto* const list = qobject_cast<QComboBox*>(table(1048).editor());
  ASSERT_NE(list, nullptr);
  list->showPopup();
  list->view()->setCurrentIndex(list->model()->index(1, 0));
  press(list->view(), Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_EQ(grid.text(1, 0), L"picked");
  EXPECT_EQ(table(1048).model()->index(0, 0).data().toString(), "picked");
}

TEST_F(Window, ShowsWhatTheProgramChanges) {
  Grid& grid = form_.addGrid(1048, 2);
  form_.addLabel(10, L"&One && two");
  form_.addEdit(11, L"text").onChange = [&] { form_.control(11).setText(L"SEEN"); };
  form_.addCheckBox(12, L"Box");
  form_.addListBox(13, {L"a"});
  form_.setLayout(column({1048, 10, 11, 12, 13, okAndCancel()}));
  open();
  form_.setTitle(L"New");
  form_.control(12).setChecked(true);
  form_.control(12).setEnabled(false);
  form_.control(13).setItems({L"x", L"y"});
  form_.control(13).select(1);
  form_.control(10).setVisible(false);
  grid.insertRow();
  grid.setText(1, 1, L"cell");
  grid.setColumnHidden(0);
  grid.setFocus(1, 1);
  QCoreApplication::processEvents();
  EXPECT_EQ(window_->windowTitle(), "New");
  EXPECT_FALSE(window_->widgetOf(12)->isEnabled());
  EXPECT_FALSE(window_->widgetOf(10)->isVisible());
  EXPECT_EQ(table(1048).model()->index(0, 1).data().toString(), "cell");
  EXPECT_TRUE(table(1048).isColumnHidden(0));
  EXPECT_EQ(table(1048).currentIndex().row(), 0);
  auto* const edit = qobject_cast<QLineEdit*>(window_->widgetOf(11));
  edit->setFocus();
  key(Qt::Key_A, "a");
  EXPECT_EQ(edit->text(), "SEEN");
  EXPECT_EQ(edit->cursorPosition(), 4);
}

TEST_F(Window, HandlersExceptionsComeOutOfTheDialog) {
  form_.setLayout(okAndCancel());
  form_.control(okButton).onPress = [] { throw std::runtime_error("handler"); };
  QTimer::singleShot(0, [] { press(QApplication::activeModalWidget(), Qt::Key_Return); });
  QtDesktop desktop;
  EXPECT_THROW(desktop.runDialog(form_), std::runtime_error);
  form_.onStart = [] { throw std::runtime_error("start"); };
  EXPECT_THROW(desktop.runDialog(form_), std::runtime_error);
}

TEST_F(Window, TheCloseBoxAndEscapeCancelAndTimersTick) {
  form_.setLayout(okAndCancel());
  QtDesktop desktop;
  QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
  EXPECT_EQ(desktop.runDialog(form_), cancelButton);
  // The program's timers go on.
  const unsigned timer =
      platform::desktop().startTimer(std::chrono::milliseconds(1), [&] { form_.close(7); });
  EXPECT_EQ(desktop.runDialog(form_), okButton);
  EXPECT_EQ(form_.endedBy(), 7);
  platform::desktop().stopTimer(timer);
}

TEST_F(Window, KeepsItsSizeUnderItsName) {
  form_.addMultiLineEdit(1000);
  form_.setLayout(column({1000, okAndCancelInTheMiddle()}));
  open().resize(555, 444);
  QCoreApplication::processEvents();
  form_.close(cancelButton);
  window_.reset();
  EXPECT_EQ(open().size(), QSize(555, 444));
  const int edge = window_->height() - window_->widgetOf(okButton)->y();
  const int wide = window_->widgetOf(1000)->width();
  window_->resize(755, 644);
  QCoreApplication::processEvents();
  EXPECT_EQ(window_->height() - window_->widgetOf(okButton)->y(), edge) << "buttons stay at the lower edge";
  EXPECT_EQ(window_->widgetOf(1000)->width(), wide + 200);
  const int middle =
      (window_->widgetOf(okButton)->x() + window_->widgetOf(cancelButton)->geometry().right()) / 2;
  EXPECT_NEAR(middle, 755 / 2, 2);
  form_.close(cancelButton);
  window_.reset();
  makeSection(L"Dialogs");
  for (const wchar_t* const odd :
       {L"", L"x", L"1 2 3", L"0 0 -5 10", L"0 0 99999999 10", L"900000 900000 300 300"}) {
    writeSetting(L"Dialogs", L"test:Window", odd);
    EXPECT_LT(open().width(), 2000) << odd;
    form_.close(cancelButton);
    window_.reset();
  }
}

TEST_F(Window, ALabelIsAsHighAsItsLines) {
  form_.addLabel(10, L"a\nb\nc").size(75, 4);
  form_.setLayout(column({10, okAndCancel()}));
  open();
  EXPECT_GE(window_->widgetOf(10)->height(), 4 * window_->widgetOf(10)->fontMetrics().lineSpacing());
}

TEST_F(Window, AGridKnowsItsWidthBeforeItIsShown) {
  Grid& grid = form_.addGrid(1048, 2);
  form_.control(1048).size(60, 8).grow(1);
  grid.setRowCount(3);
  int width = 0;
  form_.onStart = [&] { width = grid.clientWidth(); };
  form_.setLayout(column({1048, okAndCancel()}));
  open();
  EXPECT_EQ(width, grid.clientWidth());
}

TEST_F(Window, AHundredThousandRowsScrollAtOnce) {
  Grid& grid = form_.addGrid(1048, 7);
  grid.setRowCount(100001);
  for (int row = 1; row < grid.rows(); ++row) {
    for (int column = 0; column < 7; ++column) grid.setText(row, column, std::to_wstring(row * column));
  }
  grid.setText(5, 0, std::wstring(1 << 20, L'x'));
  form_.onStart = [&] { grid.autoSize(); };
  form_.setLayout(column({1048, okAndCancel()}));
  open();
  EXPECT_LT(grid.columnWidth(0), 1000) << "bounded";
  grid.setFocus(100000, 1);
  grid.scrollTo(100000, 1);
  QCoreApplication::processEvents();
  EXPECT_TRUE(table(1048).viewport()->rect().intersects(table(1048).visualRect(table(1048).currentIndex())));
  // A long text is edited whole.
  grid.setFocus(5, 0);
  table(1048).setFocus();
  key(Qt::Key_F2);
  key(Qt::Key_End);
  key(Qt::Key_Y, "y");
  key(Qt::Key_Return);
  EXPECT_EQ(grid.text(5, 0), std::wstring(1 << 20, L'x') + L"y");
}

TEST(ShownText, KeepsWhatWidgetsDrop) {
  struct Case {
    std::wstring model;
    const char16_t *shown, *now;
    std::wstring edited;
  };
  const Case cases[] = {
      {L"a\r\r\nb\rc", u"a\nbc", u"a\nbXc", L"a\r\r\nbX\rc"},
      {L"a\r\nb", u"a\nb", u"a\nb\nc", L"a\r\nb\r\nc"},
      {L"a\r\nb", u"a\nb", u"ab", L"ab"},
      {L"\r\n\r\n", u"\n\n", u"\n", L"\r\n"},
      {L"a\nb", u"a\nb", u"ya\nb", L"ya\nb"},
      {L"\xD800x\x1F600", u"\xD800x\xD83D\xDE00", u"\xD800xy\xD83D\xDE00", L"\xD800xy\x1F600"},
      {L"\x1F600", u"\xD83D\xDE00", u"\xD83D\xDE01", L"\x1F601"},
      {L"end\r", u"end", u"", L""},
      {L"", u"", u"new", L"new"},
  };
  for (const Case& each : cases) {
    ShownText text(ShownText::Lines::many);
    text.set(each.model);
    EXPECT_EQ(text.shown(), QString::fromUtf16(each.shown));
    text.edit(QString::fromUtf16(each.shown));
    EXPECT_EQ(text.model(), each.model) << "untouched";
    text.edit(QString::fromUtf16(each.now));
    EXPECT_EQ(text.model(), each.edited);
  }
  ShownText line(ShownText::Lines::one);
  line.set(L"a\r\nb");
  line.edit("a\r\nbc");
  EXPECT_EQ(line.model(), L"a\r\nbc");
  // A widget that replaces characters one for one still lets the others be.
  ShownText blanks(ShownText::Lines::many);
  blanks.set(L"a\u00a0b");
  blanks.setSeen("a b");
  blanks.edit("a bc");
  EXPECT_EQ(blanks.model(), L"a\u00a0bc");
}

}  // namespace
