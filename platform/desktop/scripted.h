#pragma once

#include <deque>

#include "platform/desktop/desktop.h"
#include "platform/desktop/form_script.h"

namespace platform {

/// Takes answers from queues and keeps a log; where a queue is empty, asks the desktop beneath. With
/// none beneath, the question counts as cancelled, and standard error tells so.
class ScriptedDesktop : public Desktop {
 public:
  explicit ScriptedDesktop(std::unique_ptr<Desktop> beneath) : beneath_(std::move(beneath)) {}

  struct Shown {
    Box box;
    BoxAnswer answer;
  };

  /// An answer that the box doesn't offer counts as cancelled.
  void queueAnswer(BoxAnswer answer) { answers_.push_back(answer); }
  /// Of the next file or folder chooser; nothing cancels it.
  void queueFile(std::optional<std::wstring> path) { files_.push_back(std::move(path)); }
  /// Of the next dialog; one that opens from inside takes the next but one.
  void queueDialog(FormScript script) { dialogs_.push_back(std::move(script)); }
  /// Escape, at the next look of work that can be stopped.
  void queueStop() { stop_ = true; }
  /// What the actions of dialogs gave since the last call.
  ScriptList takeDialogLog() { return std::exchange(dialogLog_, {}); }
  /// From now on scripts of dialogs work on real widgets, which nobody sees where there is no display.
  void useWidgets() { widgets_ = true; }
  /// The boxes since the last call.
  std::vector<Shown> takeBoxes() { return std::exchange(boxes_, {}); }
  /// The beeps since the last call.
  std::vector<int> takeBeeps() { return std::exchange(beeps_, {}); }

  BoxAnswer messageBox(const Box& box) override;
  void beep(int kind) override;
  std::optional<std::wstring> chooseFile(const FileChoice& choice) override;
  std::optional<std::wstring> chooseFolder(const std::wstring& title, const std::wstring& initial) override;
  int runDialog(Form& form) override;
  bool takeStop() override;
  std::pair<int, int> screenSize() override;
  void mainWindowChanged() override;
  int openDocument(const std::wstring& verb, const std::wstring& target) override;
  bool showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) override;
  void showHelp(const std::wstring& topic) override;
  int sendKeyPress(int virtualKey) override;

 private:
  BoxAnswer answerTo(const Box& box);
  bool takeFile(const std::wstring& title, std::optional<std::wstring>& path);

  std::unique_ptr<Desktop> beneath_;
  std::deque<BoxAnswer> answers_;
  std::deque<std::optional<std::wstring>> files_;
  std::vector<Shown> boxes_;
  std::vector<int> beeps_;
  std::deque<FormScript> dialogs_;
  ScriptList dialogLog_;
  bool widgets_ = false;
  bool stop_ = false;
};

/// The current desktop when it takes scripted answers, else null.
ScriptedDesktop* scriptedDesktop();

}  // namespace platform
