#include "host/view/painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "host/view/clip.h"
#include "host/view/dashes.h"
#include "host/view/surface_fonts.h"

namespace host::view {
namespace {

/// A curve may leave its chords or Bézier pieces by this much of a surface unit.
constexpr double flatness = 0.1;
/// The surface strokes long lines wrongly from some 100,000 units on; what reaches beyond is cut outside the
/// picture, so that the cut is not to be seen.
constexpr double beyondPicture = 2e4;
/// Dashes shorter than this are no longer told apart.
constexpr double smallestPattern = 3;
/// Letters with capitals below this are bars.
constexpr double smallestLetters = 1.5;
/// Strokes of one style that go to the surface together: many, but a path of too many is slow.
constexpr int mostStrokes = 256;

}  // namespace

class Painter::Work {
 public:
  explicit Work(const Surface& surface)
      : surface_(surface),
        lines_(surface.pixels),
        cairo_(surface.cairo),
        scale_(surface.width / (surface.window.right - surface.window.left)),
        bounds_{-beyondPicture, -beyondPicture, surface.width + beyondPicture,
                surface.height + beyondPicture} {
    cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
    cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
    if (!hasPixels()) return;
    cairo_surface_flush(cairo_get_target(cairo_));
    const PixelBox& clip = surface_.pixels.clip;
    cairo_reset_clip(cairo_);
    cairo_rectangle(cairo_, clip.left, clip.top, clip.width(), clip.height());
    cairo_clip(cairo_);
  }
  ~Work() {
    if (hasPixels()) cairo_surface_mark_dirty(cairo_get_target(cairo_));
  }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  void paintGround() {
    setColour(colourOf({Ink::ground}));
    cairo_paint(cairo_);
    paintBackdrop();
  }
  void paint(const DisplayList& list, std::uint32_t first, std::uint32_t count) {
    list_ = &list, style_ = nullptr;
    // Few items are painted sooner than looked at.
    constexpr std::uint32_t few = 4;
    const double reach = count > few ? reachOf(list) / scale_ : 0;
    const PlaneBox seen = grown(seenWindow(), reach);
    for (std::uint32_t i = first; i < first + count; ++i) {
      const Item& item = list.items[i];
      if (count <= few || seen.meets(boxOf(list, item, surface_.projection))) paintItem(item);
    }
    flush();
  }
  void paintDot(const PlanePoint& at, const Ink& ink) { lines_.dot(onSurface(at), colourOf(ink)); }
  void setAccent(const std::optional<Accent>& accent) { accent_ = accent; }

  double reachOf(const DisplayList& list) const {
    constexpr double smoothing = 2, widest = 2.11;  // millimetres
    double reach = smoothing + widest * surface_.unitsPerMillimetre / 2;
    if (list.hasMarks) reach = std::max(reach, 2 * markSize(list.marks) + smoothing);
    return reach;
  }

 private:
  std::uint32_t colourOf(const Ink& ink) const {
    return accent_ ? accent_->rgb : rgbOf(ink, surface_.ground);
  }
  static PlaneBox grown(const PlaneBox& box, double by) {
    return {box.left - by, box.bottom - by, box.right + by, box.top + by};
  }
  /// The part of the plane that shows within the clip.
  PlaneBox seenWindow() const {
    if (!hasPixels()) return surface_.window;
    const PixelBox& clip = surface_.pixels.clip;
    const auto x = [&](double at) { return surface_.window.left + (at + surface_.shiftX) / scale_; };
    const auto y = [&](double at) {
      return surface_.window.bottom + (surface_.height - at - surface_.shiftY) / scale_;
    };
    return {x(clip.left), y(clip.bottom), x(clip.right), y(clip.top)};
  }
  bool hasPixels() const { return surface_.pixels.data != nullptr; }
  bool isThin() const { return hasPixels() && lineWidth_ == 1; }
  double markSize(const MarkLook& look) const {
    const double percent = look.size < 0 ? -look.size : 5;
    const double whole = look.size > 0 ? look.size * scale_ : surface_.height * percent / 100;
    return std::min(whole, beyondPicture);
  }
  void paintBackdrop() {
    const Backdrop& faces = surface_.backdrop;
    if (!faces.pixels || faces.pixels->empty()) return;
    // The surface reads them only.
    auto* const bytes = reinterpret_cast<unsigned char*>(const_cast<std::uint32_t*>(faces.pixels->data()));
    cairo_surface_t* const image = cairo_image_surface_create_for_data(
        bytes, CAIRO_FORMAT_ARGB32, faces.width, faces.height, faces.width * 4);
    cairo_save(cairo_);
    cairo_scale(cairo_, surface_.width / faces.width, surface_.height / faces.height);
    cairo_set_source_surface(cairo_, image, 0, 0);
    cairo_paint(cairo_);
    cairo_restore(cairo_);
    // Surfaces of files keep the image until they are written.
    cairo_surface_flush(image);
    cairo_surface_destroy(image);
  }
  void setColour(std::uint32_t rgb, double opacity = 1) {
    cairo_set_source_rgba(cairo_, (rgb >> 16) / 255.0, (rgb >> 8 & 0xFF) / 255.0, (rgb & 0xFF) / 255.0,
                          opacity);
  }

