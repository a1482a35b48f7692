#include <QApplication>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "brx/db_entity.h"
#include "host/access/coordinate_systems.h"
#include "host/database/selection_set.h"
#include "host/editor/drawing_state.h"
#include "host/editor/search.h"
#include "host/window/variables.h"
#include "host/window/viewport.h"

/// What the cursor means in the viewport: points, snaps, choices, and what is drawn around it.

namespace host {
namespace {

constexpr std::uint32_t windowBlue = 0x4C8BF5, crossingGreen = 0x3FB950, bandColour = 0xE0B040;
constexpr double boxFill = 0.15;
/// Entities beyond that many show no grips.
constexpr size_t mostWithGrips = 100;
/// Pixels beside a grip's middle that still count as the grip.
constexpr double gripReach = 5;

bool asksForPoint(const Request& request) {
  switch (request.wanted) {
    case Wanted::point:
    case Wanted::distance:
    case Wanted::angle:
    case Wanted::orientation:
      return true;
    default:
      return false;
  }
}

bool takesClicks(const Request& request) { return asksForPoint(request) || request.wanted == Wanted::entity; }

/// The nearer of the two lines through the base along the axes.
AcGePoint3d bound(const AcGePoint3d& point, const AcGePoint3d& base) {
  const AcGeVector3d way = point - base;
  return std::abs(way.x) >= std::abs(way.y) ? AcGePoint3d{point.x, base.y, point.z}
                                            : AcGePoint3d{base.x, point.y, point.z};
}

bool isFinite(const AcGePoint3d& p) { return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z); }

}  // namespace

AcGePoint3d Viewport::worldAt(const QPointF& place) const {
  const AcGeMatrix3d user = userSystem();
  const AcGePoint3d origin = user * AcGePoint3d{0, 0, realVariable(L"ELEVATION", 0)};
  return camera().onPlane(pixelOf(place), origin, user * AcGeVector3d{0, 0, 1});
}

void Viewport::takeCursor(const QPointF& place) {
  place_ = place;
  snap_.reset();
  world_ = worldAt(place);
  const Request* const request = conversation_.request();
  if (request && asksForPoint(*request) && !request->rubberBox && motion_ == Motion::none) {
    const AcGeMatrix3d user = userSystem();
    const AcGePoint3d last = user * request->base.value_or(lastPoint());
    snap_ = snapAt(*drawing_, world_, intVariable(L"OSMODE", 0), last);
    if (snap_) {
      world_ = snap_->point;
    } else if (request->base && intVariable(L"ORTHOMODE", 0) && !request->followsCursor) {
      world_ = user * bound(user.inverse() * world_, *request->base);
    }
  }
  if (listeners_.onCursor) listeners_.onCursor(userSystem().inverse() * world_);
}

void Viewport::searchUnderCursor() {
  hovered_.clear();
  const Request* const request = conversation_.request();
  const bool chooses = request ? request->wanted == Wanted::entity : listeners_.mayChoose();
  if (!chooses || corner_ || orbiting_) return;
  if (const auto hit = entityAt(*drawing_, world_)) hovered_ = {hit->entity};
}

/// On the line of sight, as far away as the middle of what is there; nothing where nothing is.
std::optional<AcGePoint3d> Viewport::pivotAt(const QPointF& place) const {
  const view::Ray ray = camera().rayAt(pixelOf(place));
  const auto hit = entityAt(*drawing_, ray.origin);
  const AcDbObjectPointer<AcDbEntity> entity(hit ? hit->entity : AcDbObjectId());
  AcDbExtents box;
  if (!entity.object() || entity->getGeomExtents(box) != Acad::eOk || box.isEmpty()) return std::nullopt;
  const AcGePoint3d middle = box.minPoint() + (box.maxPoint() - box.minPoint()) / 2;
  return ray.origin + ray.direction * (middle - ray.origin).dotProduct(ray.direction);
}

void Viewport::clickForPrompt() {
  const Request& request = *conversation_.request();
  if (takesClicks(request) && isFinite(world_)) conversation_.give(userSystem().inverse() * world_);
}

void Viewport::clickForChoice(bool removes) {
  if (corner_) return chooseInBox(removes);
  DrawingState* const state = currentState();
  if (!state || !isFinite(world_)) return;
  if (const auto grip = gripAt(*place_)) return listeners_.onGrip(*grip);
  const auto hit = entityAt(*drawing_, world_);
  if (!hit) {
    corner_ = world_;
    return;
  }
  Entities& chosen = state->chosenBefore;
  const auto known = std::find(chosen.begin(), chosen.end(), hit->entity);
  if (removes && known != chosen.end()) chosen.erase(known);
  if (!removes && known == chosen.end()) chosen.push_back(hit->entity);
}

void Viewport::chooseInBox(bool removes) {
  DrawingState* const state = currentState();
  const AcGePoint3d corner = *corner_;
  corner_.reset();
  if (!state || !isFinite(world_)) return;
  const Lies lies = camera().toPixel(corner).x <= camera().toPixel(world_).x ? Lies::wholly : Lies::partly;
  const Entities found = entitiesIn(
      *drawing_, Region::box(inViewPlane(*drawing_, corner), inViewPlane(*drawing_, world_)), lies);
  SelectionSet set;
  for (const AcDbObjectId& each : state->chosenBefore) set.add(each);
  for (const AcDbObjectId& each : found) removes ? set.remove(each) : set.add(each);
  state->chosenBefore = set.entities();
}

