#pragma once

#include <unordered_map>

#include "brx/db_database.h"
#include "brx/gi.h"
#include "host/view/display_list.h"

namespace host::view {

/// Traits with all references to layers and blocks resolved.
struct Resolved {
  Ink ink;
  int lineWeight = 25;
  int pattern = -1;
  double linetypeScale = 1;
  AcDbObjectId layer;
  /// Index as it was set.
  Adesk::UInt16 colour = 256;
  bool operator==(const Resolved&) const = default;
};

/// What the list must know of a layer.
struct LayerLook {
  Ink ink;
  int lineWeight = 25;
  int pattern = -1;
  bool off = false, frozen = false;
};

/// Layers and linetypes of a drawing, each read once.
class Looks {
 public:
  Looks(AcDbDatabase& drawing, DisplayList& list) : drawing_(drawing), list_(list) {}
  const LayerLook& layer(AcDbObjectId id);
  /// Index of the pattern in the list, -1 for a continuous line.
  int pattern(AcDbObjectId linetype);
  AcDbDatabase& drawing() const { return drawing_; }

 private:
  AcDbDatabase& drawing_;
  DisplayList& list_;
  std::unordered_map<AcDbStub*, LayerLook> layers_;
  std::unordered_map<AcDbStub*, int> patterns_;
};

/// The traits that an entity is drawn with, as it sets them. `outer` is what the block or object around
/// it has: "by block" means that, and layer 0 inside a block does as well.
class Traits final : public AcGiSubEntityTraits {
 public:
  explicit Traits(Looks& looks) : looks_(&looks) {}
  Adesk::UInt16 color() const override { return colour_.colorIndex(); }
  void setColor(Adesk::UInt16 index) override { colour_.setColorIndex(index); }
  void setTrueColor(Adesk::UInt32 rgb) override;
  AcDbObjectId layerId() const override { return layer_; }
  void setLayer(const AcDbObjectId& layer) override { layer_ = layer, layerSet_ = true; }
  void setLineType(const AcDbObjectId& linetype) override { linetype_ = linetype; }
  void setLineTypeScale(double scale) override { linetypeScale_ = scale; }
  void setLineWeight(int weight) override { lineWeight_ = weight; }
  void setFillType(AcGiFillType type) override { filled_ = type == kAcGiFillAlways; }

  /// Takes the entity's own. One that is in no drawing is drawn on the layer that the object around it
  /// has set for it. `outer` is null for an entity that stands by itself.
  void take(const AcDbEntity& entity, const Traits& around, const Resolved* outer);
  Resolved resolve() const;
  bool filled() const { return filled_; }

 private:
  AcDbObjectId resolvedLayer() const;
  Ink resolvedInk(const LayerLook& layer) const;

  Looks* looks_;
  AcCmColor colour_;
  AcDbObjectId layer_, linetype_;
  double linetypeScale_ = 1;
  int lineWeight_ = -1;
  bool filled_ = false, layerSet_ = false, inside_ = false;
  Resolved outer_;
};

}  // namespace host::view