  PlanePoint onSurface(const PlanePoint& p) const {
    return {(p.x - surface_.window.left) * scale_ - surface_.shiftX,
            surface_.height - (p.y - surface_.window.bottom) * scale_ - surface_.shiftY};
  }
  template <class PointOrVector>
  PlanePoint onSurface(const PointOrVector& p) const {
    return onSurface(surface_.projection(p));
  }
  /// A direction: turned over, since the surface's y runs down.
  PlanePoint along(const AcGeVector3d& v) const {
    const PlanePoint p = surface_.projection(v);
    return {p.x * scale_, -p.y * scale_};
  }

  void paintItem(const Item& item) {
    useStyle(item.style);
    if (fills_ > 0 && item.kind != Item::polygon) flush();
    switch (item.kind) {
      case Item::polyline:
        return paintPolyline(item);
      case Item::polygon:
        return fillPolygon(item);
      case Item::arc:
        return style_->filled ? fillArc(list_->arcs[item.first]) : paintArc(list_->arcs[item.first]);
      case Item::letters:
        return paintLetters(list_->letters[item.first]);
      case Item::mark:
        return paintMark(onSurface(list_->points[item.first]));
    }
  }

  /// Neighbours of one look are stroked together.
  void useStyle(std::uint32_t index) {
    const Style& next = list_->styles[index];
    if (style_ && next.ink == style_->ink && next.lineWeight == style_->lineWeight) {
      style_ = &next;
      return;
    }
    flush();
    style_ = &next;
    rgb_ = colourOf(next.ink);
    penIsSet_ = false;
    const double width = next.lineWeight / 100.0 * surface_.unitsPerMillimetre;
    lineWidth_ = hasPixels() ? std::max(1.0, std::round(width)) : std::max(0.25, width);
    if (accent_) lineWidth_ += accent_->widening;
  }
  /// Thin lines need none.
  void setPen() {
    if (penIsSet_) return;
    setColour(rgb_);
    cairo_set_line_width(cairo_, lineWidth_);
    penIsSet_ = true;
  }
  void flush() {
    if (strokes_ > 0 || fills_ > 0) setPen();
    if (strokes_ > 0) cairo_stroke(cairo_);
    if (fills_ > 0) cairo_fill(cairo_);
    strokes_ = fills_ = 0;
  }
  void countStroke() {
    if (!isThin() && ++strokes_ >= mostStrokes) flush();
  }

  /// The visible parts of a line of this length in drawing units, of which each covers `unit` on the
  /// surface.
  std::vector<std::pair<double, double>> dashes(double length, double onSurfaceLength) const {
    if (style_->pattern < 0 || !(length > 0)) return {};
    const std::vector<double>& pattern = list_->patterns[static_cast<size_t>(style_->pattern)];
    double whole = 0;
    for (const double each : pattern) whole += std::abs(each) * style_->patternScale;
    if (whole * onSurfaceLength / length < smallestPattern) return {};
    return dashesOf(pattern, style_->patternScale, length);
  }

