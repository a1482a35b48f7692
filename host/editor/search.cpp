#include "host/editor/search.h"

#include <algorithm>

#include "brx/db_block.h"
#include "host/database/nested_visits.h"
#include "host/database/spaces.h"
#include "host/documents/variables.h"

namespace host {
namespace {

PlaneBox boxOf(const AcDbExtents& extents) {
  PlaneBox box;
  box.add({extents.minPoint().x, extents.minPoint().y});
  box.add({extents.maxPoint().x, extents.maxPoint().y});
  return box;
}

/// A quick look that spares most outlines.
bool mayTouch(const AcDbEntity& entity, const Region& region) {
  AcDbExtents extents;
  if (entity.getGeomExtents(extents) != Acad::eOk || extents.isEmpty()) return true;
  return region.bounds().meets(boxOf(extents));
}

bool touches(const Region& region, const OutlinePiece& piece) {
  return std::visit([&](const auto& shape) { return region.touches(shape); }, piece);
}

bool liesIn(AcDbEntity& entity, const VisibleLayers& layers, const Region& region, Lies lies) {
  bool touched = false, allInside = true;
  forEachOutlinePiece(entity, layers, [&](const OutlinePiece& piece, const auto&) {
    if (lies == Lies::partly) return !(touched = touches(region, piece));
    touched = true;
    return allInside = std::visit([&](const auto& shape) { return region.holds(shape); }, piece);
  });
  return touched && allInside;
}

double numberOr(std::wstring_view name, double otherwise) {
  const auto value = getVariable(name);
  if (!value) return otherwise;
  if (const int* const whole = std::get_if<int>(&*value)) return *whole;
  const double* const real = std::get_if<double>(&*value);
  return real ? *real : otherwise;
}

bool isShown(const AcDbEntity& entity, const VisibleLayers::State& layer) {
  return layer.isVisible() && entity.visibility() == AcDb::kVisible;
}

const std::vector<AcDbObjectId>* entityIdsOf(AcDbObjectId space) {
  AcDbObjectPointer<AcDbBlockTableRecord> record(space);
  return record.object() ? &record->entityIds() : nullptr;
}

std::vector<AcDbObjectId> searched(const AcDbDatabase& drawing, Spaces spaces) {
  if (spaces == Spaces::current) return {currentSpace(drawing)};
  return spacesOf(drawing);
}

}  // namespace

void forEachEntity(AcDbDatabase& drawing, Spaces spaces,
                   const std::function<void(AcDbEntity&, VisibleLayers::State)>& visit) {
  const VisibleLayers layers(drawing);
  for (const AcDbObjectId& space : searched(drawing, spaces)) {
    const auto* const ids = entityIdsOf(space);
    if (!ids) continue;
    for (const AcDbObjectId& id : *ids) {
      AcDbObjectPointer<AcDbEntity> entity(id);
      if (entity.object()) visit(*entity, layers.of(entity->layerId()));
    }
  }
}

std::vector<AcDbObjectId> entitiesIn(AcDbDatabase& drawing, const Region& region, Lies lies) {
  const NestedOperation operation;
  std::vector<AcDbObjectId> found;
  const VisibleLayers layers(drawing);
  forEachEntity(drawing, Spaces::current, [&](AcDbEntity& entity, VisibleLayers::State layer) {
    if (!isShown(entity, layer) || !mayTouch(entity, region)) return;
    if (liesIn(entity, layers, region, lies)) found.push_back(entity.objectId());
  });
  return found;
}

Region apertureAt(const AcGePoint3d& point) {
  constexpr double screenHeight = 1000;  // pixels of a view that nobody has sized
  const double half = numberOr(L"PICKBOX", 3) * numberOr(L"VIEWSIZE", 9) / screenHeight;
  return Region::box({point.x - half, point.y - half}, {point.x + half, point.y + half});
}

std::optional<Hit> entityAt(AcDbDatabase& drawing, const AcGePoint3d& point) {
  const NestedOperation operation;
  const VisibleLayers layers(drawing);
  const Region aperture = apertureAt(point);
  const auto* const ids = entityIdsOf(currentSpace(drawing));
  if (!ids) return std::nullopt;
  for (auto each = ids->rbegin(); each != ids->rend(); ++each) {
    AcDbObjectPointer<AcDbEntity> entity(*each);
    if (!entity.object() || !isShown(*entity, layers.of(entity->layerId()))) continue;
    if (!mayTouch(*entity, aperture)) continue;
    std::optional<Hit> hit;
    forEachOutlinePiece(*entity, layers, [&](const OutlinePiece& piece, const auto& source) {
      if (touches(aperture, piece)) hit = Hit{*each, source()};
      return !hit;
    });
    if (hit) return hit;
  }
  return std::nullopt;
}

}  // namespace host
