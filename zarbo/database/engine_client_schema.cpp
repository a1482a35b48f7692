#include "zarbo/database/engine_calls.h"
#include "zarbo/database/engine_client.h"

using namespace engine_calls;

namespace {

/// A call that answers a question beside whether it could be asked.
template <class Call>
bool answered(bool& answer, Call call) {
  short flag = VARIANT_FALSE;
  const bool ok = asked([&](short* done) { return call(&flag, done); });
  answer = ok && flag == VARIANT_TRUE;
  return ok;
}

}  // namespace

bool Engine::createDatabase(const std::wstring& path) {
  return asked([&](short* ok) { return object().CreateDatabase(Bstr(path).get(), ok); });
}

bool Engine::executeSql(const std::wstring& sql, COleVariant& rows) {
  return giveRecord(rows,
                    [&](VARIANT* slot, short* ok) { return object().ExecuteSql(Bstr(sql).get(), slot, ok); });
}

bool Engine::executeStatement(const std::wstring& sql) {
  return asked([&](short* ok) { return object().ExecuteStatement(Bstr(sql).get(), ok); });
}

bool Engine::executeCommand(const std::wstring& sql, int32_t& count) {
  LONG touched = 0;
  const bool ok =
      asked([&](short* done) { return object().ExecuteCommand(Bstr(sql).get(), &touched, done); });
  count = touched;
  return ok;
}

bool Engine::runQuery(const std::wstring& name, const COleVariant& parameters, COleVariant& rows) {
  return giveRecord(rows, [&](VARIANT* slot, short* ok) {
    return object().RunQuery(Bstr(name).get(), parameters, slot, ok);
  });
}

bool Engine::createQuery(const std::wstring& name, const std::wstring& sql) {
  return asked([&](short* ok) { return object().CreateQuery(Bstr(name).get(), Bstr(sql).get(), ok); });
}

bool Engine::createTable(const std::wstring& table, const COleVariant& definition) {
  return asked([&](short* ok) { return object().CreateTable(Bstr(table).get(), definition, ok); });
}

bool Engine::modifyTable(const std::wstring& table, const COleVariant& definition) {
  return asked([&](short* ok) { return object().ModifyTable(Bstr(table).get(), definition, ok); });
}

bool Engine::renameTable(const std::wstring& oldName, const std::wstring& newName) {
  return asked([&](short* ok) { return object().RenameTable(Bstr(oldName).get(), Bstr(newName).get(), ok); });
}

bool Engine::deleteTable(const std::wstring& table, bool flag) {
  return asked([&](short* ok) {
    return object().DeleteTable(Bstr(table).get(), flag ? VARIANT_TRUE : VARIANT_FALSE, ok);
  });
}

bool Engine::structure(COleVariant& pairs) {
  return giveRecord(pairs, [&](VARIANT* slot, short* ok) { return object().Structure(slot, ok); });
}

bool Engine::attributes(const std::wstring& name, COleVariant& pairs) {
  return giveRecord(
      pairs, [&](VARIANT* slot, short* ok) { return object().Attributes(Bstr(name).get(), slot, ok); });
}

bool Engine::listTables(COleVariant& names) {
  return giveRecord(names, [&](VARIANT* slot, short* ok) { return object().ListTables(slot, ok); });
}

bool Engine::listIndexes(COleVariant& names) {
  return giveRecord(names, [&](VARIANT* slot, short* ok) { return object().ListIndexes(slot, ok); });
}

bool Engine::exists(const std::wstring& name, bool& answer) {
  return answered(answer,
                  [&](short* flag, short* ok) { return object().Exists(Bstr(name).get(), flag, ok); });
}

bool Engine::fieldRequired(const std::wstring& table, const std::wstring& field, bool& answer) {
  return answered(answer, [&](short* flag, short* ok) {
    return object().FieldRequired(Bstr(table).get(), Bstr(field).get(), flag, ok);
  });
}

bool Engine::createIndex(const std::wstring& first, const std::wstring& second, int16_t flag1,
                         int16_t flag2) {
  return asked([&](short* ok) {
    return object().CreateIndex(Bstr(first).get(), Bstr(second).get(), flag1, flag2, ok);
  });
}

bool Engine::linkTable(const std::wstring& first, const std::wstring& second, const std::wstring& third,
                       bool& answer) {
  return answered(answer, [&](short* flag, short* ok) {
    return object().LinkTable(Bstr(first).get(), Bstr(second).get(), Bstr(third).get(), flag, ok);
  });
}

bool Engine::relationExists(const std::wstring& name, bool& answer) {
  return answered(
      answer, [&](short* flag, short* ok) { return object().RelationExists(Bstr(name).get(), flag, ok); });
}

bool Engine::relationDelete(const std::wstring& first, const std::wstring& second) {
  return asked([&](short* ok) { return object().RelationDelete(Bstr(first).get(), Bstr(second).get(), ok); });
}
