#pragma once

#include <span>
#include <unordered_set>

#include "brx/db_database.h"
#include "brx/gi.h"
#include "host/view/display_list.h"

namespace host::view {

constexpr double usualDeviation = 0.01;

/// Records the entities of a block, model space for a null id, in their draw order. Layers that are off
/// or frozen are left out. Curves that can't be recorded exactly are drawn as chords that are off by no
/// more than `deviation` drawing units. With `towards`, the direction to the one who looks, faces are
/// recorded as filled polygons, and what shows from there only.
DisplayList record(AcDbDatabase& drawing, AcDbObjectId block = {}, double deviation = usualDeviation,
                   const AcGeVector3d* towards = nullptr);

/// A run of entities, one after another.
struct Recording {
  DisplayList list;
  /// Behind the last item of each entity.
  std::vector<std::uint32_t> ends;
  /// Some of it looks different from each side.
  bool dependsOnView = false;
  /// Whether an entity looked beyond itself doesn't tell; what it looked at does (`ReadLog`).
  std::unordered_set<const void*> sources;
};
struct RunOptions {
  double deviation = usualDeviation;
  const AcGeVector3d* towards = nullptr;
  /// What comes beyond is left out and counted.
  size_t mostItems = 20'000'000;
};
/// Entities of `space`, which need not be open; erased ones are without items.
Recording record(AcDbDatabase& drawing, AcDbObjectId space, std::span<const AcDbObjectId> entities,
                 const RunOptions& options);

struct RecordOptions {
  /// Drawing units.
  double deviation = 0.01;
  bool dragging = false;
  AcGiRegenType regenType = kAcGiStandardDisplay;
};
/// Records something that need be in no drawing, with the layers and linetypes of this one.
DisplayList record(AcDbDatabase& drawing, AcGiDrawable& image, const RecordOptions& options = {});

}  // namespace host::view
