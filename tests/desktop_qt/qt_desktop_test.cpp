#include "platform/desktop/qt/qt_desktop.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFileDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMessageBox>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "platform/desktop/qt/application.h"
#include "tests/support/temporary_folder.h"

/// The toolkit's font library keeps some blocks to the end, which the sanitizer takes for lost.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }

namespace {

using namespace platform;

/// Runs on the window that opens next, and again on each that opens from it, until it closes one; a picture
/// of the first goes to the folder ZARBO_SHOTS where that is set.
template <class Window>
void onNextWindow(std::function<void(Window&)> act, const QString& shot = {}) {
  QTimer::singleShot(50, [=] {
    auto* const window = qobject_cast<Window*>(QApplication::activeModalWidget());
    if (!window) return onNextWindow<Window>(act, shot);
    const QString folder = qEnvironmentVariable("ZARBO_SHOTS");
    if (!folder.isEmpty() && !shot.isEmpty()) window->grab().save(folder + "/" + shot + ".png");
    act(*window);
  });
}

QPushButton& button(QMessageBox& box, QMessageBox::StandardButton which) {
  return *qobject_cast<QPushButton*>(box.button(which));
}

TEST(QtBoxes, HaveTheButtonsTheIconAndTheDefaultOfTheStyle) {
  struct Case {
    unsigned style;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton byDefault, pressed;
    QMessageBox::Icon icon;
    BoxAnswer answer;
  };
  using Box = QMessageBox;
  const Case cases[] = {
      {0, Box::Ok, Box::Ok, Box::Ok, Box::NoIcon, BoxAnswer::ok},
      {1 + 64 + 256, Box::Ok | Box::Cancel, Box::Cancel, Box::Ok, Box::Information, BoxAnswer::ok},
      {2 + 16 + 512, Box::Abort | Box::Retry | Box::Ignore, Box::Ignore, Box::Abort, Box::Critical,
       BoxAnswer::abort},
      {3 + 32, Box::Yes | Box::No | Box::Cancel, Box::Yes, Box::No, Box::Question, BoxAnswer::no},
      {4 + 48, Box::Yes | Box::No, Box::Yes, Box::Yes, Box::Warning, BoxAnswer::yes},
      {5, Box::Retry | Box::Cancel, Box::Retry, Box::Cancel, Box::NoIcon, BoxAnswer::cancel},
  };
  QtDesktop desktop;
  for (const Case& each : cases) {
    onNextWindow<QMessageBox>(
        [&](QMessageBox& box) {
          EXPECT_EQ(box.standardButtons(), each.buttons) << each.style;
          EXPECT_TRUE(button(box, each.byDefault).isDefault()) << each.style;
          EXPECT_EQ(box.icon(), each.icon) << each.style;
          EXPECT_EQ(box.text(), "A <b>text</b>\nin two lines");
          EXPECT_EQ(box.textFormat(), Qt::PlainText);
          button(box, each.pressed).click();
        },
        QString("box%1").arg(each.style));
    EXPECT_EQ(desktop.messageBox({L"Caption", L"A <b>text</b>\nin two lines", each.style}), each.answer)
        << each.style;
  }
}

TEST(QtBoxes, ClosingCancels) {
  QtDesktop desktop;
  const std::pair<unsigned, BoxAnswer> cases[] = {
      {okBox, BoxAnswer::ok}, {yesNoCancelBox, BoxAnswer::cancel}, {yesNoBox, BoxAnswer::no}};
  for (const auto& [style, answer] : cases) {
    onNextWindow<QMessageBox>([](QMessageBox& box) { box.close(); });
    EXPECT_EQ(desktop.messageBox({L"Caption", L"Text", style}), answer) << style;
  }
}

TEST(QtBoxes, MakeTheFormerWindowActiveAgain) {
  QtDesktop desktop;
  QMainWindow window;
  window.show();
  window.activateWindow();
  QApplication::setActiveWindow(&window);
  onNextWindow<QMessageBox>([&](QMessageBox& box) {
    EXPECT_EQ(box.parentWidget(), &window);
    box.accept();
  });
  desktop.messageBox({L"Caption", L"Text", okBox});
  QCoreApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), &window);
}

/// Types a name into the chooser and presses its button.
void enter(QFileDialog& dialog, const QString& name) {
  dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
  QMetaObject::invokeMethod(&dialog, "accept");
}

