#pragma once

#include "brx/solid_bodies.h"

namespace host {

/// What the bodies of an entity, or of several, come to. Drawing units.
struct SolidSums {
  int bodies = 0, faces = 0;
  double volume = 0, area = 0;
  /// Of the whole volume.
  AcGePoint3d centre;
  /// All bodies are; false without any.
  bool closed = false;

  void add(const BrxSolidBody& body);
  void add(const BrxSolidBodies& solid);
};

}  // namespace host
