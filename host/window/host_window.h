#pragma once

#include <chrono>
#include <memory>

#include "brx/editor_reactor.h"
#include "host/window/conversation.h"
#include "host/window/file_entries.h"
#include "host/window/main_window.h"
#include "host/window/player.h"
#include "host/window/rescue.h"
#include "host/window/watch.h"
#include "host/window/window.h"
#include "host/window/work.h"

namespace platform {
class QtDesktop;
}

namespace host {

/// Joins the main window to the host: what a person does becomes work of the host, and what the host does is
/// shown.
class HostWindow final : public Window, private AcEditorReactor {
 public:
  explicit HostWindow(const WindowServices& services);
  ~HostWindow() override;

  void defineFunctions(lisp::Interpreter& interpreter) override;
  void show() override;
  void goIdle() override;
  void run() override;

  MainWindow& window() { return *window_; }
  Conversation& conversation() { return conversation_; }
  Player& player() { return *player_; }
  /// Runs what waits, where nothing runs already, and shows what comes of it.
  void work();

 private:
  void databaseToBeDestroyed(AcDbDatabase* drawing) override;

  // What a person does
  void takeLine(const std::wstring& line);
  void runLine(const std::wstring& line);
  void pressEnter();
  void pressEscape();
  bool pressKey(int key);
  void changeLayer(const std::wstring& layer, LayerPanel::Change change);
  void showTab(int place);
  /// `nothingRuns` where no evaluation has to be ended first.
  void close(bool nothingRuns);

  /// A command of the host's by its name, with the first of its inputs. What waits for input is cancelled
  /// before it.
  void addCommand(std::vector<std::wstring> words);
  void addJob(Work::Job job);
  void buildMenus();
  void buildViews();
  void buildSwitches();
  void refresh();
  void showPrompt();
  void refreshTitle();
  bool mayActNow() const;

  const WindowServices services_;
  platform::QtDesktop* desktop_ = nullptr;
  Work work_;
  Conversation conversation_;
  std::unique_ptr<MainWindow> window_;
  FileEntries files_;
  std::unique_ptr<Player> player_;
  Watch watch_;
  /// But not while the window waits for something to do.
  std::optional<Watch::Over> watching_;
  QTimer timers_;
  Rescue rescue_;
  QToolButton* spaceButton_ = nullptr;
  /// Lines of a form that isn't complete.
  std::string begun_;
  std::wstring lastLine_, shownDocument_;
  bool isClosed_ = false;
};

}  // namespace host
