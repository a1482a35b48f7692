#include "host/database/record_fields.h"

ACRX_DEFINE_MEMBERS(AcDbTextStyleTableRecord)

template <class Visitor, class Self>
void AcDbTextStyleTableRecord::fields(Visitor& v, Self& o) {
  head(v, o), v(40, o.textSize_), v(41, o.xScale_), v(50, o.oblique_), v(42, o.priorSize_), v(3, o.fileName_);
  v(4, o.bigFontFileName_), v.later(71, o.generation_);
}
HOST_FILING(AcDbTextStyleTableRecord, AcDbSymbolTableRecord, fields)

Acad::ErrorStatus AcDbTextStyleTableRecord::setTextSize(double size) {
  if (!(size >= 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), textSize_ = size, Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setXScale(double scale) {
  if (!(scale > 0)) return Acad::eInvalidInput;
  return assertWriteEnabled(), xScale_ = scale, Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setObliquingAngle(double angle) {
  return assertWriteEnabled(), oblique_ = angle, Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setFileName(const ACHAR* file) {
  return assertWriteEnabled(), fileName_ = file ? file : L"", Acad::eOk;
}
Acad::ErrorStatus AcDbTextStyleTableRecord::setBigFontFileName(const ACHAR* file) {
  return assertWriteEnabled(), bigFontFileName_ = file ? file : L"", Acad::eOk;
}
