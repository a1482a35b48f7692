#include "brx/lisp_calls.h"
#include "host/database/fields.h"
#include "host/entities/text_drawing.h"

ACRX_DEFINE_MEMBERS(AcDbMText)

template <class Visitor, class Self>
void AcDbMText::fields(Visitor& v, Self& o) {
  v(10, o.location_), v(40, o.textHeight_), v(41, o.width_), v(71, o.attachment_);
  v.contents(1, 3, o.contents_), v.template named<AcDbTextStyleTable>(7, o.style_), v(210, o.normal_);
  v.direction(11, 50, o.direction_, o.normal_), v(72, o.flow_), v(73, o.spacingStyle_), v(44, o.lineSpacing_);
  if constexpr (std::is_same_v<Visitor, host::DxfWriter>) {
    if (!o.backgroundFillOn()) return;
    // The index stands here also where it follows the layer.
    if (o.backgroundColor_.isByLayer()) v(63, static_cast<Adesk::Int16>(o.backgroundColor_.colorIndex()));
  }
  v.wide(90, o.background_), v(45, o.backgroundScale_), v.colour(63, 421, o.backgroundColor_);
  if constexpr (std::is_same_v<Visitor, host::PlaneToWorld>) o.settle();
}
HOST_FILING(AcDbMText, AcDbEntity, fields)

/// Brings what a file may leave out into order.
void AcDbMText::settle() {
  // A value of 2 alone means the ground as well.
  if ((background_ & 3) == 2) background_ |= 1;
  if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
  if (direction_.isZeroLength()) setRotation(0);
}

namespace {

host::TextFrame frameOf(const AcDbMText& text) {
  return host::TextFrame(text.location(), text.direction(), text.normal());
}

host::text::Layout layOut(const AcDbMText& text, bool exactSpacing) {
  // Files may hold any height.
  if (!(text.textHeight() > 0)) return {};
  host::text::LayoutSettings settings;
  settings.base = host::formatOf(text.textStyle());
  settings.base.height = text.textHeight();
  settings.width = text.width();
  settings.lineSpacing = text.lineSpacingFactor();
  settings.exactSpacing = exactSpacing;
  const int place = std::clamp<int>(text.attachment(), AcDbMText::kTopLeft, AcDbMText::kBottomRight) - 1;
  settings.column = static_cast<host::text::Column>(place % 3);
  settings.row = static_cast<host::text::Row>(place / 3);
  return host::text::layOut(text.contents(), settings);
}

constexpr Adesk::Int16 exactly = 2;

}  // namespace

double AcDbMText::rotation() const {
  return (AcGeMatrix3d::worldToPlane(normal_) * frameOf(*this).x).convert2d().angle();
}
double AcDbMText::actualWidth() const { return layOut(*this, spacingStyle_ == exactly).width; }
double AcDbMText::actualHeight() const { return layOut(*this, spacingStyle_ == exactly).height; }
double AcDbMText::ascent() const { return layOut(*this, spacingStyle_ == exactly).ascent; }
double AcDbMText::descent() const { return layOut(*this, spacingStyle_ == exactly).descent; }

