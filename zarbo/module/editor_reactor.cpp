#include "zarbo/module/editor_reactor.h"

#include <memory>

#include "brx/documents.h"
#include "zarbo/database/connections.h"

namespace {

std::unique_ptr<zbEditorReactor>& reactor() {
  static std::unique_ptr<zbEditorReactor> instance;
  return instance;
}

AcEditor* editor() { return static_cast<AcEditor*>(acrxSysRegistry()->at(L"AcEditor")); }

}  // namespace

zbEditorReactor::~zbEditorReactor() = default;

void zbEditorReactor::beginSave(AcDbDatabase*, const ACHAR*) { settleConnections(); }

void zbEditorReactor::saveComplete(AcDbDatabase* database, const ACHAR* actualName) {
  const AcApDocument* const document = acDocManagerPtr()->mdiActiveDocument();
  if (document && document->database() == database) closeWhenRenamed(actualName ? actualName : L"");
}

void addEditorReactor() {
  reactor() = std::make_unique<zbEditorReactor>();
  if (editor()) editor()->addReactor(reactor().get());
  acedRegisterOnIdleWinMsg(settleConnections);
}

void removeEditorReactor() {
  if (!reactor()) return;
  acedRemoveOnIdleWinMsg(settleConnections);
  if (editor()) editor()->removeReactor(reactor().get());
  reactor().reset();
}
