// Runs any bytes as a sequence of operations on a list of bodies; each body must stay closed.
#include <cmath>
#include <cstdlib>

#include "solid/boolean.h"
#include "solid/chain.h"
#include "solid/elbow.h"
#include "solid/outline.h"
#include "solid/prism.h"
#include "solid/wye.h"

namespace {

using namespace solid;

class Input {
 public:
  Input(const uint8_t* data, size_t size) : data_(data), left_(size) {}
  bool empty() const { return left_ == 0; }
  int byte() {
    if (left_ == 0) return 0;
    --left_;
    return *data_++;
  }
  /// Few values, so that coincidences are frequent; some are no sizes at all.
  double number() {
    constexpr double odd[] = {0, 1e-9, 1e9, -1, 1e300};
    const int value = byte();
    return value < 5 ? odd[value] : (value - 128) / 8.0;
  }
  Point point() { return {number(), number(), number()}; }
  SectionEnd end() {
    const double angle = byte() * 0.1963495408493620774;
    return {point(),
            (byte() & 1) != 0,
            std::abs(number()),
            std::abs(number()),
            {{std::cos(angle), std::sin(angle), 0}, {-std::sin(angle), std::cos(angle), 0}, {0, 0, 1}}};
  }

 private:
  const uint8_t* data_;
  size_t left_;
};

void step(Input& input, std::vector<Body>& bodies) {
  Body made;
  switch (input.byte() % 8) {
    case 0:
      made = transition(input.end(), input.end(), 1);
      break;
    case 1: {
      SectionEnd head = input.end(), tail = input.end();
      Mitre mitre;
      if (prepareSquareElbow(head, tail, 3, mitre)) made = squareElbow(head, tail, mitre.head, 1);
      break;
    }
    case 2: {
      SectionEnd head = input.end(), tail = input.end();
      if (!radiusElbow(head, tail, std::abs(input.number()), 1, &made)) made = {};
      break;
    }
    case 3: {
      Limbs limbs = {input.end(), input.end(), input.end()};
      Junction junction;
      if (prepareWye(limbs, 3, junction)) made = wye(limbs, junction.meet, 1);
      break;
    }
    case 4: {
      std::vector<Point> outline;
      for (int i = input.byte() % 9; i > 0; --i) outline.push_back(input.point());
      made = skin(outline, input.number());
      break;
    }
    case 5: {
      const Body tool = transition(input.end(), input.end(), 1);
      if (tool.empty()) return;
      for (Body& each : bodies) subtract(each, tool);
      break;
    }
    case 6:
      if (!bodies.empty()) {
        const double angle = input.byte() * 0.0245;
        cutTo(bodies.back(), {input.point(), {std::cos(angle), 0, std::sin(angle)}});
      }
      break;
    default:
      if (bodies.size() <= 3) unite(bodies);
      break;
  }
  if (!made.empty()) bodies.push_back(std::move(made));
  std::erase_if(bodies, [](const Body& each) { return each.empty(); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input input(data, size);
  std::vector<Body> bodies;
  for (int steps = 0; steps < 12 && !input.empty() && bodies.size() < 6; ++steps) step(input, bodies);
  for (const Body& each : bodies) {
    if (!isClosed(each)) std::abort();
    outlineOf(each);
    edgesOf(each);
  }
  return 0;
}
