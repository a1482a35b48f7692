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

class Hider {
 public:
  Hider(const DisplayList& list, DepthBuffer& buffer, Ground ground, SeenList& seen)
      : list_(list), buffer_(buffer), ground_(ground), seen_(seen) {}

  void run() {
    seen_.lines.styles = list_.styles;
    seen_.lines.patterns = list_.patterns;
    seen_.lines.marks = list_.marks;
    for (const Item& each : list_.items) {
      if (each.kind != Item::polygon) continue;
      const Ink& ink = list_.styles[each.style].ink;
      // In the ground's contrast, black or white, light and shadow couldn't be told apart.
      const std::uint32_t rgb = ink.role == Ink::contrast ? plainFace : rgbOf(ink, ground_);
      buffer_.addFace(&list_.points[each.first], each.count, rgb);
    }
    for (const Item& each : list_.items) show(each);
  }

 private:
  void show(const Item& item) {
    DisplayList& out = seen_.lines;
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
    DisplayList& out = seen_.lines;
    out.items.push_back({kind, style, static_cast<std::uint32_t>(out.points.size()),
                         static_cast<std::uint32_t>(points.size())});
    out.points.insert(out.points.end(), points.begin(), points.end());
  }

  const DisplayList& list_;
  DepthBuffer& buffer_;
  Ground ground_;
  SeenList& seen_;
};

}  // namespace

SeenList seenList(const DisplayList& list, const Projection& projection, const PlaneBox& window, int width,
                  int height, Ground ground) {
  SeenList seen;
  const bool hasFaces = std::any_of(list.items.begin(), list.items.end(),
                                    [](const Item& each) { return each.kind == Item::polygon; });
  if (!hasFaces) return seen.lines = list, seen;
  const double fineness = std::min(finest, std::sqrt(mostPixels / (static_cast<double>(width) * height)));
  seen.width = std::max(1, static_cast<int>(width * fineness));
  seen.height = std::max(1, static_cast<int>(height * fineness));
  DepthBuffer buffer(seen.width, seen.height, window, projection);
  Hider(list, buffer, ground, seen).run();
  seen.pixels = buffer.pixels();
  return seen;
}

}  // namespace host::view
