#include "host/view/recorder.h"

#include <numbers>

#include "brx/db_dictionary.h"
#include "brx/gi_viewport.h"
#include "host/database/changes.h"
#include "host/database/header_variables.h"
#include "host/database/nested_visits.h"
#include "host/text/single_line.h"
#include "host/view/traits.h"

namespace host::view {
namespace {

/// For entities that draw without end; what blocks hold has a bound of its own.
constexpr size_t mostObjects = 50'000'000;
constexpr double turn = 2 * std::numbers::pi;

/// Beyond this, products of coordinates would be no numbers any more.
constexpr double farthest = 1e100;
bool isNear(double v) { return std::abs(v) < farthest; }
template <class PointOrVector>
bool isFinite(const PointOrVector& p) {
  return isNear(p.x) && isNear(p.y) && isNear(p.z);
}

class Recorder final : public AcGiWorldDraw, public AcGiViewportDraw, public AcGiGeometry {
 public:
  Recorder(AcDbDatabase& drawing, const RecordOptions& options, const AcGeVector3d* towards = nullptr,
           size_t mostItems = RunOptions{}.mostItems)
      : mostItems_(mostItems),
        looks_(drawing, list_),
        traits_(looks_),
        linetypeScale_(drawing.ltscale()),
        options_(options),
        towards_(towards) {
    list_.marks = {number<int>(drawing, L"PDMODE"), number<double>(drawing, L"PDSIZE")};
  }
  DisplayList takeList() { return std::move(list_); }
  std::uint32_t items() const { return static_cast<std::uint32_t>(list_.items.size()); }
  bool dependsOnView() const { return dependsOnView_; }

  AcGiGeometry& geometry() const override { return const_cast<Recorder&>(*this); }
  /// In the units of the block that is drawn, which its placement may enlarge.
  double deviation() const override {
    list_.deviation = options_.deviation;
    double enlarged = 1;
    if (!transforms_.empty()) {
      const AcGeMatrix3d& matrix = transforms_.back();
      for (const unsigned axis : {0, 1, 2}) enlarged = std::max(enlarged, matrix.column(axis).length());
    }
    return options_.deviation / enlarged;
  }
  AcGiRegenType regenType() const override { return options_.regenType; }
  bool isDragging() const override { return options_.dragging; }
  AcGiSubEntityTraits& subEntityTraits() const override { return const_cast<Traits&>(traits_); }
  AcGeVector3d viewDir() const override {
    return transforms_.empty() ? *towards_ : transforms_.back().inverse() * *towards_;
  }

  bool polyline(Adesk::UInt32 count, const AcGePoint3d* points, const AcGeVector3d*, Adesk::Int64) override {
    return addPoints(Item::polyline, count, points, false);
  }
  bool polygon(Adesk::UInt32 count, const AcGePoint3d* points) override {
    return traits_.filled() ? addPoints(Item::polygon, count, points, false)
                            : addPoints(Item::polyline, count, points, true);
  }
  bool circle(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal) override {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
    return addArc({centre, plane.column(0) * radius, plane.column(1) * radius, turn});
  }
  bool circularArc(const AcGePoint3d& centre, double radius, const AcGeVector3d& normal,
                   const AcGeVector3d& start, double sweep) override {
    const AcGeVector3d u = start.normal();
    return addArc({centre, u * radius, normal.normal().crossProduct(u) * radius, sweep});
  }
  bool text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
            const ACHAR* text, Adesk::Int32 length, bool raw, const AcGiTextStyle& style) override;
  bool draw(AcGiDrawable* drawable) override;
  void pushModelTransform(const AcGeMatrix3d& matrix) override {
    transforms_.push_back(transforms_.empty() ? matrix : transforms_.back() * matrix);
  }
  void popModelTransform() override {
    if (!transforms_.empty()) transforms_.pop_back();
  }

 private:
  template <class Number>
  static Number number(const AcDbDatabase& drawing, std::wstring_view variable) {
    const auto index = findHeaderVariable(variable);
    if (!index) return {};
    const HeaderValue value = headerValue(drawing, *index);
    const Number* const found = std::get_if<Number>(&value);
    return found ? *found : Number{};
  }
  template <class T>
  T placed(const T& local) const {
    return transforms_.empty() ? local : transforms_.back() * local;
  }
  bool full() const { return list_.items.size() >= mostItems_ || objects_ >= mostObjects; }

