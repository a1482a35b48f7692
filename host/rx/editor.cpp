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

namespace host {

Editor::Editor() { acrxSysRegistry()->atPut(L"AcEditor", this); }
Editor::~Editor() { acrxSysRegistry()->remove(L"AcEditor"); }

void Editor::addReactor(AcEditorReactor* reactor) {
  if (reactor && !holds(reactor)) reactors_.push_back(reactor);
}

void Editor::removeReactor(AcEditorReactor* reactor) { std::erase(reactors_, reactor); }

bool Editor::holds(const AcEditorReactor* reactor) const {
  return std::find(reactors_.begin(), reactors_.end(), reactor) != reactors_.end();
}

Editor& editor() { return theOne<Editor>(); }

}  // namespace host
