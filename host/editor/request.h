#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "brx/db_ids.h"
#include "brx/ge_point.h"
#include "host/editor/keywords.h"

namespace host::view {
struct DisplayList;
}

namespace host {

/// What a prompt asks for, what comes in, and what the program gets.

/// Laid down by the program before a prompt, for that prompt alone.
struct PromptRules {
  /// Of `AcedInitGetBits`.
  int bits = 0;
  KeywordList keywords;
};

enum class Wanted { point, distance, angle, orientation, real, integer, word, text, keyword, entity };

struct Request {
  Wanted wanted = Wanted::point;
  std::wstring prompt;
  /// From where a point, distance or angle is measured.
  std::optional<AcGePoint3d> base;
  PromptRules rules;
  /// Cursor moves are wanted as well.
  bool followsCursor = false;
  /// Points of the cursor are bound to the axes through the base.
  bool ortho = false;
  /// A line from the base to the cursor is to be seen, or a box between them.
  bool rubberBand = false, rubberBox = false;
  /// Chosen up to now, where entities are chosen.
  std::vector<AcDbObjectId> chosen = {};
  /// What is dragged, as the last sample left it; null where nothing is to be seen.
  const view::DisplayList* image = nullptr;
};

/// What comes in.
struct Enter {};
struct Cancel {};
/// A text as a person types it.
struct Typed {
  std::wstring text;
};
/// A number from a program. Angles are radians, or in the drawing's units where `typed`.
struct Number {
  double value = 0;
  bool whole = false;
  bool typed = false;
};
/// The cursor has moved, and nothing was accepted.
struct Moved {
  AcGePoint3d to;
};
struct Picked {
  AcDbObjectId entity;
  std::optional<AcGePoint3d> point;
};
using Entities = std::vector<AcDbObjectId>;
using InputItem = std::variant<Enter, Cancel, Typed, Number, AcGePoint3d, Moved, Picked, Entities>;

/// What the program gets; `status` is a result word of input calls.
struct Answer {
  int status = 0;
  AcGePoint3d point;
  /// A real, a distance, or an angle in radians.
  double real = 0;
  /// Or the place of a keyword in its list, from 1; 0 for an arbitrary text.
  int integer = 0;
  /// A text, or the keyword of `RTKWORD`.
  std::wstring text;
  /// With a null entity, a pick at the point.
  AcDbObjectId entity;
  bool pointGiven = false;
  bool given() const;
};

}  // namespace host
