#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "brx/db_ids.h"
#include "brx/ge_matrix.h"
#include "host/text/font.h"

namespace host::view {

/// What a drawing shows, in the world's coordinates and free of any view, first drawn first. Curves are
/// exact; views flatten them as far as they must.

/// Colour of what is drawn: exact, or a role that the picture's ground decides.
struct Ink {
  enum Role : unsigned char { exact, contrast, ground } role = contrast;
  std::uint32_t rgb = 0;
  bool operator==(const Ink&) const = default;
};

struct Style {
  Ink ink;
  /// Hundredths of a millimetre.
  int lineWeight = 25;
  /// Index into the list's patterns, -1 for a continuous line; lengths of it count `patternScale` each.
  int pattern = -1;
  double patternScale = 1;
  bool filled = false;
  /// Where it lies and the colour index as it was set, for those who ask; pictures need neither.
  AcDbObjectId layer;
  std::uint16_t colour = 256;
  bool operator==(const Style&) const = default;
};

/// `centre` + `u` cos t + `v` sin t for t from 0 to `sweep`.
struct Arc {
  AcGePoint3d centre;
  AcGeVector3d u, v;
  double sweep = 0;
};

/// Letters on a base line. `x` is the way along it for a unit of the font, `y` the height of a capital.
struct Letters {
  AcGePoint3d origin;
  AcGeVector3d x, y;
  const text::Font* font = nullptr;
  /// Factor on the distance from letter to letter.
  double tracking = 1;
  std::wstring letters;
};

/// One thing drawn: `count` points, one arc, one line of letters or the point of a mark, from `first` of
/// its pool.
struct Item {
  enum Kind : unsigned char { polyline, polygon, arc, letters, mark } kind = polyline;
  std::uint32_t style = 0, first = 0, count = 0;
};

/// How points show: shape 0 a dot, 1 nothing, 2 +, 3 x, 4 a tick, with 32 in a circle, with 64 in a square.
struct MarkLook {
  int shape = 0;
  /// Drawing units; below 0 percents of the picture's height, and 0 stands for 5 of them.
  double size = 0;
};

struct DisplayList {
  std::vector<Item> items;
  std::vector<Style> styles;
  /// Dashes above 0, gaps below, dots 0.
  std::vector<std::vector<double>> patterns;
  std::vector<AcGePoint3d> points;
  std::vector<Arc> arcs;
  std::vector<Letters> letters;
  MarkLook marks;
  bool hasMarks = false;
  /// How far the chords that entities drew for their curves may be off; 0 when none drew any.
  double deviation = 0;
  /// Things that were left out: not finite, or beyond the bound on a list's length.
  size_t leftOut = 0;
};

}  // namespace host::view
