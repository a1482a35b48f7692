#include "host/editor/outline.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "brx/db_block.h"
#include "host/text/format.h"

namespace host {
namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int chordsOfTurn = 256;
/// Blocks have a bound of their own; this is for modules' entities that draw each other.
constexpr size_t deepestDrawing = 1000;

text::Format formatOf(const AcGiTextStyle& style) {
  text::Format format;
  format.font = &text::fontNamed(style.fileName(), style.isBold(), style.isItalic());
  format.height = style.textSize();
  format.widthFactor = style.xScale();
  format.oblique = style.obliquingAngle();
  format.tracking = style.trackingPercent();
  return format;
}

/// Takes what entities draw, and keeps its look in the view's plane.
class OutlineMaker : public AcGiWorldDraw, public AcGiGeometry, public AcGiSubEntityTraits {
 public:
  OutlineMaker(const VisibleLayers& layers, const view::Projection& projection,
               const VisitOutlinePiece& visit)
      : layers_(layers), projection_(projection), visit_(visit), source_([this] { return sourceNow(); }) {
    transforms_.emplace_back();
  }

  void visitPiecesOf(AcDbEntity& entity) {
    levels_.push_back({entity.objectId(), top()});
    entity.worldDraw(this);
    levels_.pop_back();
  }

  AcGiGeometry& geometry() const override { return const_cast<OutlineMaker&>(*this); }
  AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<OutlineMaker&>(*this); }

  bool polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*, Adesk::Int64) override {
    for (Adesk::UInt32 i = 0; i + 1 < count; ++i) add(PlaneSegment{seen(points[i]), seen(points[i + 1])});
    return stopped_;
  }
  bool polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
    PlaneArea area;
    for (Adesk::UInt32 i = 0; i < count; ++i) area.corners.push_back(seen(points[i]));
    if (count > 0) add(std::move(area));
    return stopped_;
  }
  bool circle(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal) override {
    return circularArc(centre, radius, normal, AcGeMatrix3d::planeToWorld(normal) * AcGeVector3d::kXAxis,
                       fullTurn);
  }
  bool circularArc(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal,
                   const AcGeVector3d& start, double sweep) override {
    const AcGeVector3d along = start.normal();
    addArc(top() * centre, top() * (along * radius), top() * (normal.normal().crossProduct(along) * radius),
           sweep);
    return stopped_;
  }
  /// The box around the letters, at least as high as capitals.
  bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
            const ACHAR* letters, Adesk::Int32 length, bool, const AcGiTextStyle& style) override {
    const text::Format format = formatOf(style);
    const std::wstring_view shown =
        length < 0 ? std::wstring_view(letters) : std::wstring_view(letters, static_cast<size_t>(length));
    const text::Measure size = measure(shown, format);
    if (shown.empty()) return stopped_;
    const AcGeVector3d along = direction.normal() * size.advance,
                       up = normal.normal().crossProduct(direction.normal());
    const AcGePoint3d low = position + up * std::min(size.bottom, 0.0),
                      high = position + up * std::max(size.top, format.height);
    const AcGePoint3d corners[] = {low, low + along, high + along, high};
    return polygon(4, corners);
  }
  bool draw(AcGiDrawable* drawable) override {
    auto* const entity = AcDbEntity::cast(drawable);
    if (stopped_ || !entity || levels_.size() > deepestDrawing) return stopped_;
    const bool hidden = entity->visibility() == AcDb::kInvisible ||
                        (!layers_.isZero(entity->layerId()) && !layers_.of(entity->layerId()).isVisible());
    if (hidden) return false;
    visitPiecesOf(*entity);
    return stopped_;
  }
  void pushModelTransform(const AcGeMatrix3d& matrix) override {
    transforms_.push_back(transforms_.back() * matrix);
  }
  void popModelTransform() override {
    if (transforms_.size() > 1) transforms_.pop_back();
  }

  Adesk::UInt16 color() const override { return 256; }
  void setColor(Adesk::UInt16) override {}
  void setTrueColor(Adesk::UInt32) override {}
  AcDbObjectId layerId() const override { return {}; }
  void setLayer(const AcDbObjectId&) override {}
  void setLineType(const AcDbObjectId&) override {}
  void setLineTypeScale(double) override {}
  void setLineWeight(int) override {}
  void setFillType(AcGiFillType) override {}

 private:
  const AcGeMatrix3d& top() const { return transforms_.back(); }
  AcGePoint2d seen(const AcGePoint3d& point) const { return inPlane(top() * point); }
  AcGePoint2d inPlane(const AcGePoint3d& point) const {
    const view::PlanePoint p = projection_(point);
    return {p.x, p.y};
  }
  /// Across and up in the plane, and towards the one who looks.
  AcGeVector3d inView(const AcGeVector3d& v) const {
    const view::PlanePoint p = projection_(v);
    return {p.x, p.y, v.dotProduct(projection_.towards())};
  }

  OutlineSource sourceNow() const {
    OutlineSource source{levels_.back().entity, levels_.back().toWorld, {}};
    for (size_t i = levels_.size() - 1; i-- > 0;) source.references.push_back(levels_[i].entity);
    return source;
  }

  void add(OutlinePiece piece) {
    if (!stopped_) stopped_ = !visit_(piece, source_);
  }

  /// `x` and `y` are radii at a right angle to each other before the transform, `x` to the start.
  void addArc(const AcGePoint3d& centre, const AcGeVector3d& xOfWorld, const AcGeVector3d& yOfWorld,
              double sweep) {
    const AcGeVector3d x = inView(xOfWorld), y = inView(yOfWorld);
    constexpr double roundness = 1e-9;
    const double radius = x.length(), slack = roundness * std::max(1.0, radius);
    sweep = std::min(sweep, fullTurn);
    const bool isRound = std::abs(radius - y.length()) <= slack && std::abs(x.z) <= slack &&
                         std::abs(y.z) <= slack &&
                         std::abs(x.dotProduct(y)) <= roundness * std::max(1.0, radius * radius);
    if (!isRound) return addChords(inPlane(centre), x.convert2d(), y.convert2d(), sweep);
    const bool toTheLeft = x.x * y.y - x.y * y.x >= 0;
    const double start = x.convert2d().angle();
    add(PlaneArc{inPlane(centre), radius, toTheLeft ? start : start - sweep, sweep});
  }

  void addChords(const AcGePoint2d& centre, const AcGeVector2d& x, const AcGeVector2d& y, double sweep) {
    const int count = std::max(1, static_cast<int>(std::ceil(chordsOfTurn * sweep / fullTurn)));
    AcGePoint2d former = centre + x;
    for (int i = 1; i <= count; ++i) {
      const double angle = sweep * i / count;
      const AcGePoint2d next = centre + x * std::cos(angle) + y * std::sin(angle);
      add(PlaneSegment{former, next});
      former = next;
    }
  }

  /// An entity that is being drawn, and the place of its system.
  struct Level {
    AcDbObjectId entity;
    AcGeMatrix3d toWorld;
  };

  const VisibleLayers& layers_;
  const view::Projection& projection_;
  const VisitOutlinePiece& visit_;
  const std::function<OutlineSource()> source_;
  std::vector<AcGeMatrix3d> transforms_;
  std::vector<Level> levels_;
  bool stopped_ = false;
};

}  // namespace

void forEachOutlinePiece(AcDbEntity& entity, const VisibleLayers& layers, const view::Projection& projection,
                         const VisitOutlinePiece& visit) {
  OutlineMaker(layers, projection, visit).visitPiecesOf(entity);
}

}  // namespace host
