#include "brx/db_entity.h"
#include "host/access/access_functions.h"
#include "host/access/arguments.h"
#include "host/geometry/solid_sums.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// What an entity's bodies come to; nil for one that has none of its kind.
Value solidSums(const Call& call) {
  AcDbObjectPointer<AcDbEntity> entity(nameArgument(call, 0));
  const auto* const solid = dynamic_cast<const BrxSolidBodies*>(entity.object());
  if (!solid) return {};
  SolidSums sums;
  sums.add(*solid);
  lisp::ListBuilder list;
  const auto add = [&](std::wstring_view key, Value value) {
    lisp::ListBuilder pair;
    pair.add(Value(key));
    pair.end(std::move(value));
    list.add(pair.take());
  };
  lisp::ListBuilder centre;
  for (const double each : {sums.centre.x, sums.centre.y, sums.centre.z}) centre.add(Value(each));
  add(L"bodies", Value(static_cast<int32_t>(sums.bodies)));
  add(L"faces", Value(static_cast<int32_t>(sums.faces)));
  add(L"volume", Value(sums.volume));
  add(L"area", Value(sums.area));
  add(L"centre", centre.take());
  add(L"closed", call.lisp.truth(sums.closed));
  return list.take();
}

}  // namespace

std::span<const lisp::Builtin> solidFunctions() {
  static const lisp::Builtin table[] = {{L"HOST-SOLID", solidSums, 1, 1}};
  return table;
}

}  // namespace host
