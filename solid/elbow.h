#pragma once

#include "solid/section.h"

/// Elbows. The head runs to the corner, the tail away from it; `axes[0]` of either points that way. The
/// points of the ends are any on the runs' lines, and come out where the fitting ends.

namespace solid {

/// Where two runs meet.
struct Corner {
  double angle = 0;  // of the turn
  Vector axis;       // that it turns about
  Point onHead, onTail;
  double gap = 0;                     // between the two lines
  double headSize = 0, tailSize = 0;  // in the plane of the bend
  double across = 0;                  // the head's size along the axis
};

/// False for runs that are parallel or opposite, and for sizes across the bend that differ or lines that miss
/// each other by more than half of it.
bool findCorner(const SectionEnd& head, const SectionEnd& tail, Corner& corner);

/// What the square elbow's preparation works out.
struct Mitre {
  /// Of both limbs: the end section's corners and the same ones on the mitre, in the order -w-h +w-h +w+h
  /// -w+h.
  Point head[8], tail[8];
  /// Meeting point, inner and outer corner, the two ends, and a point one unit along the mitre's normal.
  Point meet, inner, outer, along;
};

/// Moves the ends `collar` beyond the corner. False, with nothing changed, when there is no corner, or sizes
/// or shapes don't fit on one mitre.
bool prepareSquareElbow(SectionEnd& head, SectionEnd& tail, double collar, Mitre& mitre);
/// The two limbs; the mitre is told by its corners on the head's side. Empty when they are no mitre of the
/// head, or the ends aren't off it.
Body squareElbow(const SectionEnd& head, const SectionEnd& tail, const Point (&headCorners)[8], int detail);

/// Moves the ends to where the bend of `radius` (to the centre line) begins and ends, and makes its body when
/// `result` is there. False, with nothing changed, when it can't be made.
bool radiusElbow(SectionEnd& head, SectionEnd& tail, double radius, int detail, Body* result);

/// Outside a square corner, inside an arc of `radius` less half the width: of runs that lie flat. Moves
/// nothing.
Body trayElbow(const SectionEnd& head, const SectionEnd& tail, double radius, int detail);

}  // namespace solid
