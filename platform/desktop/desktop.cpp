#include "platform/desktop/desktop.h"

#include <algorithm>
#include <array>

#include "platform/desktop/display.h"
#include "platform/desktop/opener.h"
#include "platform/desktop/scripted.h"
#include "platform/desktop/terminal.h"
#include "platform/files/native_path.h"
#include "platform/terminal/terminal.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

std::unique_ptr<Desktop>& current() {
  static std::unique_ptr<Desktop> instance;
  return instance;
}

std::unique_ptr<Desktop> firstDesktop() {
  if (!isTerminal(Stream::input)) return std::make_unique<ScriptedDesktop>(nullptr);
  std::unique_ptr<Desktop> person = std::make_unique<TerminalDesktop>();
  if (hasDisplay()) person = std::make_unique<DisplayDesktop>(std::move(person));
  return std::make_unique<ScriptedDesktop>(std::move(person));
}

constexpr const wchar_t* answerNames[] = {L"",      L"OK",     L"CANCEL", L"ABORT",
                                          L"RETRY", L"IGNORE", L"YES",    L"NO"};

}  // namespace

const std::vector<BoxAnswer>& answersOf(unsigned style) {
  using enum BoxAnswer;
  static const std::vector<BoxAnswer> sets[] = {
      {ok}, {ok, cancel}, {abort, retry, ignore}, {yes, no, cancel}, {yes, no}, {retry, cancel}};
  const unsigned buttons = style & 15;
  return sets[buttons < std::size(sets) ? buttons : 0];
}

BoxAnswer defaultAnswer(unsigned style) {
  const auto& answers = answersOf(style);
  const size_t button = (style >> 8) & 3;
  return answers[button < answers.size() ? button : 0];
}

BoxAnswer cancelAnswer(unsigned style) {
  const auto& answers = answersOf(style);
  const auto has = [&](BoxAnswer answer) {
    return std::find(answers.begin(), answers.end(), answer) != answers.end();
  };
  for (const BoxAnswer answer : {BoxAnswer::cancel, BoxAnswer::no, BoxAnswer::abort}) {
    if (has(answer)) return answer;
  }
  return BoxAnswer::ok;
}

std::wstring nameOf(BoxAnswer answer) { return answerNames[static_cast<size_t>(answer)]; }

BoxAnswer answerNamed(const std::wstring& name) {
  const auto found = std::find(std::begin(answerNames), std::end(answerNames), name);
  return found == std::end(answerNames) ? BoxAnswer::none
                                        : static_cast<BoxAnswer>(found - std::begin(answerNames));
}

int Desktop::openDocument(const std::wstring& verb, const std::wstring& target) {
  const std::wstring wanted = upperCased(verb);
  if (wanted != L"" && wanted != L"OPEN" && wanted != L"EXPLORE" && wanted != L"EDIT") return noAssociation;
  return openByDesktop(target);
}

bool Desktop::showInFolder(const std::wstring& folder, const std::vector<std::wstring>&) {
  return openByDesktop(folder) > 32;
}

void Desktop::showHelp(const std::wstring& topic) { openByDesktop(topic); }

int Desktop::sendKeyPress(int) { return 0; }

void Desktop::setMainWindow(MainWindow state) {
  mainWindow_ = std::move(state);
  mainWindowChanged();
}

unsigned Desktop::startTimer(std::chrono::milliseconds interval, std::function<void()> tick) {
  timers_.push_back({++lastTimer_, interval, std::chrono::steady_clock::now() + interval, std::move(tick)});
  return lastTimer_;
}

void Desktop::stopTimer(unsigned timer) {
  std::erase_if(timers_, [&](const Timer& each) { return each.number == timer; });
}

void Desktop::runTimers(std::chrono::steady_clock::time_point now) {
  std::vector<unsigned> due;
  for (const Timer& each : timers_) {
    if (each.due <= now) due.push_back(each.number);
  }
  // A tick may stop any timer or start new ones.
  for (const unsigned number : due) {
    const auto timer = std::find_if(timers_.begin(), timers_.end(),
                                    [&](const Timer& each) { return each.number == number; });
    if (timer == timers_.end()) continue;
    timer->due = now + timer->interval;
    const auto tick = timer->tick;
    tick();
  }
}

Desktop& desktop() {
  if (!current()) current() = firstDesktop();
  return *current();
}

void setDesktop(std::unique_ptr<Desktop> next) { current() = std::move(next); }

std::optional<std::wstring> computerName() {
  std::array<char, 256> name{};
  if (gethostname(name.data(), name.size() - 1) != 0) return std::nullopt;
  return computerNameOfHost(fromUtf8(name.data()));
}

std::wstring computerNameOfHost(std::wstring_view hostName) {
  constexpr size_t longest = 15;
  return std::wstring(hostName.substr(0, std::min(hostName.find(L'.'), longest)));
}

}  // namespace platform
