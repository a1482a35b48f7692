#include "platform/desktop/scripted.h"

#include <algorithm>
#include <cstdio>

#include "platform/desktop/terminal.h"
#include "platform/desktop/toolkit.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

/// What programs meet on a machine without a screen.
constexpr std::pair<int, int> usualScreen{1920, 1080};

void tell(const std::wstring& what, const std::wstring& which) {
  std::fprintf(stderr, "%s: %s\n", toUtf8(what).c_str(), toUtf8(which).c_str());
}

}  // namespace

BoxAnswer ScriptedDesktop::answerTo(const Box& box) {
  if (answers_.empty()) {
    if (beneath_) return beneath_->messageBox(box);
    tell(L"message box without an answer, cancelled", box.caption + L": " + box.text);
    return cancelAnswer(box.style);
  }
  const BoxAnswer answer = answers_.front();
  answers_.pop_front();
  const auto& offered = answersOf(box.style);
  if (std::find(offered.begin(), offered.end(), answer) != offered.end()) return answer;
  tell(L"message box does not offer " + nameOf(answer) + L", cancelled", box.caption + L": " + box.text);
  return cancelAnswer(box.style);
}

BoxAnswer ScriptedDesktop::messageBox(const Box& box) {
  const BoxAnswer answer = answerTo(box);
  boxes_.push_back({box, answer});
  return answer;
}

void ScriptedDesktop::beep(int kind) {
  beeps_.push_back(kind);
  if (beneath_) beneath_->beep(kind);
}

bool ScriptedDesktop::takeFile(const std::wstring& title, std::optional<std::wstring>& path) {
  if (!files_.empty()) {
    path = std::move(files_.front());
    files_.pop_front();
    return true;
  }
  if (beneath_) return false;
  tell(L"chooser without an answer, cancelled", title);
  return true;
}

std::optional<std::wstring> ScriptedDesktop::chooseFile(const FileChoice& choice) {
  std::optional<std::wstring> path;
  return takeFile(choice.title, path) ? path : beneath_->chooseFile(choice);
}

std::optional<std::wstring> ScriptedDesktop::chooseFolder(const std::wstring& title,
                                                          const std::wstring& initial) {
  std::optional<std::wstring> path;
  return takeFile(title, path) ? path : beneath_->chooseFolder(title, initial);
}

int ScriptedDesktop::runDialog(Form& form) {
  if (dialogs_.empty()) return beneath_ ? beneath_->runDialog(form) : cancelForWantOfWindow(form);
  const FormScript script = std::move(dialogs_.front());
  dialogs_.pop_front();
  return widgets_ ? playOnWidgets(form, script, dialogLog_)
                  : playOnForm(form, script, drawWithWidgets, dialogLog_);
}

bool ScriptedDesktop::takeStop() {
  const bool below = beneath_ && beneath_->takeStop();
  return std::exchange(stop_, false) || below;
}

std::pair<int, int> ScriptedDesktop::screenSize() { return beneath_ ? beneath_->screenSize() : usualScreen; }

void ScriptedDesktop::mainWindowChanged() {
  if (beneath_) beneath_->setMainWindow(mainWindow());
}

int ScriptedDesktop::openDocument(const std::wstring& verb, const std::wstring& target) {
  return beneath_ ? beneath_->openDocument(verb, target) : Desktop::openDocument(verb, target);
}

bool ScriptedDesktop::showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) {
  return beneath_ ? beneath_->showInFolder(folder, files) : Desktop::showInFolder(folder, files);
}

void ScriptedDesktop::showHelp(const std::wstring& topic) {
  beneath_ ? beneath_->showHelp(topic) : Desktop::showHelp(topic);
}

int ScriptedDesktop::sendKeyPress(int virtualKey) {
  return beneath_ ? beneath_->sendKeyPress(virtualKey) : Desktop::sendKeyPress(virtualKey);
}

ScriptedDesktop* scriptedDesktop() { return dynamic_cast<ScriptedDesktop*>(&desktop()); }

}  // namespace platform
