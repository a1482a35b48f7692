#pragma once

#include "brx/db_database.h"
#include "brx/gi.h"
#include "host/view/display_list.h"

namespace host::view {

/// Records the entities of a block, model space for a null id, in their draw order. Layers that are off
/// or frozen are left out. Curves that can't be recorded exactly are drawn as chords that are off by no
/// more than `deviation` drawing units.
DisplayList record(AcDbDatabase& drawing, AcDbObjectId block = {}, double deviation = 0.01);

struct RecordOptions {
  /// Drawing units.
  double deviation = 0.01;
  bool dragging = false;
  AcGiRegenType regenType = kAcGiStandardDisplay;
};
/// Records something that need be in no drawing, with the layers and linetypes of this one.
DisplayList record(AcDbDatabase& drawing, AcGiDrawable& image, const RecordOptions& options = {});

}  // namespace host::view
