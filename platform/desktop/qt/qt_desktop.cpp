#include "platform/desktop/qt/qt_desktop.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <algorithm>
#include <cmath>

#include "platform/desktop/qt/application.h"
#include "platform/desktop/qt/form_window.h"
#include "platform/desktop/qt/keys.h"
#include "platform/files/native_path.h"

namespace platform {

namespace {

constexpr unsigned iconBits = 0xF0;
/// For the file manager's answer, in milliseconds.
constexpr int patience = 3000;

QString shown(const std::wstring& text) { return QString::fromStdWString(text); }
QString pathOf(const std::wstring& path) { return QString::fromStdString(nativePath(path)); }

/// Makes the window that was active before a question active again.
class ActiveWindow {
 public:
  /// Where none is active, `otherwise`.
  explicit ActiveWindow(QWidget* otherwise) : window_(QApplication::activeWindow()) {
    if (!window_) window_ = QApplication::activeModalWidget();
    if (!window_) window_ = otherwise;
  }
  ~ActiveWindow() {
    if (window_) window_->activateWindow();
  }
  QWidget* get() const { return window_; }

 private:
  QPointer<QWidget> window_;
};

struct ButtonOfAnswer {
  BoxAnswer answer;
  QMessageBox::StandardButton button;
};
constexpr ButtonOfAnswer buttons[] = {
    {BoxAnswer::ok, QMessageBox::Ok},         {BoxAnswer::cancel, QMessageBox::Cancel},
    {BoxAnswer::abort, QMessageBox::Abort},   {BoxAnswer::retry, QMessageBox::Retry},
    {BoxAnswer::ignore, QMessageBox::Ignore}, {BoxAnswer::yes, QMessageBox::Yes},
    {BoxAnswer::no, QMessageBox::No},
};

QMessageBox::StandardButton buttonOf(BoxAnswer answer) {
  return std::find_if(std::begin(buttons), std::end(buttons),
                      [&](const ButtonOfAnswer& each) { return each.answer == answer; })
      ->button;
}

BoxAnswer answerOf(int button) {
  const auto found = std::find_if(std::begin(buttons), std::end(buttons),
                                  [&](const ButtonOfAnswer& each) { return each.button == button; });
  return found == std::end(buttons) ? BoxAnswer::none : found->answer;
}

QMessageBox::Icon iconOf(unsigned style) {
  switch (style & iconBits) {
    case stopIcon:
      return QMessageBox::Critical;
    case questionIcon:
      return QMessageBox::Question;
    case exclamationIcon:
      return QMessageBox::Warning;
    case informationIcon:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

// "DWG Files (*.dwg)": what the person reads holds the pattern already; all files are "*" here.
QStringList filterRows(const FileChoice& choice) {
  QStringList rows;
  for (const auto& [text, pattern] : choice.filters) {
    const QString name = shown(text).section(QStringLiteral(" ("), 0, 0);
    rows << name + QStringLiteral(" (") + (pattern == L"*.*" ? QStringLiteral("*") : shown(pattern)) +
                QStringLiteral(")");
  }
  return rows;
}

QString startFolder(const std::wstring& path) {
  const QFileInfo info(pathOf(path));
  if (path.empty() || info.isDir()) return info.filePath();
  return info.path();
}

/// The toolkit's own dialog: it works alike on every desktop, and asks before it replaces a file.
std::optional<std::wstring> choose(QFileDialog& dialog, const std::wstring& folder) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  if (!folder.empty()) dialog.setDirectory(startFolder(folder));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return dialog.selectedFiles().constFirst().toStdWString();
}

/// Keeps what a person does from the windows, and notes Escape.
class StopWatch : public QObject {
 public:
  bool isAsked() const { return asked_; }
  bool eventFilter(QObject*, QEvent* event) override {
    switch (event->type()) {
      case QEvent::KeyPress:
        asked_ = asked_ || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        return true;
      case QEvent::KeyRelease:
      case QEvent::MouseButtonPress:
      case QEvent::MouseButtonRelease:
      case QEvent::MouseButtonDblClick:
      case QEvent::Wheel:
      case QEvent::Shortcut:
      case QEvent::ShortcutOverride:
      case QEvent::Close:
        return true;
      default:
        return false;
    }
  }

 private:
  bool asked_ = false;
};

}  // namespace

QtDesktop::QtDesktop() { qtApplication(); }

BoxAnswer QtDesktop::messageBox(const Box& box) {
  const ActiveWindow active(view_.window());
  QMessageBox window(iconOf(box.style), shown(box.caption), shown(box.text), QMessageBox::NoButton,
                     active.get());
  window.setTextFormat(Qt::PlainText);
  for (const BoxAnswer answer : answersOf(box.style)) window.addButton(buttonOf(answer));
  window.setDefaultButton(buttonOf(defaultAnswer(box.style)));
  window.setEscapeButton(buttonOf(cancelAnswer(box.style)));
  return answerOf(window.exec());
}

void QtDesktop::beep(int) { QApplication::beep(); }

std::optional<std::wstring> QtDesktop::chooseFile(const FileChoice& choice) {
  const ActiveWindow active(view_.window());
  QFileDialog dialog(active.get(), shown(choice.title));
  dialog.setAcceptMode(choice.open ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
  dialog.setFileMode(choice.open && choice.mustExist ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !choice.overwritePrompt);
  dialog.setNameFilters(filterRows(choice));
  dialog.setDefaultSuffix(shown(choice.defaultExtension));
  if (!choice.name.empty()) dialog.selectFile(shown(choice.name));
  return choose(dialog, choice.folder);
}

std::optional<std::wstring> QtDesktop::chooseFolder(const std::wstring& title, const std::wstring& initial) {
  const ActiveWindow active(view_.window());
  QFileDialog dialog(active.get(), shown(title));
  dialog.setFileMode(QFileDialog::Directory);
  dialog.setOption(QFileDialog::ShowDirsOnly);
  return choose(dialog, initial);
}

int QtDesktop::runDialog(Form& form) {
  const ActiveWindow active(view_.window());
  return FormWindow(form, active.get()).run();
}

bool QtDesktop::takeStop() {
  StopWatch watch;
  qApp->installEventFilter(&watch);
  QCoreApplication::processEvents();
  return watch.isAsked();
}

std::pair<int, int> QtDesktop::screenSize() {
  const QScreen* const screen = QGuiApplication::primaryScreen();
  if (!screen) return {0, 0};
  const auto pixels = [&](int length) {
    return static_cast<int>(std::lround(length * screen->devicePixelRatio()));
  };
  return {pixels(screen->size().width()), pixels(screen->size().height())};
}

void QtDesktop::mainWindowChanged() { view_.show(mainWindow()); }

void QtDesktop::setWindow(QMainWindow* window) {
  view_.setWindow(window);
  mainWindowChanged();
}

// File managers that can mark files listen under this name; others get the plain folder.
bool QtDesktop::showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) {
  QStringList addresses;
  for (const std::wstring& each : files) addresses << QUrl::fromLocalFile(pathOf(each)).toString();
  QDBusMessage call = QDBusMessage::createMethodCall(
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
      QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
  call << addresses << QString();
  const QDBusMessage answer = QDBusConnection::sessionBus().call(call, QDBus::Block, patience);
  return answer.type() == QDBusMessage::ReplyMessage || Desktop::showInFolder(folder, files);
}

int QtDesktop::sendKeyPress(int virtualKey) {
  QWidget* target = QApplication::focusWidget();
  if (!target) target = QApplication::activeWindow();
  const int key = keyOfVirtualKey(virtualKey);
  if (!target || key == Qt::Key_unknown) return 0;
  const bool isLetter = key >= Qt::Key_Space && key <= Qt::Key_Z;
  const QString text = isLetter ? QString(QChar(key)) : QString();
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier, text));
  QCoreApplication::postEvent(target, new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier, text));
  return 2;
}

}  // namespace platform

platform::Desktop* makeDesktop() { return new platform::QtDesktop; }