// What is laid over the picture

view::Overlay Viewport::overlay() {
  view::Overlay over;
  const Request* const request = conversation_.request();
  if (request && request->image) over.images.push_back(request->image);
  const DrawingState* const state = currentState();
  if (request) {
    over.chosen = request->chosen;
  } else if (state) {
    over.chosen = state->chosenBefore;
  }
  std::erase_if(over.chosen, [](const AcDbObjectId& id) { return id.isErased(); });
  over.hovered = hovered_;
  addBands(over);
  if (!request) addGrips(over);
  if (snap_) {
    static constexpr std::pair<SnapMode, view::Marker::Kind> signs[] = {
        {snapEnd, view::Marker::end},
        {snapMiddle, view::Marker::middle},
        {snapCentre, view::Marker::centre},
        {snapNode, view::Marker::node},
        {snapQuadrant, view::Marker::quadrant},
        {snapIntersection, view::Marker::intersection},
        {snapInsertion, view::Marker::insertion},
        {snapPerpendicular, view::Marker::perpendicular},
        {snapTangent, view::Marker::tangent},
        {snapNearest, view::Marker::nearest}};
    for (const auto& [mode, kind] : signs) {
      if (mode == snap_->mode) over.markers.push_back({kind, snap_->point});
    }
  }
  return over;
}

void Viewport::addBands(view::Overlay& over) const {
  if (!place_) return;
  if (corner_) addBox(over, *corner_, world_);
  const Request* const request = conversation_.request();
  if (!request || !request->base) return;
  const AcGePoint3d base = userSystem() * *request->base;
  if (request->rubberBox) addBox(over, base, world_);
  if (request->rubberBand) {
    view::Band band;
    band.points = {camera().toPixel(base), camera().toPixel(world_)};
    band.rgb = bandColour;
    band.dashed = (request->rules.bits & 32) != 0;
    over.bands.push_back(std::move(band));
  }
}

void Viewport::addBox(view::Overlay& over, const AcGePoint3d& corner, const AcGePoint3d& opposite) const {
  const view::PixelPoint a = camera().toPixel(corner), b = camera().toPixel(opposite);
  const bool crossing = b.x < a.x;
  view::Band band;
  band.points = {a, {b.x, a.y}, b, {a.x, b.y}};
  band.rgb = crossing ? crossingGreen : windowBlue;
  band.closed = true;
  band.dashed = crossing;
  band.fill = boxFill;
  over.bands.push_back(std::move(band));
}

void Viewport::addGrips(view::Overlay& over) const {
  if (over.chosen.size() > mostWithGrips) return;
  const auto warm = place_ && !corner_ ? gripAt(*place_) : std::nullopt;
  for (const AcDbObjectId& each : over.chosen) {
    for (const Grip& grip : gripsOf(each)) {
      const bool isWarm = warm && warm->entity == each && warm->index == grip.index;
      over.markers.push_back({isWarm ? view::Marker::warmGrip : view::Marker::grip, grip.point});
    }
  }
}

/// The grip of a chosen entity under the cursor.
std::optional<Grip> Viewport::gripAt(const QPointF& place) const {
  const DrawingState* const state = currentState();
  if (!state || state->chosenBefore.size() > mostWithGrips) return std::nullopt;
  const view::PixelPoint cursor = pixelOf(place);
  for (const AcDbObjectId& each : state->chosenBefore) {
    for (const Grip& grip : gripsOf(each)) {
      const view::PixelPoint at = camera().toPixel(grip.point);
      if (std::abs(at.x - cursor.x) <= gripReach && std::abs(at.y - cursor.y) <= gripReach) return grip;
    }
  }
  return std::nullopt;
}

// The prompt beside the cursor

QString Viewport::promptAtCursor() const {
  const Request* const request = conversation_.request();
  if (!request || !place_) return {};
  QString text = QString::fromStdWString(request->prompt).trimmed();
  if (text.endsWith(QLatin1Char(':'))) text.chop(1);
  if (request->base && request->rubberBand) {
    const AcGeVector3d way = userSystem().inverse() * world_ - *request->base;
    const double degrees = way.convert2d().angle() * 180 / 3.14159265;
    text += QStringLiteral("   %1 < %2°").arg(way.length(), 0, 'f', 2).arg(degrees, 0, 'f', 1);
  }
  return text;
}

void Viewport::paintPrompt(QPainter& painter) {
  const QRect former = std::exchange(promptBox_, QRect());
  const QString text = promptAtCursor();
  if (!text.isEmpty()) {
    const QFontMetrics letters(font());
    const QString shown = letters.elidedText(text, Qt::ElideRight, std::max(width() * 2 / 3, 40));
    QRect box = letters.boundingRect(shown).adjusted(-6, -3, 6, 3);
    box.moveTopLeft(place_->toPoint() + QPoint(18, 18));
    box.moveRight(std::min(box.right(), width() - 2));
    box.moveBottom(std::min(box.bottom(), height() - 2));
    painter.setPen(palette().color(QPalette::Mid));
    painter.setBrush(palette().color(QPalette::ToolTipBase));
    painter.drawRect(box);
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.drawText(box, Qt::AlignCenter, shown);
    promptBox_ = box.adjusted(-1, -1, 2, 2);
  }
  if (former != promptBox_) update(former.united(promptBox_));
}

}  // namespace host
