#include "brx/db_calls.h"
#include "brx/editor_input.h"
#include "host/access/access_functions.h"
#include "host/access/access_state.h"
#include "host/access/arguments.h"
#include "host/access/modifying.h"
#include "host/access/object_list.h"
#include "host/access/refusal.h"
#include "host/access/walk.h"
#include "host/database/stubs.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// Objects that a module has open are read as they are.
Value entget(const Call& call) {
  const AcDbObjectId id = nameArgument(call, 0);
  if (!id.isValid()) return refuse(Errno::invalidName);
  if (id.isErased()) return refuse(Errno::erased);
  return call.has(1) ? objectList(*objectOf(id), call.list(1)) : objectList(*objectOf(id));
}

Value entmod(const Call& call) {
  try {
    modifyObject(currentDrawing(), call.list(0));
    return call[0];
  } catch (const ObjectRefusal& refusal) {
    return refuse(refusal.reason);
  }
}

/// Without a list what isn't complete is given up. A block that is complete answers its name.
template <class Answer>
Value makeFrom(const Call& call, Answer answer) {
  ObjectMaker& maker = accessStateOf(currentDrawing()).maker;
  if (!call.has(0) || call[0].isNil()) return maker.cancel(), Value();
  try {
    const Made made = maker.make(call.list(0));
    return made.block.empty() ? answer(made) : Value(std::wstring_view(made.block));
  } catch (const ObjectRefusal& refusal) {
    return refuse(refusal.reason);
  }
}

Value entmake(const Call& call) {
  return makeFrom(call, [&](const Made&) { return call[0]; });
}
/// The name of what was made; the list where more is to come.
Value entmakex(const Call& call) {
  return makeFrom(call, [&](const Made& made) { return made.id.isNull() ? call[0] : nameOf(made.id); });
}

/// Erases, and brings back what is erased. Parts of entities go with their owners alone.
Value entdel(const Call& call) {
  const AcDbObjectId id = nameArgument(call, 0);
  if (!id.isValid()) return refuse(Errno::invalidName);
  const bool isPart = AcDbEntity::cast(objectOf(AcDbObjectId(id.stub()->owner)));
  if (isPart) return refuse(Errno::badType);
  AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
  if (!object.object()) return refuse(errnoOf(object.openStatus()));
  if (AcDbSymbolTableRecord::cast(object.object())) return refuse(Errno::badType);
  const Acad::ErrorStatus status = object->erase(!object->isErased());
  return status == Acad::eOk ? call[0] : refuse(errnoOf(status));
}

Value entnext(const Call& call) {
  const bool isFirst = !call.has(0) || call[0].isNil();
  const AcDbObjectId next = isFirst ? firstEntity(currentDrawing()) : nextEntity(nameArgument(call, 0));
  return next.isNull() ? refuse(Errno::endOfEntities) : nameOf(next);
}

Value entlast(const Call&) {
  const AcDbObjectId last = lastEntity(currentDrawing());
  return last.isNull() ? refuse(Errno::noLastEntity) : nameOf(last);
}

Value handent(const Call& call) {
  ads_name name;
  if (acdbHandEnt(call.text(0).c_str(), name) != RTNORM) return refuse(Errno::invalidHandle);
  return Value::entity(name[0]);
}

/// Pictures are made of the drawing as it is: there is nothing to bring up to date.
Value entupd(const Call& call) {
  const AcDbObjectId id = nameArgument(call, 0);
  return id.isValid() && !id.isErased() ? call[0] : refuse(Errno::invalidName);
}
Value redraw(const Call& call) {
  if (call.has(0) && call[0].isTrue()) nameArgument(call, 0);
  return {};
}

}  // namespace

std::span<const lisp::Builtin> entityFunctions() {
  static const lisp::Builtin table[] = {
      {L"ENTGET", entget, 1, 2},     {L"ENTMOD", entmod, 1, 1},   {L"ENTMAKE", entmake, 0, 1},
      {L"ENTMAKEX", entmakex, 0, 1}, {L"ENTDEL", entdel, 1, 1},   {L"ENTNEXT", entnext, 0, 1},
      {L"ENTLAST", entlast, 0, 0},   {L"HANDENT", handent, 1, 1}, {L"ENTUPD", entupd, 1, 1},
      {L"REDRAW", redraw, 0, 2},
  };
  return table;
}

}  // namespace host

int acedRedraw(const ads_name entity, int) {
  if (!entity || ads_name_nil(entity)) return RTNORM;
  AcDbObjectId id;
  return acdbGetObjectId(id, entity) == Acad::eOk ? RTNORM : RTERROR;
}
