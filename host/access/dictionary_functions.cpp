#include "brx/db_dictionary.h"
#include "host/access/access_functions.h"
#include "host/access/access_state.h"
#include "host/access/arguments.h"
#include "host/access/object_list.h"
#include "host/database/stubs.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

/// Null, with ERRNO set, for an object that is no dictionary.
const AcDbDictionary* dictionaryArgument(const Call& call) {
  const AcDbObjectId id = nameArgument(call, 0);
  const auto* const dictionary = id.isErased() ? nullptr : AcDbDictionary::cast(objectOf(id));
  if (!dictionary) refuse(Errno::invalidName);
  return dictionary;
}

bool flag(const Call& call, size_t place) { return call.has(place) && call[place].isTrue(); }

Value namedobjdict(const Call&) { return nameOf(currentDrawing().namedObjectsDictionaryId()); }

Value dictsearch(const Call& call) {
  const AcDbDictionary* const dictionary = dictionaryArgument(call);
  AcDbObjectId id;
  if (!dictionary) return {};
  if (dictionary->getAt(call.text(1).c_str(), id) != Acad::eOk) return refuse(Errno::invalidTableName);
  if (flag(call, 2)) {
    accessStateOf(currentDrawing()).dictionaryWalks[dictionary->objectId()] = symbolKey(call.text(1).c_str());
  }
  return objectList(*objectOf(id));
}

/// Goes on behind the name that came last, so that entries may come and go meanwhile.
Value dictnext(const Call& call) {
  const AcDbDictionary* const dictionary = dictionaryArgument(call);
  if (!dictionary) return {};
  std::wstring& last = accessStateOf(currentDrawing()).dictionaryWalks[dictionary->objectId()];
  if (flag(call, 1)) last.clear();
  const auto& entries = HostAccess::entries(*dictionary);
  for (auto each = entries.upper_bound(last); each != entries.end(); ++each) {
    if (each->second.id.isErased()) continue;
    last = each->first;
    return objectList(*objectOf(each->second.id));
  }
  return {};
}

Value dictadd(const Call& call) {
  const AcDbDictionary* const known = dictionaryArgument(call);
  const std::wstring& name = call.text(1);
  const AcDbObjectId added = nameArgument(call, 2);
  if (!known) return {};
  AcDbObjectId id;
  if (!added.isValid() || added.isErased() || AcDbEntity::cast(objectOf(added))) {
    return refuse(Errno::invalidName);
  }
  if (known->has(name.c_str())) return refuse(Errno::invalidTableName);
  AcDbObjectPointer<AcDbDictionary> dictionary(known->objectId(), AcDb::kForWrite);
  AcDbObjectPointer<AcDbObject> object(added, AcDb::kForWrite);
  if (!dictionary.object() || !object.object()) return refuse(Errno::invalidName);
  const Acad::ErrorStatus status = dictionary->setAt(name.c_str(), object.object(), id);
  if (status != Acad::eOk) return refuse(errnoOf(status));
  if (object->ownerId().isNull()) object->setOwnerId(dictionary->objectId());
  return nameOf(id);
}

/// What leaves a dictionary lives on without an owner, but groups go with their names.
void keepAlive(AcDbObjectId id) {
  AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true);
  if (!object.object() || AcDbGroup::cast(object.object())) return;
  object->erase(false);
  object->setOwnerId(AcDbObjectId());
}

Value dictremove(const Call& call) {
  const AcDbDictionary* const known = dictionaryArgument(call);
  AcDbObjectId id;
  if (!known) return {};
  if (known->getAt(call.text(1).c_str(), id) != Acad::eOk) return refuse(Errno::invalidTableName);
  AcDbObjectPointer<AcDbDictionary> dictionary(known->objectId(), AcDb::kForWrite);
  if (!dictionary.object()) return refuse(errnoOf(dictionary.openStatus()));
  const Acad::ErrorStatus status = dictionary->remove(call.text(1).c_str());
  if (status != Acad::eOk) return refuse(errnoOf(status));
  keepAlive(id);
  return nameOf(id);
}

Value dictrename(const Call& call) {
  const AcDbDictionary* const known = dictionaryArgument(call);
  if (!known) return {};
  AcDbObjectPointer<AcDbDictionary> dictionary(known->objectId(), AcDb::kForWrite);
  if (!dictionary.object()) return refuse(errnoOf(dictionary.openStatus()));
  const Acad::ErrorStatus status = dictionary->setName(call.text(1).c_str(), call.text(2).c_str());
  return status == Acad::eOk ? call[2] : refuse(errnoOf(status));
}

}  // namespace

std::span<const lisp::Builtin> dictionaryFunctions() {
  static const lisp::Builtin table[] = {
      {L"NAMEDOBJDICT", namedobjdict, 0, 0}, {L"DICTSEARCH", dictsearch, 2, 3},
      {L"DICTNEXT", dictnext, 1, 2},         {L"DICTADD", dictadd, 3, 3},
      {L"DICTREMOVE", dictremove, 2, 2},     {L"DICTRENAME", dictrename, 3, 3},
  };
  return table;
}

}  // namespace host