Acad::ErrorStatus AcDbMText::setContents(const ACHAR* contents) {
  return assertWriteEnabled(), contents_ = contents ? contents : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setLocation(const AcGePoint3d& location) {
  return assertWriteEnabled(), location_ = location, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setNormal(const AcGeVector3d& normal) {
  if (normal.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), normal_ = normal.normal(), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setDirection(const AcGeVector3d& direction) {
  if (direction.isZeroLength()) return Acad::eInvalidInput;
  return assertWriteEnabled(), direction_ = direction.normal(), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setRotation(double rotation) {
  return setDirection(AcGeMatrix3d::planeToWorld(normal_) *
                      AcGeVector3d{std::cos(rotation), std::sin(rotation), 0});
}
Acad::ErrorStatus AcDbMText::setWidth(double width) {
  if (!(width >= 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), width_ = width, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setTextHeight(double height) {
  if (!(height > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), textHeight_ = height, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setTextStyle(AcDbObjectId style) {
  return assertWriteEnabled(), style_ = style, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setAttachment(AttachmentPoint attachment) {
  if (attachment < kTopLeft || attachment > kBottomRight) return Acad::eInvalidInput;
  return assertWriteEnabled(), attachment_ = static_cast<Adesk::Int16>(attachment), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setLineSpacingFactor(double factor) {
  if (!(factor >= 0.25 && factor <= 4)) return Acad::eInvalidInput;
  return assertWriteEnabled(), lineSpacing_ = factor, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setBackgroundFill(bool enable) {
  assertWriteEnabled();
  background_ = static_cast<Adesk::Int16>(enable ? background_ | 1 : background_ & ~1);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setUseBackgroundColor(bool enable) {
  assertWriteEnabled();
  background_ = static_cast<Adesk::Int16>(enable ? background_ | 2 : background_ & ~2);
  return Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setBackgroundFillColor(const AcCmColor& color) {
  return assertWriteEnabled(), backgroundColor_ = color, Acad::eOk;
}
Acad::ErrorStatus AcDbMText::setBackgroundScaleFactor(double factor) {
  if (!(factor >= 1 && factor <= 5)) return Acad::eInvalidInput;
  return assertWriteEnabled(), backgroundScale_ = factor, Acad::eOk;
}

namespace {

void drawMask(AcGiWorldDraw& draw, const AcDbMText& text, const host::text::Layout& layout) {
  const double beyond = (text.getBackgroundScaleFactor() - 1) * text.textHeight();
  const double left = layout.left - beyond, right = layout.right + beyond;
  const double bottom = layout.bottom - beyond, top = layout.top + beyond;
  const host::TextFrame frame = frameOf(text);
  const AcGePoint3d corners[] = {frame.point(left, bottom), frame.point(right, bottom),
                                 frame.point(right, top), frame.point(left, top)};
  constexpr Adesk::UInt16 ground = 257;
  AcGiSubEntityTraits& traits = draw.subEntityTraits();
  const AcCmColor fill = text.getBackgroundFillColor(), own = text.color();
  const auto set = [&traits](const AcCmColor& colour) {
    colour.isByColor() ? traits.setTrueColor(colour.rgb()) : traits.setColor(colour.colorIndex());
  };
  text.useBackgroundColorOn() ? traits.setColor(ground) : set(fill);
  traits.setFillType(kAcGiFillAlways);
  draw.geometry().polygon(4, corners);
  traits.setFillType(kAcGiFillNever);
  set(own);
}

}  // namespace

bool AcDbMText::subWorldDraw(AcGiWorldDraw* draw) {
  const host::text::Layout layout = layOut(*this, spacingStyle_ == exactly);
  if (backgroundFillOn() && !layout.blank()) drawMask(*draw, *this, layout);
  drawText(*draw, frameOf(*this), layout, color());
  return true;
}
Acad::ErrorStatus AcDbMText::subGetGeomExtents(AcDbExtents& extents) const {
  const host::text::Layout layout = layOut(*this, spacingStyle_ == exactly);
  if (layout.blank()) return extents.addPoint(location_);
  frameOf(*this).addBox(extents, layout.left, layout.bottom, layout.right, layout.top);
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subTransformBy(const AcGeMatrix3d& matrix) {
  if (!matrix.isUniScaledOrtho()) return Acad::eCannotScaleNonUniformly;
  assertWriteEnabled();
  const host::MirroredFrame moved = transformedFrame(frameOf(*this), matrix);
  location_ = moved.frame.origin;
  direction_ = moved.frame.x, normal_ = moved.frame.normal;
  const int place = attachment_ - 1, column = place % 3, row = place / 3;
  attachment_ = static_cast<Adesk::Int16>((moved.swapsSides ? 2 - column : column) +
                                          3 * (moved.swapsRows ? 2 - row : row) + 1);
  textHeight_ *= matrix.scale(), width_ *= matrix.scale();
  return Acad::eOk;
}

namespace {

AcDbText* exploded(const AcDbMText& from, const host::TextFrame& frame,
                   const host::text::PlacedLetters& letters) {
  std::wstring content;
  if (letters.format.underlined) content += L"%%u";
  if (letters.format.overlined) content += L"%%o";
  if (letters.format.struck) content += L"%%k";
  content += letters.letters;
  auto* const made = new AcDbText(frame.point(letters.x, letters.y), content.c_str(), from.textStyle(),
                                  letters.format.height, from.rotation());
  made->setNormal(from.normal());
  made->setWidthFactor(letters.format.widthFactor);
  made->setOblique(letters.format.oblique);
  return made;
}

void giveProperties(AcDbEntity& made, const AcDbMText& from, const host::text::Colour& colour) {
  made.setPropertiesFrom(&from);
  AcCmColor own;
  if (colour.kind == host::text::Colour::inherited) return;
  if (colour.kind == host::text::Colour::indexed) {
    own.setColorIndex(static_cast<Adesk::UInt16>(colour.value));
  } else {
    own.setRGB(static_cast<Adesk::UInt8>(colour.value >> 16), static_cast<Adesk::UInt8>(colour.value >> 8),
               static_cast<Adesk::UInt8>(colour.value));
  }
  made.setColor(own);
}

/// Lines under, over and through letters come with the letters; those of stacks are lines.
bool belongsToLetters(const host::text::PlacedRule& rule, const host::text::Layout& layout) {
  for (const host::text::PlacedLetters& each : layout.letters) {
    const host::text::Format& format = each.format;
    if (!format.underlined && !format.overlined && !format.struck) continue;
    const double above = (rule.y1 - each.y) / format.height;
    if (rule.y1 == rule.y2 && rule.x1 >= each.x - 1e-9 && rule.x2 <= each.x + each.width + 1e-9 &&
        above > -0.5 && above < 1.5) {
      return true;
    }
  }
  return false;
}

}  // namespace

Acad::ErrorStatus AcDbMText::subExplode(AcDbVoidPtrArray& entities) const {
  const host::text::Layout layout = layOut(*this, spacingStyle_ == exactly);
  const host::TextFrame frame = frameOf(*this);
  for (const host::text::PlacedLetters& each : layout.letters) {
    if (each.letters.find_first_not_of(L' ') == std::wstring::npos) continue;
    AcDbText* const made = exploded(*this, frame, each);
    giveProperties(*made, *this, each.format.colour);
    entities.append(static_cast<AcDbEntity*>(made));
  }
  for (const host::text::PlacedRule& each : layout.rules) {
    if (belongsToLetters(each, layout)) continue;
    auto* const line = new AcDbLine(frame.point(each.x1, each.y1), frame.point(each.x2, each.y2));
    giveProperties(*line, *this, each.colour);
    entities.append(static_cast<AcDbEntity*>(line));
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbMText::subGetStretchPoints(AcGePoint3dArray& points) const {
  return points.append(location_), Acad::eOk;
}
Acad::ErrorStatus AcDbMText::subGetOsnapPoints(AcDb::OsnapMode mode, Adesk::Int64, const AcGePoint3d&,
                                               const AcGePoint3d&, const AcGeMatrix3d&,
                                               AcGePoint3dArray& points, AcDbIntArray&) const {
  return mode == AcDb::kOsModeIns ? subGetStretchPoints(points) : Acad::eOk;
}
void AcDbMText::subList() const {
  AcDbEntity::subList();
  acutPrintf(L"                   Contents: \"%s\"\n", contents_.c_str());
  acutPrintf(L"                   Location = %f, %f, %f  Width = %f  Text height = %f\n", location_.x,
             location_.y, location_.z, width_, textHeight_);
}
