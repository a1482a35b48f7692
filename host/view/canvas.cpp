#include "host/view/canvas.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "host/view/overlay_painter.h"
#include "host/view/scene_painter.h"

namespace host::view {
namespace {

constexpr double pixelsPerMillimetre = 96 / 25.4;
/// What is painted in one go is no larger, so that a part of it is seen soon.
constexpr int tileSize = 400;
/// More boxes to paint than that become tiles of the whole.
constexpr size_t mostPending = 200;
/// A centre that is off by less than this part of a pixel is where it was.
constexpr double samePlace = 0.01;
/// How far the picture may be moved before its pixels are counted anew.
constexpr double farthestShift = 1e7;

PixelBox moved(const PixelBox& box, int right, int down) {
  return {box.left + right, box.top + down, box.right + right, box.bottom + down};
}
bool holds(const PixelBox& outer, const PixelBox& inner) { return inner.cutTo(outer) == inner; }

struct Freed {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};

/// Pixels with a way to draw on them.
class Sheet {
 public:
  Sheet(int width, int height)
      : pixels(static_cast<size_t>(width) * static_cast<size_t>(height), 0xFF000000u) {
    surface_.reset(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(pixels.data()),
                                                       CAIRO_FORMAT_ARGB32, width, height, width * 4));
    cairo_.reset(cairo_create(surface_.get()));
  }
  cairo_t* cairo() const { return cairo_.get(); }
  std::vector<std::uint32_t> pixels;

 private:
  std::unique_ptr<cairo_surface_t, Freed> surface_;
  std::unique_ptr<cairo_t, Freed> cairo_;
};

}  // namespace

struct Canvas::State {
  State(Scene& scene, Camera& camera) : scene(scene), camera(camera) { resize(); }

  PixelBox whole() const { return {0, 0, width, height}; }
  Surface surfaceOf(Sheet& sheet, const PixelBox& clip) const;
  void resize();
  void anchorHere();
  bool moveOrScale();
  void move(int right, int down);
  void scaleFrom(const View& former);
  std::vector<PixelBox> tiles() const;
  void markAll();
  void mark(PixelBox box);
  void takeDamage();
  bool paintNext(const Stop& stop);
  void copy(const Sheet& from, Sheet& to, const PixelBox& box) const;

  Scene& scene;
  Camera& camera;
  Ground ground = Ground::dark;
  Visual visual = Visual::wires;
  int width = 0, height = 0;
  std::uint64_t cameraMoment = 0, sceneMoment = 0;
  /// What the kept picture shows: a view, from which it has been moved by whole pixels.
  View anchor;
  int shiftX = 0, shiftY = 0;
  std::unique_ptr<Sheet> kept, work, shown;
  std::vector<PixelBox> pending;
  bool needsRefining = true;
  /// The box that is being painted.
  PixelBox job;
  std::unique_ptr<ScenePainter> painter;
  /// Since the last overlay was put over it.
  PixelBox changed, overlaid;
};

Canvas::Canvas(Scene& scene, Camera& camera) : state_(std::make_unique<State>(scene, camera)) {}
Canvas::~Canvas() = default;

Ground Canvas::ground() const { return state_->ground; }
Visual Canvas::visual() const { return state_->visual; }
int Canvas::width() const { return state_->width; }
int Canvas::height() const { return state_->height; }
const std::uint32_t* Canvas::pixels() const { return state_->kept->pixels.data(); }
const std::uint32_t* Canvas::shown() const { return state_->shown->pixels.data(); }
void Canvas::repaint() { state_->markAll(); }
void Canvas::setGround(Ground ground) {
  if (std::exchange(state_->ground, ground) != ground) repaint();
}
void Canvas::setVisual(Visual visual) {
  if (std::exchange(state_->visual, visual) != visual) repaint();
}

