#include "platform/settings/settings.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;

class SettingsTest : public testing::Test {
 protected:
  void SetUp() override { setSettingsFolder(folder.path()); }
  void TearDown() override { setSettingsFolder({}); }
  TemporaryFolder folder;
};

TEST_F(SettingsTest, OpensSectionsAndDoesNotCreateThem) {
  EXPECT_EQ(writeSetting(L"A\\B", L"x", L"1"), SettingStatus::missingSection);
  EXPECT_FALSE(subsections(L"A"));
  ASSERT_EQ(makeSection(L"A\\B"), SettingStatus::done);
  EXPECT_EQ(writeSetting(L"a\\b", L"Name", L"one \"two\"\\\n\r \u00e4"), SettingStatus::done);
  EXPECT_EQ(readSetting(L"A\\B", L"NAME"), L"one \"two\"\\\n\r \u00e4");
  EXPECT_EQ(writeSetting(L"A", L"x", L"above"), SettingStatus::done) << "the section above is there, too";
  EXPECT_EQ(writeSetting(L"A\\B", L"nAME", L"2"), SettingStatus::done);
  EXPECT_EQ(readSetting(L"A\\B", L"Name"), L"2");
  EXPECT_EQ(readSetting(L"A\\B", L"x"), std::nullopt);
  EXPECT_EQ(subsections(L"A"), std::vector<std::wstring>{L"B"});
  EXPECT_EQ(makeSection(L"bad\nname"), SettingStatus::badName);
}

TEST_F(SettingsTest, KeepsWhatItCannotRead) {
  folder.write("settings.txt",
               "# mine\n[S]\n\"a\"=\"1\"\nnonsense \xff\n\"b\"=\"unfinished\n\"c\" = \"3\"\n");
  EXPECT_EQ(readSetting(L"S", L"a"), L"1");
  EXPECT_EQ(readSetting(L"S", L"b"), std::nullopt);
  EXPECT_EQ(readSetting(L"S", L"c"), L"3");
  ASSERT_EQ(writeSetting(L"S", L"a", L"2"), SettingStatus::done);
  EXPECT_EQ(folder.read("settings.txt"),
            "# mine\n[S]\n\"a\"=\"2\"\nnonsense \xff\n\"b\"=\"unfinished\n\"c\" = \"3\"\n");
}

TEST_F(SettingsTest, ReadsWhatDamagedFilesStillTell) {
  const std::pair<std::string, std::optional<std::wstring>> files[] = {
      {"\xEF\xBB\xBF[S]\r\n\"a\"=\"1\"\r\n", L"1"},
      {"[S]\n\"a\"=\"1\"", L"1"},
      {"[S]\n\"a\"=\"1\" # no comment\n", std::nullopt},
      {"[S\n\"a\"=\"1\"\n", std::nullopt},
      {"[S]\n\"a\"\"1\"\n\"a\"=1\n\"a=\"1\"\n=\"1\"\n", std::nullopt},
      {std::string("[S]\n\0\n\"a\"=\"\0\"\n", 13), std::wstring(1, L'\0')},
      {"[S]\n\"a\"=\"1\"\n[T]\n\"a\"=\"2\"\n[s]\n\"A\"=\"3\"\n", L"3"},
      {"[S]\n\"a\"=\"\xff\xfe\"\n", L"\uFFFD\uFFFD"},
      {"", std::nullopt},
  };
  for (const auto& [text, value] : files) {
    folder.write("settings.txt", text);
    EXPECT_EQ(readSetting(L"S", L"a"), value) << text;
    ASSERT_EQ(makeSection(L"New"), SettingStatus::done);
    ASSERT_EQ(writeSetting(L"New", L"b", L"2"), SettingStatus::done);
    EXPECT_EQ(readSetting(L"New", L"b"), L"2") << text;
    EXPECT_EQ(readSetting(L"S", L"a"), value) << text;
  }
}

TEST_F(SettingsTest, TakesNoStoreForAnEmptyOneThatItCannotRead) {
  std::filesystem::create_directory(folder / "settings.txt");
  EXPECT_EQ(readSetting(L"S", L"a"), std::nullopt);
  EXPECT_EQ(makeSection(L"S"), SettingStatus::refused);
  std::filesystem::remove(folder / "settings.txt");
  ASSERT_EQ(mkfifo((folder / "settings.txt").c_str(), 0600), 0);
  EXPECT_EQ(readSetting(L"S", L"a"), std::nullopt) << "and doesn't wait for one who writes into the pipe";
  EXPECT_EQ(makeSection(L"S"), SettingStatus::refused);
}

pid_t startWriter(int writer, int count) {
  const pid_t child = fork();
  if (child != 0) return child;
  for (int i = 0; i < count; ++i)
    writeSetting(L"S", std::to_wstring(writer) + L"." + std::to_wstring(i), L"value");
  _exit(0);
}

TEST_F(SettingsTest, LosesNothingBetweenSeveralWriters) {
  ASSERT_EQ(makeSection(L"S"), SettingStatus::done);
  constexpr int writers = 4, each = 25;
  for (int i = 0; i < writers; ++i) startWriter(i, each);
  while (wait(nullptr) > 0) {
  }
  for (int i = 0; i < writers * each; ++i)
    EXPECT_EQ(readSetting(L"S", std::to_wstring(i / each) + L"." + std::to_wstring(i % each)), L"value");
}

TEST_F(SettingsTest, SurvivesKilledWriters) {
  ASSERT_EQ(makeSection(L"S"), SettingStatus::done);
  ASSERT_EQ(writeSetting(L"S", L"kept", L"yes"), SettingStatus::done);
  for (int i = 0; i < 20; ++i) {
    const pid_t child = startWriter(i, 1000);
    usleep(2000 + 700 * i);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    EXPECT_EQ(readSetting(L"S", L"kept"), L"yes");
  }
  EXPECT_EQ(writeSetting(L"S", L"after", L"yes"), SettingStatus::done) << "no lock is left";
}

}  // namespace
