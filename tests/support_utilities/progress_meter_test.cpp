#include "zarbo/support/progress_meter.h"

#include <gtest/gtest.h>

#include <memory>

#include "platform/desktop/scripted.h"

namespace {

using namespace std::chrono_literals;

TEST(ProgressMeters, ShowWhatTakesLongAndGiveBackWhatStoodThere) {
  platform::setDesktop(std::make_unique<platform::ScriptedDesktop>(nullptr));
  platform::Desktop& desktop = platform::desktop();
  platform::Desktop::MainWindow before;
  before.meterShown = true, before.progressLabel = L"Former", before.progress = 7;
  desktop.setMainWindow(before);
  {
    const auto begun = ProgressMeter::Clock::now();
    ProgressMeter meter(L"Sending", begun);
    meter.show(1, 4, begun + 499ms);
    EXPECT_EQ(desktop.mainWindow().progressLabel, L"Former") << "not within half a second";
    meter.show(1, 4, begun + 500ms);
    EXPECT_EQ(desktop.mainWindow().progressLabel, L"Sending");
    EXPECT_EQ(desktop.mainWindow().progress, 250);
    meter.show(2, 4, begun + 549ms);
    EXPECT_EQ(desktop.mainWindow().progress, 250) << "at most 20 times a second";
    meter.show(3, 4, begun + 550ms);
    EXPECT_EQ(desktop.mainWindow().progress, 750);
    meter.show(3, 0, begun + 700ms);
    EXPECT_EQ(desktop.mainWindow().progress, 0) << "a total that isn't known";
  }
  EXPECT_EQ(desktop.mainWindow().progressLabel, L"Former");
  EXPECT_EQ(desktop.mainWindow().progress, 7);
  platform::setDesktop(nullptr);
}

}  // namespace
