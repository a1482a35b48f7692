#include "zarbo/drawing/todo_queue.h"

#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

std::wstring& toDoDrawing() {
  static std::wstring name;
  return name;
}

}  // namespace

int kvSetToDoDrawing() {
  acedRetNil();
  LispArgs args;
  return getString(args.cursor, toDoDrawing()) ? done : wrongType;
}

int kvGetToDoDrawing() {
  acedRetStr(toDoDrawing().c_str());
  return done;
}
