#include "host/view/overlay_painter.h"

#include <algorithm>
#include <cmath>

#include "host/view/scene_painter.h"

namespace host::view {
namespace {

/// Half the side of a marker, pixels.
constexpr double markerHalf = 5.5, gripHalf = 4;
constexpr double markerWidth = 2;
constexpr double hoverWidening = 2, chosenWidening = 1;
constexpr std::uint32_t hoverColour = 0x8AB4D8, chosenColour = 0x3D8BFD, snapColour = 0x2E9E4F;
constexpr std::uint32_t gripColour = 0x3D8BFD, warmColour = 0xF2A3A3, hotColour = 0xD93636,
                        gripBorder = 0x1B3B66;

/// From the plane to pixels.
struct Pixels {
  explicit Pixels(const Surface& surface)
      : surface(surface), scale(surface.width / (surface.window.right - surface.window.left)) {}
  PixelPoint operator()(const PlanePoint& p) const {
    return {(p.x - surface.window.left) * scale - surface.shiftX,
            surface.height - (p.y - surface.window.bottom) * scale - surface.shiftY};
  }
  PixelPoint operator()(const AcGePoint3d& p) const { return (*this)(surface.projection(p)); }
  const Surface& surface;
  double scale;
};

/// What lies far outside of the picture is as good as just outside.
int whole(double v) { return static_cast<int>(std::clamp(v, -1e8, 1e8)); }
PixelBox around(const PixelPoint& a, const PixelPoint& b, double reach) {
  if (!std::isfinite(a.x + a.y + b.x + b.y)) return {};
  return {whole(std::floor(std::min(a.x, b.x) - reach)), whole(std::floor(std::min(a.y, b.y) - reach)),
          whole(std::ceil(std::max(a.x, b.x) + reach)), whole(std::ceil(std::max(a.y, b.y) + reach))};
}
PixelBox around(const PlaneBox& box, const Pixels& pixels, double reach) {
  if (box.empty()) return {};
  return around(pixels(PlanePoint{box.left, box.bottom}), pixels(PlanePoint{box.right, box.top}), reach);
}

template <class Visit>
void forEachEntry(const std::vector<AcDbObjectId>& entities, const Scene& scene, Visit visit) {
  for (const AcDbObjectId& id : entities) {
    const Scene::Entry* const entry = scene.find(id);
    if (entry && entry->items) visit(*entry);
  }
}

class Signs {
 public:
  explicit Signs(const Surface& surface) : cairo_(surface.cairo), pixels_(surface) {}

  void band(const Band& band) {
    if (band.points.size() < 2) return;
    for (const PixelPoint& each : band.points) {
      // Ends far away would be no numbers of the surface any more.
      cairo_line_to(cairo_, std::clamp(each.x, -2e4, 4e4), std::clamp(each.y, -2e4, 4e4));
    }
    if (band.closed) cairo_close_path(cairo_);
    if (band.closed && band.fill > 0) {
      colour(band.rgb, band.fill);
      cairo_fill_preserve(cairo_);
    }
    colour(band.rgb);
    cairo_set_line_width(cairo_, band.width);
    const double dash = 5;
    cairo_set_dash(cairo_, &dash, band.dashed ? 1 : 0, 0);
    cairo_stroke(cairo_);
    cairo_set_dash(cairo_, nullptr, 0, 0);
  }

  void marker(const Marker& marker) {
    const PixelPoint at = pixels_(marker.at);
    if (!(std::abs(at.x) < 1e6 && std::abs(at.y) < 1e6)) return;
    cairo_save(cairo_);
    // In the middle of a pixel, so that upright lines are sharp.
    cairo_translate(cairo_, std::floor(at.x) + 0.5, std::floor(at.y) + 0.5);
    if (marker.kind >= Marker::grip) {
      grip(marker.kind);
    } else {
      sign(marker.kind);
      cairo_set_line_width(cairo_, markerWidth);
      colour(snapColour);
      cairo_stroke(cairo_);
    }
    cairo_restore(cairo_);
  }

