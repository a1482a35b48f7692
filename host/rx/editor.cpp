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

namespace {

struct IdleFunctions {
  std::vector<AcedOnIdleMsgFn> all;
};

std::vector<AcedOnIdleMsgFn>& idleFunctions() { return host::theOne<IdleFunctions>().all; }

}  // namespace

bool acedRegisterOnIdleWinMsg(AcedOnIdleMsgFn function) {
  auto& all = idleFunctions();
  if (!function || std::find(all.begin(), all.end(), function) != all.end()) return false;
  all.push_back(function);
  return true;
}

bool acedRemoveOnIdleWinMsg(AcedOnIdleMsgFn function) { return std::erase(idleFunctions(), function) > 0; }

namespace host {

Editor::Editor() { acrxSysRegistry()->atPut(L"AcEditor", this); }
Editor::~Editor() { acrxSysRegistry()->remove(L"AcEditor"); }

void tellIdle() {
  const auto functions = idleFunctions();  // they may come and go meanwhile
  for (const AcedOnIdleMsgFn each : functions) each();
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
