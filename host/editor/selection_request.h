#pragma once

#include <string>

#include "host/editor/plane_shapes.h"
#include "host/editor/selection.h"

namespace host {

/// What a mode text of `acedSSGet` and of LISP's `ssget` asks for: a way of choosing, with options behind
/// colons, such as "X", "_C", "_X:L", ":S:E", "_:$:K". A plus sign and an underscore before it say nothing.
struct SelectionMode {
  enum class Way {
    user,
    pick,
    all,
    everything,
    window,
    crossing,
    box,
    windowPolygon,
    crossingPolygon,
    fence,
    last,
    previous,
    implied
  };
  Way way = Way::user;
  bool single = false, everythingUnderPick = false, refuseLocked = false, prompts = false, keywords = false;
  /// A point, where one is given, is a pick and never a corner.
  bool pointsOnly = false;

  bool needsCorners() const { return way == Way::window || way == Way::crossing || way == Way::box; }
  bool needsPoints() const {
    return way == Way::windowPolygon || way == Way::crossingPolygon || way == Way::fence;
  }
};

/// Nothing for a mode that there isn't.
std::optional<SelectionMode> parseSelectionMode(std::wstring_view text);
/// What the options say of the choosing.
SelectionWish wishOf(const SelectionMode& mode);

struct SelectionRequest {
  SelectionMode mode;
  SelectionWish wish;
  /// Of a pick, of the corners, or of a polygon or fence.
  std::vector<AcGePoint3d> points;
};

/// `RTREJ` when points are missing.
Selected select(const SelectionRequest& request);

}  // namespace host
