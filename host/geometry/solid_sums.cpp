#include "host/geometry/solid_sums.h"

namespace host {

void SolidSums::add(const BrxSolidBody& body) {
  closed = body.closed && (bodies == 0 || closed);
  const double whole = volume + body.volume;
  if (bodies == 0) {
    centre = body.centre;
  } else if (whole != 0) {
    centre = centre + (body.centre - centre) * (body.volume / whole);
  }
  ++bodies;
  faces += static_cast<int>(body.faceEnds.size());
  volume = whole;
  area += body.area;
}

void SolidSums::add(const BrxSolidBodies& solid) {
  for (int i = 0; i < solid.bodyCount(); ++i) add(solid.body(i));
}

}  // namespace host
