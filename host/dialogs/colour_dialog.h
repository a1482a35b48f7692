#pragma once

#include <optional>

#include "brx/db_entity.h"

namespace host {

struct ColourChoice {
  AcCmColor start;
  /// Whether "ByLayer" and "ByBlock" can be chosen.
  bool logical = true;
  /// Colours of any red, green and blue, beside the 255 of the palette.
  bool mixed = false;
};

/// Lets the user choose a colour; nothing when the dialog is cancelled.
std::optional<AcCmColor> chooseColour(const ColourChoice& choice);

}  // namespace host
