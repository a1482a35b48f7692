#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "interfaces/engine.h"
#include "platform/com/class_objects.h"
#include "platform/com/owners.h"
#include "platform/text/utf.h"
#include "tests/support/temporary_folder.h"

inline std::string contentOf(const std::string& path) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return {};
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

inline void writeFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

using Fields = std::vector<std::pair<std::wstring, COleVariant>>;

/// The engine with plain C++ values: a record is a map of texts and variants, a failure its Jet number.
class TestEngine {
 public:
  TestEngine() : engine_(createObject<IZbEngine>(engineClassId)) {
    if (!engine_) throw std::runtime_error("the engine's class can't be made");
  }
  /// A new database with one table, open for writing.
  static TestEngine fresh(const std::string& path, const std::wstring& table,
                          const std::vector<std::pair<std::wstring, std::wstring>>& definition) {
    TestEngine engine;
    EXPECT_EQ(engine.createDatabase(path), 0);
    EXPECT_EQ(engine.connect(path), L"OK");
    EXPECT_EQ(engine.createTable(table, definition), 0);
    return engine;
  }

  IZbEngine* operator->() const { return engine_.get(); }

  /// The pending error's number; it is cleared.
  int error() {
    LONG code;
    engine_->LastError(&code, text_.put());
    return code;
  }
  std::wstring errorText() const { return text_.str(); }

  std::wstring connect(const std::string& path, bool readOnly = false) {
    Bstr status;
    engine_->Connect(Bstr(fromUtf8(path)).get(), 0, readOnly ? -1 : 0, status.put());
    return status.str();
  }
  int createDatabase(const std::string& path) {
    VARIANT_BOOL ok;
    engine_->CreateDatabase(Bstr(fromUtf8(path)).get(), &ok);
    return result(ok);
  }
  int compact(const std::string& source, const std::string& destination) {
    VARIANT_BOOL ok;
    engine_->CompactDatabase(Bstr(fromUtf8(source)).get(), Bstr(fromUtf8(destination)).get(), &ok);
    return result(ok);
  }
  static COleSafeArray definition(const std::vector<std::pair<std::wstring, std::wstring>>& entries) {
    std::vector<COleVariant> items;
    for (const auto& [name, description] : entries) {
      for (const std::wstring& each :
           {std::wstring(L"*RTLB*"), name, std::wstring(L"*RTDOTE*"), description, std::wstring(L"*RTLE*")}) {
        items.emplace_back(each);
      }
    }
    COleSafeArray array;
    array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(items.size()), items.data());
    return array;
  }
  int createTable(const std::wstring& table,
                  const std::vector<std::pair<std::wstring, std::wstring>>& entries) {
    VARIANT_BOOL ok;
    engine_->CreateTable(Bstr(table).get(), definition(entries), &ok);
    return result(ok);
  }
  int modifyTable(const std::wstring& table,
                  const std::vector<std::pair<std::wstring, std::wstring>>& entries) {
    VARIANT_BOOL ok;
    engine_->ModifyTable(Bstr(table).get(), definition(entries), &ok);
    return result(ok);
  }
  int command(const std::wstring& sql) {
    LONG count;
    VARIANT_BOOL ok;
    engine_->ExecuteCommand(Bstr(sql).get(), &count, &ok);
    return result(ok);
  }
  int sql(const std::wstring& sql) {
    COleVariant rows;
    VARIANT_BOOL ok;
    engine_->ExecuteSql(Bstr(sql).get(), rows.put(), &ok);
    return result(ok);
  }
  int createQuery(const std::wstring& name, const std::wstring& sql) {
    VARIANT_BOOL ok;
    engine_->CreateQuery(Bstr(name).get(), Bstr(sql).get(), &ok);
    return result(ok);
  }
  int query(const std::wstring& name) {
    COleVariant rows;
    VARIANT_BOOL ok;
    engine_->RunQuery(Bstr(name).get(), VARIANT{}, rows.put(), &ok);
    return result(ok);
  }
  int link(const std::wstring& name, const std::string& path, const std::wstring& table) {
    VARIANT_BOOL linked, ok;
    engine_->LinkTable(Bstr(name).get(), Bstr(fromUtf8(path)).get(), Bstr(table).get(), &linked, &ok);
    return result(ok);
  }
  int table(const std::wstring& name, const std::wstring& index = L"") {
    VARIANT_BOOL ok;
    engine_->SetTable(Bstr(name).get(), Bstr(index).get(), &ok);
    return result(ok);
  }

  int top() {
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->MoveTop(record, ok); });
  }
  int bottom() {
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->MoveBottom(record, ok); });
  }
  int skip(LONG count) {
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->Skip(count, record, ok); });
  }
  int current() {
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->CurrentRecord(record, ok); });
  }
  int seek(const COleVariant& key) {
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->Seek1(key, record, ok); });
  }
  int seek(const COleVariant& key1, const COleVariant& key2) {
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->Seek2(key1, key2, record, ok); });
  }
  int append(const Fields& fields, bool stay = false) {
    const COleSafeArray array = arrayOf(fields);
    return take(
        [&](VARIANT* record, VARIANT_BOOL* ok) { engine_->Append(array, stay ? -1 : 0, record, ok); });
  }
  int replace(const Fields& fields) {
    const COleSafeArray array = arrayOf(fields);
    return take([&](VARIANT* record, VARIANT_BOOL* ok) { engine_->Replace(array, record, ok); });
  }
  int remove() {
    VARIANT_BOOL ok;
    engine_->DeleteRecord(&ok);
    return result(ok);
  }
  int count() {
    LONG count;
    VARIANT_BOOL ok;
    engine_->RecordCount(&count, &ok);
    return ok ? count : -result(ok);
  }
  bool afterLast() {
    VARIANT_BOOL flag;
    engine_->PositionFlagA(&flag);
    return flag != 0;
  }
  bool beforeFirst() {
    VARIANT_BOOL flag;
    engine_->PositionFlagB(&flag);
    return flag != 0;
  }

  /// A field of the last record that a call gave.
  COleVariant field(const std::wstring& name) const {
    const VariantElements elements(record_);
    for (ULONG i = 0; i + 1 < elements.size(); i += 2) {
      if (viewOf(elements[i].bstrVal) == name) return COleVariant(elements[i + 1]);
    }
    return COleVariant(L"no such field");
  }
  LONG number(const std::wstring& name) const { return field(name).lVal; }
  std::wstring text(const std::wstring& name) const { return std::wstring(field(name).text()); }

  static COleSafeArray arrayOf(const Fields& fields) {
    std::vector<COleVariant> items;
    for (const auto& [name, value] : fields) {
      items.emplace_back(name);
      items.push_back(value);
    }
    COleSafeArray array;
    array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(items.size()), items.data());
    return array;
  }

 private:
  int result(VARIANT_BOOL ok) { return ok ? 0 : error(); }
  template <class Call>
  int take(Call call) {
    COleVariant record;
    VARIANT_BOOL ok;
    call(record.put(), &ok);
    if (ok) record_ = COleSafeArray(record);
    EXPECT_TRUE(ok || record.vt == VT_EMPTY);
    return result(ok);
  }

  ComPtr<IZbEngine> engine_;
  COleSafeArray record_;
  Bstr text_;
};

inline COleVariant number(LONG value) { return COleVariant(value); }
