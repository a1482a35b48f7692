#include "zarbo/desktop/todo_queue.h"

#include <memory>

#include "brx/documents.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/support/utilities.h"

namespace {

std::wstring& toDoDrawing() {
  static std::wstring name;
  return name;
}

}  // namespace

namespace {

enum Sending : int { documentBusy = -1, notOpen = 0, wasSent = 1 };

AcApDocument* findDocument(const std::wstring& fileName) {
  const std::unique_ptr<AcApDocumentIterator> documents(acDocManagerPtr()->newAcApDocumentIterator());
  for (; !documents->done(); documents->step()) {
    if (equalNoCase(documents->document()->fileName(), fileName)) return documents->document();
  }
  return nullptr;
}

Sending send(const std::wstring& fileName, const std::wstring& command) {
  AcApDocument* const document = findDocument(fileName);
  if (!document) return notOpen;
  if (!document->isQuiescent()) return documentBusy;
  acDocManagerPtr()->sendStringToExecute(document, command.c_str(), true, false, false);
  return wasSent;
}

}  // namespace

int kvExecuteToDo() {
  acedRetNil();
  LispArgs args;
  std::wstring fileName, command;
  if (!getString(args.cursor, fileName) || !getString(args.cursor, command)) return wrongType;
  // The line's end makes the host run it at once.
  acedRetInt(send(fileName, command + L"\n"));
  return done;
}

int kvSetToDoDrawing() {
  acedRetNil();
  LispArgs args;
  return getString(args.cursor, toDoDrawing()) ? done : wrongType;
}

int kvGetToDoDrawing() {
  acedRetStr(toDoDrawing().c_str());
  return done;
}
