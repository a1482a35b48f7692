#include <cmath>

#include "brx/db_text.h"
#include "host/access/access_functions.h"
#include "host/access/access_state.h"
#include "host/access/arguments.h"
#include "host/access/group_checks.h"
#include "host/access/object_list.h"
#include "host/access/refusal.h"
#include "host/bridge/lisp_points.h"
#include "host/database/stubs.h"
#include "host/documents/variables.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

AcGePoint3d pointVariable(const wchar_t* name, const AcGePoint3d& missing) {
  const auto value = getVariable(name);
  const Point* const point = value ? std::get_if<Point>(&*value) : nullptr;
  return point ? AcGePoint3d{point->x, point->y, point->z} : missing;
}

AcGeMatrix3d userSystem() {
  const AcGeVector3d x = pointVariable(L"UCSXDIR", {1, 0, 0}).asVector();
  const AcGeVector3d y = pointVariable(L"UCSYDIR", {0, 1, 0}).asVector();
  AcGeMatrix3d system;
  return system.setToCoordSystem(pointVariable(L"UCSORG", {}), x, y, x.crossProduct(y));
}

/// The screen's system: Z towards the viewer, turned by the view's twist.
AcGeMatrix3d displaySystem() {
  const AcGeVector3d direction = pointVariable(L"VIEWDIR", {0, 0, 1}).asVector();
  const auto twist = getVariable(L"VIEWTWIST");
  const double angle = twist && std::holds_alternative<double>(*twist) ? std::get<double>(*twist) : 0;
  return AcGeMatrix3d::translation(pointVariable(L"TARGET", {}).asVector()) *
         AcGeMatrix3d::planeToWorld(direction.normal()) * AcGeMatrix3d::rotation(-angle, {0, 0, 1});
}

/// Entities whose points are the world's, though they have a normal.
bool isInWorld(std::wstring_view type) {
  return type == L"LINE" || type == L"POINT" || type == L"MTEXT" || type == L"LEADER";
}

AcGeMatrix3d entitySystem(AcDbObjectId id) {
  if (!id.isValid() || isInWorld(typeNameOf(*objectOf(id)))) return {};
  const Value list = objectList(*objectOf(id));
  for (const Value& group : lisp::Elements(list)) {
    if (lisp::car(group).integer() != 210) continue;
    AcGeVector3d normal;
    double* const to[] = {&normal.x, &normal.y, &normal.z};
    size_t place = 0;
    for (const Value& each : lisp::Elements(lisp::cdr(group))) *to[place++] = each.number();
    return AcGeMatrix3d::planeToWorld(normal);
  }
  return {};
}

/// A system to the world's: by number, by an entity's plane or by a normal.
AcGeMatrix3d systemArgument(const Call& call, size_t place) {
  const Value& value = call[place];
  if (value.type() == lisp::Type::entity) return entitySystem(nameArgument(call, place));
  if (value.isCons()) {
    const AcGeVector3d normal = pointArgument(call, place).asVector();
    if (normal.isZeroLength()) lisp::failType(L"point:", value);
    return AcGeMatrix3d::planeToWorld(normal.normal());
  }
  enum : int { world, user, display, paper };
  switch (call.integer(place)) {
    case world:
      return {};
    case user:
      return userSystem();
    case display:
    case paper:
      return displaySystem();
    default:
      lisp::failType(L"coordinate system:", value);
  }
}

/// With a fourth argument the point is a direction.
Value trans(const Call& call) {
  const AcGePoint3d point = pointArgument(call, 0);
  const AcGeMatrix3d map = systemArgument(call, 2).inverse() * systemArgument(call, 1);
  const bool isDirection = call.has(3) && call[3].isTrue();
  return pointValue(isDirection ? AcGePoint3d{} + map * point.asVector() : map * point);
}

double numberOf(const ListGroups& groups, int code, double missing) {
  const Value* const found = findGroup(groups, code);
  return found ? found->number() : missing;
}

/// A text of a list, unturned, at the origin. What the list lacks is the style's, or the drawing's.
void fillText(AcDbText& text, const ListGroups& groups, const AcDbDatabase& drawing) {
  AcDbObjectId style = drawing.textstyle();
  const AcDbTextStyleTable* const table = AcDbTextStyleTable::cast(objectOf(drawing.textStyleTableId()));
  if (findGroup(groups, 7)) table->getAt(textGroup(groups, 7).c_str(), style);
  const auto* const record = AcDbTextStyleTableRecord::cast(objectOf(style));
  const auto current = getVariable(L"TEXTSIZE");
  const double size = record && record->textSize() > 0 ? record->textSize() : std::get<double>(*current);
  text.setTextStyle(style);
  require(text.setHeight(numberOf(groups, 40, size)));
  require(text.setWidthFactor(numberOf(groups, 41, record ? record->xScale() : 1)));
  require(text.setOblique(numberOf(groups, 51, record ? record->obliquingAngle() : 0)));
  text.setTextString(textGroup(groups, 1).c_str());
}

/// The box of a text's letters, from the left end of its base line.
Value textbox(const Call& call) {
  const ListGroups groups = groupsOf(call.list(0));
  if (!findGroup(groups, 1)) return refuse(Errno::missingField);
  try {
    requireSuitable(L"TEXT", groups, currentDrawing());
    AcDbText text;
    fillText(text, groups, currentDrawing());
    AcDbExtents box;
    text.getGeomExtents(box);
    if (box.isEmpty()) box.addPoint({});
    lisp::ListBuilder corners;
    corners.add(pointValue(box.minPoint()));
    corners.add(pointValue(box.maxPoint()));
    return corners.take();
  } catch (const ObjectRefusal& refusal) {
    return refuse(refusal.reason);
  }
}

}  // namespace

std::span<const lisp::Builtin> coordinateFunctions() {
  static const lisp::Builtin table[] = {
      {L"TRANS", trans, 3, 4},
      {L"TEXTBOX", textbox, 1, 1},
  };
  return table;
}

}  // namespace host
