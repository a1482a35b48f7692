#include "host/view/scene_painter.h"

namespace host::view {
namespace {

PlaneBox grown(const PlaneBox& box, double by) {
  return {box.left - by, box.bottom - by, box.right + by, box.top + by};
}

/// What shows within the clip; of hidden views all, since faces outside of it may hide what is inside.
PlaneBox windowOf(const Surface& surface, bool whole) {
  const PlaneBox& all = surface.window;
  if (!surface.pixels.data) return all;
  const double unit = (all.right - all.left) / surface.width;
  const PixelBox clip =
      whole ? PixelBox{0, 0, surface.pixels.width, surface.pixels.height} : surface.pixels.clip;
  return {all.left + (clip.left + surface.shiftX) * unit, all.top - (clip.bottom + surface.shiftY) * unit,
          all.left + (clip.right + surface.shiftX) * unit, all.top - (clip.top + surface.shiftY) * unit};
}

}  // namespace

double reachOf(const Scene& scene, const Surface& surface) {
  const DisplayList* const marked = scene.listWithMarks();
  return Painter(surface).reachOf(marked ? *marked : DisplayList{});
}

ScenePainter::ScenePainter(const Scene& scene, const Surface& surface, Visual visual)
    : scene_(scene), surface_(surface), pixel_((surface.window.right - surface.window.left) / surface.width) {
  const bool hides = visual != Visual::wires;
  const PlaneBox window = windowOf(surface, hides);
  entries_ = scene.entriesIn(surface.projection, grown(window, reachOf(scene, surface) * pixel_));
  if (!hides) return;
  hidden_.emplace(surface.projection, window, static_cast<int>(surface.width),
                  static_cast<int>(surface.height), surface.ground);
  if (visual == Visual::shaded) surface_.backdrop = hidden_->faces();
  step_ = Step::faces;
}

bool ScenePainter::forEachEntry(const Stop& stop, const std::function<void(std::uint32_t)>& work) {
  /// What is asked costs more than a short line.
  constexpr size_t askEvery = 64;
  while (next_ < entries_.size()) {
    work(entries_[next_++]);
    if (next_ % askEvery == 0 && stop && stop()) return false;
  }
  next_ = 0;
  return true;
}

bool ScenePainter::run(const Stop& stop) {
  if (step_ == Step::faces) {
    const auto add = [this](std::uint32_t number) {
      const Scene::Entry& entry = scene_.entry(number);
      if (entry.items) hidden_->addFaces(scene_.listOf(entry), entry.firstItem, entry.items);
    };
    if (!forEachEntry(stop, add)) return false;
    step_ = Step::ground;
  }
  if (step_ == Step::ground) {
    if (!painter_) painter_ = std::make_unique<Painter>(surface_);
    painter_->paintGround();
    step_ = Step::lines;
  }
  if (step_ == Step::lines) {
    if (!forEachEntry(stop, [this](std::uint32_t number) { paint(number); })) return false;
    painter_.reset();
    step_ = Step::done;
  }
  return true;
}

void ScenePainter::paint(std::uint32_t number) {
  const Scene::Entry& entry = scene_.entry(number);
  if (entry.items == 0) return;
  const DisplayList& list = scene_.listOf(entry);
  if (hidden_ && hidden_->hasFaces()) {
    hidden_->seenOf(list, entry.firstItem, entry.items, seen_);
    return painter_->paint(seen_);
  }
  const Item& item = list.items[entry.firstItem];
  if (surface_.pixels.data && item.kind != Item::mark) {
    const PlaneBox box = scene_.boxOf(entry, surface_.projection);
    if (box.right - box.left < pixel_ && box.top - box.bottom < pixel_) {
      const PlanePoint middle{(box.left + box.right) / 2, (box.bottom + box.top) / 2};
      return painter_->paintDot(middle, list.styles[item.style].ink);
    }
  }
  painter_->paint(list, entry.firstItem, entry.items);
}

}  // namespace host::view
