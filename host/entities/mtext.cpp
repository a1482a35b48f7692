#include "brx/lisp_calls.h"
#include "host/database/fields.h"
#include "host/entities/text_drawing.h"

ACRX_DEFINE_MEMBERS(AcDbMText)

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

Acad::ErrorStatus AcDbMText::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbEntity::dwgOutFields(filer);
  host::DwgWriter visitor{*filer};
  HostAccess::mtext(visitor, *this);
  visitor.colour(63, 421, backgroundColor_);
  return filer->filerStatus();
}

namespace {

/// Contents are cut into pieces of at most 250 letters: all but the last under code 3.
constexpr size_t longestPiece = 250;

void writeContents(AcDbDxfFiler& filer, std::wstring_view contents) {
  while (contents.size() > longestPiece) {
    filer.writeString(3, std::wstring(contents.substr(0, longestPiece)).c_str());
    contents.remove_prefix(longestPiece);
  }
  filer.writeString(1, std::wstring(contents).c_str());
}

}  // namespace

Acad::ErrorStatus AcDbMText::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbEntity::dwgInFields(filer);
  host::DwgReader visitor{*filer};
  HostAccess::mtext(visitor, *this);
  visitor.colour(63, 421, backgroundColor_);
  return filer->filerStatus();
}

Acad::ErrorStatus AcDbMText::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbEntity::dxfOutFields(filer);
  filer->writeSubclass(L"AcDbMText");
  filer->writePoint3d(10, location_);
  filer->writeDouble(40, textHeight_);
  filer->writeDouble(41, width_);
  filer->writeInt16(71, attachment_);
  filer->writeInt16(72, flow_);
  writeContents(*filer, contents_);
  host::DxfWriter{*filer}.named<AcDbTextStyleTable>(7, style_);
  filer->writeVector3d(210, normal_);
  filer->writeVector3d(11, direction_);
  filer->writeInt16(73, spacingStyle_);
  filer->writeDouble(44, lineSpacing_);
  if (!backgroundFillOn()) return filer->filerStatus();
  filer->writeInt32(90, background_);
  // The index stands here also where another colour is used.
  filer->writeInt16(63, static_cast<Adesk::Int16>(backgroundColor_.colorIndex()));
  if (backgroundColor_.isByColor()) filer->writeInt32(421, static_cast<Adesk::Int32>(backgroundColor_.rgb()));
  return filer->writeDouble(45, backgroundScale_);
}

Acad::ErrorStatus AcDbMText::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
  if (status != Acad::eOk) return status;
  if (!filer->atSubclassData(L"AcDbMText")) return Acad::eBadDxfSequence;
  resbuf item{};
  std::wstring former;
  double rotation = 0;
  bool turned = false;
  host::DxfReader reader{*filer, item};
  while (filer->readItem(&item) == Acad::eOk) {
    const Adesk::Int16 background = background_;
    HostAccess::mtext(reader, *this);
    if (reader.status != Acad::eOk) return reader.status;
    if (item.restype == 3) former += item.resval.rstring;
    reader.colour(63, 421, backgroundColor_);
    background_ = background;
    if (item.restype == 90) background_ = static_cast<Adesk::Int16>(item.resval.rlong & 0x7FFF);
    // Of direction and angle the one that comes last counts.
    if (item.restype == 50) rotation = item.resval.rreal, turned = true;
    if (item.restype == 11) turned = false;
  }
  contents_ = former + contents_;
  // A value of 2 alone means the ground as well.
  if ((background_ & 3) == 2) background_ |= 1;
  if (normal_.isZeroLength()) normal_ = AcGeVector3d::kZAxis;
  if (turned) setRotation(rotation);
  if (direction_.isZeroLength()) setRotation(0);
  return filer->filerStatus();
}