Surface Canvas::State::surfaceOf(Sheet& sheet, const PixelBox& clip) const {
  Surface surface;
  surface.cairo = sheet.cairo();
  surface.width = width, surface.height = height;
  surface.projection = anchor.projection(), surface.ground = ground;
  const PlanePoint centre = surface.projection(anchor.centre);
  const double up = anchor.height / 2, across = up * width / height;
  surface.window = {centre.x - across, centre.y - up, centre.x + across, centre.y + up};
  surface.unitsPerMillimetre = pixelsPerMillimetre;
  surface.pixels = {sheet.pixels.data(), width, height, clip};
  surface.shiftX = shiftX, surface.shiftY = shiftY;
  return surface;
}

void Canvas::State::copy(const Sheet& from, Sheet& to, const PixelBox& box) const {
  if (box.empty()) return;
  for (int row = box.top; row < box.bottom; ++row) {
    const size_t first =
        static_cast<size_t>(row) * static_cast<size_t>(width) + static_cast<size_t>(box.left);
    std::memcpy(&to.pixels[first], &from.pixels[first], static_cast<size_t>(box.width()) * 4);
  }
}

// What the camera does

/// The old picture stays around the middle, where the camera keeps it.
void Canvas::State::resize() {
  const int formerWidth = width, formerHeight = height;
  width = camera.width(), height = camera.height();
  const std::unique_ptr<Sheet> former = std::exchange(kept, std::make_unique<Sheet>(width, height));
  work = std::make_unique<Sheet>(width, height), shown = std::make_unique<Sheet>(width, height);
  std::fill(kept->pixels.begin(), kept->pixels.end(), 0xFF000000u | rgbOf({Ink::ground, 0}, ground));
  const int right = (width - formerWidth) / 2, down = (height - formerHeight) / 2;
  const PixelBox common = moved({0, 0, formerWidth, formerHeight}, right, down).cutTo(whole());
  for (int row = common.top; former && row < common.bottom; ++row) {
    const auto* const from =
        &former->pixels[static_cast<size_t>(row - down) * static_cast<size_t>(formerWidth) +
                        static_cast<size_t>(common.left - right)];
    std::copy(from, from + common.width(),
              &kept->pixels[static_cast<size_t>(row) * static_cast<size_t>(width) +
                            static_cast<size_t>(common.left)]);
  }
  anchorHere();
  overlaid = {};
}

void Canvas::State::anchorHere() {
  anchor = camera.view();
  shiftX = shiftY = 0;
  cameraMoment = camera.moment();
  needsRefining = true;
  markAll();
}

void Canvas::State::move(int right, int down) {
  if (right == 0 && down == 0) return;
  shiftX -= right, shiftY -= down;
  const PixelBox target = moved(whole(), right, down).cutTo(whole());
  const auto at = [this](int x, int y) {
    return &kept->pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
  };
  for (int i = 0; i < target.height(); ++i) {
    // Rows are moved before they are overwritten.
    const int row = down > 0 ? target.bottom - 1 - i : target.top + i;
    std::memmove(at(target.left, row), at(target.left - right, row - down),
                 static_cast<size_t>(std::max(target.width(), 0)) * 4);
  }
  changed = whole();
  needsRefining = true;
  if (painter) painter.reset(), pending.push_back(job);
  if (visual != Visual::wires || target.empty()) return markAll();
  for (PixelBox& each : pending) each = moved(each, right, down).cutTo(whole());
  std::erase_if(pending, [](const PixelBox& each) { return each.empty(); });
  mark({0, 0, width, target.top}), mark({0, target.bottom, width, height});
  mark({0, target.top, target.left, target.bottom}), mark({target.right, target.top, width, target.bottom});
}

