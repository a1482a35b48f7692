#include "zarbo/dialogs/dialog_database.h"

#include "brx/lisp_calls.h"
#include "platform/desktop/desktop.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"

PrivateDatabase::~PrivateDatabase() {
  if (isOpen_) engine_.closeDatabase();
}

bool PrivateDatabase::open(const std::wstring& path, bool (*report)(Engine&)) {
  bool readOnly = false;
  if (!engine_.openPrivate(path, readOnly)) {
    report(engine_);
    return false;
  }
  if (readOnly) {
    platform::desktop().messageBox(
        {L"Korvane", L"Database is read-only. Cannot be viewed at this time.", platform::exclamationIcon});
    return false;
  }
  return isOpen_ = true;
}

DialogConnection::DialogConnection(const std::optional<std::wstring>& path) {
  if (!path) {
    engine_ = activeConnection();
    return;
  }
  own_.emplace();
  if (*own_ && own_->open(*path, reportActiveFailure)) engine_ = own_->engine();
}

bool printFailure(Engine& engine) { return reportEngineFailure(engine); }

// The report is the active connection's by design of the dialogs that use it. What that has to tell is older
// than this failure, which would pass without a word.
bool reportActiveFailure(Engine& engine) {
  reportEngineFailure();
  return reportEngineFailure(engine);
}

void runStatement(Engine& engine, const std::wstring& sql) {
  if (!engine.executeStatement(sql)) keepEngineFailure(engine);
}

void printNoStandardsDatabase() { acutPrintf(L"\nSelected database is not a Korvane standards database."); }
