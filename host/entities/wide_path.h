#pragma once

#include <vector>

#include "brx/gi.h"
#include "host/entities/path.h"

namespace host {

/// Fills the band along one segment of a path, its corners cut along the bisector to the neighbours.
void drawBand(AcGiWorldDraw& draw, const std::vector<Segment>& path, size_t index, bool closed);

}  // namespace host
