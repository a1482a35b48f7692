#include "brx/db_calls.h"
#include "host/access/access_functions.h"
#include "host/access/arguments.h"
#include "host/access/object_list.h"
#include "host/drawing/stubs.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// Objects that a module has open are read as they are.
Value entget(const Call& call) {
  const AcDbObjectId id = nameArgument(call, 0);
  if (!id.isValid()) return refuse(Errno::invalidName);
  if (id.isErased()) return refuse(Errno::erased);
  const AcDbObject& object = *id.stub()->object;
  return call.has(1) ? objectList(object, call.list(1)) : objectList(object);
}

Value handent(const Call& call) {
  ads_name name;
  if (acdbHandEnt(call.text(0).c_str(), name) != RTNORM) return refuse(Errno::invalidHandle);
  return Value::entity(name[0]);
}

Value redraw(const Call& call) {
  if (call.has(0) && call[0].isTrue()) nameArgument(call, 0);
  return {};
}

}  // namespace

std::span<const lisp::Builtin> entityFunctions() {
  static const lisp::Builtin table[] = {
      {L"ENTGET", entget, 1, 2},
      {L"HANDENT", handent, 1, 1},
      {L"REDRAW", redraw, 0, 2},
  };
  return table;
}

}  // namespace host