  /// False when what comes now is not to be seen.
  bool beginItem(Item& item);
  bool addPoints(Item::Kind kind, Adesk::UInt32 count, const AcGePoint3d* points, bool closed);
  bool addArc(const Arc& local);
  void addLetters(Letters letters);
  void drawEntity(AcDbEntity& entity, const Traits& around);

  const size_t mostItems_;
  bool dependsOnView_ = false;
  mutable DisplayList list_;
  Looks looks_;
  Traits traits_;
  double linetypeScale_;
  RecordOptions options_;
  const AcGeVector3d* towards_;
  std::vector<AcGeMatrix3d> transforms_;
  Resolved last_;
  bool lastFilled_ = false, hasLast_ = false;
  size_t objects_ = 0, depth_ = 0;
};

bool Recorder::beginItem(Item& item) {
  if (full()) return ++list_.leftOut, false;
  const Resolved look = traits_.resolve();
  const LayerLook& layer = looks_.layer(look.layer);
  if (layer.off || layer.frozen) return false;
  if (!hasLast_ || !(look == last_) || traits_.filled() != lastFilled_) {
    list_.styles.push_back({look.ink, look.lineWeight, look.pattern, look.linetypeScale * linetypeScale_,
                            traits_.filled(), look.layer, look.colour});
    last_ = look, lastFilled_ = traits_.filled(), hasLast_ = true;
  }
  item.style = static_cast<std::uint32_t>(list_.styles.size() - 1);
  return true;
}

bool Recorder::addPoints(Item::Kind kind, Adesk::UInt32 count, const AcGePoint3d* points, bool closed) {
  Item item{kind, 0, static_cast<std::uint32_t>(list_.points.size()), count + (closed ? 1 : 0)};
  if (count == 0 || !beginItem(item)) return full();
  for (Adesk::UInt32 i = 0; i < item.count; ++i) {
    const AcGePoint3d point = placed(points[i % count]);
    if (!isFinite(point)) {
      list_.points.resize(item.first);
      return ++list_.leftOut, full();
    }
    list_.points.push_back(point);
  }
  list_.items.push_back(item);
  return full();
}

bool Recorder::addArc(const Arc& local) {
  Item item{Item::arc, 0, static_cast<std::uint32_t>(list_.arcs.size()), 1};
  const Arc arc{placed(local.centre), placed(local.u), placed(local.v), local.sweep};
  if (!isFinite(arc.centre) || !isFinite(arc.u) || !isFinite(arc.v) || !isNear(arc.sweep)) {
    return ++list_.leftOut, full();
  }
  if (!beginItem(item)) return full();
  list_.arcs.push_back(arc);
  list_.items.push_back(item);
  return full();
}

void Recorder::addLetters(Letters letters) {
  Item item{Item::letters, 0, static_cast<std::uint32_t>(list_.letters.size()), 1};
  letters.origin = placed(letters.origin), letters.x = placed(letters.x), letters.y = placed(letters.y);
  if (!isFinite(letters.origin) || !isFinite(letters.x) || !isFinite(letters.y)) {
    ++list_.leftOut;
    return;
  }
  if (!beginItem(item)) return;
  list_.letters.push_back(std::move(letters));
  list_.items.push_back(item);
}

bool Recorder::text(const AcGePoint3d& position, const AcGeVector3d& normal, const AcGeVector3d& direction,
                    const ACHAR* text, Adesk::Int32 length, bool raw, const AcGiTextStyle& style) {
  const std::wstring_view all =
      length < 0 ? std::wstring_view(text) : std::wstring_view(text, static_cast<size_t>(length));
  const text::Font& font = text::fontNamed(style.fileName(), style.isBold(), style.isItalic());
  const double size = style.textSize();
  const AcGeVector3d along = direction.normal(), up = normal.normal().crossProduct(along);
  const double lean = std::tan(style.obliquingAngle()) + font.slant();
  Letters letters{position, along * (size * style.xScale()), (up + along * lean) * size,
                  &font,    style.trackingPercent(),         {}};
  if (raw) {
    letters.letters = all;
    addLetters(std::move(letters));
    return full();
  }
  text::Format format;
  format.font = &font, format.height = size, format.widthFactor = style.xScale();
  format.tracking = style.trackingPercent();
  const auto line = [&](bool wanted, const AcGePoint3d& from, double width, double share) {
    const AcGePoint3d ends[] = {from + up * (share * size), from + up * (share * size) + along * width};
    if (wanted) polyline(2, ends, nullptr, -1);
  };
  for (const text::LinePart& part : text::partsOf(all)) {
    const AcGePoint3d from = letters.origin;
    const double width = measure(part.letters, format).advance;
    letters.letters = part.letters;
    addLetters(letters);
    line(part.underlined, from, width, -0.2);
    line(part.overlined, from, width, 1.2);
    line(part.struck, from, width, 0.45);
    letters.origin += along * width;
  }
  return full();
}

bool Recorder::draw(AcGiDrawable* drawable) {
  if (!drawable || full()) return true;
  ++objects_, ++depth_;
  const Traits around = traits_;
  const size_t transforms = transforms_.size();
  if (AcDbEntity* const entity = AcDbEntity::cast(drawable)) {
    drawEntity(*entity, around);
  } else {
    drawable->worldDraw(this);
  }
  // A drawing that forgets to take its transform back spoils nothing but itself.
  transforms_.resize(std::min(transforms, transforms_.size()));
  traits_ = around;
  --depth_;
  return full();
}

void Recorder::drawEntity(AcDbEntity& entity, const Traits& around) {
  if (entity.visibility() == AcDb::kInvisible) return;
  const Resolved outer = around.resolve();
  traits_.take(entity, around, depth_ > 1 ? &outer : nullptr);
  if (looks_.layer(traits_.resolve().layer).frozen) return;
  if (const AcDbPoint* const point = AcDbPoint::cast(&entity)) {
    const AcGePoint3d place = point->position();
    addPoints(Item::mark, 1, &place, false);
    list_.hasMarks = true;
  } else if (!entity.worldDraw(this) && towards_) {
    dependsOnView_ = true;
    if (auto* const dependent = dynamic_cast<AcGiViewDependent*>(&entity)) dependent->viewportDraw(this);
  }
}

}  // namespace

