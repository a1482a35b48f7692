#include "host/access/arguments.h"

#include "host/bridge/values.h"
#include "host/database/selection_set.h"
#include "host/documents/variables.h"
#include "host/lisp/builtins.h"

namespace host {

using lisp::Value;

Value refuse(Errno reason) {
  setVariable(L"ERRNO", static_cast<int>(reason));
  return {};
}

Errno errnoOf(Acad::ErrorStatus status) {
  switch (status) {
    case Acad::eWasErased:
    case Acad::ePermanentlyErased:
      return Errno::erased;
    case Acad::eOnLockedLayer:
      return Errno::onLockedLayer;
    case Acad::eMissingDxfField:
      return Errno::missingField;
    case Acad::eKeyNotFound:
    case Acad::eInvalidKey:
    case Acad::eDuplicateKey:
      return Errno::invalidTableName;
    case Acad::eRegappIdNotFound:
    case Acad::eXDataSizeExceeded:
    case Acad::eInvalidResBuf:
      return Errno::badXdata;
    case Acad::eNullObjectId:
    case Acad::eInvalidAdsName:
    case Acad::eNotThatKindOfClass:
      return Errno::invalidName;
    default:
      return Errno::badField;
  }
}

AcDbObjectId nameArgument(const lisp::Call& call, size_t place) {
  const Value& value = call[place];
  if (value.type() != lisp::Type::entity) lisp::failType(L"lentityp", value);
  return AcDbObjectId(reinterpret_cast<AcDbStub*>(value.entityName()));
}

const PickSet& setArgument(const lisp::Call& call, size_t place) {
  const Value& value = call[place];
  const auto* const set =
      value.type() == lisp::Type::opaque ? dynamic_cast<const PickSet*>(value.opaque()) : nullptr;
  if (!set) lisp::failType(L"lselsetp", value);
  return *set;
}

SelectionSet& selectionArgument(const lisp::Call& call, size_t place) {
  SelectionSet* const set = selectionSets().find(setArgument(call, place).number);
  if (!set) lisp::failType(L"lselsetp", call[place]);
  return *set;
}

Value nameOf(AcDbObjectId id) {
  return id.isNull() ? Value() : Value::entity(reinterpret_cast<int64_t>(id.stub()));
}

}  // namespace host
