#include "platform/archive/archive_writer.h"

#include <gtest/gtest.h>
#include <zip.h>

#include "tests/support/temporary_folder.h"

namespace {

using namespace platform;

struct Item {
  std::string name;
  std::string text;
  uint32_t mode = 0;  ///< of a file on a system that has them
};

void writeZip(const std::filesystem::path& path, const std::vector<Item>& items) {
  zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  for (const Item& item : items) {
    zip_source_t* const source = zip_source_buffer(archive, item.text.data(), item.text.size(), 0);
    const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, item.name.c_str(), source, 0));
    if (item.mode != 0) zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, item.mode << 16);
  }
  zip_close(archive);
}

bool extract(const TemporaryFolder& folder, const ExtractLimits& limits = {}) {
  ArchiveWriter reader;
  return reader.open(folder.wide("a.zip")) && reader.extractAll(folder.wide("out"), limits);
}

TEST(Archive, RoundTripOfFilesAndFolders) {
  const TemporaryFolder folder;
  folder.write("one.txt", "first");
  std::filesystem::create_directories(folder / "sub/empty");
  folder.write("sub/two.txt", std::string(300000, 'x'));
  ArchiveWriter writer;
  ASSERT_TRUE(writer.create(folder.wide("a.zip")));
  EXPECT_TRUE(writer.append(folder.wide("one.txt"), false));
  EXPECT_FALSE(writer.append(folder.wide("one.txt"), false)) << "the name is there already";
  EXPECT_TRUE(writer.append(folder.wide("sub"), true));
  ASSERT_TRUE(writer.writeAndClose());
  ASSERT_TRUE(extract(folder));
  const std::string kept = "out" + folder.path().native() + "/sub/";
  EXPECT_EQ(folder.read("out/one.txt"), "first");
  EXPECT_EQ(folder.read(kept + "two.txt").size(), 300000u);
  EXPECT_TRUE(std::filesystem::is_directory(folder / (kept + "empty")));
  EXPECT_TRUE(extract(folder)) << "once more, over what is there";
}

TEST(Archive, LeavesNothingOfHostileArchives) {
  const std::vector<std::vector<Item>> archives = {
      {{"ok", "1"}, {"../evil", "2"}},      {{"ok", "1"}, {"/tmp/evil", "2"}},
      {{"ok", "1"}, {"a/../../evil", "2"}}, {{"ok", "1"}, {"..\\evil", "2"}},
      {{"ok", "1"}, {"C:\\evil", "2"}},     {{"ok", "1"}, {"\\\\server\\evil", "2"}},
      {{"link", "/etc", 0120777}},          {{"name", "1"}, {"NAME", "2"}},
      {{"a", "1"}, {"a/b", "2"}},           {{"ok", "1"}, {"big", std::string(2000, 'x')}},
  };
  for (const auto& items : archives) {
    const TemporaryFolder folder;
    writeZip(folder / "a.zip", items);
    EXPECT_FALSE(extract(folder, {100, 1000})) << items.back().name;
    EXPECT_EQ(folder.count(), 1u) << items.back().name;
  }
  const TemporaryFolder folder;
  writeZip(folder / "a.zip", {{"a", "1"}, {"b", "2"}});
  EXPECT_FALSE(extract(folder, {1, 1000})) << "too many entries";
}

