#include "host/editor/drag.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>

#include "brx/db_curves.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/editor/person.h"
#include "host/editor/user_input.h"
#include "host/script/queues.h"
#include "platform/desktop/desktop.h"

namespace {

using host::InputItem;
using testing::ElementsAre;
using testing::FieldsAre;
using Status = AcEdJig::DragStatus;

/// Answers from a list, and keeps what it was asked.
class ListedPerson : public host::Person {
 public:
  std::deque<InputItem> items;
  std::vector<host::Request> requests;
  std::function<void()> whileWaiting;

  InputItem next(const host::Request& request) override {
    requests.push_back(request);
    if (whileWaiting) whileWaiting();
    if (items.empty()) return host::Cancel{};
    InputItem first = items.front();
    items.pop_front();
    return first;
  }
};

/// A line from the origin to the cursor.
class LineToCursor : public AcEdJig {
 public:
  std::function<Status(LineToCursor&)> sample;
  AcDbLine line;
  AcGePoint3d point;
  double real = 0;
  int updates = 0;

  AcDbEntity* entity() const override { return const_cast<AcDbLine*>(&line); }
  bool update() override {
    line.setEndPoint(point);
    return ++updates > 0;
  }
  Status sampler() override { return sample(*this); }

  Status aPoint() { return acquirePoint(point); }
  Status aPointFrom(const AcGePoint3d& base) { return acquirePoint(point, base); }
  Status aDistance() { return acquireDist(real); }
  Status anAngleFrom(const AcGePoint3d& base) { return acquireAngle(real, base); }
};

class DragTest : public testing::Test {
 protected:
  void SetUp() override {
    host::documents().create(L"");
    auto made = std::make_unique<ListedPerson>();
    person_ = made.get();
    host::setPerson(std::move(made));
    host::dragRecords().clear();
    jig.sample = [](LineToCursor& jig) { return jig.aPoint(); };
  }
  void TearDown() override {
    host::setPerson(nullptr);
    host::documents().closeAll();
    host::documents().discardClosed();
  }
  Status drag(std::deque<InputItem> items) {
    person_->items = std::move(items);
    return jig.drag();
  }
  static InputItem at(double x, double y) { return AcGePoint3d{x, y, 0}; }
  static InputItem movedTo(double x, double y) { return host::Moved{{x, y, 0}}; }
  static const host::DragRecord& record() { return host::dragRecords().back(); }

