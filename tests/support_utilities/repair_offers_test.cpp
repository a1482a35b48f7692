#include "zarbo/support/repair_offers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/console/command_line.h"
#include "platform/desktop/scripted.h"

namespace {

using platform::BoxAnswer;
using testing::HasSubstr;

/// A scripted desktop whose opener answers as told.
class Opener : public platform::ScriptedDesktop {
 public:
  explicit Opener(int answer) : ScriptedDesktop(nullptr), answer_(answer) {}
  int openDocument(const std::wstring& verb, const std::wstring& target) override {
    opened = verb + L" " + target;
    return answer_;
  }
  std::wstring opened;

 private:
  int answer_;
};

class RepairOffers : public testing::Test {
 protected:
  ~RepairOffers() override { platform::setDesktop(nullptr); }

  Opener& useDesktop(int openerAnswer, std::initializer_list<BoxAnswer> answers) {
    auto made = std::make_unique<Opener>(openerAnswer);
    Opener& desktop = *made;
    for (const BoxAnswer each : answers) desktop.queueAnswer(each);
    platform::setDesktop(std::move(made));
    host::commandLine().setShown(false);
    host::commandLine().takeRecord();
    return desktop;
  }
};

TEST_F(RepairOffers, OtherResultsPassInSilence) {
  Opener& desktop = useDesktop(platform::opened, {});
  for (const int result : {0, 1, 2, 4}) EXPECT_EQ(dialogGuard(result), result);
  EXPECT_TRUE(desktop.takeBoxes().empty());
}

TEST_F(RepairOffers, NothingIsOpenedWithoutAYes) {
  Opener& desktop = useDesktop(platform::opened, {BoxAnswer::no});
  EXPECT_EQ(dialogGuard(-1), -1);
  const auto boxes = desktop.takeBoxes();
  ASSERT_EQ(boxes.size(), 1u);
  EXPECT_EQ(
      boxes[0].box.text,
      L"Dialog box could not be created.\nComponents need to be installed.\nWould you like to download a "
      L"fix to this error?");
  EXPECT_EQ(boxes[0].box.style, platform::yesNoBox);
  EXPECT_EQ(desktop.opened, L"");
}

TEST_F(RepairOffers, TellsHowItWent) {
  Opener& desktop = useDesktop(platform::opened, {BoxAnswer::yes, BoxAnswer::ok});
  EXPECT_EQ(dialogGuard(3), 3);
  EXPECT_THAT(desktop.opened,
              testing::AllOf(testing::StartsWith(L"OPEN https://"), testing::EndsWith(L"Partpack.exe")));
  EXPECT_THAT(
      desktop.takeBoxes().back().box.text,
      HasSubstr(L"Finish downloading Partpack.exe.\nClose AutoCAD.\nRun Partpack.exe.\nRestart AutoCAD."));
  EXPECT_THAT(host::commandLine().takeRecord(), HasSubstr(L"\nDownloading https://"));

  Opener& failing = useDesktop(32, {BoxAnswer::yes, BoxAnswer::ok});
  databaseDriverFailure();
  const auto boxes = failing.takeBoxes();
  EXPECT_EQ(boxes.front().box.caption, L"Korvane Error");
  EXPECT_EQ(boxes.front().box.style, 4u + 16u);
  EXPECT_THAT(boxes.back().box.text, HasSubstr(L"Error downloading Mendpack.exe.\nContact Korvane Software"));
  EXPECT_THAT(host::commandLine().takeRecord(), HasSubstr(L"\nError downloading https://"));
}

}  // namespace
