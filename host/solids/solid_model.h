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
  /// Behind the handles of the references that show it, where it stands in a block: "2F/1A", and "2F:3/1A" in
  /// the third place of a grid.
  std::string handle;
  std::string layer;
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

/// The solids of model space and of the blocks that it shows, in its order; those on layers that are frozen
/// or off are left out.
SolidModel solidModel(AcDbDatabase& drawing, const std::string& name);

/// A word for people: "segment", "elbow".
const char* wordFor(BrxSolidKind kind);

}  // namespace host
