#include <gtest/gtest.h>

#include "platform/process/programs.h"

namespace {

TEST(Programs, RunToTheirEndAndTellWhatWentWrong) {
  struct Row {
    std::vector<std::string> words;
    int status;
    const char* errors;
  };
  const Row rows[] = {
      {{"sh", "-c", "echo out; echo wrong >&2; exit 3"}, 3, "wrong\n"},
      {{"/bin/true"}, 0, ""},
      {{"sh", "-c", "cat; echo \"$0\" >&2", "a 'b' $c"}, 0, "a 'b' $c\n"},  // no input, and no shell between
      {{"sh", "-c", "kill -9 $$"}, -1, ""},
      {{"/no/such/program"}, -1, ""},
  };
  for (const Row& row : rows) {
    std::string errors;
    EXPECT_EQ(runProgram(row.words, errors), row.status) << row.words.back();
    EXPECT_EQ(errors, row.errors) << row.words.back();
  }
}

TEST(Programs, ThatPrintMuchDontWaitForever) {
  std::string errors;
  EXPECT_EQ(runProgram({"sh", "-c", "head -c 1000000 /dev/zero >&2"}, errors), 0);
  EXPECT_EQ(errors.size(), 1000000u);
}

TEST(Programs, ThatAreNotThereDontStart) {
  EXPECT_TRUE(startProgram({"/bin/true"}));
  EXPECT_FALSE(startProgram({"/no/such/program"}));
}

}  // namespace
