#include "host/dialogs/shell_words.h"

#include <gtest/gtest.h>

#include "platform/desktop/scripted.h"
#include "tests/support/temporary_folder.h"

namespace {

/// Keeps what it is to show or open.
class Shell : public platform::ScriptedDesktop {
 public:
  Shell() : ScriptedDesktop(nullptr) {}
  bool showInFolder(const std::wstring& folder, const std::vector<std::wstring>& files) override {
    done = L"show " + folder + L" " + files.at(0);
    return true;
  }
  int openDocument(const std::wstring&, const std::wstring& target) override {
    done = L"open " + target;
    return platform::opened;
  }
  std::wstring done;
};

TEST(StartApp, ShowsFilesAndOpensDocumentsButRunsNothing) {
  auto made = std::make_unique<Shell>();
  Shell& shell = *made;
  platform::setDesktop(std::move(made));
  const TemporaryFolder folder;
  folder.write("report 1.zip", "");
  const std::wstring file = folder.wide("report 1.zip"), place = folder.path().wstring();
  struct Case {
    std::wstring command, file, done;
  };
  const Case cases[] = {
      {L"explorer.exe /select," + file, L"", L"show " + place + L" " + file},
      {L"Explorer.EXE /Select,\"" + file + L"\"", L"", L"show " + place + L" " + file},
      {L"explorer.exe", place, L"open " + place},
      {L"explorer " + place, L"", L"open " + place},
      {L"https://korvane.example/", L"", L"open https://korvane.example/"},
      {L"explorer.exe /select," + file + L".none", L"", L""},
      {L"explorer.exe", L"", L""},
      {L" ", L"", L""},
  };
  for (const Case& each : cases) {
    shell.done.clear();
    EXPECT_EQ(host::startByWords(each.command, each.file), !each.done.empty());
    EXPECT_EQ(shell.done, each.done);
  }
  platform::setDesktop(nullptr);
}

}  // namespace
