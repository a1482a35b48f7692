#pragma once

#include <vector>

#include "brx/gi.h"

namespace host {

/// Points of a curve from one parameter to another, so close that a chord's middle lies nowhere farther
/// from the curve than `deviation`. `pieces` chords at least, on which the curve bends to one side.
template <class At>
std::vector<AcGePoint3d> flattened(double from, double to, int pieces, double deviation, At at) {
  constexpr int deepest = 10;
  std::vector<AcGePoint3d> points = {at(from)};
  const auto add = [&](auto& self, double a, const AcGePoint3d& pa, double b, const AcGePoint3d& pb,
                       int depth) -> void {
    const double middle = (a + b) / 2;
    const AcGePoint3d pm = at(middle), chord = pa + (pb - pa) * 0.5;
    if (depth > 0 && pm.distanceTo(chord) > deviation) {
      self(self, a, pa, middle, pm, depth - 1);
      self(self, middle, pm, b, pb, depth - 1);
    } else {
      points.push_back(pb);
    }
  };
  for (int i = 0; i < pieces; ++i) {
    const double a = from + (to - from) * i / pieces, b = from + (to - from) * (i + 1) / pieces;
    const AcGePoint3d start = points.back();
    add(add, a, start, b, at(b), deepest);
  }
  return points;
}

template <class At>
void drawFlattened(AcGiWorldDraw& draw, double from, double to, int pieces, At at) {
  const std::vector<AcGePoint3d> points = flattened(from, to, pieces, draw.deviation(), at);
  draw.geometry().polyline(static_cast<Adesk::UInt32>(points.size()), points.data());
}

}  // namespace host
