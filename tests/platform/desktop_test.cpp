#include "platform/desktop/desktop.h"

#include <gtest/gtest.h>

#include <iostream>
#include <sstream>

#include "platform/desktop/file_choice.h"
#include "platform/desktop/terminal.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;

/// A person at the terminal who types these lines and then ends the input.
class Typed {
 public:
  explicit Typed(const std::string& lines)
      : input_(lines), in_(std::cin.rdbuf(input_.rdbuf())), out_(std::cout.rdbuf(output_.rdbuf())) {}
  ~Typed() {
    std::cin.rdbuf(in_);
    std::cout.rdbuf(out_);
    std::cin.clear();
  }

 private:
  std::istringstream input_;
  std::ostringstream output_;
  std::streambuf *in_, *out_;
};

TEST(TerminalDesktop, TakesTheAnswersOfTheBox) {
  struct Case {
    unsigned style;
    const char* typed;
    BoxAnswer answer;
  };
  const Case cases[] = {
      {yesNoCancelBox, "y\n", BoxAnswer::yes},
      {yesNoCancelBox, "ok\nNO\n", BoxAnswer::no},
      {yesNoCancelBox, "", BoxAnswer::cancel},
      {yesNoCancelBox | 256, "\n", BoxAnswer::no},
      {yesNoBox | 512, "\n", BoxAnswer::yes},
      {abortRetryIgnoreBox, "", BoxAnswer::abort},
      {unsigned{retryCancelBox} | stopIcon, "\n", BoxAnswer::retry},
      {okBox, "", BoxAnswer::ok},
  };
  for (const Case& each : cases) {
    const Typed typed(each.typed);
    EXPECT_EQ(TerminalDesktop().messageBox({L"Caption", L"Text", each.style}), each.answer)
        << each.style << " " << each.typed;
  }
}

TEST(TerminalDesktop, ChoosesFilesInTheFolderWithTheExtension) {
  const TemporaryFolder folder;
  folder.write("plan.dwg", "");
  FileChoice choice;
  choice.title = L"Title";
  choice.folder = folder.path().wstring();
  choice.defaultExtension = L"dwg";
  choice.mustExist = true;
  {
    const Typed typed("missing\nplan\n");
    EXPECT_EQ(TerminalDesktop().chooseFile(choice), folder.wide("plan.dwg"));
  }
  choice.open = false;
  choice.mustExist = false;
  choice.name = L"plan.dwg";
  {
    const Typed typed("\nno\n\nyes\n");
    EXPECT_EQ(TerminalDesktop().chooseFile(choice), folder.wide("plan.dwg")) << "asked before it is replaced";
  }
  const Typed typed("");
  EXPECT_EQ(TerminalDesktop().chooseFile(choice), std::nullopt);
}

TEST(TerminalDesktop, ShowsProgressInOneLine) {
  std::ostringstream errors;
  std::streambuf* const former = std::cerr.rdbuf(errors.rdbuf());
  TerminalDesktop desktop;
  desktop.setMainWindow({L"Title", true, true, L"Work", -2147483647, 2147483647, 0});
  desktop.setMainWindow({L"Title", true, true, L"Work", 0, 200, 1});
  desktop.setMainWindow({L"Other", true, true, L"Work", 0, 200, 0});
  desktop.setMainWindow({L"Other", true, true, L"W", 0, 0, 99});
  desktop.setMainWindow({L"Other", true, false, L"W", 0, 0, 99});
  std::cerr.rdbuf(former);
  EXPECT_EQ(errors.str(), "\rWork 50%\rWork 0% \rW 100% \n");
}

TEST(FileChoice, FinishesWhatAPersonTyped) {
  FileChoice choice;
  choice.folder = L"/nowhere/";
  choice.defaultExtension = L"dxf";
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"a", L"/nowhere/a.dxf"}, {L"a.b", L"/nowhere/a.b"}, {L"x.y/a", L"/nowhere/x.y/a.dxf"},
      {L"/a", L"/a.dxf"},        {L"C:\\a", L"C:\\a.dxf"},  {L"", L""}};
  for (const auto& [typed, path] : cases) EXPECT_EQ(finishedChoice(choice, typed), path);
}

TEST(Timers, MayStopOneAnother) {
  TerminalDesktop desktop;
  int ticks = 0;
  unsigned second = 0;
  const auto start = std::chrono::steady_clock::now();
  const unsigned first = desktop.startTimer(std::chrono::milliseconds(0), [&] {
    ++ticks;
    desktop.stopTimer(second);
  });
  second = desktop.startTimer(std::chrono::milliseconds(0), [&] { ticks += 100; });
  desktop.runTimers(start + std::chrono::seconds(1));
  EXPECT_EQ(ticks, 1);
  desktop.stopTimer(first);
  desktop.runTimers(start + std::chrono::seconds(2));
  EXPECT_EQ(ticks, 1);
}

TEST(ComputerName, IsTheFirstPartOfTheHostsName) {
  EXPECT_EQ(computerNameOfHost(L"drawing-office-workstation-7"), L"drawing-office-");
  EXPECT_EQ(computerNameOfHost(L"plotter.example.com"), L"plotter");
  EXPECT_EQ(computerNameOfHost(L""), L"");
}

}  // namespace
