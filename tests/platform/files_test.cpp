#include "platform/files/files.h"

#include <sys/wait.h>

#include <gtest/gtest.h>

#include <csignal>
#include "platform/files/whole_file.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;

TEST(Files, MatchesPatternsByTheSystemsRules) {
  struct Case {
    const wchar_t *pattern, *name;
    bool matches;
  };
  const Case cases[] = {
      {L"*.*", L"noextension", true},       {L"*", L"a.b.c", true},        {L"*.dwg", L"PLAN.DWG", true},
      {L"*.dwg", L"plan.dwgx", false},      {L"a?.txt", L"ab.txt", true},  {L"a?.txt", L"a.txt", true},
      {L"a?.txt", L"abc.txt", false},       {L"ab??", L"ab", true},        {L"?b", L"b", false},
      {L"*.", L"noextension", true},        {L"*.", L"a.b", false},        {L"file.*", L"file", true},
      {L"file.?", L"file", true},           {L"*a*b*", L"xxaxxbxx", true}, {L"*a*b*", L"ba", false},
      {L"\u00c4.txt", L"\u00e4.TXT", true},
  };
  for (const Case& each : cases)
    EXPECT_EQ(matchesPattern(each.name, each.pattern), each.matches) << each.pattern << " " << each.name;
  const std::wstring longName(5000, L'a');
  EXPECT_FALSE(matchesPattern(longName, L"*a*a*a*a*a*a*a*a*b")) << "and in no more than an instant";
}

TEST(Files, CopiesWholeFilesAndNeverOverAReadOnlyOne) {
  const TemporaryFolder folder;
  folder.write("a", "contents");
  folder.write("b", "old");
  EXPECT_TRUE(copyFile(folder.wide("a"), folder.wide("b")));
  EXPECT_EQ(folder.read("b"), "contents");
  EXPECT_EQ(modificationTime(folder.wide("a")), modificationTime(folder.wide("b")));
  EXPECT_TRUE(copyFile(folder.path().wstring() + L"\\a", folder.wide("c"))) << "either separator";
  std::filesystem::permissions(folder / "b", std::filesystem::perms::owner_read);
  EXPECT_TRUE(isReadOnly(folder.wide("b")));
  EXPECT_TRUE(isReadOnly(folder.wide("missing")));
  EXPECT_FALSE(copyFile(folder.wide("c"), folder.wide("b")));
  EXPECT_FALSE(deleteFile(folder.wide("b")));
  EXPECT_FALSE(copyFile(folder.wide("a"), folder.wide("a")));
  EXPECT_FALSE(copyFile(folder.path().wstring(), folder.wide("d"))) << "a folder";
  EXPECT_FALSE(copyFile(L"/proc/self/mem", folder.wide("d"))) << "reading fails half way";
  EXPECT_FALSE(moveFile(folder.wide("a"), folder.wide("c"))) << "something is there";
  EXPECT_TRUE(moveFile(folder.wide("a"), folder.wide("d")));
  EXPECT_EQ(folder.count(), 3u) << "no half files";
}

TEST(WholeFiles, TakeAwayWhatAKilledProcessLeftAndNothingElse) {
  const TemporaryFolder folder;
  folder.write(".zarbo-notes", "the user's own");
  folder.write(".zarbo-AbCdEf", "left without a lock");
  const pid_t child = fork();
  if (child == 0) {
    platform::WholeFile file(folder / "plan.dxf");
    file.write("half a draw");
    raise(SIGKILL);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status));
  platform::WholeFile other(folder / "other.dxf");
  ASSERT_TRUE(other.write("still growing"));
  platform::WholeFile file(folder / "plan.dxf");
  EXPECT_EQ(folder.count(), 3u) << "two growing files, and the user's";
  EXPECT_TRUE(file.write("whole") && file.commit() && other.commit());
  EXPECT_EQ(folder.read("plan.dxf"), "whole");
  EXPECT_EQ(folder.read("other.dxf"), "still growing");
  EXPECT_EQ(folder.count(), 3u);
}

}  // namespace