namespace {

/// In the order of drawing.
AcDbObjectIdArray orderOf(AcDbObjectId block) {
  AcDbObjectIdArray order;
  AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForRead);
  if (!record.object()) return order;
  AcDbSortentsTable* table = nullptr;
  if (record->getSortentsTable(table, AcDb::kForRead) == Acad::eOk) {
    const Acad::ErrorStatus status = table->getFullDrawOrder(order);
    table->close();
    if (status == Acad::eOk) return order;
  }
  for (const AcDbObjectId& id : record->entityIds()) order.append(id);
  return order;
}

}  // namespace

DisplayList record(AcDbDatabase& drawing, AcDbObjectId block, double deviation, const AcGeVector3d* towards) {
  const NestedOperation operation;
  const AcDbObjectId space = block.isNull() ? drawing.modelSpaceId() : block;
  const AcDbObjectIdArray order = orderOf(space);
  return record(drawing, space, {order.begin(), order.end()}, {deviation, towards}).list;
}

Recording record(AcDbDatabase& drawing, AcDbObjectId space, std::span<const AcDbObjectId> entities,
                 const RunOptions& run) {
  RecordOptions options;
  options.deviation = run.deviation;
  if (run.towards) options.regenType = kAcGiHideOrShadeCommand;
  ReadLog reads(space);
  Recorder recorder(drawing, options, run.towards, run.mostItems);
  Recording recording;
  recording.ends.reserve(entities.size());
  for (const AcDbObjectId& id : entities) {
    reads.pass(id);
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (entity.object()) recorder.draw(entity.object());
    recording.ends.push_back(recorder.items());
  }
  recording.dependsOnView = recorder.dependsOnView();
  recording.list = recorder.takeList();
  recording.sources = reads.take();
  return recording;
}

DisplayList record(AcDbDatabase& drawing, AcGiDrawable& image, const RecordOptions& options) {
  Recorder recorder(drawing, options);
  recorder.draw(&image);
  return recorder.takeList();
}

}  // namespace host::view
