#include "zarbo/database/engine_client.h"

#include "platform/com/class_objects.h"
#include "zarbo/database/engine_calls.h"

using namespace engine_calls;

Engine Engine::create() {
  Engine made;
  made.object_ = createObject<IZbEngine>(engineClassId);
  return made;
}

IZbEngine& Engine::object() const {
  if (!object_) throwComError(E_POINTER, interfaceId<IZbEngine>);
  return *object_;
}

std::wstring Engine::connect(const std::wstring& path, bool readOnly) {
  const Bstr name(path);
  return text([&](BSTR* status) {
    return object().Connect(name.get(), 0, readOnly ? VARIANT_TRUE : VARIANT_FALSE, status);
  });
}

void Engine::closeDatabase() {
  short ignored = 0;
  check(object().CloseDatabase(&ignored));
}

bool Engine::settle() {
  const auto durability = object_.as<IZbDurability>();
  return !durability || asked([&](short* ok) { return durability->Settle(ok); });
}

bool Engine::isConnected() {
  return asked([&](short* answer) { return object().IsConnected(answer); });
}
bool Engine::isOpen() {
  return asked([&](short* answer) { return object().IsOpen(answer); });
}
bool Engine::isWritable() {
  return asked([&](short* answer) { return object().IsWritable(answer); });
}
bool Engine::isReadOnly() {
  return asked([&](short* answer) { return object().IsReadOnly(answer); });
}
bool Engine::openPrivate(const std::wstring& path, bool& readOnly) {
  short onlyRead = VARIANT_FALSE;
  const bool ok =
      asked([&](short* opened) { return object().OpenPrivate(Bstr(path).get(), &onlyRead, opened); });
  readOnly = onlyRead != VARIANT_FALSE;
  return ok;
}
std::wstring Engine::databaseName() {
  return text([&](BSTR* name) { return object().DatabaseName(name); });
}
bool Engine::errorPending() {
  return asked([&](short* answer) { return object().ErrorPending(answer); });
}

PendingError Engine::takeError() {
  LONG code = 0;
  Bstr message;
  check(object().LastError(&code, message.put()));
  return {code, message.str()};
}

bool Engine::setTable(const std::wstring& table, const std::wstring& index) {
  const Bstr tableName(table), indexName(index);
  return asked([&](short* ok) { return object().SetTable(tableName.get(), indexName.get(), ok); });
}

bool Engine::closeTable() {
  return succeeded([&](short* failed) { return object().CloseTable(failed); });
}
bool Engine::closeAllTables() {
  return succeeded([&](short* failed) { return object().CloseAllTables(failed); });
}
std::wstring Engine::currentTableName() {
  return text([&](BSTR* name) { return object().CurrentTableName(name); });
}
std::wstring Engine::currentIndexName() {
  return text([&](BSTR* name) { return object().CurrentIndexName(name); });
}

bool Engine::recordCount(int32_t& count) {
  return asked([&](short* ok) { return object().RecordCount(&count, ok); });
}

bool Engine::moveTop(COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().MoveTop(slot, ok); });
}
bool Engine::moveBottom(COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().MoveBottom(slot, ok); });
}
bool Engine::skip(int32_t count, COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().Skip(count, slot, ok); });
}
bool Engine::currentRecord(COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().CurrentRecord(slot, ok); });
}

bool Engine::seek1(const COleVariant& key, COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().Seek1(key, slot, ok); });
}
bool Engine::seek2(const COleVariant& key1, const COleVariant& key2, COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().Seek2(key1, key2, slot, ok); });
}
bool Engine::seek3(const COleVariant& key1, const COleVariant& key2, const COleVariant& key3,
                   COleVariant& record) {
  return giveRecord(record,
                    [&](VARIANT* slot, short* ok) { return object().Seek3(key1, key2, key3, slot, ok); });
}
bool Engine::seekN(const SeekKeys& keys, int32_t count, COleVariant& record) {
  SeekKeys own = keys;
  return giveRecord(record, [&](VARIANT* slot, short* ok) {
    return object().SeekN(&own[0], &own[1], &own[2], &own[3], &own[4], &own[5], &own[6], &own[7], &own[8],
                          &own[9], count, slot, ok);
  });
}

bool Engine::append(const COleVariant& fields, bool flag, COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) {
    return object().Append(fields, flag ? VARIANT_TRUE : VARIANT_FALSE, slot, ok);
  });
}
bool Engine::replace(const COleVariant& fields, COleVariant& record) {
  return giveRecord(record, [&](VARIANT* slot, short* ok) { return object().Replace(fields, slot, ok); });
}
bool Engine::deleteRecord() {
  return asked([&](short* ok) { return object().DeleteRecord(ok); });
}

bool Engine::compactDatabase(const std::wstring& source, const std::wstring& destination) {
  const Bstr from(source), to(destination);
  return asked([&](short* ok) { return object().CompactDatabase(from.get(), to.get(), ok); });
}
