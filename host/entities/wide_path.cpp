#include "host/entities/wide_path.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

/// Chords of an arc's band turn by this much at most: 3 degrees.
constexpr double chordAngle = 0.0524;
/// Corners sharper than this stand off no further than this many half widths.
constexpr double longestMitre = 2;

AcGeVector3d leftOf(const Segment& segment, double share) {
  return segment.normal.normal().crossProduct(segment.derivative(share)).normalize();
}

/// From the middle to the left corner where two segments meet, for half a width of 1.
AcGeVector3d mitre(const AcGeVector3d& before, const AcGeVector3d& behind) {
  const AcGeVector3d sum = before + behind;
  if (sum.isZeroLength()) return behind;
  const AcGeVector3d middle = sum.normal();
  return middle * std::min(1 / std::max(middle.dotProduct(behind), 1e-9), longestMitre);
}

struct Band {
  std::vector<AcGePoint3d> left, right;
  void add(const AcGePoint3d& middle, const AcGeVector3d& side, double width) {
    left.push_back(middle + side * (width / 2));
    right.push_back(middle - side * (width / 2));
  }
  void draw(AcGiWorldDraw& to) {
    left.insert(left.end(), right.rbegin(), right.rend());
    to.geometry().polygon(static_cast<Adesk::UInt32>(left.size()), left.data());
  }
};

}  // namespace

void drawBand(AcGiWorldDraw& draw, const std::vector<Segment>& path, size_t index, bool closed) {
  const size_t count = path.size();
  const Segment& segment = path[index];
  const AcGeVector3d first = leftOf(segment, 0), last = leftOf(segment, 1);
  // Bands of different widths end square.
  const Segment &before = path[(index + count - 1) % count], &behind = path[(index + 1) % count];
  const bool joinsBefore = (index > 0 || closed) && before.endWidth == segment.startWidth;
  const bool joinsBehind = (index + 1 < count || closed) && behind.startWidth == segment.endWidth;
  const double sweep = 4 * std::atan(std::abs(segment.bulge));
  const int chords = std::max(1, static_cast<int>(std::ceil(sweep / chordAngle)));
  Band band;
  band.add(segment.start, joinsBefore ? mitre(leftOf(before, 1), first) : first, segment.startWidth);
  for (int k = 1; k < chords; ++k) {
    const double share = static_cast<double>(k) / chords;
    band.add(segment.at(share), leftOf(segment, share),
             segment.startWidth + (segment.endWidth - segment.startWidth) * share);
  }
  band.add(segment.end, joinsBehind ? mitre(last, leftOf(behind, 0)) : last, segment.endWidth);
  draw.subEntityTraits().setFillType(kAcGiFillAlways);
  band.draw(draw);
  draw.subEntityTraits().setFillType(kAcGiFillNever);
}

}  // namespace host