/// The nearest pixels, as fast as can be: a moment later the picture is painted.
void Canvas::State::scaleFrom(const View& former) {
  const double ratio = camera.view().height / former.height;
  const Projection plane = former.projection();
  const PlanePoint way = plane(camera.view().centre - former.centre);
  const double pixel = former.height / height;
  const auto sources = [&](int size, double middle) {
    std::vector<int> from(static_cast<size_t>(size));
    for (int i = 0; i < size; ++i) {
      const double place = std::floor(middle + (i + 0.5 - size / 2.0) * ratio);
      from[static_cast<size_t>(i)] = place >= 0 && place < size ? static_cast<int>(place) : -1;
    }
    return from;
  };
  const std::vector<int> columns = sources(width, width / 2.0 + way.x / pixel);
  const std::vector<int> rows = sources(height, height / 2.0 - way.y / pixel);
  const std::uint32_t empty = 0xFF000000u | rgbOf({Ink::ground, 0}, ground);
  std::uint32_t* to = work->pixels.data();
  for (const int row : rows) {
    const std::uint32_t* const from =
        row < 0 ? nullptr : &kept->pixels[static_cast<size_t>(row) * static_cast<size_t>(width)];
    for (const int column : columns) *to++ = from && column >= 0 ? from[column] : empty;
  }
  copy(*work, *kept, whole());
}

bool Canvas::State::moveOrScale() {
  const View& next = camera.view();
  const PlanePoint way = anchor.projection()(next.centre - anchor.centre);
  const double x = way.x / (anchor.height / height), y = -way.y / (anchor.height / height);
  const bool sameSight = next.towards == anchor.towards && next.up == anchor.up;
  const bool isNear = std::abs(x) < farthestShift && std::abs(y) < farthestShift;
  if (sameSight && next.height == anchor.height && isNear && std::abs(x - std::round(x)) < samePlace &&
      std::abs(y - std::round(y)) < samePlace) {
    move(shiftX - static_cast<int>(std::round(x)), shiftY - static_cast<int>(std::round(y)));
    cameraMoment = camera.moment();
    return true;
  }
  View former = anchor;
  const Projection plane = anchor.projection();
  const double pixel = anchor.height / height;
  former.centre = former.centre + plane.right * (shiftX * pixel) - plane.up * (shiftY * pixel);
  painter.reset();
  if (sameSight) scaleFrom(former);
  anchorHere();
  changed = whole();
  return true;
}

bool Canvas::follow() {
  State& s = *state_;
  if (s.camera.width() != s.width || s.camera.height() != s.height) {
    s.resize();
    s.changed = s.whole();
    return true;
  }
  return s.camera.moment() != s.cameraMoment && s.moveOrScale();
}

// What is painted

/// Those in the middle of the picture come first: they stand last in the list.
std::vector<PixelBox> Canvas::State::tiles() const {
  std::vector<PixelBox> tiles;
  for (int top = 0; top < height; top += tileSize) {
    for (int left = 0; left < width; left += tileSize)
      tiles.push_back(PixelBox{left, top, left + tileSize, top + tileSize}.cutTo(whole()));
  }
  const auto distance = [this](const PixelBox& box) {
    return std::hypot((box.left + box.right - width) / 2.0, (box.top + box.bottom - height) / 2.0);
  };
  std::stable_sort(tiles.begin(), tiles.end(),
                   [&](const PixelBox& a, const PixelBox& b) { return distance(a) > distance(b); });
  return tiles;
}

void Canvas::State::markAll() {
  painter.reset();
  pending = visual == Visual::wires ? tiles() : std::vector{whole()};
}

void Canvas::State::mark(PixelBox box) {
  box = box.cutTo(whole());
  if (box.empty()) return;
  if (visual != Visual::wires) return markAll();
  if (painter && !box.cutTo(job).empty()) painter.reset(), pending.push_back(job);
  if (std::any_of(pending.begin(), pending.end(), [&](const PixelBox& each) { return holds(each, box); }))
    return;
  std::erase_if(pending, [&](const PixelBox& each) { return holds(box, each); });
  pending.push_back(box);
  if (pending.size() <= mostPending) return;
  const std::vector<PixelBox> many = std::exchange(pending, tiles());
  std::erase_if(pending, [&](const PixelBox& tile) {
    return std::none_of(many.begin(), many.end(),
                        [&](const PixelBox& each) { return !each.cutTo(tile).empty(); });
  });
}