  ListedPerson* person_ = nullptr;
  LineToCursor jig;
};

TEST_F(DragTest, UpdatesAndDrawsEachSampleTheAcceptedOneToo) {
  jig.setDispPrompt(L"\nTo: ");
  EXPECT_EQ(drag({movedTo(1, 0), movedTo(2, 0), at(3, 4)}), AcEdJig::kNormal);
  EXPECT_THAT(record(), FieldsAre(L"\nTo: ", 3, 3, 3, testing::SizeIs(1)));
  EXPECT_EQ(record().image[0].points[1], (AcGePoint3d{3, 4, 0}));
}

TEST_F(DragTest, AClickCountsAlthoughTheSamplerSeesNoChange) {
  jig.sample = [](LineToCursor& jig) {
    const Status status = jig.aPoint();
    return status == AcEdJig::kNormal ? AcEdJig::kNoChange : status;
  };
  EXPECT_EQ(drag({movedTo(1, 0), movedTo(2, 0), at(3, 4)}), AcEdJig::kNormal);
  EXPECT_THAT(record(), FieldsAre(L"", 3, 0, 1, testing::SizeIs(1)))
      << "the image is drawn once all the same";
  EXPECT_EQ(jig.point, (AcGePoint3d{3, 4, 0}));
}

TEST_F(DragTest, EndsByEnterCancelAndKeywordsWhateverTheSamplerSays) {
  jig.setKeywordList(L"Corner,C eXit");
  jig.sample = [](LineToCursor& jig) { return jig.aPoint(), AcEdJig::kNormal; };
  const std::pair<InputItem, int> ends[] = {{host::Enter{}, AcEdJig::kNull},
                                            {host::Cancel{}, AcEdJig::kCancel},
                                            {host::Typed{L"c"}, 1},
                                            {host::Typed{L"x"}, 2},
                                            {host::Typed{L"EXIT"}, 2}};
  for (const auto& [item, status] : ends) {
    EXPECT_EQ(drag({movedTo(1, 1), item}), status);
    EXPECT_EQ(record().samples, 1) << "what ends a drag is no sample";
  }
  EXPECT_EQ(drag({}), AcEdJig::kCancel);
}

TEST_F(DragTest, ASamplerMayEndTheDragItself) {
  jig.sample = [](LineToCursor& jig) { return jig.aPoint(), AcEdJig::kCancel; };
  EXPECT_EQ(drag({movedTo(1, 1), movedTo(2, 2)}), AcEdJig::kCancel);
  EXPECT_EQ(person_->items.size(), 1u);
  jig.sample = [](LineToCursor&) { return AcEdJig::kNoChange; };
  EXPECT_EQ(drag({}), AcEdJig::kNormal) << "one that asks for nothing would run for ever";
}

TEST_F(DragTest, TellsThePersonTheWholeRequest) {
  host::setVariable(L"ORTHOMODE", 1);
  jig.setKeywordList(L"Back");
  jig.setUserInputControls(AcEdJig::kGovernedByOrthoMode);
  jig.setSpecialCursorType(AcEdJig::kRubberBand);
  jig.sample = [](LineToCursor& jig) { return jig.aPointFrom({1, 1, 0}); };
  drag({movedTo(5, 2)});
  const host::Request& request = person_->requests.front();
  EXPECT_EQ(request.wanted, host::Wanted::point);
  EXPECT_EQ(request.base, (AcGePoint3d{1, 1, 0}));
  EXPECT_TRUE(request.followsCursor && request.ortho && request.rubberBand);
  EXPECT_TRUE(request.rules.keywords.match(L"B"));
}

TEST_F(DragTest, OrthoBindsTheCursorAndNothingTyped) {
  host::setVariable(L"ORTHOMODE", 1);
  jig.setUserInputControls(AcEdJig::kGovernedByOrthoMode);
  jig.sample = [](LineToCursor& jig) { return jig.aPointFrom({1, 1, 0}); };
  drag({at(5, 2)});
  EXPECT_EQ(jig.point, (AcGePoint3d{5, 1, 0}));
  drag({at(2, 5)});
  EXPECT_EQ(jig.point, (AcGePoint3d{1, 5, 0}));
  drag({host::Typed{L"5,2"}});
  EXPECT_EQ(jig.point, (AcGePoint3d{5, 2, 0}));
  jig.setUserInputControls(AcEdJig::kNullResponseAccepted);
  drag({at(2, 5)});
  EXPECT_EQ(jig.point, (AcGePoint3d{2, 5, 0})) << "only where the jig lets it";
}

TEST_F(DragTest, MeasuresDistancesByTwoPoints) {
  jig.sample = [](LineToCursor& jig) { return jig.aDistance(); };
  EXPECT_EQ(drag({movedTo(9, 9), at(1, 1), movedTo(1, 3), at(4, 5)}), AcEdJig::kNormal);
  EXPECT_EQ(jig.real, 5);
  EXPECT_EQ(record().samples, 2) << "the first point is the base of the samples";
  EXPECT_EQ(drag({host::Number{2.5}}), AcEdJig::kNormal);
  EXPECT_EQ(jig.real, 2.5);
}

TEST_F(DragTest, HoldsTheDocumentAndTicksWhileItWaits) {
  int ticks = 0;
  const unsigned timer = platform::desktop().startTimer(std::chrono::milliseconds(0), [&] {
    ++ticks;
    EXPECT_TRUE(host::documents().isHeld());
  });
  person_->whileWaiting = [] { EXPECT_TRUE(host::documents().isHeld()); };
  drag({movedTo(1, 1), at(2, 2)});
  platform::desktop().stopTimer(timer);
  EXPECT_GE(ticks, 2);
  EXPECT_FALSE(host::documents().isHeld());
}

TEST_F(DragTest, ADragMayRunInsideAnother) {
  LineToCursor inner;
  inner.sample = [](LineToCursor& jig) { return jig.aPoint(); };
  jig.sample = [&](LineToCursor& jig) {
    const Status status = jig.aPoint();
    if (jig.updates == 0) inner.drag();
    return status;
  };
  EXPECT_EQ(drag({movedTo(1, 1), at(7, 7), at(2, 2)}), AcEdJig::kNormal);
  EXPECT_EQ(inner.point, (AcGePoint3d{7, 7, 0}));
  EXPECT_EQ(jig.point, (AcGePoint3d{2, 2, 0}));
}

TEST_F(DragTest, AcquiresNothingOutsideOfADrag) { EXPECT_EQ(jig.aPoint(), AcEdJig::kCancel); }

}  // namespace
