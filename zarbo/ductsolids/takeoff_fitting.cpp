#include <algorithm>
#include <cmath>
#include <optional>

#include "zarbo/ductsolids/fitting.h"
#include "zarbo/support/utilities.h"

/// A takeoff: one or two taps that leave a straight main.

namespace {

constexpr double collarLength = 3.0;
/// Tap bodies are this much narrower than the tap, and this much lower than a main of their height, so that
/// their faces don't lie in the main's.
constexpr double widthShrink = 0.01, heightShrink = 0.001;

/// A tap: its run, its size, and how far it reaches along the main before and behind its place, and along
/// itself.
struct Tap {
  PlacedRun run;
  SectionSize size;
  double before = 0, after = 0, reach = 0;
  double offset = 0;  // along the main, from its end
  AcGePoint3d foot{}, end{};
};

double angleToMain(const PlacedRun& main, const Tap& tap) {
  return std::acos(std::clamp(main.basis[0].dotProduct(tap.run.basis[0]), -1.0, 1.0));
}

/// Nothing when the tap runs along the main.
std::optional<Tap> makeTap(PlacedRun& main, const PlacedRun& run) {
  Tap tap{run, run.size()};
  alignBasis(main.basis, tap.run.basis, main.size(), main.isRectangular(), tap.size);
  if (angleToMain(main, tap) == 0.0) return std::nullopt;
  return tap;
}

/// Reads the main's axes as both taps have left them.
void measureTap(const PlacedRun& main, Tap& tap) {
  const AcGeVector3d &up = main.basis[2], &away = tap.run.basis[0];
  const double angle = angleToMain(main, tap);
  const double rise = std::asin(std::clamp(up.dotProduct(away), -1.0, 1.0));
  const SectionSize size = main.size();
  const double diagonal = std::atan(size.height / size.width);
  const double cut = rise > diagonal || rise < -diagonal ? size.height : size.width;
  double slant = 0, reach = 0;
  // The right angle of runs that are drawn at one is the short literal.
  if (angle != rightAngle) {
    slant = cut * 0.5 / std::tan(angle);
    reach = std::abs(tap.size.width * 0.5 / std::tan(angle));
  }
  const double across = std::abs(up.dotProduct(away)) < 1.0 ? tap.size.width : tap.size.height;
  const double half = across * 0.5 / std::sin(angle);
  tap.before = half - slant;
  tap.after = half + slant;
  tap.reach = reach + cut * 0.5 / std::sin(angle);
  const AcGePoint3d start = tap.run.start();
  tap.offset = main.basis[0].dotProduct(start - main.end());
  tap.foot = start + away * away.dotProduct(main.end() - start);
  tap.end = tap.foot + away * (tap.reach + collarLength);
}

/// The main's part that the taps need.
struct MainPiece {
  AcGePoint3d start, end;
  double extent;  // beyond the end of the head run
};

MainPiece measureMain(const PlacedRun& main, const Tap& tap1, const Tap* tap2) {
  double lowest = tap1.offset, highest = tap1.offset;
  if (tap2) {
    lowest = std::min({0.0, tap1.offset, tap2->offset});
    highest = std::max({0.0, tap1.offset, tap2->offset});
  }
  const double before = std::max(tap1.before, tap2 ? tap2->before : 0);
  const double after = std::max(tap1.after, tap2 ? tap2->after : 0);
  const double extent = after + collarLength + highest;
  const AcGeVector3d& along = main.basis[0];
  return {main.end() - along * (before + collarLength - lowest), main.end() + along * extent, extent};
}

bool addTap(kv_hvacSolid& solid, const PlacedRun& main, const Tap& tap, int detail) {
  SectionSize size = tap.size;
  if (main.size().height == size.height) size.height -= heightShrink;
  size.width -= widthShrink;
  const bool rectangular = tap.run.hasRectangularCode();
  return addPiece(solid, {tap.foot, rectangular, size, tap.run.basis},
                  {tap.end, rectangular, size, tap.run.basis}, detail);
}

NewSolid makeBodies(const PlacedRun& main, const MainPiece& piece, const Tap& tap1, const Tap* tap2,
                    int detail) {
  NewSolid solid = newSolid(BrxSolidKind::takeoff);
  const bool rectangular = main.hasRectangularCode();
  if (!addPiece(*solid, {piece.start, rectangular, main.size(), main.basis},
                {piece.end, rectangular, main.size(), main.basis}, detail) ||
      !addTap(*solid, main, tap1, detail) || (tap2 && !addTap(*solid, main, *tap2, detail))) {
    return nullptr;
  }
  // Of two taps only the second one is trimmed: that is required.
  const AcGeVector3d &left = main.basis[1], &up = main.basis[2];
  solid->sliceLast(piece.start, piece.start + left, piece.start + up, piece.end);
  solid->sliceLast(piece.end, piece.end + left, piece.end + up, piece.start);
  return solid;
}

bool isSameSection(const PlacedRun& a, const PlacedRun& b) {
  return a.isRectangular() == b.isRectangular() && a.size() == b.size();
}

}  // namespace

bool drawTakeoff(PlacedRun mainHead, const PlacedRun& mainTail, const PlacedRun& first,
                 const PlacedRun* second, int detail, Fitting& fitting) {
  std::optional<Tap> tap1 = makeTap(mainHead, first);
  if (!tap1) return false;
  std::optional<Tap> tap2 = second ? makeTap(mainHead, *second) : std::nullopt;
  if (second && !tap2) return false;
  measureTap(mainHead, *tap1);
  if (tap2) measureTap(mainHead, *tap2);
  const Tap* const other = tap2 ? &*tap2 : nullptr;
  const MainPiece piece = measureMain(mainHead, *tap1, other);
  NewSolid solid = makeBodies(mainHead, piece, *tap1, other, detail);
  if (!solid) return false;
  // Measured along the head's axis, also where the tail runs another way.
  const AcGeVector3d& along = mainHead.basis[0];
  AcGePoint3d tailEnd = mainTail.start() + along * piece.extent;
  if (!isSameSection(mainHead, mainTail)) {
    NewSolid reducer = newSolid(BrxSolidKind::transition);
    tailEnd += along * transitionLength(mainHead.size(), mainHead.isRectangular(), mainTail.size(),
                                        mainTail.isRectangular());
    if (!addPiece(*reducer, {piece.end, mainHead.hasRectangularCode(), mainHead.size(), mainHead.basis},
                  {tailEnd, mainTail.hasRectangularCode(), mainTail.size(), mainHead.basis}, detail)) {
      return false;
    }
    // The reducer enters the drawing first.
    fitting.entities[1] = appendSolid(std::move(reducer));
  }
  fitting.entities[0] = appendSolid(std::move(solid));
  fitting.headLength = mainHead.end().distanceTo(piece.start);
  fitting.tailLengths[0] = mainTail.start().distanceTo(tailEnd);
  fitting.tailLengths[1] = tap1->run.start().distanceTo(tap1->end);
  if (tap2) fitting.tailLengths[2] = tap2->run.start().distanceTo(tap2->end);
  return true;
}
