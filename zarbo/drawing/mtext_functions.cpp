#include <cmath>
#include <memory>

#include "brx/db_text.h"
#include "zarbo/drawing/entity_functions.h"
#include "zarbo/drawing/entity_result.h"
#include "zarbo/drawing/named_records.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/object_args.h"

namespace {

using MText = AcDbObjectPointer<AcDbMText>;

/// A right angle as drawings made with this function have it.
constexpr double steepAngle = 1.57079;

/// Calls `answer` with the MTEXT that the one argument names, and gives its real to LISP.
template <class Answer>
int measure(AcDb::OpenMode mode, Answer answer) {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  const MText text(id, mode);
  if (text.openStatus() != Acad::eOk) return badData;
  acedRetReal(answer(*text.object()));
  return done;
}

}  // namespace

int mtextActualWidth() {
  return measure(AcDb::kForRead, [](const AcDbMText& text) { return text.actualWidth(); });
}

int mtextActualHeight() {
  return measure(AcDb::kForRead, [](const AcDbMText& text) {
    return *text.contents() ? text.actualHeight() : text.textHeight();
  });
}

int mtextAscent() {
  return measure(AcDb::kForWrite, [](const AcDbMText& text) {
    const double above = text.ascent() - text.textHeight();
    return above > 0 ? above : 0.0;
  });
}

int mtextDescent() {
  return measure(AcDb::kForWrite, [](const AcDbMText& text) { return text.descent(); });
}

int mtextSetNormal() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  AcGePoint3d normal;
  if (!getObjectId(args.cursor, id) || !getPoint3d(args.cursor, normal)) return wrongType;
  const MText text(id, AcDb::kForWrite);
  if (text.openStatus() != Acad::eOk) return badData;
  if (text->setNormal(normal.asVector()) == Acad::eOk) acedRetT();
  return done;
}

int mtextSetDirection() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  double angle;
  if (!getObjectId(args.cursor, id) || !getReal(args.cursor, angle)) return wrongType;
  const MText text(id, AcDb::kForWrite);
  if (text.openStatus() != Acad::eOk) return done;
  AcGeVector3d direction = AcGeVector3d::kXAxis;
  direction.rotateBy(angle, AcGeVector3d::kZAxis);
  if (text->setDirection(direction) == Acad::eOk) acedRetT();
  return done;
}

// Angles of the left half of the plane come out as those of the right: callers want a readable text's angle.
int mtextDirection() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  if (!getObjectId(args.cursor, id)) return wrongType;
  const MText text(id, AcDb::kForWrite);
  if (text.openStatus() != Acad::eOk) return badData;
  const AcGeVector3d direction = text->direction();
  if (direction.x != 0.0) {
    acedRetReal(std::atan(direction.y / direction.x));
  } else if (direction.y != 0.0) {
    acedRetReal(direction.y > 0 ? steepAngle : -steepAngle);
  }
  return done;
}

int mtextSetMask() {
  acedRetNil();
  LispArgs args;
  AcDbObjectId id;
  bool fill;
  double scale;
  if (!getObjectId(args.cursor, id) || !getFlag(args.cursor, fill) || !getReal(args.cursor, scale))
    return wrongType;
  const MText text(id, AcDb::kForWrite);
  if (text.openStatus() != Acad::eOk) return done;
  text->setBackgroundFill(fill);
  text->setBackgroundScaleFactor(scale);
  text->setUseBackgroundColor(true);
  acedRetT();
  return done;
}

int mtextInsert() {
  acedRetNil();
  LispArgs args;
  std::wstring contents, styleName;
  AcGePoint3d location;
  if (!getString(args.cursor, contents) || !getPoint3d(args.cursor, location)) return wrongType;
  double width = 0;
  if (!getNumber(args.cursor, width)) skipItem(args.cursor);

  auto text = std::make_unique<AcDbMText>();
  text->setContents(contents.c_str());
  text->setLocation(location);
  text->setWidth(width);
  if (getString(args.cursor, styleName)) {
    const AcDbObjectId style = findTextStyle(styleName);
    if (!style.isNull()) text->setTextStyle(style);
  }
  int32_t attachment;
  if (getLong(args.cursor, attachment)) {
    text->setAttachment(static_cast<AcDbMText::AttachmentPoint>(attachment));
  }
  appendAndReturnName(text.release());
  return done;
}
