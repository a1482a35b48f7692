#pragma once

#include <cstdint>
#include <string_view>

#include "host/text/font.h"

namespace host::text {

/// Colour of a piece of text, where its codes tell one.
struct Colour {
  enum Kind : unsigned char { inherited, indexed, exact } kind = inherited;
  /// Index, or 0xRRGGBB.
  std::uint32_t value = 0;
  bool operator==(const Colour&) const = default;
};

/// Place of a letter that is smaller than its line.
enum class InLine : unsigned char { bottom, centre, top };

/// How letters look. Lengths are drawing units.
struct Format {
  const Font* font = nullptr;
  double height = 1, widthFactor = 1;
  /// Radians to the right from upright.
  double oblique = 0;
  /// Stretches the advance from letter to letter.
  double tracking = 1;
  bool underlined = false, overlined = false, struck = false;
  InLine inLine = InLine::bottom;
  Colour colour;
  bool operator==(const Format&) const = default;
};

/// Measures of letters on one base line, from the left end of it.
struct Measure {
  double advance = 0;
  /// Of the ink; left above right for blanks.
  double left = 1e300, bottom = 1e300, right = -1e300, top = -1e300;
  bool blank() const { return left > right; }
};

Measure measure(std::wstring_view letters, const Format& format);

}  // namespace host::text
