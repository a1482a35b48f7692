#pragma once

#include <memory>

#include "brx/db_curves.h"

namespace host {

unsigned segmentCount(const AcDbPolyline& line);
/// The line or arc between two vertices. Arcs run to the left: `reversed` tells that this is against
/// the polyline's own direction.
std::unique_ptr<AcDbCurve> segmentOf(const AcDbPolyline& line, unsigned index, bool& reversed);

}  // namespace host
