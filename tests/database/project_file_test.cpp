#include "zarbo/database/project_file.h"

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace {

TEST(ProjectFile, IsTheOnlyOneOfItsFolder) {
  const TemporaryFolder folder;
  const std::wstring path = folder.path().wstring();
  for (const char* shipped : {"52-kv library.kv", "Office_Master.kv", "office_standards.KV", "other.txt"})
    folder.write(shipped, "");
  std::filesystem::create_directory(folder / "folder.kv");
  EXPECT_EQ(findProjectFile(path, L""), L"");
  folder.write("old.mdb", "");
  EXPECT_EQ(findProjectFile(path, L""), path + L"/old.mdb");
  folder.write("Office.kv", "");
  EXPECT_EQ(findProjectFile(path, L""), path + L"/Office.kv") << "the newer kind comes first";
  folder.write("Tower.kv", "");
  EXPECT_EQ(findProjectFile(path, L"tower"), path + L"/Tower.kv");
  EXPECT_EQ(findUniqueFile(path, L"", L"kv"), L"") << "two are no answer";
  EXPECT_EQ(findProjectFile(path, L""), path + L"/old.mdb");
  EXPECT_EQ(findProjectFile(path + L"/missing", L""), L"");
}

}  // namespace
