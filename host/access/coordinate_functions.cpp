#include <cmath>

#include "brx/db_calls.h"
#include "brx/db_text.h"
#include "brx/editor_input.h"
#include "host/access/access_functions.h"
#include "host/access/access_state.h"
#include "host/access/arguments.h"
#include "host/access/coordinate_systems.h"
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

/// Nothing for a number of no system.
std::optional<AcGeMatrix3d> numberedSystem(int number) {
  enum : int { world, user, display, paper };
  switch (number) {
    case world:
      return AcGeMatrix3d();
    case user:
      return userSystem();
    case display:
    case paper:
      return displaySystem();
    default:
      return std::nullopt;
  }
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
  const auto system = numberedSystem(call.integer(place));
  if (!system) lisp::failType(L"coordinate system:", value);
  return *system;
}

std::optional<AcGeMatrix3d> systemOf(const resbuf* named) {
  if (!named) return std::nullopt;
  switch (named->restype) {
    case RTSHORT:
      return numberedSystem(named->resval.rint);
    case RTENAME: {
      AcDbObjectId id;
      if (acdbGetObjectId(id, named->resval.rlname) != Acad::eOk) return std::nullopt;
      return entitySystem(id);
    }
    case RTPOINT:
    case RT3DPOINT: {
      const AcGeVector3d normal = asPnt3d(named->resval.rpoint).asVector();
      if (normal.isZeroLength()) return std::nullopt;
      return AcGeMatrix3d::planeToWorld(normal.normal());
    }
    default:
      return std::nullopt;
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

int acedTrans(const ads_point point, const resbuf* from, const resbuf* to, int isDirection,
              ads_point result) {
  const auto source = host::systemOf(from), target = host::systemOf(to);
  if (!source || !target) return RTERROR;
  const AcGeMatrix3d map = target->inverse() * *source;
  const AcGePoint3d given = asPnt3d(point);
  const AcGePoint3d mapped = isDirection ? AcGePoint3d{} + map * given.asVector() : map * given;
  result[0] = mapped.x, result[1] = mapped.y, result[2] = mapped.z;
  return RTNORM;
}
