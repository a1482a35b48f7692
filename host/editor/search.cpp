#include "host/editor/search.h"

#include <algorithm>

#include "brx/db_block.h"
#include "host/database/nested_visits.h"
#include "host/database/spaces.h"
#include "host/documents/variables.h"
#include "host/view/camera.h"
#include "host/view/picking.h"

namespace host {
namespace {

bool touches(const Region& region, const OutlinePiece& piece) {
  return std::visit([&](const auto& shape) { return region.touches(shape); }, piece);
}

bool liesIn(AcDbEntity& entity, const VisibleLayers& layers, const view::Projection& projection,
            const Region& region, Lies lies) {
  bool touched = false, allInside = true;
  forEachOutlinePiece(entity, layers, projection, [&](const OutlinePiece& piece, const auto&) {
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

/// In the order of drawing; the rest can't meet the region.
std::vector<AcDbObjectId> candidates(AcDbDatabase& drawing, const view::Projection& projection,
                                     const Region& region) {
  const PlaneBox& box = region.bounds();
  return view::entitiesNear(view::Scene::of(drawing), projection,
                            {box.low.x, box.low.y, box.high.x, box.high.y});
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
  const view::Projection projection = view::Camera::of(drawing).projection();
  const std::vector<AcDbObjectId> near = candidates(drawing, projection, region);
  const NestedOperation operation;
  const VisibleLayers layers(drawing);
  std::vector<AcDbObjectId> found;
  for (const AcDbObjectId& id : near) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity.object() || !isShown(*entity, layers.of(entity->layerId()))) continue;
    if (liesIn(*entity, layers, projection, region, lies)) found.push_back(id);
  }
  return found;
}

AcGePoint2d inViewPlane(AcDbDatabase& drawing, const AcGePoint3d& point) {
  const view::PlanePoint seen = view::Camera::of(drawing).projection()(point);
  return {seen.x, seen.y};
}

Region apertureAt(AcDbDatabase& drawing, const AcGePoint3d& point, Aperture kind) {
  const double pixels = kind == Aperture::pick ? numberOr(L"PICKBOX", 3) : numberOr(L"APERTURE", 10);
  const double half = pixels * view::Camera::of(drawing).pixel();
  const AcGePoint2d middle = inViewPlane(drawing, point);
  return Region::box({middle.x - half, middle.y - half}, {middle.x + half, middle.y + half});
}

std::optional<Hit> entityAt(AcDbDatabase& drawing, const AcGePoint3d& point) {
  const view::Projection projection = view::Camera::of(drawing).projection();
  const Region aperture = apertureAt(drawing, point);
  const std::vector<AcDbObjectId> near = candidates(drawing, projection, aperture);
  const NestedOperation operation;
  const VisibleLayers layers(drawing);
  for (auto each = near.rbegin(); each != near.rend(); ++each) {
    AcDbObjectPointer<AcDbEntity> entity(*each);
    if (!entity.object() || !isShown(*entity, layers.of(entity->layerId()))) continue;
    std::optional<Hit> hit;
    forEachOutlinePiece(*entity, layers, projection, [&](const OutlinePiece& piece, const auto& source) {
      if (touches(aperture, piece)) hit = Hit{*each, source()};
      return !hit;
    });
    if (hit) return hit;
  }
  return std::nullopt;
}

}  // namespace host
