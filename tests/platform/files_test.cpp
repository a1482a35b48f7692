#include "platform/files/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

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

TEST(WholeFiles, TakeAwayWhatWasLeftAndNothingElse) {
  const TemporaryFolder folder;
  for (const char* left : {".zarbo-0123456789ab", ".zarbo-zzzzzzzzzzzz"})
    folder.write(left, "left without a lock");
  const char* const kept[] = {".zarbo-notes", ".zarbo-0123456789AB", ".zarbo-0123456789abc",
                              ".zarbo-growing00000"};
  for (const char* name : kept) folder.write(name, "the user's own, or growing");
  const int lock = open((folder / ".zarbo-growing00000").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(lock, LOCK_EX | LOCK_NB), 0);
  WholeFile other(folder / "other.dxf");
  ASSERT_TRUE(other.write("still growing"));
  WholeFile file(folder / "plan.dxf");
  EXPECT_TRUE(file.write("whole") && file.commit() && other.commit());
  for (const char* name : kept) EXPECT_TRUE(std::filesystem::exists(folder / name)) << name;
  EXPECT_EQ(folder.read("plan.dxf"), "whole");
  EXPECT_EQ(folder.read("other.dxf"), "still growing");
  EXPECT_EQ(folder.count(), std::size(kept) + 2);
  close(lock);
}

TEST(Files, NeverWaitAtAPipe) {
  const TemporaryFolder folder;
  folder.write("a", "contents");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  EXPECT_FALSE(copyFile(folder.wide("pipe"), folder.wide("b")));
  EXPECT_FALSE(copyFile(folder.wide("a"), folder.wide("pipe")));
  EXPECT_FALSE(modificationTime(folder.wide("pipe")));
  EXPECT_FALSE(readWhole(folder / "pipe"));
  EXPECT_TRUE(std::filesystem::is_fifo(folder / "pipe"));
}

TEST(WholeFiles, ReplacePlainFilesThatMayBeWrittenOnly) {
  const TemporaryFolder folder;
  folder.write("plain", "old");
  folder.write("locked", "old");
  std::filesystem::permissions(folder / "locked", std::filesystem::perms::owner_read);
  std::filesystem::create_directory(folder / "folder");
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink("plain", folder / "link");
  std::filesystem::create_symlink("locked", folder / "link to locked");
  std::filesystem::create_symlink("nowhere", folder / "dangling");
  const size_t count = folder.count();
  const auto write = [&](const std::string& path) {
    WholeFile file(path);
    return file.write("new") && file.commit();
  };
  for (const char* name : {"locked", "folder", "pipe", "link to locked", "dangling", ""})
    EXPECT_FALSE(write(folder / name)) << name;
  EXPECT_FALSE(write("/dev/null"));
  EXPECT_EQ(folder.read("locked"), "old");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "dangling"));
  EXPECT_TRUE(write(folder / "link"));
  EXPECT_EQ(folder.read("plain"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(folder.count(), count);
}

TEST(WholeFiles, LeaveNothingOfAKilledWriter) {
  const TemporaryFolder folder;
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    WholeFile file(folder / "target");
    file.write("half");
    if (write(ready[1], "", 1) == 1) pause();
    _exit(1);
  }
  char byte;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_EQ(folder.count(), 0u);
}

}  // namespace
