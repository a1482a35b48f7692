#pragma once

#include <string>

#include "brx/db_text.h"
#include "brx/gi.h"
#include "host/text/layout.h"

namespace host {

/// Where texts of entities meet the fonts: formats from styles, and letters to what is drawn.

/// Font, width factor and slope of a style, the default one for null; the height is left at 1.
text::Format formatOf(AcDbObjectId style);

/// Axes in which text is laid out: x along the base line, y up, at right angles.
struct TextFrame {
  AcGePoint3d origin;
  AcGeVector3d x{1, 0, 0}, y{0, 1, 0}, normal{0, 0, 1};
  TextFrame() = default;
  TextFrame(const AcGePoint3d& at, const AcGeVector3d& direction, const AcGeVector3d& up);
  AcGePoint3d point(double along, double above) const { return origin + x * along + y * above; }
  /// Adds the corners of a box.
  void addBox(AcDbExtents& extents, double left, double bottom, double right, double top) const;
};

/// Draws in the frame, with colours of codes where they differ from the entity's own, which stands
/// again afterwards.
void drawText(AcGiWorldDraw& draw, const TextFrame& frame, const text::Layout& layout, const AcCmColor& own);

/// A mirrored text stays readable: what the mirror turned over is taken back, and told.
struct MirroredFrame {
  TextFrame frame;
  bool swapsSides = false, swapsRows = false;
};
/// The frame of a text that is transformed by a matrix of uniform scale.
MirroredFrame transformedFrame(const TextFrame& frame, const AcGeMatrix3d& matrix);

}  // namespace host
