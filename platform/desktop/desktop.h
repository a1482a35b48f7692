#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// All that a person at the machine sees or answers.

/// A box's style is one of `BoxButtons`, plus an icon, plus the number of the default button (0 for
/// the first, 256 for the second, 512 for the third). Styles, answers and beeps have the numbers of
/// the system calls that they stand for.
enum BoxButtons : unsigned {
  okBox = 0,
  okCancelBox = 1,
  abortRetryIgnoreBox = 2,
  yesNoCancelBox = 3,
  yesNoBox = 4,
  retryCancelBox = 5,
};
enum BoxIcon : unsigned { stopIcon = 16, questionIcon = 32, exclamationIcon = 48, informationIcon = 64 };
enum class BoxAnswer : int { none, ok, cancel, abort, retry, ignore, yes, no };

struct Box {
  std::wstring caption;
  std::wstring text;
  unsigned style = 0;
};

/// Answers that the style offers, in the order of the buttons.
const std::vector<BoxAnswer>& answersOf(unsigned style);
BoxAnswer defaultAnswer(unsigned style);
/// What closing the box without a choice means.
BoxAnswer cancelAnswer(unsigned style);
/// "OK", "CANCEL", "ABORT", "RETRY", "IGNORE", "YES", "NO"; empty for none, none for any other text.
std::wstring nameOf(BoxAnswer answer);
BoxAnswer answerNamed(const std::wstring& name);

struct FileChoice {
  bool open = true;  ///< or save
  std::wstring title;
  std::wstring folder;
  std::wstring name;              ///< proposed, when saving
  std::wstring defaultExtension;  ///< without the point
  /// What a row of the list says, and its pattern ("*.dwg").
  std::vector<std::pair<std::wstring, std::wstring>> filters;
  bool overwritePrompt = true;
  bool mustExist = false;
};

/// Results of opening a document; those above 32 are success.
enum OpenResult : int { fileNotFound = 2, noAssociation = 31, opened = 33 };

class Form;

/// One desktop. Nothing that comes here goes to a command shell.
class Desktop {
 public:
  virtual ~Desktop() = default;

  virtual BoxAnswer messageBox(const Box& box) = 0;
  /// -1 is the plain beep.
  virtual void beep(int kind) = 0;
  /// Nothing when the person cancels.
  virtual std::optional<std::wstring> chooseFile(const FileChoice& choice) = 0;
  virtual std::optional<std::wstring> chooseFolder(const std::wstring& title,
                                                   const std::wstring& initial) = 0;
  /// Shows the form until it is closed: 1, or 2 when it was cancelled. A negative result means that it
  /// couldn't be shown. What a handler throws comes out here, with the window closed.
  virtual int runDialog(Form& form) = 0;
  /// Lets windows live while work keeps the person waiting; true, once, when Escape was pressed to stop it.
  /// What else the person does meanwhile is lost.
  virtual bool takeStop() { return false; }
  /// In pixels.
  virtual std::pair<int, int> screenSize() = 0;
  /// Called when title, enabled state or progress have changed.
  virtual void mainWindowChanged() {}

  /// Opens a document, folder or address by the desktop's own opener. Verbs: "" and "open", "explore" and
  /// "edit", in any case; all others give `noAssociation`.
  virtual int openDocument(const std::wstring& verb, const std::wstring& target);
  /// Shows the folder with the files marked where the desktop can do that, else the plain folder.
  virtual bool showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files);
  /// Opens the contents of a help file.
  virtual void showHelp(const std::wstring& topic);
  /// Key down and key up, into the main window; how many of the two were sent.
  virtual int sendKeyPress(int virtualKey);

  struct MainWindow {
    std::wstring text;
    bool enabled = true;
    bool meterShown = false;
    std::wstring progressLabel;
    int progressMinimum = 0, progressMaximum = 0, progress = 0;
  };
  const MainWindow& mainWindow() const { return mainWindow_; }
  void setMainWindow(MainWindow state);

  /// Calls `tick` each `interval` from `runTimers`; the number is never 0.
  unsigned startTimer(std::chrono::milliseconds interval, std::function<void()> tick);
  void stopTimer(unsigned timer);
  bool hasTimers() const { return !timers_.empty(); }
  /// Lets due timers tick, once each; the host calls it while it waits for input.
  void runTimers(std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now());

 private:
  struct Timer {
    unsigned number;
    std::chrono::milliseconds interval;
    std::chrono::steady_clock::time_point due;
    std::function<void()> tick;
  };
  MainWindow mainWindow_;
  std::vector<Timer> timers_;
  unsigned lastTimer_ = 0;
};

/// The process's desktop. At first it is a scripted one: above nothing when standard input is no terminal, so
/// that nobody is waited for; else above the display, or above the terminal where there is none.
Desktop& desktop();
void setDesktop(std::unique_ptr<Desktop> next);

/// Of the machine, for people: the first part of its name in the network, of which other machines see at most
/// 15 characters. Nothing when it can't be told.
std::optional<std::wstring> computerName();
std::wstring computerNameOfHost(std::wstring_view hostName);

}  // namespace platform
