#pragma once

#include <string>
#include <utility>
#include <vector>

#include "brx/db_database.h"
#include "brx/solid_bodies.h"

namespace host {

/// The solids of a drawing as programs of others take them. Texts are UTF-8.

struct SolidElement {
  BrxSolidKind kind = BrxSolidKind::other;
  std::string handle, layer;
  unsigned rgb = 0;  // 0xRRGGBB
  /// What the application hangs on the entity: keys and values.
  std::vector<std::pair<std::string, std::string>> properties;
  std::vector<BrxSolidBody> bodies;
};

/// The drawing's unit: how many metres it is, and what it is called where it isn't metric.
struct LengthUnit {
  double metres = 1;
  const char* name = "METRE";
  /// Prefix of a metric unit, "" for the metre itself; null for other units.
  const char* prefix = "";
};

struct SolidModel {
  std::string drawing;  // name of its file, or of the drawing
  LengthUnit unit;
  std::vector<SolidElement> elements;
};

/// The solids of model space, in its order; those on layers that are frozen or off are left out.
SolidModel solidModel(AcDbDatabase& drawing, const std::string& name);

/// A word for people: "segment", "elbow".
const char* wordFor(BrxSolidKind kind);

}  // namespace host