  void segment(PlanePoint a, PlanePoint b, bool goesOn) {
    if (isThin()) {
      snap(a, b);
      lines_.line(a, b, rgb_);
      return;
    }
    const PlanePoint start = a, wanted = b;
    if (!clipSegment(bounds_, a, b)) return broken_ = true, void();
    if (hasPixels()) snap(a, b);
    const bool moved = a.x != start.x || a.y != start.y;
    if (!goesOn || broken_ || moved) cairo_move_to(cairo_, a.x, a.y);
    cairo_line_to(cairo_, b.x, b.y);
    broken_ = b.x != wanted.x || b.y != wanted.y;
  }
  /// Lines along an axis are sharp when their middle lies in the middle of pixels, or between two.
  void snap(PlanePoint& a, PlanePoint& b) const {
    const double middle = std::fmod(lineWidth_, 2) == 1 ? 0.5 : 0;
    const auto whole = [middle](double v) { return std::floor(v + 0.5 - middle) + middle; };
    if (std::abs(a.x - b.x) < 0.01) {
      a.x = b.x = whole(a.x);
    } else if (std::abs(a.y - b.y) < 0.01) {
      a.y = b.y = whole(a.y);
    }
  }

  void paintPolyline(const Item& item) {
    const AcGePoint3d* const points = &list_->points[item.first];
    double length = 0, shown = 0;
    if (style_->pattern >= 0) {
      for (std::uint32_t i = 1; i < item.count; ++i) {
        const PlanePoint way = along(points[i] - points[i - 1]);
        length += points[i].distanceTo(points[i - 1]), shown += std::hypot(way.x, way.y);
      }
    }
    const auto parts = dashes(length, shown);
    if (!parts.empty()) return dashPolyline(points, item.count, parts);
    const PlanePoint first = onSurface(points[0]);
    if (item.count == 1) segment(first, first, false);
    for (std::uint32_t i = 1; i < item.count; ++i)
      segment(onSurface(points[i - 1]), onSurface(points[i]), i > 1);
    countStroke();
  }

  void stroke(double x1, double y1, double x2, double y2) { segment({x1, y1}, {x2, y2}, false); }

  void paintMark(const PlanePoint& at) {
    const MarkLook& look = list_->marks;
    const double half = markSize(look) / 2;
    switch (look.shape & 7) {
      case 0:
        stroke(at.x, at.y, at.x, at.y);
        break;
      case 2:
        stroke(at.x - 2 * half, at.y, at.x + 2 * half, at.y),
            stroke(at.x, at.y - 2 * half, at.x, at.y + 2 * half);
        break;
      case 3:
        stroke(at.x - 2 * half, at.y - 2 * half, at.x + 2 * half, at.y + 2 * half);
        stroke(at.x - 2 * half, at.y + 2 * half, at.x + 2 * half, at.y - 2 * half);
        break;
      case 4:
        stroke(at.x, at.y, at.x, at.y - half);
        break;
      default:
        break;
    }
    if (look.shape & 32) tracePart({at, {half, 0}, {0, half}}, 0, 2 * std::numbers::pi, false);
    if (look.shape & 64) {
      stroke(at.x - half, at.y - half, at.x + half, at.y - half),
          stroke(at.x + half, at.y - half, at.x + half, at.y + half);
      stroke(at.x + half, at.y + half, at.x - half, at.y + half),
          stroke(at.x - half, at.y + half, at.x - half, at.y - half);
    }
    countStroke();
  }

  void dashPolyline(const AcGePoint3d* points, std::uint32_t count,
                    const std::vector<std::pair<double, double>>& parts) {
    double before = 0;
    size_t part = 0;
    bool goesOn = false;
    for (std::uint32_t i = 1; i < count; ++i) {
      const AcGePoint3d &a = points[i - 1], &b = points[i];
      const double length = a.distanceTo(b), end = before + length;
      while (part < parts.size() && parts[part].first <= end) {
        const double from = std::max(parts[part].first, before), to = std::min(parts[part].second, end);
        const auto at = [&](double distance) {
          return onSurface(a + (b - a) * (length > 0 ? (distance - before) / length : 0));
        };
        segment(at(from), at(to), goesOn);
        goesOn = parts[part].second > end;
        if (goesOn) break;
        ++part;
      }
      before = end;
    }
    countStroke();
  }

  /// The curve's point at a parameter.
  struct SurfaceArc {
    PlanePoint centre, u, v;
    PlanePoint at(double t) const {
      const double c = std::cos(t), s = std::sin(t);
      return {centre.x + u.x * c + v.x * s, centre.y + u.y * c + v.y * s};
    }
    PlanePoint derivative(double t) const {
      const double c = std::cos(t), s = std::sin(t);
      return {v.x * c - u.x * s, v.y * c - u.y * s};
    }
    double radius() const { return std::max(std::hypot(u.x, u.y), std::hypot(v.x, v.y)); }
  };

