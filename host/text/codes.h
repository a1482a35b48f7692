#pragma once

#include <string>
#include <vector>

#include "host/text/format.h"

namespace host::text {

/// Text with formatting codes, taken apart. Reading never fails: what is no code is text.
///
///   \P paragraph   \N column   \X rest of a dimension's text   \~ space that holds   \\ \{ \} the sign
///   \L \l underline on, off   \O \o overline   \K \k line through   { } what is set within ends with it
///   \H2; height   \H0.7x; factor on it   \W \T \Q width, tracking, slope in degrees   \A0; place in line
///   \C1; colour index   \c255; exact colour, blue highest   \fname|b1|i0; or \Fname; font
///   \pi,l,r,q,t; indents, alignment and tab stops   \Supper/lower; stack, also with ^ and #
///   \U+XXXX \M+nXXXX %%c %%d %%p %%nnn letters   %%u %%o %%k lines on and off   ^I tab   ^J paragraph

enum class Align : unsigned char { byAttachment, left, centre, right, justified };

struct TabStop {
  double position = 0;
  /// What of the text behind the tab lies at the position.
  Align align = Align::left;
  bool operator==(const TabStop&) const = default;
};

/// Lengths in heights of the text's own letters.
struct Paragraph {
  /// Of the first line, added to `left`.
  double indent = 0;
  double left = 0, right = 0;
  Align align = Align::byAttachment;
  std::vector<TabStop> tabs;
  bool operator==(const Paragraph&) const = default;
};

struct Piece {
  enum Kind : unsigned char {
    letters,
    tab,
    paragraph,  // the end of one
    column,     // the end of one
    fraction,   // `text` over `lower` with a bar between
    diagonal,   // with a slash between
    limits,     // without a line
  } kind = letters;
  std::wstring text, lower;
  /// Indices into the document's lists.
  size_t format = 0, settings = 0;
};

struct Document {
  std::vector<Format> formats;
  std::vector<Paragraph> paragraphs;
  std::vector<Piece> pieces;
};

/// `base` is the format at the start, its font must be set.
Document readCodes(std::wstring_view contents, const Format& base);

}  // namespace host::text
