#include <numbers>

#include "brx/lisp_calls.h"
#include "host/database/fields.h"
#include "host/entities/text_drawing.h"
#include "host/text/single_line.h"

ACRX_DEFINE_MEMBERS(AcDbText)

/// In files the vertical mode stands behind a second mark of the same name, which is read as one with the
/// first, and in attributes among their own fields.
template <class Visitor, class Self>
void AcDbText::fields(Visitor& v, Self& o) {
  v.plane(10, o.position_, o.normal_), v(40, o.height_), v(1, o.text_), v(50, o.rotation_);
  v(41, o.widthFactor_), v(51, o.oblique_), v.template named<AcDbTextStyleTable>(7, o.style_);
  v(71, o.generation_), v(72, o.horizontal_), v.plane(11, o.alignment_, o.normal_), v(210, o.normal_);
  if (Visitor::isDxf && o.isA() != desc()) return;
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) v.subclass(L"AcDbText");
  v(73, o.vertical_);
}
HOST_FILING(AcDbText, AcDbEntity, fields)

namespace {

constexpr double turn = 2 * std::numbers::pi;
constexpr double mostOblique = 1.4835298641951802;  // 85 degrees

/// A text's line, laid out from the left end of its base line.
struct Placed {
  host::TextFrame frame;
  host::text::Layout layout;
  host::text::Measure ink;
  host::text::Format format;
  /// From the beginning of the base line to the alignment point.
  double along = 0, above = 0;
  /// -1 where the text is backward or upside down: it runs and rises the other way from the frame's origin.
  double runs = 1, rises = 1;
  AcGePoint3d point(double x, double y) const { return frame.point(runs * x, rises * y); }
};

host::text::Layout layOutParts(const std::wstring& text, host::text::Format format,
                               host::text::Measure& ink) {
  host::text::Layout layout;
  for (host::text::LinePart& part : host::text::partsOf(text)) {
    format.underlined = part.underlined, format.overlined = part.overlined, format.struck = part.struck;
    const host::text::Measure own = measure(part.letters, format);
    const double x = ink.advance;
    if (!own.blank()) {
      ink.left = std::min(ink.left, x + own.left), ink.right = std::max(ink.right, x + own.right);
      ink.bottom = std::min(ink.bottom, own.bottom), ink.top = std::max(ink.top, own.top);
    }
    ink.advance += own.advance;
    addRules(layout.rules, x, 0, own.advance, format);
    layout.letters.push_back({x, 0, own.advance, std::move(part.letters), format});
  }
  return layout;
}

/// Two points fix the base line of texts that fill the way between them.
bool fills(const AcDbText& text) {
  return (text.horizontalMode() == AcDb::kTextAlign || text.horizontalMode() == AcDb::kTextFit) &&
         text.verticalMode() == AcDb::kTextBase && text.position().distanceTo(text.alignmentPoint()) > 0;
}

void findAlignment(const AcDbText& text, Placed& placed) {
  const double height = placed.format.height;
  const auto horizontal = text.horizontalMode();
  if (horizontal == AcDb::kTextCenter || horizontal == AcDb::kTextMid) placed.along = placed.ink.advance / 2;
  if (horizontal == AcDb::kTextRight) placed.along = placed.ink.advance;
  if (horizontal == AcDb::kTextMid && !placed.ink.blank()) {
    placed.above = (placed.ink.bottom + placed.ink.top) / 2;
    return;
  }
  switch (text.verticalMode()) {
    case AcDb::kTextBottom:
      // To the same depth for all letters, so that neighbours stand on one line.
      placed.above = measure(L"p", placed.format).bottom;
      break;
    case AcDb::kTextVertMid:
      placed.above = height / 2;
      break;
    case AcDb::kTextTop:
      placed.above = height;
      break;
    default:
      break;
  }
}

Placed place(const AcDbText& text) {
  Placed placed;
  AcGeVector3d direction = AcGeMatrix3d::planeToWorld(text.normal()) *
                           AcGeVector3d{std::cos(text.rotation()), std::sin(text.rotation()), 0};
  const bool filling = fills(text);
  if (filling) direction = text.alignmentPoint() - text.position();
  placed.runs = text.isMirroredInX() ? -1 : 1, placed.rises = text.isMirroredInY() ? -1 : 1;
  placed.format = host::formatOf(text.textStyle());
  placed.format.height = text.height();
  placed.format.widthFactor = text.widthFactor();
  placed.format.oblique = text.oblique();
  placed.layout = layOutParts(text.textString(), placed.format, placed.ink);
  if (filling && placed.ink.advance > 0) {
    const double factor = direction.length() / placed.ink.advance;
    const bool fit = text.horizontalMode() == AcDb::kTextFit;
    (fit ? placed.format.widthFactor : placed.format.height) *= factor;
    placed.ink = {};
    placed.layout = layOutParts(text.textString(), placed.format, placed.ink);
  }
  placed.frame = host::TextFrame(text.position(), direction, text.normal());
  if (filling && text.isMirroredInX()) placed.frame.origin = text.alignmentPoint();
  if (filling || text.isDefaultAlignment()) return placed;
  findAlignment(text, placed);
  placed.frame.origin = text.alignmentPoint();
  placed.frame.origin = placed.point(-placed.along, -placed.above);
  return placed;
}

double rotationOf(const host::TextFrame& frame) {
  return (AcGeMatrix3d::worldToPlane(frame.normal) * frame.x).convert2d().angle();
}

}  // namespace