  void paintArc(const Arc& arc) {
    const SurfaceArc curve{onSurface(arc.centre), along(arc.u), along(arc.v)};
    const double radius = (arc.u.length() + arc.v.length()) / 2, length = radius * std::abs(arc.sweep);
    const auto parts = dashes(length, curve.radius() * std::abs(arc.sweep));
    if (parts.empty()) tracePart(curve, 0, arc.sweep, false);
    for (const auto& [from, to] : parts) {
      tracePart(curve, from / length * arc.sweep, to / length * arc.sweep, false);
    }
    countStroke();
  }

  void tracePart(const SurfaceArc& curve, double from, double to, bool goesOn) {
    const double radius = curve.radius();
    if (isThin() || radius > beyondPicture / 2) return traceChords(curve, from, to);
    // A Bézier piece of the sixth part of a turn leaves the circle by 1/40000 of its radius; the error
    // falls with the sixth power of the angle.
    const double widest =
        std::min(1.047, 1.047 * std::pow(flatness / (std::max(radius, 1e-9) * 2.5e-5), 1.0 / 6));
    const int pieces = std::max(1, static_cast<int>(std::ceil(std::abs(to - from) / widest)));
    const double step = (to - from) / pieces, handle = 4.0 / 3 * std::tan(step / 4);
    PlanePoint start = curve.at(from), slope = curve.derivative(from);
    if (!goesOn) cairo_move_to(cairo_, start.x, start.y);
    for (int i = 1; i <= pieces; ++i) {
      const double t = from + i * step;
      const PlanePoint end = curve.at(t), next = curve.derivative(t);
      cairo_curve_to(cairo_, start.x + handle * slope.x, start.y + handle * slope.y, end.x - handle * next.x,
                     end.y - handle * next.y, end.x, end.y);
      start = end, slope = next;
    }
  }
  /// The chords that are near the picture, each off by no more than the flatness.
  void traceChords(const SurfaceArc& curve, double from, double to) {
    const PixelBox& clip = surface_.pixels.clip;
    constexpr double border = 3;
    const PlaneBox seen =
        isThin() ? PlaneBox{clip.left - border, clip.top - border, clip.right + border, clip.bottom + border}
                 : bounds_;
    const double radius = curve.radius();
    const double step = std::clamp(std::sqrt(8 * flatness / std::max(radius, 1e-9)), 1e-7, 0.8);
    const int spans = std::max(1, static_cast<int>(std::ceil(std::abs(to - from))));
    PlanePoint start = curve.at(from);
    broken_ = true;
    for (int i = 0; i < spans; ++i) {
      const double begin = from + (to - from) * i / spans, end = from + (to - from) * (i + 1) / spans;
      start = traceSpan(curve, begin, start, end, curve.at(end), step, radius, seen);
    }
  }
  /// Halves what isn't flat. A span of up to a radian lies within a sagitta of its ends' box.
  PlanePoint traceSpan(const SurfaceArc& curve, double from, const PlanePoint& start, double to,
                       const PlanePoint& end, double step, double radius, const PlaneBox& seen) {
    const double angle = std::abs(to - from), sagitta = radius * angle * angle / 8;
    PlaneBox box;
    box.add(start), box.add(end);
    if (!grown(box, sagitta).meets(seen)) return broken_ = true, end;
    if (angle <= step) return segment(start, end, true), end;
    const double middle = (from + to) / 2;
    const PlanePoint between = traceSpan(curve, from, start, middle, curve.at(middle), step, radius, seen);
    return traceSpan(curve, middle, between, to, end, step, radius, seen);
  }

  void fillArc(const Arc& arc) {
    const SurfaceArc curve{onSurface(arc.centre), along(arc.u), along(arc.v)};
    if (curve.radius() > beyondPicture / 2) return;
    flush();
    setPen();
    tracePart(curve, 0, arc.sweep, false);
    cairo_fill(cairo_);
  }

