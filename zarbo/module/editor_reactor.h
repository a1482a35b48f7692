#pragma once

#include "brx/editor_reactor.h"

/// Brings the databases to the disk before a drawing is saved and when the prompt returns, and closes that of
/// a drawing that is saved under a new name.
class zbEditorReactor : public AcEditorReactor {
 public:
  ~zbEditorReactor() override;
  void beginSave(AcDbDatabase* database, const ACHAR* intendedName) override;
  void saveComplete(AcDbDatabase* database, const ACHAR* actualName) override;
};

/// The module's one reactor, between these two calls.
void addEditorReactor();
void removeEditorReactor();