 private:
  void colour(std::uint32_t rgb, double opacity = 1) {
    cairo_set_source_rgba(cairo_, (rgb >> 16 & 0xFF) / 255.0, (rgb >> 8 & 0xFF) / 255.0, (rgb & 0xFF) / 255.0,
                          opacity);
  }
  void grip(Marker::Kind kind) {
    cairo_rectangle(cairo_, -gripHalf, -gripHalf, 2 * gripHalf, 2 * gripHalf);
    colour(kind == Marker::hotGrip ? hotColour : kind == Marker::warmGrip ? warmColour : gripColour);
    cairo_fill_preserve(cairo_);
    colour(gripBorder);
    cairo_set_line_width(cairo_, 1);
    cairo_stroke(cairo_);
  }
  void move(double x, double y) { cairo_move_to(cairo_, x * markerHalf, y * markerHalf); }
  void line(double x, double y) { cairo_line_to(cairo_, x * markerHalf, y * markerHalf); }
  void circle(double radius) {
    cairo_new_sub_path(cairo_);
    cairo_arc(cairo_, 0, 0, radius * markerHalf, 0, 6.283185307179586);
  }
  void box(double half) {
    move(-half, -half), line(half, -half), line(half, half), line(-half, half);
    cairo_close_path(cairo_);
  }
  void cross() { move(-1, -1), line(1, 1), move(-1, 1), line(1, -1); }
  /// One sign for each kind of exact point.
  void sign(Marker::Kind kind) {
    switch (kind) {
      case Marker::end:
        return box(1);
      case Marker::middle:
        move(-1, 0.8), line(1, 0.8), line(0, -1);
        return cairo_close_path(cairo_);
      case Marker::centre:
        return circle(1);
      case Marker::node:
        circle(1);
        return cross();
      case Marker::quadrant:
        move(0, -1), line(1, 0), line(0, 1), line(-1, 0);
        return cairo_close_path(cairo_);
      case Marker::intersection:
        return cross();
      case Marker::insertion:
        move(-1, -1), line(0.2, -1), line(0.2, -0.2), line(1, -0.2), line(1, 1), line(-0.2, 1),
            line(-0.2, 0.2), line(-1, 0.2);
        return cairo_close_path(cairo_);
      case Marker::perpendicular:
        move(-1, -1), line(-1, 1), line(1, 1), move(-1, 0), line(0, 0), line(0, 1);
        return;
      case Marker::tangent:
        circle(0.75), move(-1, -0.9), line(1, -0.9);
        return;
      default:
        move(-1, -1), line(1, 1), line(-1, 1), line(1, -1);
        return cairo_close_path(cairo_);
    }
  }

  cairo_t* cairo_;
  Pixels pixels_;
};

}  // namespace

PixelBox boxOf(const Overlay& overlay, const Scene& scene, const Surface& surface) {
  const Pixels pixels(surface);
  PixelBox box;
  for (const DisplayList* each : overlay.images) {
    box.join(around(boxOf(*each, surface.projection), pixels, Painter(surface).reachOf(*each)));
  }
  const double reach = reachOf(scene, surface) + hoverWidening;
  for (const auto* entities : {&overlay.hovered, &overlay.chosen}) {
    forEachEntry(*entities, scene, [&](const Scene::Entry& entry) {
      box.join(around(scene.boxOf(entry, surface.projection), pixels, reach));
    });
  }
  for (const Band& each : overlay.bands) {
    for (const PixelPoint& point : each.points) box.join(around(point, point, each.width + 2));
  }
  for (const Marker& each : overlay.markers) {
    const PixelPoint at = pixels(each.at);
    box.join(around(at, at, markerHalf + markerWidth + 1));
  }
  return box.cutTo({0, 0, surface.pixels.width, surface.pixels.height});
}

void paintOverlay(const Overlay& overlay, const Scene& scene, const Surface& surface) {
  Painter painter(surface);
  const auto paintEntry = [&](const Scene::Entry& entry) {
    painter.paint(scene.listOf(entry), entry.firstItem, entry.items);
  };
  painter.setAccent(Accent{chosenColour, chosenWidening});
  forEachEntry(overlay.chosen, scene, paintEntry);
  painter.setAccent(Accent{hoverColour, hoverWidening});
  forEachEntry(overlay.hovered, scene, paintEntry);
  painter.setAccent({});
  for (const DisplayList* each : overlay.images) painter.paint(*each);
  Signs signs(surface);
  for (const Band& each : overlay.bands) signs.band(each);
  for (const Marker& each : overlay.markers) signs.marker(each);
}

}  // namespace host::view