TEST(QtChoosers, OfferTheRowsAndAddTheExtension) {
  const TemporaryFolder folder;
  folder.write("plan.dwg", "");
  QtDesktop desktop;
  FileChoice choice;
  choice.title = L"Open a drawing";
  choice.folder = folder.path().wstring();
  choice.defaultExtension = L"dwg";
  choice.filters = {{L"DWG Files (*.dwg)", L"*.dwg"}, {L"All Files (*.*)", L"*.*"}};
  choice.mustExist = true;
  onNextWindow<QFileDialog>(
      [](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Open a drawing");
        EXPECT_EQ(dialog.nameFilters(), QStringList({"DWG Files (*.dwg)", "All Files (*)"}));
        enter(dialog, "plan");
      },
      "open");
  EXPECT_EQ(desktop.chooseFile(choice), folder.wide("plan.dwg"));
  onNextWindow<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
  EXPECT_EQ(desktop.chooseFile(choice), std::nullopt);
}

TEST(QtChoosers, AskBeforeAFileIsReplacedUnlessToldNotTo) {
  const TemporaryFolder folder;
  folder.write("plan.dwg", "");
  QtDesktop desktop;
  FileChoice choice;
  choice.open = false;
  choice.folder = folder.path().wstring();
  choice.name = L"plan.dwg";
  onNextWindow<QFileDialog>([](QFileDialog& dialog) {
    onNextWindow<QMessageBox>([&](QMessageBox& box) {
      button(box, QMessageBox::No).click();
      QTimer::singleShot(0, &dialog, [&] { dialog.reject(); });
    });
    enter(dialog, "plan.dwg");
  });
  EXPECT_EQ(desktop.chooseFile(choice), std::nullopt);
  choice.overwritePrompt = false;
  onNextWindow<QFileDialog>(
      [](QFileDialog& dialog) {
        EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), "plan.dwg");
        QMetaObject::invokeMethod(&dialog, "accept");
      },
      "save");
  EXPECT_EQ(desktop.chooseFile(choice), folder.wide("plan.dwg"));
}

TEST(QtChoosers, GiveAFolder) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  QtDesktop desktop;
  onNextWindow<QFileDialog>([](QFileDialog& dialog) { enter(dialog, "sub"); }, "folder");
  EXPECT_EQ(desktop.chooseFolder(L"Folder", folder.path().wstring()), folder.wide("sub"));
}

TEST(QtMainWindow, FollowsTitleEnabledStateAndProgress) {
  QtDesktop desktop;
  QMainWindow window;
  window.resize(700, 200);
  window.show();
  desktop.setWindow(&window);
  desktop.setMainWindow({L"A title", false, true, L"Work <b>", 10, 20, 15});
  auto* const meter = window.findChild<QProgressBar*>();
  EXPECT_EQ(window.windowTitle(), "A title");
  EXPECT_FALSE(window.isEnabled());
  EXPECT_TRUE(meter->isVisible());
  EXPECT_EQ(meter->value(), 15);
  const QString folder = qEnvironmentVariable("ZARBO_SHOTS");
  if (!folder.isEmpty()) window.grab().save(folder + "/window.png");
  desktop.setMainWindow({L"A title", true, true, L"", 0, 0, 99});
  EXPECT_EQ(meter->maximum(), 1) << "no span";
  desktop.setMainWindow({L"A title", true, false, L"", 0, 0, 0});
  EXPECT_TRUE(window.isEnabled());
  EXPECT_FALSE(meter->isVisible());
  desktop.setWindow(nullptr);
  desktop.setMainWindow({L"No window", true, true, L"Work", 0, 4, 1});
  const auto shown = QApplication::topLevelWidgets();
  EXPECT_TRUE(std::any_of(shown.begin(), shown.end(), [](QWidget* each) {
    return qobject_cast<QProgressDialog*>(each) && each->isVisible() && each->windowTitle() == "No window";
  }));
}

TEST(QtKeys, GoToTheFocusedControl) {
  QtDesktop desktop;
  QLineEdit edit;
  edit.show();
  QApplication::setActiveWindow(&edit);
  edit.setFocus();
  QCoreApplication::processEvents();
  EXPECT_EQ(desktop.sendKeyPress('A'), 2);
  EXPECT_EQ(desktop.sendKeyPress(8), 2);
  EXPECT_EQ(desktop.sendKeyPress('7'), 2);
  EXPECT_EQ(desktop.sendKeyPress(7), 0) << "no such key";
  QCoreApplication::processEvents();
  EXPECT_EQ(edit.text(), "7");
}

TEST(QtStop, NotesEscapeAndKeepsTheRestFromTheWindows) {
  QtDesktop desktop;
  QLineEdit edit;
  edit.show();
  const auto press = [&](int key, const QString& text) {
    QCoreApplication::postEvent(&edit, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
  };
  press(Qt::Key_X, "x");
  EXPECT_FALSE(desktop.takeStop());
  press(Qt::Key_Escape, {});
  EXPECT_TRUE(desktop.takeStop());
  EXPECT_FALSE(desktop.takeStop());
  EXPECT_EQ(edit.text(), "");
  press(Qt::Key_Y, "y");
  QCoreApplication::processEvents();
  EXPECT_EQ(edit.text(), "y") << "and only as long as work goes on";
}

}  // namespace
