#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "brx/db_database.h"

namespace host {

/// The variables that are saved with a drawing, one table for files and for LISP.

using HeaderValue = std::variant<int, double, std::wstring, AcGePoint3d, AcDbObjectId>;

/// What a text of a variable names; records are kept by id, so that they may be renamed.
/// A letter is the number of its character here and in files, and a text to LISP.
enum class HeaderKind { plain, layer, linetype, textStyle, dimStyle, colour, handle, letter };

struct HeaderVariable {
  const ACHAR* name;  // without the "$" of files
  Adesk::Int16 code;  // group code in files
  HeaderValue initial;
  HeaderKind kind = HeaderKind::plain;
  double lowest = -1e300, highest = 1e300;
  bool readOnly = false;  // to LISP; files set it
  bool inFiles = true;
};

std::span<const HeaderVariable> headerVariables();
/// By name without "$", case ignored.
std::optional<size_t> findHeaderVariable(std::wstring_view name);
/// Names for references, "BYLAYER", "1" or "RGB:1,2,3" for colours, the handle in hexadecimal digits.
HeaderValue headerValue(const AcDbDatabase& drawing, size_t variable);
/// `eInvalidInput` for a value of another type or out of range (an integer suits a real),
/// `eKeyNotFound` for a name that the drawing doesn't have.
Acad::ErrorStatus setHeaderValue(AcDbDatabase& drawing, size_t variable, const HeaderValue& value);

/// What a file has told of the extents counts until the drawing changes.
void trustExtents(AcDbDatabase& drawing);

/// A colour's text; nothing for a text that is none.
std::wstring colourText(const AcCmColor& colour);
std::optional<AcCmColor> colourFromText(std::wstring_view text);

}  // namespace host
