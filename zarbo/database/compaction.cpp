#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "zarbo/database/failure.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

/// The name lets the support desk tell the machines of an office apart.
void showInBox(const PendingError& error) {
  const std::optional<std::wstring> computer = platform::computerName();
  if (!computer) return;
  platform::Box box;
  box.caption = L"Database Error";
  box.text = error.text + L"\n(Your computer name is " + *computer + L".)";
  box.style = platform::stopIcon;
  platform::desktop().messageBox(box);
}

}  // namespace

int zbCompact() {
  acedRetNil();
  LispArgs args;
  if (!args.first() || !args.first()->rbnext) return tooFewArguments;
  std::wstring source, destination;
  if (!getString(args.cursor, source) || !getString(args.cursor, destination)) return wrongType;
  bool withBox;
  if (!getFlag(args.cursor, withBox)) withBox = true;

  Engine engine = Engine::create();
  if (!engine) return done;
  if (engine.compactDatabase(source, destination)) {
    if (engine.errorPending()) acutPrintf(L"\n%s", engine.takeError().text.c_str());
    acedRetStr(L"OK");
    return done;
  }
  // Asked before the error is taken: taking it ends its being pending.
  const bool pending = engine.errorPending();
  const PendingError error = engine.takeError();
  if (pending) tellEngineError(error);
  if (withBox) showInBox(error);
  acedRetInt(error.code);
  return done;
}
