#include "engine/engine_object.h"

#include <filesystem>

#include "engine/compact.h"
#include "engine/definition.h"
#include "engine/description.h"
#include "engine/jet_kind.h"
#include "platform/settings/settings.h"
#include "platform/text/utf.h"

COleSafeArray arrayOfNames(const std::vector<std::string>& names) {
  COleSafeArray result;
  result.CreateOneDim(VT_VARIANT, static_cast<ULONG>(names.size()));
  const VariantElements elements(result);
  for (size_t i = 0; i < names.size(); ++i) {
    elements[static_cast<ULONG>(i)].bstrVal = bstrOfUtf8(names[i]);
    elements[static_cast<ULONG>(i)].vt = VT_BSTR;
  }
  return result;
}

COleSafeArray arrayOfPairs(const std::vector<std::pair<std::string, COleVariant>>& pairs) {
  COleSafeArray result;
  result.CreateOneDim(VT_VARIANT, static_cast<ULONG>(2 * pairs.size()));
  const VariantElements elements(result);
  for (size_t i = 0; i < pairs.size(); ++i) {
    VARIANT& name = elements[static_cast<ULONG>(2 * i)];
    name.bstrVal = bstrOfUtf8(pairs[i].first);
    name.vt = VT_BSTR;
    elements[static_cast<ULONG>(2 * i + 1)] = COleVariant(pairs[i].second).Detach();
  }
  return result;
}

HRESULT EngineObject::QueryInterface(const IID& iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (iid == interfaceId<IZbDurability>) {
    *object = static_cast<IZbDurability*>(this);
  } else if (iid == interfaceId<IUnknown> || iid == interfaceId<IDispatch> || iid == interfaceId<IZbEngine>) {
    *object = static_cast<IZbEngine*>(this);
  } else {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG EngineObject::AddRef() { return ++references_; }

ULONG EngineObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

// Callers go through the interface's table; calling by name is not offered.
HRESULT EngineObject::GetTypeInfoCount(UINT* count) {
  if (!count) return E_POINTER;
  *count = 0;
  return S_OK;
}
HRESULT EngineObject::GetTypeInfo(UINT, LCID, ITypeInfo**) { return E_NOTIMPL; }
HRESULT EngineObject::GetIDsOfNames(const IID&, OLECHAR**, UINT, LCID, DISPID*) { return E_NOTIMPL; }
HRESULT EngineObject::Invoke(DISPID, const IID&, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) {
  return E_NOTIMPL;
}

Database& EngineObject::database() {
  if (!database_) fail(notOpen, "database");
  if (database_->isReplaced()) followReplacement();
  return *database_;
}

void EngineObject::followReplacement() {
  try {
    database_->reopen();
    const bool good = database_->examine() == Database::Health::Good;
    Transaction transaction(*database_, Transaction::Kind::Read, Access::Open);
    if (!good || !isOurDatabase(*database_)) fail(notADatabase, database_->path());
  } catch (...) {
    closeAll();
    throw;
  }
  catalog_->databaseReopened();
  if (cursor_) cursor_->databaseReopened();
}

DatabaseCatalog& EngineObject::catalog() {
  database();
  return *catalog_;
}

DatabaseCatalog& EngineObject::freshCatalog() {
  Transaction transaction(database(), Transaction::Kind::Read, Access::Read);
  catalog_->refresh();
  return *catalog_;
}

Cursor& EngineObject::cursor() {
  database();
  if (!cursor_) fail(notOpen, "table");
  return *cursor_;
}

void EngineObject::closeAll() {
  cursor_.reset();
  catalog_.reset();
  database_.reset();
  snapshot_.reset();
}

namespace {

[[noreturn]] void refuseToWriteJetFile(const std::string& path) {
  const std::string made = std::filesystem::path(path).replace_extension(".kv").string();
  throw jet::Failure{
      {jet::readOnlyDatabase,
       "'" + path + "' is a genuine Jet file, which can be read only. To write, run: zarbo-mdb import '" +
           path + "' '" + made + "'",
       std::nullopt}};
}

Database::Writing writingOfInstallation() {
  const auto value = platform::readSetting(L"Software\\Korvane Software\\Installation", L"DatabaseWrites");
  return !value || value->empty() || *value == L"flow" ? Database::Writing::Flow : Database::Writing::Full;
}

}  // namespace

bool EngineObject::open(BSTR path, Database::Mode mode) {
  if (database_) database_->settle();
  closeAll();
  const std::string file = fullPath(viewOf(path));
  try {
    return openFile(file, mode);
  } catch (const jet::Failure& failure) {
    if (failure.error.number != notADatabase || !mdb::isJetFile(file)) throw;
  }
  if (mode == Database::Mode::Write) refuseToWriteJetFile(file);
  std::shared_ptr<const JetSnapshot> snapshot = JetSnapshot::of(file);
  if (!openFile(snapshot->path(), mode)) fail(notADatabase, file);
  snapshot_ = std::move(snapshot);
  return true;
}

bool EngineObject::openFile(const std::string& path, Database::Mode mode) {
  auto opened = std::make_unique<Database>(path, mode, Database::Sharing::Any, writingOfInstallation());
  if (opened->examine() == Database::Health::Damaged) return false;
  auto schema = std::make_unique<DatabaseCatalog>(*opened);
  {
    Transaction transaction(*opened, Transaction::Kind::Read, Access::Open);
    if (!isOurDatabase(*opened)) fail(notADatabase, opened->path());
    if (!describesItself(*opened)) return false;
    schema->refresh();
  }
  database_ = std::move(opened);
  catalog_ = std::move(schema);
  return true;
}

HRESULT EngineObject::Connect(BSTR path, VARIANT_BOOL, VARIANT_BOOL readOnly, BSTR* status) {
  if (!status) return E_POINTER;
  *status = nullptr;
  const wchar_t* answer = L"";
  VARIANT_BOOL done;
  attempt(&done, [&] {
    answer = open(path, readOnly ? Database::Mode::Read : Database::Mode::Write) ? L"OK" : L"*REPAIR*";
  });
  *status = SysAllocString(done ? answer : L"");
  return *status ? S_OK : E_OUTOFMEMORY;
}

HRESULT EngineObject::OpenPrivate(BSTR path, VARIANT_BOOL* readOnly, VARIANT_BOOL* ok) {
  if (!readOnly) return E_POINTER;
  *readOnly = VARIANT_TRUE;
  return attempt(ok, [&] {
    bool good;
    try {
      good = open(path, Database::Mode::Write);
    } catch (const jet::Failure& failure) {
      if (failure.error.number != noRight && failure.error.number != jet::readOnlyDatabase) throw;
      good = open(path, Database::Mode::Read);
    }
    if (!good) fail(notADatabase, toUtf8(viewOf(path)));
    *readOnly = database_->readOnly() ? VARIANT_TRUE : VARIANT_FALSE;
  });
}

HRESULT EngineObject::CloseDatabase(VARIANT_BOOL* ok) {
  const HRESULT result = attempt(ok, [&] {
    if (database_) database_->settle();
  });
  closeAll();
  return result;
}

HRESULT EngineObject::Settle(VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    if (database_) database_->settle();
  });
}

