#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <thread>

#include "platform/settings/settings.h"
#include "tests/engine/engine_support.h"
#include "tests/engine/lossy_disk.h"
#include "tests/engine/writing_mode.h"

namespace {

using namespace std::chrono_literals;
using Clock = LossyDisk::Clock;

/// What a loss of power may take at most where writes flow.
constexpr auto bound = 500ms;

/// An answered append: the row's number and the diary's place and time at the answer.
struct Answer {
  LONG id;
  size_t event;
  Clock::time_point time;
};

struct Work {
  std::vector<Answer> answers;
  std::vector<std::pair<size_t, LONG>> safe;  // places behind which the rows up to one are on the disk
};

/// Appends in bursts with pauses, asks for durability in between, closes and opens again.
Work workOn(const std::string& path, const LossyDisk& disk, Clock::duration length) {
  Work work;
  TestEngine engine;
  EXPECT_EQ(engine.connect(path), L"OK");
  const auto durable = [&] {
    work.safe.emplace_back(disk.events(), work.answers.empty() ? 0 : work.answers.back().id);
  };
  std::mt19937 random(3);
  for (const auto end = Clock::now() + length; Clock::now() < end;) {
    EXPECT_EQ(engine.table(L"T", L"id"), 0);
    for (auto burst = random() % 120; burst > 0; --burst) {
      const std::wstring text(random() % 600, static_cast<wchar_t>(L'a' + random() % 26));
      EXPECT_EQ(engine.append({{L"s", COleVariant(text)}}), 0);
      work.answers.push_back({engine.number(L"id"), disk.events(), Clock::now()});
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(random() % 60));
    const auto next = random() % 8;
    if (next == 0) {
      EXPECT_TRUE(settled(engine));
      durable();
    } else if (next == 1) {
      VARIANT_BOOL ok;
      engine->CloseDatabase(&ok);
      durable();
      EXPECT_EQ(engine.connect(path), L"OK");
    }
  }
  VARIANT_BOOL ok;
  engine->CloseDatabase(&ok);
  durable();
  return work;
}

/// The last row that must have outlived a loss of power behind this place of the diary.
LONG surelyKept(const Work& work, size_t event, Clock::time_point time, Clock::duration mayLose) {
  LONG id = 0;
  for (const auto& [place, last] : work.safe) {
    if (place <= event) id = std::max(id, last);
  }
  for (const Answer& each : work.answers) {
    if (each.event <= event && each.time + mayLose < time) id = std::max(id, each.id);
  }
  return id;
}

void expectSound(const std::string& path, LONG atLeast, LONG atMost) {
  TestEngine engine;
  ASSERT_EQ(engine.connect(path), L"OK") << engine.error() << toUtf8(engine.errorText());
  ASSERT_EQ(engine.table(L"T", L"id"), 0);
  LONG last = 0;
  for (int code = engine.top(); code == 0; code = engine.skip(1)) {
    ASSERT_EQ(engine.number(L"id"), last + 1) << "rows are kept in the order of their answers";
    ++last;
  }
  EXPECT_GE(last, atLeast);
  EXPECT_LE(last, atMost);
}

class PowerLoss : public testing::TestWithParam<std::wstring> {};

TEST_P(PowerLoss, LeavesASoundFileWithAllButTheLastMoment) {
  const TemporaryFolder settings, folder, rests;
  const WritingMode mode(settings.file(""), GetParam());
  const char* const wanted = std::getenv("ZARBO_POWER_LOSSES");
  const int losses = wanted ? std::atoi(wanted) : 150;
  const bool flows = GetParam() == L"flow";
  {
    const TestEngine engine = TestEngine::fresh(
        folder.file("a.kv"), L"T",
        {{L"id", L"counter"}, {L"s", L"memo"}, {L"id", L"index primary"}, {L"s", L"index"}});
  }
  const LossyDisk disk(std::filesystem::path(folder.file("a.kv")).parent_path());
  const Work work = workOn(folder.file("a.kv"), disk, flows ? 1500ms : 400ms);
  ASSERT_GT(work.answers.size(), 20u);
  EXPECT_EQ(folder.count(), 1u) << "at rest it is one file";
  std::mt19937 random(17);
  size_t lost = 0;
  for (int i = 0; i < losses && !testing::Test::HasFailure(); ++i) {
    const size_t event = random() % disk.events();
    SCOPED_TRACE("loss " + std::to_string(i) + " behind event " + std::to_string(event));
    std::filesystem::remove_all(rests.file("x"));
    std::filesystem::create_directory(rests.file("x"));
    disk.loseAt(event, rests.file("x"), random);
    const Clock::time_point time = disk.timeOf(event);
    const LONG atLeast = surelyKept(work, event, time, flows ? Clock::duration(bound) : 0ms);
    // Of the change that was under way nobody was told; it may be there.
    LONG answered = 0;
    for (const Answer& each : work.answers) {
      if (each.event <= event) answered = each.id;
    }
    lost += answered > atLeast;
    expectSound(rests.file("x") + "/a.kv", atLeast, answered + 1);
  }
  std::printf("%zu rows, %d losses of power, %zu of them with rows that may be lost\n", work.answers.size(),
              losses, lost);
  EXPECT_EQ(lost > 0, flows) << "the moments must lie where it matters";
}

INSTANTIATE_TEST_SUITE_P(Modes, PowerLoss, testing::Values(L"full", L"flow"));

}  // namespace
