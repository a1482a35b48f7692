#include "host/rx/editor.h"

#include <algorithm>

#include "host/root/host.h"

AcRxEventReactor::~AcRxEventReactor() = default;
void AcRxEventReactor::beginSave(AcDbDatabase*, const ACHAR*) {}
void AcRxEventReactor::saveComplete(AcDbDatabase*, const ACHAR*) {}
void AcRxEventReactor::abortSave(AcDbDatabase*) {}
void AcRxEventReactor::databaseConstructed(AcDbDatabase*) {}
void AcRxEventReactor::databaseToBeDestroyed(AcDbDatabase*) {}

AcEditorReactor::~AcEditorReactor() = default;
void AcEditorReactor::commandWillStart(const ACHAR*) {}
void AcEditorReactor::commandEnded(const ACHAR*) {}
void AcEditorReactor::commandCancelled(const ACHAR*) {}

bool acedRegisterOnIdleWinMsg(AcedOnIdleMsgFn function) { return host::editor().addIdleFunction(function); }
bool acedRemoveOnIdleWinMsg(AcedOnIdleMsgFn function) { return host::editor().removeIdleFunction(function); }

namespace host {

Editor::Editor() { acrxSysRegistry()->atPut(L"AcEditor", this); }
Editor::~Editor() { acrxSysRegistry()->remove(L"AcEditor"); }

bool Editor::addIdleFunction(AcedOnIdleMsgFn function) {
  if (!function || std::find(idle_.begin(), idle_.end(), function) != idle_.end()) return false;
  idle_.push_back(function);
  return true;
}

bool Editor::removeIdleFunction(AcedOnIdleMsgFn function) { return std::erase(idle_, function) > 0; }

void Editor::tellIdle() const {
  const auto told = idle_;  // they may come and go meanwhile
  for (const AcedOnIdleMsgFn each : told) each();
}

void Editor::addReactor(AcEditorReactor* reactor) {
  if (reactor && !holds(reactor)) reactors_.push_back(reactor);
}

void Editor::removeReactor(AcEditorReactor* reactor) { std::erase(reactors_, reactor); }

bool Editor::holds(const AcEditorReactor* reactor) const {
  return std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end();
}

Editor& editor() { return theOne<Editor>(); }

}  // namespace host
