#include "platform/desktop/terminal.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "platform/desktop/file_choice.h"
#include "platform/desktop/form.h"
#include "platform/files/files.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

std::optional<std::wstring> ask(const std::wstring& question) {
  std::cout << toUtf8(question) << ": " << std::flush;
  std::string line;
  if (!std::getline(std::cin, line)) return std::nullopt;
  return fromUtf8(line);
}

// Empty while no meter is shown.
std::wstring progressText(const Desktop::MainWindow& window) {
  if (!window.meterShown) return {};
  const int64_t span = std::max<int64_t>(int64_t{window.progressMaximum} - window.progressMinimum, 1);
  const int64_t done = std::clamp<int64_t>(int64_t{window.progress} - window.progressMinimum, 0, span);
  return window.progressLabel + L" " + std::to_wstring(done * 100 / span) + L"%";
}

bool confirmOverwrite(const FileChoice& choice, const std::wstring& path) {
  if (choice.open || !choice.overwritePrompt || !fileExists(path)) return true;
  const auto answer = ask(path + L" exists. Replace it? (yes/no)");
  return answer && upperCased(*answer) == L"YES";
}

}  // namespace

BoxAnswer TerminalDesktop::messageBox(const Box& box) {
  std::wstring question = box.caption + L"\n" + box.text + L"\n";
  for (const BoxAnswer answer : answersOf(box.style)) question += L" " + nameOf(answer);
  question += L" <" + nameOf(defaultAnswer(box.style)) + L">";
  for (;;) {
    const auto line = ask(question);
    if (!line) return cancelAnswer(box.style);
    if (line->empty()) return defaultAnswer(box.style);
    for (const BoxAnswer answer : answersOf(box.style)) {
      // A beginning is enough, since no two answers of a box begin alike.
      if (nameOf(answer).compare(0, line->size(), upperCased(*line)) == 0) return answer;
    }
  }
}

void TerminalDesktop::beep(int) { std::cout << '\a' << std::flush; }

std::optional<std::wstring> TerminalDesktop::chooseFile(const FileChoice& choice) {
  const std::wstring proposal = choice.name.empty() ? L"" : L" <" + choice.name + L">";
  for (;;) {
    const auto typed = ask(choice.title + (choice.open ? L" (file to open)" : L" (file to save)") + proposal);
    if (!typed) return std::nullopt;
    const std::wstring path = finishedChoice(choice, typed->empty() ? choice.name : *typed);
    if (path.empty()) return std::nullopt;
    if (choice.mustExist && !fileExists(path)) {
      std::cout << toUtf8(path) << ": not found\n";
    } else if (confirmOverwrite(choice, path)) {
      return path;
    }
  }
}

std::optional<std::wstring> TerminalDesktop::chooseFolder(const std::wstring& title,
                                                          const std::wstring& initial) {
  std::optional<std::wstring> path = ask(title + L" (folder) <" + initial + L">");
  if (path && path->empty()) path = initial;
  if (!path || !folderExists(*path)) return std::nullopt;
  return path;
}

void TerminalDesktop::mainWindowChanged() {
  const std::wstring former = std::exchange(progress_, progressText(mainWindow()));
  if (progress_ == former) return;
  if (progress_.empty()) {
    std::cerr << '\n';
  } else {
    // Blanks wipe out what a longer line left.
    const std::wstring rest(std::max(former.size(), progress_.size()) - progress_.size(), L' ');
    std::cerr << '\r' << toUtf8(progress_ + rest) << std::flush;
  }
}

int TerminalDesktop::runDialog(Form& form) { return cancelForWantOfWindow(form); }

int cancelForWantOfWindow(Form& form) {
  std::cerr << "dialog needs a window or answers, cancelled: " << toUtf8(form.title()) << '\n';
  form.open();
  form.close(cancelButton);
  return form.result();
}

std::pair<int, int> TerminalDesktop::screenSize() { return {1920, 1080}; }

}  // namespace platform
