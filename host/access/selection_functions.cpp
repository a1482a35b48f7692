#include "host/access/access_functions.h"
#include "host/access/arguments.h"
#include "host/bridge/values.h"
#include "host/database/selection_set.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// Without a set a new one; without an entity an empty one. Nil for a name that outlived its drawing.
Value addToSet(const Call& call) {
  const bool hasSet = call.has(1) && call[1].isTrue(), hasEntity = call.has(0) && call[0].isTrue();
  const AcDbObjectId entity = hasSet || hasEntity ? nameArgument(call, 0) : AcDbObjectId();
  if (!entity.isNull() && !entity.isValid()) return refuse(Errno::invalidName);
  if (hasSet) {
    selectionArgument(call, 1).add(entity);
    return call[1];
  }
  SelectionSet set;
  if (hasEntity) set.add(entity);
  return Value(static_cast<lisp::Opaque*>(new PickSet(selectionSets().add(std::move(set)))));
}

Value deleteFromSet(const Call& call) {
  return selectionArgument(call, 1).remove(nameArgument(call, 0)) ? call[1] : Value();
}

Value isInSet(const Call& call) {
  return selectionArgument(call, 1).contains(nameArgument(call, 0)) ? call[0] : Value();
}

Value lengthOfSet(const Call& call) { return Value(static_cast<int32_t>(selectionArgument(call, 0).size())); }

/// Counts from 0; a real is cut to an integer.
Value nameInSet(const Call& call) {
  const SelectionSet& set = selectionArgument(call, 0);
  const double index = call.number(1);
  if (!(index >= 0 && index < static_cast<double>(set.size()))) return {};
  return nameOf(set.at(static_cast<size_t>(index)));
}

}  // namespace

std::span<const lisp::Builtin> selectionFunctions() {
  static const lisp::Builtin table[] = {
      {L"SSADD", addToSet, 0, 2},       {L"SSDEL", deleteFromSet, 2, 2}, {L"SSMEMB", isInSet, 2, 2},
      {L"SSLENGTH", lengthOfSet, 1, 1}, {L"SSNAME", nameInSet, 2, 2},
  };
  return table;
}

}  // namespace host
