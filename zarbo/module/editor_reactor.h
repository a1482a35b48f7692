#pragma once

#include "brx/editor_reactor.h"

/// Closes the database of a drawing that is saved under a new name.
class zbEditorReactor : public AcEditorReactor {
 public:
  ~zbEditorReactor() override;
  void saveComplete(AcDbDatabase* database, const ACHAR* actualName) override;
};

/// The module's one reactor, between these two calls.
void addEditorReactor();
void removeEditorReactor();
