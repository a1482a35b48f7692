#include <random>

#include "tests/mdb/mdb_support.h"
#include "tests/mdb/sample_file.h"

// The program itself, as people and the engine run it: whatever a file holds, it ends with a database or an
// error.

namespace {

class DamageTest : public testing::Test {
 protected:
  Ran import(const std::vector<uint8_t>& bytes) {
    std::filesystem::remove(target);
    return runCommand("timeout 100 '" ZARBO_MDB "' import '" + write(folder.file("damaged.mdb"), bytes) +
                      "' '" + target + "' 2>&1");
  }
  /// Exit status 0 with a target, or an error in words and none.
  void expectAnswer(const std::vector<uint8_t>& bytes, const std::string& what) {
    const Ran ran = import(bytes);
    ASSERT_NE(ran.status, -1) << what << ": " << ran.output;
    EXPECT_EQ(std::filesystem::exists(target), ran.status == 0) << what;
    EXPECT_EQ(folder.entries(), ran.status == 0 ? 2u : 1u) << what << ": something was left behind";
    if (ran.status != 0) {
      EXPECT_NE(ran.output.find("damaged.mdb: "), std::string::npos) << what << ": " << ran.output;
    }
    failures += ran.status != 0;
  }

  Folder folder;
  std::string target = folder.file("made.kv");
  std::vector<uint8_t> good = sampleJetFile().finish();
  int failures = 0;
};

TEST_F(DamageTest, CutAnywhere) {
  for (size_t length = 0; length < good.size(); length += 3001)
    expectAnswer({good.begin(), good.begin() + static_cast<long>(length)},
                 "cut at " + std::to_string(length));
  EXPECT_GT(failures, 10);
}

TEST_F(DamageTest, BytesChangedAnywhere) {
  std::mt19937 random(7);
  for (int round = 0; round < 150; ++round) {
    std::vector<uint8_t> bytes = good;
    for (int i = 0; i < 1 + round % 40; ++i) bytes[random() % bytes.size()] = static_cast<uint8_t>(random());
    expectAnswer(bytes, "round " + std::to_string(round));
  }
  for (size_t page = 0; page * 4096 < good.size(); ++page) {
    std::vector<uint8_t> bytes = good;
    std::fill_n(bytes.begin() + static_cast<long>(page * 4096), 4096, uint8_t{0xFF});
    expectAnswer(bytes, "page " + std::to_string(page) + " lost");
  }
  EXPECT_GT(failures, 10);
}

TEST_F(DamageTest, ATableThatIsNotWholeIsNamedAndCanBeLeftOut) {
  // The row of "Bath" lies with that of "Hall" on a page of its own.
  const std::vector<uint8_t> name{0xFF, 0xFE, 'H', 'a', 'l', 'l'};
  const auto found = std::search(good.begin(), good.end(), name.begin(), name.end());
  ASSERT_NE(found, good.end());
  std::vector<uint8_t> bytes = good;
  const long page = (found - good.begin()) / 4096 * 4096;
  std::fill_n(bytes.begin() + page, 4096, uint8_t{0});
  const Ran refused = import(bytes);
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.output.find("The table 'Rooms' can't be read: it says that it has 2 rows"),
            std::string::npos)
      << refused.output;
  const Ran left = runCommand("'" ZARBO_MDB "' import --keep-going '" + folder.file("damaged.mdb") + "' '" +
                              target + "' 2>&1");
  EXPECT_EQ(left.status, 0) << left.output;
  EXPECT_NE(left.output.find("The table 'Rooms' is not whole"), std::string::npos) << left.output;
  EXPECT_NE(left.output.find("4 tables"), std::string::npos) << left.output;
}

TEST_F(DamageTest, WrongUse) {
  const std::string source = write(folder.file("damaged.mdb"), good);
  const auto run = [](const std::string& words) { return runCommand("'" ZARBO_MDB "' " + words + " 2>&1"); };
  EXPECT_EQ(run("").status, 2);
  EXPECT_EQ(run("import '" + source + "'").status, 2);
  EXPECT_EQ(run("info '" + folder.file("none.mdb") + "'").status, 1);
  EXPECT_EQ(run("info /etc/passwd").output, "zarbo-mdb: /etc/passwd: '/etc/passwd' is no Jet database\n");
  EXPECT_NE(run("export '" + source + "' Nothing").output.find("there is no table 'Nothing'"),
            std::string::npos);
  EXPECT_EQ(run("export '" + source + "' doors").output, "id,room,wall\n1,1,3\n2,5,3\n");
  EXPECT_EQ(run("import '" + source + "' '" + source + "'").status, 1) << "an existing target";
  EXPECT_EQ(std::filesystem::file_size(source), good.size());
  EXPECT_EQ(run("import '" + source + "' /nowhere/x.kv").status, 1);
}

}  // namespace
