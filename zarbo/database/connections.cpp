#include "zarbo/database/connections.h"

#include <algorithm>
#include <list>
#include <memory>

#include "brx/documents.h"
#include "brx/lisp_calls.h"
#include "platform/com/class_objects.h"
#include "platform/text/letters.h"
#include "zarbo/database/failure.h"
#include "zarbo/database/find_database.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/frame/lisp_args.h"
#include "zarbo/frame/list_builder.h"

namespace {

/// One database for a drawing.
struct DB_INFO {
  /// As `fileName()` gave it; empty when nobody holds the record.
  std::wstring drawingName;
  Engine connection;
  /// With which the connection was opened; empty when closed.
  std::wstring path;
  bool readOnly = false;
};

using Records = std::list<std::unique_ptr<DB_INFO>>;

struct State {
  /// The head belongs to the current drawing.
  Records records;
  Engine active;
  std::wstring path;
  bool readOnly = false;
};

State& state() {
  static State instance;
  return instance;
}

DB_INFO& head() { return *state().records.front(); }

std::wstring currentDrawingName() {
  const AcApDocument* const document = acDocManagerPtr()->curDocument();
  return document && document->fileName() ? document->fileName() : L"";
}

void setActive(const Engine& connection, const std::wstring& path, bool readOnly) {
  State& own = state();
  own.active = connection;
  own.path = path;
  own.readOnly = readOnly;
}

void setActive(const DB_INFO& record) { setActive(record.connection, record.path, record.readOnly); }
void setNoneActive() { setActive(Engine(), L"", false); }

std::wstring comparablePath(std::wstring path) {
  for (wchar_t& c : path) c = c == L'/' ? L'\\' : upperLetter(c);
  return path;
}

/// A path that occurs anywhere inside the database's name will do, so that a bare file name matches.
bool sameDatabase(Engine& connection, const std::wstring& path) {
  if (!connection || !connection.isConnected() || !connection.isOpen()) return false;
  return comparablePath(connection.databaseName()).find(comparablePath(path)) != std::wstring::npos;
}

void closeActiveDatabase() {
  State& own = state();
  if (!own.active) return;
  own.active.closeDatabase();
  own.path.clear();
  if (!own.records.empty()) head().path.clear();
}

void forgetLostConnections() {
  for (const auto& each : state().records) {
    if (each->connection && !each->connection.isConnected()) {
      each->connection = Engine();
      each->path.clear();
    }
  }
}

/// Brings the current drawing's record to the head and its connection into use; false when it has none.
bool selectRecord() {
  Records& records = state().records;
  const std::wstring name = currentDrawingName();
  if (records.empty()) {
    setNoneActive();
    return false;
  }
  if (head().drawingName == name) {
    if (head().connection != state().active) setActive(head());
    return true;
  }
  const auto found = std::find_if(records.begin(), records.end(),
                                  [&](const auto& each) { return each->drawingName == name; });
  if (found == records.end()) {
    setNoneActive();
    return false;
  }
  std::swap(*found, records.front());
  setActive(head());
  return true;
}

void reconnect() {
  State& own = state();
  const std::wstring status = own.active.connect(own.path, own.readOnly);
  if (status == repairStatus || status.empty()) {
    setNoneActive();
  } else {
    head().connection = own.active;
    head().path = own.path;
  }
}

void purgeOrphans() {
  std::erase_if(state().records,
                [](const auto& each) { return each->drawingName.empty() && !each->connection; });
}

/// After this the current drawing holds the record of this database, if there is one, else none.
void rebindToPath(const std::wstring& path) {
  State& own = state();
  const std::wstring name = currentDrawingName();
  if (own.records.empty()) {
    setNoneActive();
    return;
  }
  if (sameDatabase(head().connection, path)) {
    if (head().connection != own.active) setActive(head());
    return;
  }
  for (const auto& each : own.records) {
    const bool isActive = each->connection && each->connection == own.active;
    if (each->drawingName == name) each->drawingName.clear();
    if (isActive) setNoneActive();
  }
  const auto claimed = std::find_if(own.records.begin(), own.records.end(), [&](const auto& each) {
    return (each->drawingName.empty() || each->drawingName == name) && sameDatabase(each->connection, path);
  });
  if (claimed == own.records.end()) return;
  (*claimed)->drawingName = name;
  std::swap(*claimed, own.records.front());
  setActive(head());
}

struct ConnectRequest {
  std::wstring path;
  bool readOnly = false;
  bool failVisibly = false;
};

bool readRequest(ConnectRequest& request) {
  LispArgs args;
  if (!getString(args.cursor, request.path)) return false;
  std::wstring mode;
  if (getString(args.cursor, mode)) {
    request.readOnly = mode != L"w";
    getFlag(args.cursor, request.failVisibly);
  }
  return true;
}

/// Asks the application to repair the file, and whether it did.
bool repairByApplication(const std::wstring& path) {
  ApplicationCall call(L"compactDatabase");
  return call.text(path).nil().text(L"Repair").invoke() && !call.answersNil();
}

/// Connects, with one repair in between when the file asks for it.
bool connectWithRepair(Engine& connection, const std::wstring& path, bool readOnly) {
  std::wstring status = connection.connect(path, readOnly);
  if (status != repairStatus) return !status.empty();
  connection.closeDatabase();
  if (!repairByApplication(path)) return false;
  status = connection.connect(path, readOnly);
  return status != repairStatus && !status.empty();
}

/// What is left of a connection that the drawing had before; true when it is just what is asked for.
bool keepOrDropActive(const ConnectRequest& request, bool wasSameDatabase) {
  State& own = state();
  if (!own.active || !own.active.isConnected()) return false;
  if (own.active.isOpen()) {
    if (wasSameDatabase && own.active.isWritable() == !request.readOnly) return true;
    own.active.closeDatabase();
    head().connection = Engine();
    head().path.clear();
  }
  own.active = Engine();
  return false;
}

void addRecord(const ConnectRequest& request) {
  auto record = std::make_unique<DB_INFO>();
  record->connection = state().active;
  record->drawingName = currentDrawingName();
  record->path = request.path;
  record->readOnly = request.readOnly;
  state().records.push_front(std::move(record));
}

/// Makes and opens a new connection and activates it. Answers a `BodyResult` when it failed, and
/// nothing when it goes on.
bool openNewConnection(ConnectRequest& request, int& result) {
  result = done;
  Engine made = Engine::create();
  if (!made || !findDatabase(request.path)) return false;
  if (!connectWithRepair(made, request.path, request.readOnly)) {
    // The error lies with the new connection: it is reported as the active one.
    if (reportConnectFailure(made)) {
      result = request.failVisibly ? failedVisibly : done;
      return false;
    }
  }
  setActive(made, request.path, request.readOnly);
  return true;
}

}  // namespace

