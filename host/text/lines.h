#pragma once

#include <vector>

#include "host/text/codes.h"

namespace host::text {

/// A piece of a line that is not broken. Widths are drawing units.
struct Fragment {
  enum Kind : unsigned char { word, blank, tab, stack } kind = word;
  std::wstring_view letters;
  const Piece* piece = nullptr;
  const Format* format = nullptr;
  Measure ink;
  double width = 0;
};

struct Line {
  std::vector<Fragment> fragments;
  /// Where it begins, and its end without the blanks behind the last word, from the box's left side.
  double start = 0, end = 0;
  /// Of the capitals of its largest letters, and of the largest piece.
  double capitals = 0, above = 0;
  const Paragraph* paragraph = nullptr;
  bool endsParagraph = false;
};

/// Lines of a document that is kept as long as they are used, broken at `width` where it is above 0.
/// `unit` is the height that indents and tab stops count.
std::vector<Line> breakLines(const Document& document, double width, double unit);

/// Distances in a stack, in heights of its letters: base line of the upper part, height of the whole.
struct StackShape {
  double upper, total;
};
StackShape stackShape(Piece::Kind kind);
/// Lower left end of the whole, and top, for a stack in a line with capitals of this height.
double stackBase(const Format& format, Piece::Kind kind, double capitals);

}  // namespace host::text
