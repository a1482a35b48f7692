#pragma once

#include "brx/acad_status.h"
#include "brx/rx_object.h"

/// Open documents of the host.

class AcDbDatabase;

class BRX_API AcApDocument : public AcRxObject {
 public:
  /// Full path of the drawing, or "Drawing1.dwg" while it has none. Valid until the next save or close.
  virtual const ACHAR* fileName() const = 0;
  /// Owned by the document.
  virtual AcDbDatabase* database() const = 0;
  /// False while the document runs a command or evaluates LISP.
  virtual bool isQuiescent() const = 0;
};

/// Walks the open documents in the order of opening. Stays valid only while none is opened or closed.
class BRX_API AcApDocumentIterator : public AcRxObject {
 public:
  virtual bool done() const = 0;
  virtual void step() = 0;
  /// Null at the end.
  virtual AcApDocument* document() = 0;
};

class BRX_API AcApDocManager : public AcRxObject {
 public:
  /// The document whose context is current; null when none is open.
  virtual AcApDocument* curDocument() const = 0;
  /// The document that the user works in; it may differ from the current one during a notification.
  virtual AcApDocument* mdiActiveDocument() const = 0;
  /// Queues a text as if it were typed in the document; it runs when the host is idle. A line's end in it
  /// is Enter. With `activate` the document becomes the active one for good, else only while it runs.
  virtual Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                                bool activate = true, bool wrapUpInactiveDoc = false,
                                                bool echo = true) = 0;
  /// Where the host looks for dialogs' texts and pictures first: the library's that was pushed last. Pushes
  /// are undone in their opposite order; without one there is nothing to pop.
  virtual Acad::ErrorStatus pushResourceHandle(void* library) = 0;
  virtual Acad::ErrorStatus popResourceHandle() = 0;
  /// The caller deletes the iterator.
  virtual AcApDocumentIterator* newAcApDocumentIterator() = 0;
};

AcApDocManager* acDocManagerPtr();
