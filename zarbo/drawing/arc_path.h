#pragma once

#include <optional>
#include <vector>

#include "brx/db_curves.h"
#include "zarbo/frame/lisp_args.h"

/// A piece of a duct run that exists only as numbers: an arc, and with an extension a straight lead at each
/// of its ends. All of it lies at height 0.
struct ArcPath {
  std::optional<AcDbLine> leadIn;
  AcDbArc arc;
  std::optional<AcDbLine> leadOut;
  /// 1 turns left, any other value right. A right turn's arc runs against the travel, and ends where the
  /// travel starts.
  int32_t direction = 1;
  double length = 0;
  /// False for a path without length, whose arc would be taken for a full circle.
  bool hasArc = true;

  /// The pieces that are there, in the order of travel.
  std::vector<const AcDbCurve*> pieces() const;
};

/// Reads start point, tangent angle, direction, radius and sweep (radians). False for a wrong type.
bool getArcPath(ArgCursor& cursor, double extension, ArcPath& path);
/// Reads two points and moves both ends outwards by the extension.
bool getExtendedLine(ArgCursor& cursor, double extension, AcDbLine& line);
