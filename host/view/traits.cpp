#include "host/view/traits.h"

#include "host/database/palette.h"

namespace host::view {
namespace {

constexpr int defaultWeight = 25, byLayerWeight = -1, byBlockWeight = -2;
constexpr unsigned byBlock = 0, contrastIndex = 7, byLayer = 256, groundIndex = 257;

int weightOr(int weight, int other) { return weight < 0 ? other : weight; }

Ink inkOf(const AcCmColor& colour) {
  if (colour.isByColor()) return {Ink::exact, colour.rgb()};
  const unsigned index = colour.colorIndex();
  if (index == groundIndex) return {Ink::ground, 0};
  if (index == contrastIndex || index == byBlock || index == byLayer) return {Ink::contrast, 0};
  return {Ink::exact, colourOfIndex(index)};
}

}  // namespace

const LayerLook& Looks::layer(AcDbObjectId id) {
  const auto [found, isNew] = layers_.try_emplace(id.stub());
  LayerLook& look = found->second;
  if (!isNew) return look;
  AcDbObjectPointer<AcDbLayerTableRecord> record(id, AcDb::kForRead, true);
  if (!record.object()) return look;
  look.ink = inkOf(record->color());
  look.lineWeight = weightOr(record->lineWeight(), defaultWeight);
  look.pattern = pattern(record->linetypeObjectId());
  look.off = record->isOff(), look.frozen = record->isFrozen();
  return look;
}

int Looks::pattern(AcDbObjectId linetype) {
  const auto [found, isNew] = patterns_.try_emplace(linetype.stub(), -1);
  if (!isNew) return found->second;
  AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype, AcDb::kForRead, true);
  const double length = record.object() ? record->patternLength() : 0;
  if (!(length > 0) || !std::isfinite(length)) return -1;
  list_.patterns.push_back(record->dashes());
  return found->second = static_cast<int>(list_.patterns.size()) - 1;
}

void Traits::setTrueColor(Adesk::UInt32 rgb) {
  colour_.setRGB(static_cast<Adesk::UInt8>(rgb >> 16), static_cast<Adesk::UInt8>(rgb >> 8),
                 static_cast<Adesk::UInt8>(rgb));
}

void Traits::take(const AcDbEntity& entity, const Traits& around, const Resolved* outer) {
  inside_ = outer != nullptr;
  if (outer) outer_ = *outer;
  colour_ = entity.color(), linetype_ = entity.linetypeId(), linetypeScale_ = entity.linetypeScale();
  lineWeight_ = entity.lineWeight();
  layer_ = around.layerSet_ && entity.objectId().isNull() ? around.layer_ : entity.layerId();
  filled_ = layerSet_ = false;
}

AcDbObjectId Traits::resolvedLayer() const {
  const AcDbObjectId zero = looks_->drawing().layerZero();
  const AcDbObjectId own = layer_.isNull() ? zero : layer_;
  return inside_ && own == zero ? outer_.layer : own;
}

Ink Traits::resolvedInk(const LayerLook& layer) const {
  if (colour_.isByLayer()) return layer.ink;
  return colour_.isByBlock() && inside_ ? outer_.ink : inkOf(colour_);
}

Resolved Traits::resolve() const {
  Resolved result;
  result.layer = resolvedLayer();
  const LayerLook& layer = looks_->layer(result.layer);
  result.ink = resolvedInk(layer), result.colour = color();
  result.lineWeight = lineWeight_ == byLayerWeight              ? layer.lineWeight
                      : lineWeight_ == byBlockWeight && inside_ ? outer_.lineWeight
                                                                : weightOr(lineWeight_, defaultWeight);
  if (linetype_.isNull() || linetype_ == looks_->drawing().byLayerLinetype()) {
    result.pattern = layer.pattern;
  } else if (linetype_ == looks_->drawing().byBlockLinetype()) {
    result.pattern = inside_ ? outer_.pattern : -1;
  } else {
    result.pattern = looks_->pattern(linetype_);
  }
  result.linetypeScale = linetypeScale_;
  return result;
}

}  // namespace host::view
