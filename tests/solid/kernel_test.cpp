#include <gtest/gtest.h>

#include <cstring>

#include "solid/filing.h"
#include "solid/outline.h"
#include "solid/prism.h"
#include "solid/wye.h"
#include "tests/solid/kernel_support.h"

namespace solid {
namespace {

constexpr double pi = std::numbers::pi;

void expectWhole(const Body& body, double volume, double relative = 1e-12, int euler = 2) {
  ASSERT_FALSE(body.empty());
  const Measures found = measure(body);
  EXPECT_TRUE(found.closed);
  EXPECT_EQ(eulerNumber(body), euler);
  EXPECT_NEAR(found.volume, volume, volume * relative);
}

struct Shape {
  double width, height;
  bool rectangular;
};
constexpr Shape shapes[] = {{20, 10, true}, {12, 12, false}, {20, 10, false}, {6, 15, false}};

TEST(Straight, HasTheVolumeOfItsSectionTimesItsLength) {
  for (const Shape& s : shapes) {
    for (const double far : {0.0, 1e6}) {
      const Point from{far, -far, far};
      const Body body = transition(
          planEnd(from, 0.7, s.width, s.height, s.rectangular),
          planEnd(from + Vector{std::cos(0.7), std::sin(0.7), 0} * 50, 0.7, s.width, s.height, s.rectangular),
          0);
      expectWhole(body, sectionArea(s.width, s.height, s.rectangular) * 50, far == 0 ? 1e-12 : 1e-6);
    }
  }
}

TEST(Straight, CountsFacetsByDetail) {
  const auto faces = [](int detail) {
    return transition(planEnd({}, 0, 2, 2, false), planEnd({9, 0, 0}, 0, 2, 2, false), detail).faces.size();
  };
  EXPECT_EQ(faces(1), 8 + 2u);
  EXPECT_EQ(faces(0), 24 + 2u);
  EXPECT_EQ(faces(-5), 24 + 2u);
  EXPECT_EQ(faces(8), 64 + 2u);
  EXPECT_EQ(faces(100000), 2048 + 2u);
}

/// V = L/3 (A0 + A1 + M).
TEST(Transition, HasTheVolumeOfTheHullOfItsEnds) {
  const auto volume = [](const SectionEnd& a, double turned, const Shape& b) {
    SectionEnd to = planEnd({30, 0, 0}, 0, b.width, b.height, b.rectangular);
    to.axes[1] = Vector{0, std::cos(turned), std::sin(turned)};
    to.axes[2] = Vector{0, -std::sin(turned), std::cos(turned)};
    const Body body = transition(a, to, 0);
    EXPECT_TRUE(isClosed(body));
    EXPECT_EQ(eulerNumber(body), 2);
    return measure(body).volume;
  };
  const SectionEnd rectangle = planEnd({}, 0, 20, 10);
  EXPECT_NEAR(volume(rectangle, 0, {8, 16, true}), 10 * (200 + 128 + (20 * 16 + 8 * 10) / 2.0), 1e-9);
  EXPECT_NEAR(volume(rectangle, 0, {12, 12, false}), 10 * (200 + circleArea(12) + (20 + 10) * 12 / 2.0),
              1e-9);
  for (const double g : {0.1, 0.5, 1.0, pi / 2}) {
    const double middle = ((400 + 100) * std::sin(g) + 2 * 200 * std::cos(g)) / 2;
    EXPECT_NEAR(volume(rectangle, g, {20, 10, true}), 10 * (400 + middle), 1e-9) << g;
  }
  // The axes of an end may be swapped, or the other way round: the hull is the same.
  SectionEnd mirrored = rectangle;
  mirrored.axes[1] = -mirrored.axes[1];
  EXPECT_NEAR(volume(mirrored, 0, {8, 16, true}), volume(rectangle, 0, {8, 16, true}), 1e-9);
}

TEST(Transition, RefusesWhatIsNoBody) {
  const SectionEnd good = planEnd({}, 0, 20, 10), far = planEnd({30, 0, 0}, 0, 20, 10);
  const auto refused = [&](SectionEnd a, SectionEnd b) { return transition(a, b, 0).empty(); };
  EXPECT_FALSE(refused(good, far));
  for (const double bad : {0.0, -1.0, std::nan(""), HUGE_VAL, 1e200}) {
    EXPECT_TRUE(refused(planEnd({}, 0, bad, 10), far)) << bad;
    EXPECT_TRUE(refused(good, planEnd({30, 0, 0}, 0, 20, bad, false))) << bad;
  }
  EXPECT_TRUE(refused(good, planEnd({std::nan(""), 0, 0}, 0, 20, 10)));
  EXPECT_TRUE(refused(good, planEnd({1e-10, 0, 0}, 0, 20, 10))) << "ends too near";
  EXPECT_TRUE(refused(good, planEnd({3, 0, 0}, pi / 2, 20, 10))) << "sections that cross";
  EXPECT_TRUE(refused(good, planEnd({0, 30, 0}, 0, 20, 10))) << "both in one plane";
  EXPECT_TRUE(refused(good, planEnd({1e17, 0, 0}, 0, 20, 10))) << "sections below the rounding of the length";
}

TEST(SquareElbow, MeetsOnTheMitreAtAnyAngle) {
  constexpr double collar = 3;
  for (const double degrees : {30.0, 60.0, 90.0, 120.0, 150.0}) {
    for (const double tailWidth : {20.0, 14.0}) {
      const double g = degrees * pi / 180;
      SectionEnd head = planEnd({-100, 0, 0}, 0, 20, 10);
      SectionEnd tail = planEnd(Point{} + Vector{std::cos(g), std::sin(g), 0} * 70, g, tailWidth, 10);
      Mitre mitre;
      ASSERT_TRUE(prepareSquareElbow(head, tail, collar, mitre)) << degrees;
      const double x = std::abs((tailWidth - 20 * std::cos(g)) / (2 * std::sin(g)));
      const double y = std::abs((20 - tailWidth * std::cos(g)) / (2 * std::sin(g)));
      EXPECT_NEAR(head.centre.x, -x - collar, 1e-12);
      EXPECT_NEAR(tail.centre.distanceTo({}), y + collar, 1e-12);
      // The inner corner lies on both inner walls.
      EXPECT_NEAR(mitre.inner.y, 10, 1e-12);
      EXPECT_NEAR((mitre.inner - mitre.meet).dotProduct(tail.axes[1]), tailWidth / 2, 1e-12);
      const Body body = squareElbow(head, tail, mitre.head, 0);
      expectWhole(body, 200 * (x + collar) + tailWidth * 10 * (y + collar));
      EXPECT_EQ(body.cells, 2);
    }
  }
}

TEST(SquareElbow, TakesRoundAndOvalSectionsOfOneSize) {
  for (const Shape& s : shapes) {
    SectionEnd head = planEnd({-1e6, 0, 5}, 0, s.width, s.height, s.rectangular);
    SectionEnd tail = planEnd({0, 1e6, 5}, pi / 2, s.width, s.height, s.rectangular);
    Mitre mitre;
    ASSERT_TRUE(prepareSquareElbow(head, tail, 3, mitre));
    expectWhole(squareElbow(head, tail, mitre.head, 0),
                sectionArea(s.width, s.height, s.rectangular) * (s.width + 6), 1e-9);
    SectionEnd thin = planEnd({0, 40, 5}, pi / 2, s.width, s.height / 2, s.rectangular);
    EXPECT_FALSE(prepareSquareElbow(head, thin, 3, mitre)) << "sizes across differ";
  }
}

TEST(SquareElbow, BridgesLinesThatMissEachOther) {
  SectionEnd head = planEnd({-50, 0, 0}, 0, 20, 10), tail = planEnd({0, 60, 4}, pi / 2, 20, 10);
  Mitre mitre;
  ASSERT_TRUE(prepareSquareElbow(head, tail, 3, mitre));
  EXPECT_EQ(head.centre.z, 0);
  EXPECT_EQ(tail.centre.z, 4);
  const Body body = squareElbow(head, tail, mitre.head, 0);
  EXPECT_TRUE(isClosed(body));
  EXPECT_GT(measure(body).volume, 200 * 13);
  tail = planEnd({0, 60, 6}, pi / 2, 20, 10);
  EXPECT_FALSE(prepareSquareElbow(head, tail, 3, mitre)) << "more than half the height";
}

TEST(Elbows, ARefusedPreparationChangesNothing) {
  const auto bad = {planEnd({0, 60, 0}, 0, 20, 10),           planEnd({0, 60, 0}, pi, 20, 10),
                    planEnd({0, std::nan(""), 0}, 1, 20, 10), planEnd({0, 60, 0}, 1, 20, 0),
                    planEnd({0, 60, 40}, 1, 20, 10),          planEnd({0, 60, 0}, 1, 20, 9)};
  for (const SectionEnd& each : bad) {
    SectionEnd head = planEnd({-50, 0, 0}, 0, 20, 10), tail = each;
    Mitre mitre, untouched;
    Body body;
    EXPECT_FALSE(prepareSquareElbow(head, tail, 3, mitre));
    EXPECT_FALSE(radiusElbow(head, tail, 30, 0, &body));
    EXPECT_EQ(head.centre.x, -50);
    EXPECT_EQ(std::memcmp(&tail.centre, &each.centre, sizeof(Point)), 0);
    EXPECT_EQ(std::memcmp(&mitre, &untouched, sizeof mitre), 0);
    EXPECT_TRUE(body.empty());
  }
}

/// A R k sin(g/k) for k steps.
TEST(RadiusElbow, HasTheVolumeOfItsSteps) {
  for (const Shape& s : shapes) {
    for (const double degrees : {30.0, 60.0, 90.0, 120.0, 150.0}) {
      const double g = degrees * pi / 180, radius = 1.5 * s.width;
      SectionEnd head = planEnd({-200, 0, 0}, 0, s.width, s.height, s.rectangular);
      SectionEnd tail =
          planEnd(Point{} + Vector{std::cos(g), std::sin(g), 0} * 9, g, s.width, s.height, s.rectangular);
      Body body;
      ASSERT_TRUE(radiusElbow(head, tail, radius, 0, &body));
      EXPECT_NEAR(head.centre.x, -radius * std::tan(g / 2), 1e-9);
      const int steps = static_cast<int>(std::ceil(24 * degrees / 360 - 1e-6));
      EXPECT_EQ(body.cells, steps);
      expectWhole(body,
                  sectionArea(s.width, s.height, s.rectangular) * 2 * radius * steps *
                      std::tan(g / steps / 2) * std::pow(std::cos(g / steps / 2), 2),
                  1e-11);
    }
  }
}

TEST(RadiusElbow, KeepsToTheSmallestRadius) {
  SectionEnd head = planEnd({-200, 0, 0}, 0, 20, 10), tail = planEnd({0, 9, 0}, pi / 2, 20, 10);
  Body body;
  ASSERT_TRUE(radiusElbow(head, tail, 1, 0, &body));
  EXPECT_NEAR(head.centre.x, -10.02, 1e-9);
  EXPECT_TRUE(isClosed(body));
}

TEST(TrayElbow, IsSquareOutsideAndRoundInside) {
  SectionEnd head = planEnd({-200, 0, 0}, 0, 20, 10), tail = planEnd({0, 9, 0}, pi / 2, 20, 10);
  ASSERT_TRUE(radiusElbow(head, tail, 30, 0, nullptr));
  const Body body = trayElbow(head, tail, 30, 0);
  const double quarterOfInner = circleArea(40) / 4;
  expectWhole(body, (40 * 40 - quarterOfInner) * 10);
}

TEST(Wye, OfEqualLimbsIsCutOnTheBisectors) {
  for (const Shape& s : shapes) {
    Limbs limbs = {planEnd({-300, 0, 0}, 0, s.width, s.height, s.rectangular),
                   planEnd(Point{} + Vector{std::cos(0.8), std::sin(0.8), 0} * 90, 0.8, s.width, s.height,
                           s.rectangular),
                   planEnd(Point{} + Vector{std::cos(-1.1), std::sin(-1.1), 0} * 90, -1.1, s.width, s.height,
                           s.rectangular)};
    Junction junction;
    ASSERT_TRUE(prepareWye(limbs, 3, junction));
    const Body body = wye(limbs, junction.meet, 0);
    EXPECT_EQ(body.cells, 3);
    EXPECT_TRUE(isClosed(body));
    EXPECT_EQ(eulerNumber(body), 2);
    // What two limbs share on their bisector is neither lost nor there twice: the union of straight pieces
    // plus the corners outside is the same.
    EXPECT_GT(measure(body).volume, sectionArea(s.width, s.height, s.rectangular) * 3 * 3);
  }
}

TEST(Wye, OfUnequalWidthsMeetsWallByWall) {
  // A tee: 20 goes on as 20, a branch of 12 leaves at a right angle.
  Limbs limbs = {planEnd({-300, 0, 0}, 0, 20, 10), planEnd({90, 0, 0}, 0, 20, 10),
                 planEnd({0, 90, 0}, pi / 2, 12, 10)};
  Junction junction;
  ASSERT_TRUE(prepareWye(limbs, 3, junction));
  EXPECT_NEAR(limbs[0].centre.x, -9, 1e-9);
  EXPECT_NEAR(limbs[2].centre.y, 13, 1e-9);
  expectWhole(wye(limbs, junction.meet, 0), 200 * 18 + 120 * 3.0);
  // The main gets narrower: a union.
  limbs[1] = planEnd({90, 0, 0}, 0, 16, 10);
  ASSERT_TRUE(prepareWye(limbs, 3, junction));
  const Body body = wye(limbs, junction.meet, 0);
  const double before = -limbs[0].centre.x, behind = limbs[1].centre.x, aside = limbs[2].centre.y;
  // Beside the head's half and the tail's half the branch adds what sticks out.
  expectWhole(body, 200 * before + 160 * behind + 6 * 10 * (aside - 10) + 6 * 10 * (aside - 8));
}

TEST(Wye, RefusesTailsThatRunBackOrAgree) {
  const SectionEnd head = planEnd({-300, 0, 0}, 0, 20, 10), on = planEnd({90, 0, 0}, 0, 20, 10),
                   back = planEnd({-90, 0, 0}, pi, 20, 10), off = planEnd({0, 90, 0}, pi / 2, 20, 10),
                   high = planEnd({0, 90, 30}, pi / 2, 20, 10);
  Junction junction;
  for (Limbs limbs : {Limbs{head, back, off}, Limbs{head, off, back}, Limbs{head, off, off},
                      Limbs{head, on, on}, Limbs{head, on, high}}) {
    const Point before = limbs[1].centre;
    EXPECT_FALSE(prepareWye(limbs, 3, junction));
    EXPECT_EQ(limbs[1].centre.y, before.y);
  }
}

TEST(Skin, IsThickAlongItsNormal) {
  const std::vector<Point> outline = {{0, 0, 5}, {10, 0, 5}, {10, 10, 5}, {5, 4, 5}, {0, 10, 5}};
  const double area = 100 - 10 * 6 / 2.0;
  expectWhole(skin(outline, 2), area * 2);
  const Body below = skin(outline, -2);
  expectWhole(below, area * 2);
  EXPECT_NEAR(measure(below).centre.z, 4, 1e-12);
  EXPECT_NEAR(measure(skin({outline.rbegin(), outline.rend()}, 2)).centre.z, 4, 1e-12);
}

TEST(Skin, RefusesWhatEnclosesNothing) {
  const auto refused = [](const std::vector<Point>& outline, double thickness = 1) {
    return skin(outline, thickness).empty();
  };
  EXPECT_TRUE(refused({}));
  EXPECT_TRUE(refused({{0, 0, 0}, {1, 0, 0}}));
  EXPECT_TRUE(refused({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}));
  EXPECT_TRUE(refused({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, 0));
  EXPECT_TRUE(refused({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, std::nan("")));
  EXPECT_TRUE(refused({{0, 0, 0}, {4, 4, 0}, {4, 0, 0}, {0, 4, 0}})) << "crosses itself";
  EXPECT_TRUE(refused({{0, 0, 0}, {4, 0, 0}, {4, 4, 1}, {0, 4, 0}})) << "not in a plane";
  EXPECT_TRUE(refused({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {2, 0, 0}, {0, 4, 0}})) << "touches itself";
  EXPECT_FALSE(refused({{0, 0, 0}, {4, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}}))
      << "repeated points";
}

TEST(Cuts, PartsSumUpToTheWhole) {
  Dice dice(7);
  for (int i = 0; i < 200; ++i) {
    SectionEnd head = planEnd({-200, 0, 0}, 0, 20, 10, dice.flip()),
               tail = planEnd({0, 9, 0}, pi / 2, 20, 10, head.rectangular);
    Body whole;
    ASSERT_TRUE(radiusElbow(head, tail, 30, 0, &whole));
    const Plane plane{{dice.between(-30, 10), dice.between(-10, 30), dice.between(-5, 5)}, dice.direction()};
    Body below = whole, above = whole;
    cutTo(below, plane);
    cutTo(above, {plane.origin, -plane.normal});
    EXPECT_TRUE(below.empty() || isClosed(below));
    EXPECT_TRUE(above.empty() || isClosed(above));
    EXPECT_NEAR(measure(below).volume + measure(above).volume, measure(whole).volume,
                1e-9 * measure(whole).volume);
  }
}

/// The hanger's band: a block with an opening through both ends.
TEST(Booleans, ABandStaysARingAtAnyAngle) {
  Dice dice(3);
  for (int i = 0; i < 100; ++i) {
    for (const bool rectangular : {true, false}) {
      const double angle = dice.between(0, 2 * pi), far = i % 2 ? 1e6 : 0;
      const Vector along{std::cos(angle), std::sin(angle), 0};
      const Point a{far, far, 0}, b = a + along * 0.5;
      Body band =
          transition(planEnd(a, angle, 22, 12, rectangular), planEnd(b, angle, 22, 12, rectangular), 0);
      subtract(band,
               transition(planEnd(a, angle, 20, 10, rectangular), planEnd(b, angle, 20, 10, rectangular), 0));
      expectWhole(band, (sectionArea(22, 12, rectangular) - sectionArea(20, 10, rectangular)) * 0.5,
                  far == 0 ? 1e-11 : 1e-6, 0);
    }
  }
}

TEST(Booleans, AUnionOfCrossingBarsCountsTheMiddleOnce) {
  const auto bar = [](double angle, bool rectangular) {
    const Vector along{std::cos(angle), std::sin(angle), 0};
    return transition(planEnd(Point{} - along * 30, angle, 10, 10, rectangular),
                      planEnd(Point{} + along * 30, angle, 10, 10, rectangular), 0);
  };
  std::vector<Body> bodies = {bar(0, true), bar(pi / 2, true)};
  unite(bodies);
  ASSERT_EQ(bodies.size(), 1u);
  expectWhole(bodies[0], 2 * 6000 - 1000);
  // A third bar meets the two that are one; the union starts from all three.
  bodies.push_back(bar(pi / 4, true));
  unite(bodies);
  ASSERT_EQ(bodies.size(), 1u);
  EXPECT_EQ(bodies[0].parts.size(), 3u);
  EXPECT_TRUE(isClosed(bodies[0]));
  // Two cylinders of one size: Steinmetz, made of facets.
  bodies = {bar(0, false), bar(pi / 2, false)};
  unite(bodies);
  ASSERT_EQ(bodies.size(), 1u);
  EXPECT_TRUE(isClosed(bodies[0]));
  EXPECT_NEAR(measure(bodies[0]).volume, 2 * circleArea(10) * 60 - 2.0 / 3 * 1000, 15);
  EXPECT_EQ(eulerNumber(bodies[0]), 2);
}

TEST(Booleans, BodiesThatOnlyTouchStayTwo) {
  std::vector<Body> bodies = {transition(planEnd({}, 0, 10, 10), planEnd({10, 0, 0}, 0, 10, 10), 0),
                              transition(planEnd({10, 0, 0}, 0, 10, 10), planEnd({20, 0, 0}, 0, 10, 10), 0)};
  unite(bodies);
  EXPECT_EQ(bodies.size(), 2u);
}

TEST(Outline, ShowsStraightSidesOfOvalsAndNoneThatIsShorterThanAFacet) {
  const auto sharp = [](double width, double height) {
    const std::vector<Edge> edges = edgesOf(
        transition(planEnd({}, 0, width, height, false), planEnd({30, 0, 0}, 0, width, height, false), 0));
    return std::count_if(edges.begin(), edges.end(), [](const Edge& e) { return e.kind == Edge::sharp; });
  };
  EXPECT_EQ(sharp(10, 10), 2 * 24);
  EXPECT_EQ(sharp(9.99, 10), 2 * 26) << "as taps are, which are a little narrower";
  EXPECT_EQ(sharp(5, 10), 2 * 26 + 4);
}

TEST(Outline, JoinsFragmentsOfAPlane) {
  Body bar = transition(planEnd({}, 0, 10, 10), planEnd({60, 0, 0}, 0, 10, 10), 0);
  Body other = transition(planEnd({30, -30, 0}, pi / 2, 10, 10), planEnd({30, 30, 0}, pi / 2, 10, 10), 0);
  std::vector<Body> bodies = {bar, other};
  unite(bodies);
  const Outline outline = outlineOf(bodies[0]);
  // Four ends, eight sides, and top and bottom as three convex pieces each.
  EXPECT_EQ(outline.faceEnds.size(), 4 + 8 + 6u);
  EXPECT_EQ(outline.points.size(), 24u);
}

TEST(Filing, BringsBodiesBackAsTheyWere) {
  std::vector<Body> bodies = {
      transition(planEnd({}, 0, 10, 10, false), planEnd({60, 0, 0}, 0, 10, 10, false), 0),
      transition(planEnd({30, -30, 0}, pi / 2, 10, 10), planEnd({30, 30, 0}, pi / 2, 10, 10), 0)};
  unite(bodies);
  bodies.push_back(skin({{0, 0, 50}, {9, 0, 50}, {0, 9, 50}}, 1));
  UnpackProblems problems;
  const std::string bytes = packed(bodies);
  const std::vector<Body> back = unpacked(bytes, problems);
  ASSERT_TRUE(problems.texts.empty());
  EXPECT_EQ(packed(back), bytes);
  EXPECT_EQ(measure(back[0]).volume, measure(bodies[0]).volume);
}

TEST(Filing, RefusesDamageAndKeepsTheRest) {
  std::vector<Body> bodies = {transition(planEnd({}, 0, 10, 10), planEnd({60, 0, 0}, 0, 10, 10), 0),
                              transition(planEnd({}, 0, 4, 4), planEnd({60, 0, 0}, 0, 4, 4), 0)};
  const std::string bytes = packed(bodies);
  for (size_t i = 0; i < bytes.size(); ++i) {
    for (const int change : {1, 0x40, 0xFF}) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      UnpackProblems problems;
      for (const Body& each : unpacked(damaged, problems)) EXPECT_TRUE(isClosed(each));
    }
    UnpackProblems problems;
    EXPECT_TRUE(unpacked(std::string_view(bytes).substr(0, i), problems).empty());
    EXPECT_EQ(problems.texts.size(), 1u);
  }
  bodies[0].points[3].z = std::nan("");
  UnpackProblems problems;
  EXPECT_EQ(unpacked(packed(bodies), problems).size(), 1u);
  EXPECT_EQ(problems.texts, std::vector<std::wstring>{L"body 1 has points that are no numbers"});
}

}  // namespace
}  // namespace solid
