#pragma once

#include <string>
#include <string_view>
#include <vector>

struct FT_FaceRec_;

namespace host::text {

/// Outlines and widths of letters. The unit of all lengths is the height of the font's capitals,
/// which is what drawings call the height of a text; origin is the left end of the base line.

struct GlyphPoint {
  float x = 0, y = 0;
};

/// One step of an outline; outlines are closed and filled by the non-zero winding rule.
struct OutlineStep {
  enum Kind : unsigned char { move, line, curve } kind = move;
  /// The end is the last that counts: `line` and `move` use the first, `curve` has two controls before.
  GlyphPoint points[3];
};

struct Glyph {
  float advance = 0;
  /// Of the ink; left above right for a blank.
  float left = 1, bottom = 0, right = 0, top = 0;
  std::vector<OutlineStep> outline;
  /// Where the outline comes from, for what writes fonts: FreeType's face, which lives to the end of the
  /// program, place in it, and the size of its em. No face for the box that stands for a missing letter.
  FT_FaceRec_* face = nullptr;
  unsigned index = 0;
  float em = 0;
  bool blank() const { return outline.empty(); }
};

/// Lives to the end of the program.
class Font {
 public:
  virtual ~Font() = default;
  /// A letter that the font lacks comes from a fallback font, and is a box when none has it.
  virtual const Glyph& glyph(wchar_t letter) const = 0;
  /// `fontNamed` gives this font for this name with the same flags.
  virtual const std::wstring& name() const = 0;
  virtual bool bold() const = 0;
  virtual bool italic() const = 0;
  /// Slope that stands for the missing italic letters: the shift to the right for each unit of height.
  virtual double slant() const = 0;
};

/// The font of a file name as text styles have it, or of a type face. Names of stroke fonts ("txt",
/// "simplex.shx") and unknown ones give a technical lettering font; names of faces give one of their
/// kind: with serifs, with letters of one width, or plain. The files are read at the first use.
const Font& fontNamed(std::wstring_view name, bool bold = false, bool italic = false);

}  // namespace host::text
