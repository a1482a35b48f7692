#pragma once

#include "host/access/filter.h"
#include "host/database/selection_set.h"
#include "host/editor/input_source.h"
#include "host/editor/task.h"

namespace host {

/// How a user chooses entities.
struct SelectionWish {
  std::wstring addPrompt = L"\nSelect objects: ";
  std::wstring removePrompt = L"\nRemove objects: ";
  /// A keyword ends the selection with `RTKWORD`.
  KeywordList keywords;
  EntityFilter* filter = nullptr;
  /// The first choice ends the selection, hit or miss.
  bool single = false;
  /// A point is a pick and never the corner of a window.
  bool pointsOnly = false;
  /// A pick takes all entities in the aperture.
  bool everythingUnderPick = false;
  bool refuseLocked = false;
};

struct Selected {
  int status = 0;
  SelectionSet set;
};

/// Asks until Enter, in the manner of CAD hosts: picks, windows from left to right and crossing windows from
/// right to left by their corners, the options Window, Crossing, WPolygon, CPolygon, Fence, Last, Previous,
/// ALL, Remove, Add, Undo, SIngle and so on, and entities by name. What was chosen from a script's queue is
/// complete when the queue is empty. `RTERROR` when nothing was chosen.
Task<Selected> selectEntities(InputSource& source, SelectionWish wish);

/// Ways of choosing that need no user. What the wish refuses is left out.
Entities allEntities(bool everySpaceAndLayer);
Entities lastEntity();
Entities previousEntities();
SelectionSet accepted(const Entities& entities, const SelectionWish& wish);
Selected selectedFrom(const Entities& entities, const SelectionWish& wish);
Entities entitiesAtPick(const AcGePoint3d& point, bool everything);

/// The set that "Previous" gives, for each drawing.
void keepAsPrevious(const SelectionSet& set);

}  // namespace host