Engine& activeConnection() { return state().active; }
const std::wstring& activePath() { return state().path; }
bool activeReadOnly() { return state().readOnly; }

void ensureConnection() {
  if (!selectRecord()) return;
  Engine& active = state().active;
  if (!active || (active.isConnected() && active.isOpen())) return;
  if (!active.isConnected()) {
    setNoneActive();
    forgetLostConnections();
  } else if (!active.isOpen()) {
    closeActiveDatabase();
  }
  // The path is left only when the answers changed between the two rounds of asking.
  if (state().active && !state().path.empty()) reconnect();
}

int addDrawingRecord() try {
  auto record = std::make_unique<DB_INFO>();
  record->drawingName = currentDrawingName();
  state().records.push_front(std::move(record));
  return done;
} catch (const std::bad_alloc&) {
  return badData;
}

void dropHeadRecord() {
  State& own = state();
  if (own.active) {
    own.active.closeDatabase();
    own.active = Engine();
  }
  if (!own.records.empty()) own.records.pop_front();
}

void closeAllConnections() {
  Records& records = state().records;
  while (!records.empty()) {
    const std::unique_ptr<DB_INFO> record = std::move(records.front());
    records.pop_front();
    if (record->connection) record->connection.closeDatabase();
  }
}

void settleConnections() {
  for (const auto& each : state().records) {
    if (each->connection && !each->connection.settle()) tellEngineError(each->connection.takeError());
  }
}

void closeWhenRenamed(const std::wstring& savedName) {
  State& own = state();
  if (own.records.empty() || head().drawingName == savedName || head().connection != own.active) return;
  closeActiveDatabase();
}

int zbConnect() {
  acedRetNil();
  purgeOrphans();
  ConnectRequest request;
  if (!readRequest(request)) return wrongType;
  const bool wasSameDatabase = sameDatabase(state().active, request.path);
  rebindToPath(request.path);
  if (!keepOrDropActive(request, wasSameDatabase)) {
    int result;
    // A connection that is left is one that said it isn't connected; it is taken over as it stands.
    if (!state().active && !openNewConnection(request, result)) return result;
    addRecord(request);
  }
  acedRetT();
  return done;
}

int zbCloseDb() {
  acedRetNil();
  closeActiveDatabase();
  return done;
}

int zbMdb() {
  acedRetNil();
  if (!state().active) return done;
  const std::wstring name = state().active.databaseName();
  if (name.empty()) {
    reportEngineFailure();
  } else {
    acedRetStr(name.c_str());
  }
  return done;
}

int zbReadonly() {
  if (!state().active || state().active.isReadOnly()) {
    acedRetT();
  } else {
    acedRetNil();
  }
  return done;
}

int zbGetVersion() {
  SHORT version = 0;
  if (const auto engine = createObject<IZbEngine>(engineClassId)) {
    if (FAILED(engine->EngineVersion(&version))) version = 0;
  }
  retNumber(version);
  return done;
}
