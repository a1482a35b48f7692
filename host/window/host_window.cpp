#include "host/window/host_window.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QSaveFile>
#include <cstdio>

#include "host/commands/command_runner.h"
#include "host/console/command_line.h"
#include "host/documents/documents.h"
#include "host/editor/drawing_state.h"
#include "host/editor/user_input.h"
#include "host/rx/editor.h"
#include "host/window/variables.h"
#include "host/window/window_functions.h"
#include "platform/desktop/qt/application.h"
#include "platform/desktop/qt/qt_desktop.h"
#include "platform/desktop/qt/themes.h"
#include "platform/desktop/scripted.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// How often timers of programs are looked at, in milliseconds.
constexpr int timerRound = 20;
const wchar_t* const windowName = L"Zarbo host";

bool isForm(const std::wstring& line) {
  const size_t begin = line.find_first_not_of(L" \t");
  return begin != std::wstring::npos && (line[begin] == L'(' || line[begin] == L'!');
}

QStringList readHistory(const std::string& path) {
  QFile file(QString::fromStdString(path));
  QStringList lines;
  if (path.empty() || !file.open(QIODevice::ReadOnly)) return lines;
  for (const QByteArray& each : file.readAll().split('\n')) {
    // The first line may be the mark of the terminal's line editor.
    if (!each.isEmpty() && !each.startsWith("_HiStOrY_V2_")) lines << QString::fromUtf8(each);
  }
  return lines;
}

void writeHistory(const std::string& path, const QStringList& lines) {
  if (path.empty()) return;
  QSaveFile file(QString::fromStdString(path));
  const QByteArray text = (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
    std::fprintf(stderr, "zarbo-host: %s: can't be written\n", path.c_str());
}

std::string historyOf(const WindowServices& services) {
  return services.historyFile.empty() ? "" : services.historyFile + ".window";
}

}  // namespace

HostWindow::HostWindow(const WindowServices& services)
    : services_(services),
      files_(services.exportDrawing),
      watch_({[this] { player_->playBusy(), refresh(); }, [this] { close(false); }}) {
  platform::qtApplication();
  Viewport::Listeners viewport;
  viewport.onEnter = [this] { pressEnter(); };
  viewport.onCursor = [this](const AcGePoint3d& point) { window_->showCursor(point); };
  viewport.onGrip = [this](const Grip& grip) { addJob([grip] { moveGrip(grip); }); };
  viewport.mayChoose = [this] { return mayActNow(); };
  CommandPanel::Listeners commands;
  commands.onLine = [this](const std::wstring& line) { takeLine(line); };
  commands.onKeyword = [this](const std::wstring& word) { conversation_.give(Typed{word}); };
  commands.onEscape = [this] { pressEscape(); };
  commands.onKey = [this](int key) { return pressKey(key); };
  commands.completions = services_.completions;
  window_ = std::make_unique<MainWindow>(
      conversation_, std::move(viewport), std::move(commands),
      [this](const std::wstring& layer, LayerPanel::Change change) { changeLayer(layer, change); },
      MainWindow::Listeners{[this] { close(mayActNow()); }, [this](int place) { showTab(place); }});
  window_->commands().setHistory(readHistory(historyOf(services_)));
  buildMenus();
  buildViews();
  buildSwitches();

  player_ = std::make_unique<Player>(*window_, services_.isScripted);
  conversation_.onChange([this] { showPrompt(); });
  conversation_.setPlayer([this] { return player_->playNext(); }, services_.isScripted);
  setPerson(std::make_unique<WindowPerson>(conversation_, [this] {
    return !services_.isScripted || player_->hasDeeds() || conversation_.hasAhead();
  }));
  auto desktop = std::make_unique<platform::QtDesktop>();
  desktop_ = desktop.get();
  desktop_->setWindow(window_.get());
  platform::setDesktop(std::make_unique<platform::ScriptedDesktop>(std::move(desktop)));
  commandLine().setSink([this](std::wstring_view text) {
    window_->commands().append(std::wstring(text));
    if (!services_.isScripted) return;
    std::fputs(toUtf8(text).c_str(), stdout);
    std::fflush(stdout);
  });
  editor().addReactor(this);
  QObject::connect(&timers_, &QTimer::timeout, window_.get(), [this] {
    // Programs' timers tick where the host waits, and not inside of what runs.
    if (!work_.isBusy() || conversation_.request()) platform::desktop().runTimers();
  });
  timers_.start(timerRound);
  watching_.emplace(watch_);
}

HostWindow::~HostWindow() {
  writeHistory(historyOf(services_), window_->commands().history());
  editor().removeReactor(this);
  commandLine().setSink({});
  setPerson(nullptr);
  desktop_->setWindow(nullptr);
  platform::setDesktop(nullptr);
}

void HostWindow::defineFunctions(lisp::Interpreter& interpreter) {
  defineWindowFunctions(interpreter, *player_);
}

void HostWindow::show() {
  window_->resize(window_->sizeHint());
  window_->show();
  window_->viewport().showExtents();
  refresh();
}

void HostWindow::run() {
  while (!isClosed_) {
    watching_.reset();
    rescue_.renew();
    work_.waitForJob();
    watching_.emplace(watch_);
    work();
  }
  window_->hide();
}

void HostWindow::work() {
  watch_.noteServed();
  work_.runAll();
  while (const auto line = conversation_.takeAhead()) {
    takeLine(*line);
    work_.runAll();
  }
  refresh();
}

void HostWindow::goIdle() {
  refresh();
  if (work_.isBusy()) return;
  work();
  if (!player_->takeRelease()) return;
  while (player_->playNext() && !isClosed_) work();
}

