#include "brx/db_calls.h"
#include "brx/lisp_calls.h"
#include "host/access/access_functions.h"
#include "host/access/access_state.h"
#include "host/access/arguments.h"
#include "host/access/refusal.h"
#include "host/access/xdata.h"
#include "host/database/stubs.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// nil too when the application was registered before.
Value regapp(const Call& call) {
  const auto* const table = AcDbRegAppTable::cast(objectOf(currentDrawing().regAppTableId()));
  if (table->has(call.text(0).c_str())) return {};
  return acdbRegApp(call.text(0).c_str()) == RTNORM ? call[0] : refuse(Errno::invalidTableName);
}

/// Of a list of applications, with or without the -3 before it.
Value xdsize(const Call& call) {
  const Value& list = call.list(0);
  const bool hasCode = list.isCons() && lisp::car(list).isCons() && lisp::car(lisp::car(list)).isInteger();
  const bool isGroup = list.isCons() && lisp::car(list).isInteger();
  const Value& applications = isGroup ? lisp::cdr(list) : hasCode ? lisp::cdr(lisp::car(list)) : list;
  try {
    return Value(static_cast<int32_t>(xdataSize(xdataGroups(applications).head())));
  } catch (const ObjectRefusal& refusal) {
    return refuse(refusal.reason);
  }
}

Value xdroom(const Call& call) {
  const AcDbObjectId id = nameArgument(call, 0);
  if (!id.isValid() || id.isErased()) return refuse(Errno::invalidName);
  resbuf* const data = objectOf(id)->xData();
  const size_t used = xdataSize(data);
  if (data) acutRelRb(data);
  return Value(static_cast<int32_t>(mostXdata - used));
}

}  // namespace

std::span<const lisp::Builtin> xdataFunctions() {
  static const lisp::Builtin table[] = {
      {L"REGAPP", regapp, 1, 1},
      {L"XDSIZE", xdsize, 1, 1},
      {L"XDROOM", xdroom, 1, 1},
  };
  return table;
}

}  // namespace host