Acad::ErrorStatus AcDbText::adjustAlignment(const AcDbDatabase*) {
  if (isDefaultAlignment()) return Acad::eOk;
  assertWriteEnabled();
  const Placed placed = place(*this);
  if (!fills(*this)) return position_ = placed.frame.origin, Acad::eOk;
  rotation_ = rotationOf(placed.frame);
  height_ = placed.format.height, widthFactor_ = placed.format.widthFactor;
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text) {
  return assertWriteEnabled(), text_ = text ? text : L"", adjustAlignment();
}
Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position) {
  return assertWriteEnabled(), position_ = position, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setAlignmentPoint(const AcGePoint3d& point) {
  return assertWriteEnabled(), alignment_ = point, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setTextStyle(AcDbObjectId style) {
  return assertWriteEnabled(), style_ = style, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), height_ = height, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setRotation(double rotation) {
  return assertWriteEnabled(), rotation_ = rotation, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setWidthFactor(double factor) {
  if (!(factor > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), widthFactor_ = factor, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setOblique(double angle) {
  const double signedAngle = std::remainder(angle, turn);
  if (!(std::abs(signedAngle) <= mostOblique)) return Acad::eInvalidInput;
  return assertWriteEnabled(), oblique_ = signedAngle, adjustAlignment();
}
Acad::ErrorStatus AcDbText::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), normal_ = normal.normal(), adjustAlignment();
}
Acad::ErrorStatus AcDbText::mirrorInX(bool mirrored) {
  assertWriteEnabled();
  generation_ = static_cast<Adesk::Int16>(mirrored ? generation_ | 2 : generation_ & ~2);
  return adjustAlignment();
}
Acad::ErrorStatus AcDbText::mirrorInY(bool mirrored) {
  assertWriteEnabled();
  generation_ = static_cast<Adesk::Int16>(mirrored ? generation_ | 4 : generation_ & ~4);
  return adjustAlignment();
}
Acad::ErrorStatus AcDbText::setHorizontalMode(AcDb::TextHorzMode mode) {
  if (mode < AcDb::kTextLeft || mode > AcDb::kTextFit) return Acad::eInvalidInput;
  return assertWriteEnabled(), horizontal_ = static_cast<Adesk::Int16>(mode), adjustAlignment();
}
Acad::ErrorStatus AcDbText::setVerticalMode(AcDb::TextVertMode mode) {
  if (mode < AcDb::kTextBase || mode > AcDb::kTextTop) return Acad::eInvalidInput;
  return assertWriteEnabled(), vertical_ = static_cast<Adesk::Int16>(mode), adjustAlignment();
}

/// Backward and upside-down text is mirrored about the point at which it stands.
bool AcDbText::subWorldDraw(AcGiWorldDraw* draw) {
  if (!(height_ > 0)) return true;
  const Placed placed = place(*this);
  const host::TextFrame& frame = placed.frame;
  if (!isMirroredInX() && !isMirroredInY()) return drawText(*draw, frame, placed.layout, color()), true;
  AcGeMatrix3d local, mirror;
  local.setToCoordSystem(frame.origin, frame.x, frame.y, frame.normal);
  mirror(0, 0) = placed.runs, mirror(1, 1) = placed.rises;
  draw->geometry().pushModelTransform(local * mirror * local.inverse());
  drawText(*draw, frame, placed.layout, color());
  draw->geometry().popModelTransform();
  return true;
}
Acad::ErrorStatus AcDbText::subGetGeomExtents(AcDbExtents& extents) const {
  const Placed placed = place(*this);
  if (placed.ink.blank()) return extents.addPoint(placed.frame.origin);
  const double x = placed.runs, y = placed.rises;
  placed.frame.addBox(extents, x * placed.ink.left, y * std::min(placed.ink.bottom, 0.0),
                      x * placed.ink.right, y * placed.ink.top);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const Placed placed = place(*this);
  const bool filling = fills(*this);
  const host::MirroredFrame moved = transformedFrame(placed.frame, matrix);
  host::TextFrame frame = moved.frame;
  const double scale = matrix.scale();
  // What was at the right or at the top is where the mirrored text begins.
  if (moved.swapsSides && !filling) frame.origin = matrix * placed.point(placed.ink.advance, 0);
  if (moved.swapsRows) frame.origin = matrix * placed.point(0, placed.format.height);
  normal_ = frame.normal;
  rotation_ = rotationOf(frame);
  height_ *= scale;
  if (filling) {
    position_.transformBy(matrix), alignment_.transformBy(matrix);
    if (moved.swapsSides) std::swap(position_, alignment_);
  } else {
    position_ = frame.origin;
    const double along = placed.runs * placed.along * scale, above = placed.rises * placed.above * scale;
    if (!isDefaultAlignment()) alignment_ = frame.point(along, above);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbText::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(isDefaultAlignment() ? position_ : alignment_), Acad::eOk;
}
Acad::ErrorStatus AcDbText::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d&,
                                              const AcGePoint3d&, const AcGeMatrix3d&,
                                              AcGePoint3dArray& points, AcDbIntArray&) const {
  return mode == AcDb::kOsModeIns ? subGetStretchPoints(points) : Acad::eOk;
}
void AcDbText::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"                   Text: \"%s\"\n", text_.c_str());
  acutPrintf(L"                   at point = %f, %f, %f  Height = %f\n", position_.x, position_.y,
             position_.z, height_);
}