namespace {
HRESULT answer(VARIANT_BOOL* out, bool value) {
  if (!out) return E_POINTER;
  *out = value ? VARIANT_TRUE : VARIANT_FALSE;
  return S_OK;
}
HRESULT answer(BSTR* out, std::string_view text) {
  if (!out) return E_POINTER;
  *out = bstrOfUtf8(text);
  return S_OK;
}
}  // namespace

HRESULT EngineObject::Reserved1() { return S_OK; }
HRESULT EngineObject::Reserved2() { return S_OK; }
HRESULT EngineObject::Reserved3() { return S_OK; }

// The engine runs in this process: the link to it can't break.
HRESULT EngineObject::IsConnected(VARIANT_BOOL* connected) { return answer(connected, true); }
HRESULT EngineObject::IsOpen(VARIANT_BOOL* open) { return answer(open, database_ != nullptr); }
HRESULT EngineObject::IsWritable(VARIANT_BOOL* writable) {
  return answer(writable, database_ && !database_->readOnly());
}
HRESULT EngineObject::IsReadOnly(VARIANT_BOOL* readOnly) {
  return answer(readOnly, !database_ || database_->readOnly());
}
HRESULT EngineObject::ErrorPending(VARIANT_BOOL* pending) { return answer(pending, pending_.has_value()); }
HRESULT EngineObject::ReservedFlag(VARIANT_BOOL* flag) { return answer(flag, cursor_ != nullptr); }
HRESULT EngineObject::DatabaseName(BSTR* path) {
  if (snapshot_) return answer(path, snapshot_->source());
  return answer(path, database_ ? database_->path() : "");
}
HRESULT EngineObject::CurrentTableName(BSTR* name) {
  return answer(name, cursor_ ? cursor_->tableName() : "");
}
HRESULT EngineObject::CurrentIndexName(BSTR* name) {
  return answer(name, cursor_ ? cursor_->indexName() : "");
}

HRESULT EngineObject::EngineVersion(SHORT* version) {
  if (!version) return E_POINTER;
  *version = 4;
  return S_OK;
}

HRESULT EngineObject::LastError(LONG* code, BSTR* text) {
  if (!code || !text) return E_POINTER;
  *code = pending_ ? pending_->number : 0;
  *text = bstrOfUtf8(pending_ ? pending_->text : "");
  pending_.reset();
  return S_OK;
}

HRESULT EngineObject::CreateDatabase(BSTR path, VARIANT_BOOL* ok) {
  return attempt(ok, [&] { createDatabaseFile(fullPath(viewOf(path))); });
}

HRESULT EngineObject::CompactDatabase(BSTR source, BSTR destination, VARIANT_BOOL* ok) {
  return attempt(ok, [&] {
    const auto leftOut = compactDatabaseFile(fullPath(viewOf(source)), fullPath(viewOf(destination)));
    for (const jet::Error& each : leftOut) {
      if (!pending_) pending_ = jet::Error{each.number, "", std::nullopt};
      pending_->text += (pending_->text.empty() ? "" : " ") + each.text;
    }
  });
}