void HostWindow::databaseToBeDestroyed(AcDbDatabase* drawing) {
  if (drawing) window_->viewport().letGo(*drawing);
}

// What is shown

void HostWindow::refreshTitle() {
  const Document* const document = documents().current();
  const std::wstring path = document ? document->fileName() : L"";
  if (path == shownDocument_) return;
  shownDocument_ = path;
  platform::Desktop::MainWindow state = platform::desktop().mainWindow();
  state.text = windowName + (path.empty() ? L"" : L" - [" + path.substr(path.rfind(L'/') + 1) + L"]");
  platform::desktop().setMainWindow(std::move(state));
}

/// A drag asks for each step of the cursor, which changes nothing but the picture and the prompt.
void HostWindow::showPrompt() {
  watch_.noteServed();
  if (!documents().isHeld()) return refresh();
  if (conversation_.request()) window_->commands().showPrompt(conversation_.request());
  window_->viewport().refresh();
}

void HostWindow::refresh() {
  refreshTitle();
  window_->refresh(conversation_.request(), !begun_.empty());
  window_->tabs().setEnabled(!work_.isBusy());
  const bool isModel = intVariable(L"TILEMODE", 1) != 0;
  spaceButton_->setText(isModel ? QStringLiteral("MODEL") : QStringLiteral("PAPER"));
}

// What a person does

/// Nothing runs and no prompt waits.
bool HostWindow::mayActNow() const { return !work_.isBusy() && !conversation_.request(); }

void HostWindow::addJob(Work::Job job) {
  conversation_.cancelPrompts();
  work_.add([this, job = std::move(job)] {
    conversation_.allowPrompts();
    try {
      lisp::withMemoryErrors(job);
    } catch (const lisp::LispError& error) {
      commandLine().print(L"\n" + error.report());
    }
    commandLine().freshLine();
    refresh();
  });
}

void HostWindow::addCommand(std::vector<std::wstring> words) {
  addJob([words = std::move(words)] {
    const DocumentManager::Busy busy(documents());
    std::vector<CommandInput::Argument> inputs;
    for (const std::wstring& each : words) {
      inputs.push_back(each.empty() ? InputItem(Enter{}) : InputItem(Typed{each}));
    }
    commandRunner().give(std::move(inputs));
    while (!commandRunner().openName().empty()) commandRunner().give({std::nullopt});
  });
}

/// Answers the prompt that waits, or is a line for the host.
void HostWindow::takeLine(const std::wstring& line) {
  if (conversation_.request()) {
    window_->commands().append(line + L"\n");
    commandLine().cursorAtLineBegin();
    conversation_.give(line.empty() ? InputItem(Enter{}) : InputItem(Typed{line}));
  } else if (work_.isBusy() || work_.isWaiting()) {
    conversation_.typeAhead(line);
  } else {
    work_.add([this, line] { runLine(line); });
  }
}

void HostWindow::runLine(const std::wstring& line) {
  const bool repeats = begun_.empty() && line.find_first_not_of(L" \t") == std::wstring::npos;
  const std::wstring meant = repeats ? lastLine_ : line;
  if (repeats && meant.empty()) return;
  commandLine().freshLine();
  window_->commands().append((begun_.empty() ? L"Command: " : L"(_> ") + meant + L"\n");
  commandLine().cursorAtLineBegin();
  begun_ += toUtf8(meant) + "\n";
  if (services_.goesOn(begun_)) return refresh();
  if (begun_.find('\n') == begun_.size() - 1 && !isForm(meant)) lastLine_ = meant;
  const std::string source = std::exchange(begun_, {});
  conversation_.allowPrompts();
  services_.runLine(source);
}

void HostWindow::pressEnter() { takeLine({}); }

void HostWindow::pressEscape() {
  conversation_.forgetAhead();
  if (conversation_.request()) return conversation_.give(Cancel{});
  if (!begun_.empty()) {
    begun_.clear();
    return refresh();
  }
  window_->viewport().escape();
}

bool HostWindow::pressKey(int key) {
  switch (key) {
    case Qt::Key_F3:
      toggleVariable(L"OSMODE", snapsOff);
      break;
    case Qt::Key_F8:
      toggleVariable(L"ORTHOMODE");
      break;
    case Qt::Key_Delete:
      if (mayActNow() && currentState() && !currentState()->chosenBefore.empty()) addCommand({L"ERASE"});
      break;
    default:
      return false;
  }
  refresh();
  return true;
}

void HostWindow::showTab(int place) {
  const auto& open = documents().open();
  if (!mayActNow() || documents().isHeld() || place < 0 || static_cast<size_t>(place) >= open.size()) {
    return refresh();
  }
  work_.add([this, document = open[static_cast<size_t>(place)].get()] {
    for (const auto& each : documents().open()) {
      if (each.get() == document) documents().activate(*document);
    }
    refresh();
  });
}

/// Changed drawings are asked for first. Then all that waits or runs is cancelled, and the window goes when
/// it has ended.
void HostWindow::close(bool nothingRuns) {
  const auto askAndClose = [this] {
    std::vector<Document*> open;
    for (const auto& each : documents().open()) open.push_back(each.get());
    for (Document* const each : open) {
      if (!files_.mayClose(*each)) return;
    }
    isClosed_ = true;
  };
  if (isClosed_) return;
  if (nothingRuns) return work_.add(askAndClose);
  askAndClose();
  if (!isClosed_) return;
  lisp::Interpreter::interrupt();
  conversation_.cancelPrompts();
}

}  // namespace host

extern "C" host::Window* makeWindow(const host::WindowServices& services) {
  return new host::HostWindow(services);
}
