#include "host/entities/text_drawing.h"

#include "brx/db_database.h"

namespace host {

text::Format formatOf(AcDbObjectId style) {
  AcDbDatabase* const working = acdbHostWorkingDatabase();
  if (style.isNull() && working) style = working->textstyle();
  text::Format format;
  AcDbObjectPointer<AcDbTextStyleTableRecord> record(style, AcDb::kForRead, true);
  if (!record.object()) return format.font = &text::fontNamed(L""), format;
  format.font = &text::fontNamed(record->fileName());
  if (record->xScale() > 0) format.widthFactor = record->xScale();
  format.oblique = record->obliquingAngle();
  return format;
}

TextFrame::TextFrame(const AcGePoint3d& at, const AcGeVector3d& direction, const AcGeVector3d& up)
    : origin(at), x(direction.normal()), normal(up.normal()) {
  y = normal.crossProduct(x).normalize();
  if (y.isZeroLength()) y = normal.perpVector();
  x = y.crossProduct(normal);
}

void TextFrame::addBox(AcDbExtents& extents, double left, double bottom, double right, double top) const {
  for (const double along : {left, right})
    extents.addPoint(point(along, bottom)), extents.addPoint(point(along, top));
}

namespace {

AcGiTextStyle styleOf(const text::Format& format) {
  AcGiTextStyle style(format.font->name().c_str(), format.height, format.widthFactor, format.oblique);
  style.setTrackingPercent(format.tracking);
  style.setFace(format.font->bold(), format.font->italic());
  return style;
}

void setColour(AcGiSubEntityTraits& traits, const AcCmColor& colour) {
  if (colour.isByColor()) return traits.setTrueColor(colour.rgb());
  traits.setColor(colour.colorIndex());
}

/// Sets a colour of codes, or the entity's own where the codes tell none.
class ColourOfCodes {
 public:
  ColourOfCodes(AcGiSubEntityTraits& traits, const AcCmColor& own) : traits_(traits), own_(own) {}
  ~ColourOfCodes() { set({}); }
  void set(const text::Colour& colour) {
    if (colour == now_) return;
    now_ = colour;
    if (colour.kind == text::Colour::inherited) return setColour(traits_, own_);
    if (colour.kind == text::Colour::exact) return traits_.setTrueColor(colour.value);
    traits_.setColor(static_cast<Adesk::UInt16>(colour.value));
  }

 private:
  AcGiSubEntityTraits& traits_;
  const AcCmColor& own_;
  text::Colour now_;
};

}  // namespace

void drawText(AcGiWorldDraw& draw, const TextFrame& frame, const text::Layout& layout, const AcCmColor& own) {
  ColourOfCodes colour(draw.subEntityTraits(), own);
  for (const text::PlacedLetters& each : layout.letters) {
    colour.set(each.format.colour);
    draw.geometry().text(frame.point(each.x, each.y), frame.normal, frame.x, each.letters.c_str(),
                         static_cast<Adesk::Int32>(each.letters.size()), true, styleOf(each.format));
  }
  for (const text::PlacedRule& each : layout.rules) {
    colour.set(each.colour);
    const AcGePoint3d ends[] = {frame.point(each.x1, each.y1), frame.point(each.x2, each.y2)};
    draw.geometry().polyline(2, ends);
  }
}

MirroredFrame transformedFrame(const TextFrame& frame, const AcGeMatrix3d& matrix) {
  MirroredFrame result;
  AcGeVector3d x = matrix * frame.x, y = matrix * frame.y;
  AcGeVector3d normal = matrix * frame.normal;
  if (matrix.det() < 0) {
    result.swapsSides = x.dotProduct(frame.x) < 0;
    result.swapsRows = !result.swapsSides && y.dotProduct(frame.y) < 0;
    if (result.swapsSides) x = -x;
    // A mirror behind the text turns its normal instead.
    if (!result.swapsSides && !result.swapsRows) normal = -normal;
  }
  result.frame = TextFrame(matrix * frame.origin, x, normal);
  return result;
}

}  // namespace host