TEST(Archive, RefusesEncryptedEntriesAndSizesThatLie) {
  const TemporaryFolder folder;
  const std::string text(5000, 'x');
  zip_t* const archive = zip_open((folder / "a.zip").c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
  zip_file_add(archive, "secret", zip_source_buffer(archive, text.data(), text.size(), 0), 0);
  zip_file_set_encryption(archive, 0, ZIP_EM_TRAD_PKWARE, "password");
  ASSERT_EQ(zip_close(archive), 0);
  EXPECT_FALSE(extract(folder));

  // A bomb says that it is small: the size stands in the local header and in the directory.
  writeZip(folder / "a.zip", {{"bomb", text}});
  std::string bytes = folder.read("a.zip");
  const std::string size("\x88\x13\0\0", 4), lie("\x0a\0\0\0", 4);
  int places = 0;
  for (size_t at = 0; (at = bytes.find(size, at)) != std::string::npos; ++places) bytes.replace(at, 4, lie);
  ASSERT_EQ(places, 2);
  folder.write("a.zip", bytes);
  EXPECT_FALSE(extract(folder));
  EXPECT_EQ(folder.count(), 1u);
}

TEST(Archive, KeepsTheTargetWhenSomethingIsBroken) {
  const TemporaryFolder folder;
  writeZip(folder / "a.zip", {{"file", std::string(5000, 'x')}, {"other", "text"}});
  std::filesystem::create_directory(folder / "out");
  folder.write("out/file", "mine");
  std::string bytes = folder.read("a.zip");
  const std::string whole = bytes;
  for (size_t i = 40; i < 60; ++i) bytes[i] ^= 0x5A;
  folder.write("a.zip", bytes);
  EXPECT_FALSE(extract(folder));
  EXPECT_EQ(folder.read("out/file"), "mine");
  folder.write("a.zip", whole.substr(0, whole.size() / 2));
  EXPECT_FALSE(extract(folder));
  folder.write("a.zip", whole);
  std::filesystem::create_directory_symlink(folder.path(), folder / "out/sub");
  writeZip(folder / "a.zip", {{"sub/evil", "1"}});
  EXPECT_FALSE(extract(folder)) << "a link in the target leads outside";
  EXPECT_FALSE(std::filesystem::exists(folder / "evil"));
}

TEST(Archive, AFailedArchiveKeepsTheOldOne) {
  const TemporaryFolder folder;
  folder.write("a.zip", "old");
  folder.write("file", "text");
  {
    ArchiveWriter writer;
    ASSERT_TRUE(writer.create(folder.wide("a.zip")));
    EXPECT_TRUE(writer.append(folder.wide("file"), false));
    EXPECT_FALSE(writer.append(folder.wide("missing"), false));
  }
  EXPECT_EQ(folder.read("a.zip"), "old");
  EXPECT_EQ(folder.count(), 2u);
  ArchiveWriter writer;
  ASSERT_TRUE(writer.create(folder.wide("a.zip")));
  EXPECT_TRUE(writer.writeAndClose()) << "an empty archive";
  EXPECT_TRUE(extract(folder));
}

TEST(Archive, RefusesAtCreationWhatCouldNotBeExtracted) {
  const TemporaryFolder folder;
  std::filesystem::create_directories(folder / "sub/deep");
  for (const char* name : {"Plan", "sub/PLAN", "a:b", "sub/deep/x"}) folder.write(name, "text");
  ArchiveWriter writer;
  ASSERT_TRUE(writer.create(folder.wide("a.zip")));
  EXPECT_TRUE(writer.append(folder.wide("Plan"), false));
  EXPECT_FALSE(writer.append(folder.wide("sub/PLAN"), false)) << "one name without regard to case";
  EXPECT_FALSE(writer.append(folder.wide("a:b"), false));
  EXPECT_TRUE(writer.append(folder.wide("sub/deep/../deep"), true)) << "steps upward are taken before";
  ASSERT_TRUE(writer.writeAndClose());
  EXPECT_TRUE(extract(folder));
  EXPECT_EQ(folder.read("out" + folder.path().native() + "/sub/deep/x"), "text");
}

TEST(Archive, ReplacesPlainFilesThatMayBeWrittenOnly) {
  const TemporaryFolder folder;
  folder.write("locked.zip", "old");
  std::filesystem::permissions(folder / "locked.zip", std::filesystem::perms::owner_read);
  std::filesystem::create_symlink("nowhere", folder / "dangling.zip");
  std::filesystem::create_directory(folder / "folder.zip");
  ArchiveWriter writer;
  for (const char* name : {"locked.zip", "dangling.zip", "folder.zip", ""})
    EXPECT_FALSE(writer.create(folder.wide(name))) << name;
  EXPECT_FALSE(writer.create(L""));
  EXPECT_FALSE(writer.create(L"/dev/null"));
  folder.write("a.zip", "old");
  std::filesystem::create_symlink("a.zip", folder / "link.zip");
  ASSERT_TRUE(writer.create(folder.wide("link.zip")) && writer.writeAndClose());
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link.zip"));

  writeZip(folder / "a.zip", {{"mine", "theirs"}, {"other", "text"}});
  std::filesystem::create_directory(folder / "out");
  folder.write("out/mine", "mine");
  std::filesystem::permissions(folder / "out/mine", std::filesystem::perms::owner_read);
  EXPECT_FALSE(extract(folder));
  EXPECT_EQ(folder.read("out/mine"), "mine");
  EXPECT_FALSE(std::filesystem::exists(folder / "out/other"));
}

TEST(Archive, GivesFilesTheirTimesBack) {
  using namespace std::chrono_literals;
  const TemporaryFolder folder;
  folder.write("file", "text");
  const auto time = std::filesystem::file_time_type::clock::now() - 10000h;
  std::filesystem::last_write_time(folder / "file", time);
  ArchiveWriter writer;
  ASSERT_TRUE(writer.create(folder.wide("a.zip")) && writer.append(folder.wide("file"), false) &&
              writer.writeAndClose() && extract(folder));
  const auto back = std::filesystem::last_write_time(folder / "out/file");
  EXPECT_LE(back - time, 2s);
  EXPECT_LE(time - back, 2s);
}

}  // namespace
