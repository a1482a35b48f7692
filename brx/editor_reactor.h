#pragma once

#include "brx/rx_object.h"

/// Notifications of the host's editor.

class AcDbDatabase;

class BRX_API AcRxEventReactor : public AcRxObject {
 public:
  ~AcRxEventReactor() override;
  virtual void beginSave(AcDbDatabase* database, const ACHAR* intendedName);
  /// `actualName` is the full path under which the drawing was written.
  virtual void saveComplete(AcDbDatabase* database, const ACHAR* actualName);
  virtual void abortSave(AcDbDatabase* database);
  virtual void databaseConstructed(AcDbDatabase* database);
  virtual void databaseToBeDestroyed(AcDbDatabase* database);
};

class BRX_API AcEditorReactor : public AcRxEventReactor {
 public:
  ~AcEditorReactor() override;
  virtual void commandWillStart(const ACHAR* command);
  virtual void commandEnded(const ACHAR* command);
  virtual void commandCancelled(const ACHAR* command);
};

/// Found under "AcEditor" in `acrxSysRegistry()`. Reactors are told of events in the order of adding.
class BRX_API AcEditor : public AcRxObject {
 public:
  /// The caller keeps the reactor, and removes it before deleting it.
  virtual void addReactor(AcEditorReactor* reactor) = 0;
  virtual void removeReactor(AcEditorReactor* reactor) = 0;
};

/// Called each time when the host has nothing to do any more: when the prompt is back.
using AcedOnIdleMsgFn = void (*)();
/// False for one that is registered already, or isn't.
BRX_API bool acedRegisterOnIdleWinMsg(AcedOnIdleMsgFn function);
BRX_API bool acedRemoveOnIdleWinMsg(AcedOnIdleMsgFn function);