void Canvas::State::takeDamage() {
  if (sceneMoment == scene.moment()) return;
  const Scene::Damage damage = scene.damageSince(sceneMoment);
  sceneMoment = scene.moment();
  // Entries may have moved in memory, so that nothing goes on.
  if (painter) painter.reset(), pending.push_back(job);
  if (damage.everywhere) return markAll();
  const Surface surface = surfaceOf(*work, whole());
  const double reach = reachOf(scene, surface), scale = height / anchor.height;
  for (const AcDbExtents& each : damage.boxes) {
    PlaneBox box;
    const AcGePoint3d low = each.minPoint(), high = each.maxPoint();
    for (int corner = 0; corner < 8; ++corner) {
      box.add(surface.projection(AcGePoint3d{corner & 1 ? high.x : low.x, corner & 2 ? high.y : low.y,
                                             corner & 4 ? high.z : low.z}));
    }
    const auto pixel = [&](double way, double limit) {
      return static_cast<int>(std::clamp(way, -1.0, limit + 1));
    };
    mark({pixel(std::floor((box.left - surface.window.left) * scale - shiftX - reach), width),
          pixel(std::floor(height - (box.top - surface.window.bottom) * scale - shiftY - reach), height),
          pixel(std::ceil((box.right - surface.window.left) * scale - shiftX + reach), width),
          pixel(std::ceil(height - (box.bottom - surface.window.bottom) * scale - shiftY + reach), height)});
  }
}

/// One box; large ones are split first.
bool Canvas::State::paintNext(const Stop& stop) {
  if (!painter) {
    job = pending.back();
    pending.pop_back();
    if (visual == Visual::wires && (job.width() > 2 * tileSize || job.height() > 2 * tileSize)) {
      const bool isWide = job.width() > job.height();
      PixelBox rest = job;
      (isWide ? rest.left : rest.top) = isWide ? job.left + tileSize : job.top + tileSize;
      (isWide ? job.right : job.bottom) = isWide ? rest.left : rest.top;
      pending.push_back(rest);
    }
    painter = std::make_unique<ScenePainter>(scene, surfaceOf(*work, job), visual);
  }
  if (!painter->run(stop)) return false;
  painter.reset();
  copy(*work, *kept, job);
  changed.join(job);
  return true;
}

bool Canvas::paint(const Stop& stop) {
  State& s = *state_;
  follow();
  SceneLook look;
  if (s.visual != Visual::wires) look.towards = s.anchor.towards;
  s.scene.setLook(look);
  if (!s.scene.update(stop)) {
    // What was begun may have gone.
    if (s.painter) s.painter.reset(), s.pending.push_back(s.job);
    return false;
  }
  s.takeDamage();
  if (s.needsRefining) {
    constexpr double seenPart = 0.25;  // of a pixel
    s.needsRefining = !s.scene.refine(s.anchor.projection(), s.camera.window(),
                                      s.anchor.height / s.height * seenPart, stop);
    s.takeDamage();
    if (s.needsRefining) return false;
  }
  while (s.painter || !s.pending.empty()) {
    if (!s.paintNext(stop)) return false;
    if (stop && stop()) return !s.painter && s.pending.empty();
  }
  return true;
}

bool Canvas::isWhole() const {
  const State& s = *state_;
  return !s.painter && s.pending.empty() && !s.needsRefining && s.cameraMoment == s.camera.moment() &&
         s.scene.isCurrent() && s.sceneMoment == s.scene.moment();
}

PixelBox Canvas::compose(const Overlay& overlay) {
  State& s = *state_;
  const PixelBox next =
      overlay.empty() ? PixelBox{} : boxOf(overlay, s.scene, s.surfaceOf(*s.shown, s.whole()));
  PixelBox touched = std::exchange(s.changed, {});
  touched.join(std::exchange(s.overlaid, next));
  touched.join(next);
  s.copy(*s.kept, *s.shown, touched);
  if (!next.empty()) paintOverlay(overlay, s.scene, s.surfaceOf(*s.shown, touched));
  return touched;
}

}  // namespace host::view
