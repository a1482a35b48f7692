#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "host/editor/request.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace host {

/// The command line: what was said, the prompt with its keywords to click, and the line that is typed.
class CommandPanel : public QWidget {
 public:
  struct Listeners {
    /// A line is ended by Enter, or by a blank where that does the same.
    std::function<void(const std::wstring&)> onLine;
    std::function<void(const std::wstring&)> onKeyword;
    std::function<void()> onEscape;
    std::function<std::vector<std::string>(const std::string& before, const std::string& word)> completions;
    /// Keys that mean something to the window and aren't text; true when taken.
    std::function<bool(int key)> onKey;
  };
  explicit CommandPanel(Listeners listeners);

  /// At the end of what was said.
  void append(const std::wstring& text);
  /// Null where no prompt waits; `goesOn` where a form isn't complete yet.
  void showPrompt(const Request* request, bool goesOn = false);
  QLineEdit& line() const { return *line_; }
  std::wstring said() const;
  QString prompt() const;
  /// The keywords that can be clicked, as they are shown.
  QStringList keywords() const { return shownKeywords_; }
  /// As a click on the keyword; false when none is shown so.
  bool pressKeyword(const QString& shown);

  const QStringList& history() const { return history_; }
  void setHistory(QStringList lines) { history_ = std::move(lines), at_ = history_.size(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool takeKey(int key, bool withModifier);
  void endLine();
  bool blankEnds() const;
  void recall(qsizetype place);
  void complete();
  QString linked(const QString& prompt, const KeywordList& keywords);

  const Listeners listeners_;
  QPlainTextEdit* said_;
  QLabel* prompt_;
  QLineEdit* line_;
  QStringList history_, shownKeywords_;
  std::vector<std::wstring> keywords_;
  qsizetype at_ = 0;
  bool takesText_ = false;
  QString shownPrompt_;
};

}  // namespace host