  /// Neighbours are filled together, all around the same way, so that no seam shows between them.
  void fillPolygon(const Item& item) {
    if (strokes_ > 0) flush();
    std::vector<PlanePoint> corners;
    for (std::uint32_t i = 0; i < item.count; ++i)
      corners.push_back(onSurface(list_->points[item.first + i]));
    corners = clipPolygon(bounds_, std::move(corners));
    double area = 0;
    for (size_t i = 0; i < corners.size(); ++i) {
      const PlanePoint &p = corners[i], &q = corners[(i + 1) % corners.size()];
      area += p.x * q.y - q.x * p.y;
    }
    if (area < 0) std::reverse(corners.begin(), corners.end());
    cairo_new_sub_path(cairo_);
    for (const PlanePoint& each : corners) cairo_line_to(cairo_, each.x, each.y);
    cairo_close_path(cairo_);
    if (++fills_ >= mostStrokes) flush();
  }

  void paintLetters(const Letters& letters) {
    const PlanePoint x = along(letters.x), y = along(letters.y);
    const double height = std::hypot(y.x, y.y);
    flush();
    if (hasPixels() && height < smallestLetters) return paintBar(letters, x, y);
    setPen();
    if (!hasPixels() && fonts_.show(cairo_, letters, onSurface(letters.origin), x, y)) return;
    PlanePoint pen = onSurface(letters.origin);
    for (const wchar_t letter : letters.letters) {
      const text::Glyph& glyph = letters.font->glyph(letter);
      traceGlyph(glyph, pen, x, y);
      pen.x += glyph.advance * letters.tracking * x.x, pen.y += glyph.advance * letters.tracking * x.y;
    }
    cairo_fill(cairo_);
  }
  void traceGlyph(const text::Glyph& glyph, const PlanePoint& pen, const PlanePoint& x, const PlanePoint& y) {
    PlanePoint p[3];
    for (const text::OutlineStep& step : glyph.outline) {
      const int count = step.kind == text::OutlineStep::curve ? 3 : 1;
      for (int i = 0; i < count; ++i) {
        const text::GlyphPoint& g = step.points[i];
        p[i] = {std::clamp(pen.x + g.x * x.x + g.y * y.x, bounds_.left, bounds_.right),
                std::clamp(pen.y + g.x * x.y + g.y * y.y, bounds_.bottom, bounds_.top)};
      }
      if (step.kind == text::OutlineStep::move) cairo_move_to(cairo_, p[0].x, p[0].y);
      if (step.kind == text::OutlineStep::line) cairo_line_to(cairo_, p[0].x, p[0].y);
      if (step.kind == text::OutlineStep::curve)
        cairo_curve_to(cairo_, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
    }
  }
  /// Half as dark as ink, as wide as the letters.
  void paintBar(const Letters& letters, const PlanePoint& x, const PlanePoint& y) {
    const PlanePoint pen = onSurface(letters.origin);
    const double width = inkOf(letters).advance;
    const PlanePoint from{pen.x + y.x / 2, pen.y + y.y / 2};
    lines_.line(from, {from.x + width * x.x, from.y + width * x.y}, rgb_, std::hypot(y.x, y.y), 0.5, 0);
  }

  const Surface& surface_;
  ThinLines lines_;
  const DisplayList* list_ = nullptr;
  std::optional<Accent> accent_;
  cairo_t* cairo_;
  double scale_;
  PlaneBox bounds_;
  FontsOfSurface fonts_;
  const Style* style_ = nullptr;
  std::uint32_t rgb_ = 0;
  double lineWidth_ = 1;
  int strokes_ = 0, fills_ = 0;
  bool broken_ = false, penIsSet_ = false;
};

std::uint32_t rgbOf(const Ink& ink, Ground ground) {
  if (ink.role == Ink::exact) return ink.rgb;
  if (ink.role == Ink::ground) return ground == Ground::white ? 0xFFFFFF : 0x212830;
  return ground == Ground::white ? 0x000000 : 0xFFFFFF;
}

Painter::Painter(const Surface& surface) : work_(std::make_unique<Work>(surface)) {}
Painter::~Painter() = default;
void Painter::paintGround() { work_->paintGround(); }
void Painter::paint(const DisplayList& list, std::uint32_t first, std::uint32_t count) {
  work_->paint(list, first, count);
}
void Painter::paint(const DisplayList& list) {
  work_->paint(list, 0, static_cast<std::uint32_t>(list.items.size()));
}
void Painter::paintDot(const PlanePoint& at, const Ink& ink) { work_->paintDot(at, ink); }
void Painter::setAccent(const std::optional<Accent>& accent) { work_->setAccent(accent); }
double Painter::reachOf(const DisplayList& list) const { return work_->reachOf(list); }

}  // namespace host::view
