#include <gtest/gtest.h>

#include <cstdlib>

#include "solid/prism.h"
#include "solid/wye.h"
#include "tests/solid/kernel_support.h"

namespace solid {
namespace {

/// Random inputs of an operation. The dearer ones make fewer, unless ZARBO_RANDOM_ROUNDS asks for a number of
/// all.
int roundsOf(int usual) {
  const char* const wanted = std::getenv("ZARBO_RANDOM_ROUNDS");
  return wanted ? std::atoi(wanted) : usual;
}

void expectSound(const Body& body, int round) {
  const Measures found = measure(body);
  ASSERT_TRUE(found.closed) << round;
  ASSERT_GT(found.volume, 0) << round;
  ASSERT_EQ(eulerNumber(body), 2) << round;
}

SectionEnd randomEnd(Dice& dice, const Point& centre) {
  SectionEnd end{centre, dice.flip(), dice.size(), dice.size(), {}};
  dice.axes(end.axes);
  return end;
}

TEST(Random, Transitions) {
  const int rounds = roundsOf(10000);
  Dice dice(1);
  int made = 0;
  for (int i = 0; i < rounds; ++i) {
    const Point from = dice.place();
    SectionEnd a = randomEnd(dice, from), b = randomEnd(dice, from);
    if (dice.flip()) std::copy(std::begin(a.axes), std::end(a.axes), b.axes);
    b.centre = from + a.axes[0] * dice.size() + b.axes[1] * (dice.flip() ? 0 : dice.size() / 100);
    const Body body = transition(a, b, dice.flip() ? 0 : 1);
    if (body.empty()) continue;
    ++made;
    expectSound(body, i);
  }
  EXPECT_GT(made, rounds / 3);
}

/// A head, and a tail turned by any angle in the plane of its width.
void randomCorner(Dice& dice, SectionEnd& head, SectionEnd& tail) {
  head = randomEnd(dice, dice.place());
  tail = head;
  const double g = dice.between(-3.1, 3.1);
  tail.axes[0] = head.axes[0] * std::cos(g) + head.axes[1] * std::sin(g);
  tail.axes[1] = head.axes[1] * std::cos(g) - head.axes[0] * std::sin(g);
  tail.centre = head.centre + head.axes[0] * dice.size() + tail.axes[0] * dice.size();
}

TEST(Random, SquareElbows) {
  const int rounds = roundsOf(10000);
  Dice dice(2);
  int made = 0;
  for (int i = 0; i < rounds; ++i) {
    SectionEnd head, tail;
    randomCorner(dice, head, tail);
    if (dice.flip()) tail.width *= dice.between(0.5, 2);
    Mitre mitre;
    if (!prepareSquareElbow(head, tail, 3, mitre)) continue;
    const Body body = squareElbow(head, tail, mitre.head, 0);
    if (body.empty()) continue;
    ++made;
    expectSound(body, i);
  }
  EXPECT_GT(made, rounds / 2);
}

TEST(Random, RadiusElbows) {
  const int rounds = roundsOf(2500);
  Dice dice(4);
  int made = 0;
  for (int i = 0; i < rounds; ++i) {
    SectionEnd head, tail;
    randomCorner(dice, head, tail);
    Body body;
    if (!radiusElbow(head, tail, dice.between(0.1, 3) * head.width, dice.flip() ? 1 : 0, &body)) continue;
    ++made;
    expectSound(body, i);
  }
  EXPECT_GT(made, rounds / 2);
}

TEST(Random, Wyes) {
  const int rounds = roundsOf(2500);
  Dice dice(5);
  int made = 0;
  for (int i = 0; i < rounds; ++i) {
    SectionEnd head, first, second;
    randomCorner(dice, head, first);
    const Point meet = head.centre + head.axes[0] * (head.width + head.height);
    first.centre = meet + first.axes[0];
    second = head;
    if (dice.flip()) std::swap(second, first), second.width *= dice.between(0.5, 1);
    const double g = dice.between(-2.5, 2.5);
    second.axes[0] = head.axes[0] * std::cos(g) + head.axes[1] * std::sin(g);
    second.axes[1] = head.axes[1] * std::cos(g) - head.axes[0] * std::sin(g);
    second.centre = meet + second.axes[0];
    Limbs limbs = {head, first, second};
    Junction junction;
    if (!prepareWye(limbs, 3, junction)) continue;
    const Body body = wye(limbs, junction.meet, 1);
    if (body.empty()) continue;
    ++made;
    const Measures found = measure(body);
    ASSERT_TRUE(found.closed) << i;
    ASSERT_GT(found.volume, 0) << i;
  }
  EXPECT_GT(made, rounds / 2);
}

TEST(Random, CutsAndSubtractions) {
  const int rounds = roundsOf(2500);
  Dice dice(6);
  for (int i = 0; i < rounds; ++i) {
    const Point from = dice.place();
    SectionEnd a = randomEnd(dice, from);
    SectionEnd b = a;
    b.centre = from + a.axes[0] * (a.width + a.height);
    Body body = transition(a, b, 1);
    const double before = measure(body).volume;
    SectionEnd c = randomEnd(dice, from + a.axes[0] * (a.width / 2));
    c.width = a.width * dice.between(0.2, 1), c.height = a.height * dice.between(0.2, 1);
    SectionEnd d = c;
    d.centre = c.centre + c.axes[0] * a.width;
    const Body tool = transition(c, d, 1);
    Body rest = body;
    subtract(rest, tool);
    if (!rest.empty()) {
      ASSERT_TRUE(isClosed(rest)) << i;
      ASSERT_LE(measure(rest).volume, before * (1 + 1e-6)) << i;
    }
    std::vector<Body> both = {body, tool};
    unite(both);
    double united = 0;
    for (const Body& each : both) {
      ASSERT_TRUE(isClosed(each)) << i;
      united += measure(each).volume;
    }
    // What a cut takes away is what a union doesn't add.
    ASSERT_NEAR(united, measure(rest).volume + measure(tool).volume, 1e-6 * united) << i;
  }
}

}  // namespace
}  // namespace solid
