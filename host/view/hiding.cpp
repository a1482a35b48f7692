#include "host/view/hiding.h"

#include <algorithm>
#include <cmath>

namespace host::view {
namespace {

/// The buffer is finer than the picture by up to this, as far as it doesn't grow beyond so many pixels.
constexpr double finest = 2, mostPixels = 16e6;
/// Chords of a circle that is drawn as chords.
constexpr int fewestChords = 12, mostChords = 720;
constexpr std::uint32_t plainFace = 0xB4B4B4;

/// The finest that doesn't grow beyond the bound.
double finenessOf(int width, int height) {
  return std::min(finest, std::sqrt(mostPixels / (static_cast<double>(width) * height)));
}
int fineSize(int size, double fineness) { return std::max(1, static_cast<int>(size * fineness)); }

class Hider {
 public:
  Hider(const DisplayList& list, const DepthBuffer& buffer, DisplayList& seen)
      : list_(list), buffer_(buffer), seen_(seen) {}

  void show(const Item& item) {
    DisplayList& out = seen_;
    switch (item.kind) {
      case Item::polygon:
        return;
      case Item::polyline:
        return showLine({list_.points.begin() + item.first, list_.points.begin() + item.first + item.count},
                        item.style);
      case Item::arc:
        return showLine(chordsOf(list_.arcs[item.first]), item.style);
      case Item::letters:
        if (!buffer_.isVisible(list_.letters[item.first].origin)) return;
        out.items.push_back({Item::letters, item.style, static_cast<std::uint32_t>(out.letters.size()), 1});
        out.letters.push_back(list_.letters[item.first]);
        return;
      case Item::mark:
        if (buffer_.isVisible(list_.points[item.first]))
          addLine({list_.points[item.first]}, item.style, Item::mark);
        return;
    }
  }

 private:
  static std::vector<AcGePoint3d> chordsOf(const Arc& arc) {
    const int count =
        std::clamp(static_cast<int>(std::abs(arc.sweep) * mostChords / 6.3), fewestChords, mostChords);
    std::vector<AcGePoint3d> points;
    for (int i = 0; i <= count; ++i) {
      const double t = arc.sweep * i / count;
      points.push_back(arc.centre + arc.u * std::cos(t) + arc.v * std::sin(t));
    }
    return points;
  }

  /// Pieces that go on from segment to segment stay one line.
  void showLine(const std::vector<AcGePoint3d>& points, std::uint32_t style) {
    std::vector<AcGePoint3d> open;
    const auto finish = [&] {
      if (open.size() > 1) addLine(open, style, Item::polyline);
      open.clear();
    };
    for (size_t i = 0; i + 1 < points.size(); ++i) {
      const AcGePoint3d &from = points[i], &to = points[i + 1];
      bool reachesEnd = false;
      for (const auto& [begin, end] : buffer_.visibleParts(from, to)) {
        if (begin > 0 || open.empty()) finish(), open.push_back(from + (to - from) * begin);
        open.push_back(from + (to - from) * end);
        reachesEnd = end >= 1 - 1e-12;
      }
      if (!reachesEnd) finish();
    }
    finish();
  }

  void addLine(const std::vector<AcGePoint3d>& points, std::uint32_t style, Item::Kind kind) {
    DisplayList& out = seen_;
    out.items.push_back({kind, style, static_cast<std::uint32_t>(out.points.size()),
                         static_cast<std::uint32_t>(points.size())});
    out.points.insert(out.points.end(), points.begin(), points.end());
  }

  const DisplayList& list_;
  const DepthBuffer& buffer_;
  DisplayList& seen_;
};

}  // namespace

HiddenView::HiddenView(const Projection& projection, const PlaneBox& window, int width, int height,
                       Ground ground)
    : ground_(ground),
      buffer_(fineSize(width, finenessOf(width, height)), fineSize(height, finenessOf(width, height)), window,
              projection) {}

void HiddenView::addFaces(const DisplayList& list, std::uint32_t first, std::uint32_t count) {
  for (std::uint32_t i = first; i < first + count; ++i) {
    const Item& item = list.items[i];
    if (item.kind != Item::polygon) continue;
    hasFaces_ = true;
    const Ink& ink = list.styles[item.style].ink;
    // In the ground's contrast, black or white, light and shadow couldn't be told apart.
    const std::uint32_t rgb = ink.role == Ink::contrast ? plainFace : rgbOf(ink, ground_);
    buffer_.addFace(&list.points[item.first], item.count, rgb);
  }
}

void HiddenView::seenOf(const DisplayList& list, std::uint32_t first, std::uint32_t count,
                        DisplayList& seen) const {
  seen.items.clear(), seen.points.clear(), seen.arcs.clear(), seen.letters.clear();
  seen.styles = list.styles, seen.patterns = list.patterns;
  seen.marks = list.marks, seen.hasMarks = list.hasMarks;
  Hider hider(list, buffer_, seen);
  for (std::uint32_t i = first; i < first + count; ++i) hider.show(list.items[i]);
}

}  // namespace host::view
