#include "zarbo/database/failure.h"

#include "brx/lisp_calls.h"
#include "zarbo/database/connections.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"

namespace {

constexpr int32_t noCurrentRecord = 3021;
constexpr int32_t diskOrNetworkError = 3043;
constexpr const wchar_t* moduleFallback = L"\nZarbo Error: %s";
constexpr const wchar_t* ownConnectionFallback = L"\nDatabase Error: %s";

void keep(const PendingError& error) {
  lastErrorText() = L"(" + std::to_wstring(error.code) + L") " + error.text;
}

/// Running off either end of a table is no news to the user.
void print(const PendingError& error, const wchar_t* fallback) {
  if (error.code == noCurrentRecord) return;
  if (error.code == diskOrNetworkError) {
    acutPrintf(L"\nA disk or network error occurred while trying to access the database.");
    acutPrintf(
        L"Try the command again. If it continues to not work, try restarting AutoCAD. If that does not fix "
        L"the error, try restarting your computer.");
    return;
  }
  acutPrintf(fallback, lastErrorText().c_str());
}

bool report(Engine& engine, const wchar_t* fallback) {
  acedRetNil();
  if (!engine || !engine.errorPending()) return false;
  const PendingError error = engine.takeError();
  keep(error);
  print(error, fallback);
  return true;
}

}  // namespace

std::wstring& lastErrorText() {
  static std::wstring text;
  return text;
}

void tellEngineError(const PendingError& error) {
  keep(error);
  print(error, moduleFallback);
}

bool reportEngineFailure() { return report(activeConnection(), moduleFallback); }

bool reportConnectFailure(Engine& engine) { return report(engine, moduleFallback); }

bool reportEngineFailure(Engine& engine) { return report(engine, ownConnectionFallback); }

bool keepEngineFailure(Engine& engine) {
  if (!engine || !engine.errorPending()) return false;
  keep(engine.takeError());
  return true;
}

int zbLastError() {
  acedRetStr(lastErrorText().c_str());
  return done;
}

int zbResetLastError() {
  lastErrorText().clear();
  acedRetStr(lastErrorText().c_str());
  return done;
}
