#include "host/database/changes.h"

#include <utility>

#include "host/database/stubs.h"

void AcDbDatabaseImp::noteVariable(size_t variable) {
  if (notesChanges) changedVariables.insert(variable);
}

namespace host {

void noteChanges(AcDbDatabase& drawing) { drawing.imp().notesChanges = true; }

Changes takeChanges(AcDbDatabase& drawing) {
  AcDbDatabaseImp& imp = drawing.imp();
  Changes changes;
  changes.objects.reserve(imp.changed.size());
  for (AcDbStub* each : std::exchange(imp.changed, {})) {
    each->noted = false;
    changes.objects.emplace_back(each);
  }
  for (const size_t each : std::exchange(imp.changedVariables, {})) changes.variables.push_back(each);
  return changes;
}

bool hasChanges(const AcDbDatabase& drawing) {
  return !drawing.imp().changed.empty() || !drawing.imp().changedVariables.empty();
}

ReadLog::ReadLog(AcDbObjectId space) : outer_(std::exchange(current, this)), space_(space) {}
ReadLog::~ReadLog() { current = outer_; }

ReadLog::Source ReadLog::sourceOf(AcDbObjectId object, AcDbObjectId space) {
  const AcDbStub* stub = object.stub();
  while (stub && stub->object && stub->owner && AcDbEntity::cast(stub->object)) {
    if (stub->owner == space.stub()) break;
    stub = stub->owner;
  }
  return stub;
}
ReadLog::Source ReadLog::sourceOf(size_t variable) { return &headerVariables()[variable]; }

void ReadLog::add(AcDbStub* stub) {
  if (stub == last_) return;
  last_ = stub;
  sources_.insert(sourceOf(AcDbObjectId(stub), space_));
}

}  // namespace host
