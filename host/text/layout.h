#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/text/format.h"

namespace host::text {

/// Lines of text with formatting codes, broken at a width and placed about an attachment point, which
/// is the origin: x along the base lines, y up. Lengths are drawing units.

enum class Column : unsigned char { left, centre, right };
enum class Row : unsigned char { top, middle, bottom };

struct LayoutSettings {
  Format base;
  /// Lines are broken at it; 0 for no breaking.
  double width = 0;
  /// Factor on 5/3 of the height between base lines.
  double lineSpacing = 1;
  /// Counts the text's own height for every line, also where larger letters would need more.
  bool exactSpacing = false;
  Column column = Column::left;
  Row row = Row::top;
};

/// Letters of one format from the left end of their base line.
struct PlacedLetters {
  double x = 0, y = 0, width = 0;
  std::wstring letters;
  Format format;
};

/// A line under, over or through letters, or of a stack.
struct PlacedRule {
  double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  Colour colour;
};

struct Layout {
  std::vector<PlacedLetters> letters;
  std::vector<PlacedRule> rules;
  size_t lines = 0;
  /// Of the widest line; and from the top of the first line's capitals to the last base line.
  double width = 0, height = 0;
  /// Of the ink above the first base line and below the last.
  double ascent = 0, descent = 0;
  /// Box of ink and capitals; left above right when there is nothing to see.
  double left = 1e300, bottom = 1e300, right = -1e300, top = -1e300;
  bool blank() const { return left > right; }
};

Layout layOut(std::wstring_view contents, const LayoutSettings& settings);

/// The rules of letters that start at (x, y).
void addRules(std::vector<PlacedRule>& rules, double x, double y, double width, const Format& format);

}  // namespace host::text
