#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "interfaces/engine.h"
#include "platform/com/com_ptr.h"
#include "platform/com/owners.h"

/// What `connect` answers for a file that opens but is damaged.
inline const wchar_t* const repairStatus = L"*REPAIR*";

/// The error that waited in an engine object for being asked for.
struct PendingError {
  int32_t code;
  std::wstring text;
};

using SeekKeys = std::array<COleVariant, 10>;

/// A counted reference to an engine object, with the calls of `IZbEngine` in plain types. A call that
/// answers false leaves an error pending; a failing HRESULT, and any call through an empty reference,
/// throws `ComError`. What the calls do stands at the interface.
class Engine {
 public:
  Engine() = default;
  /// Another reference to an object; null for an empty one.
  explicit Engine(IZbEngine* object) : object_(object) {}
  /// A new engine object; empty when the class isn't there.
  static Engine create();

  explicit operator bool() const { return object_.get() != nullptr; }
  bool operator==(const Engine& other) const { return object_.get() == other.object_.get(); }

  /// Answers "" on failure, `repairStatus`, or anything else on success.
  std::wstring connect(const std::wstring& path, bool readOnly);
  /// For a dialog; `readOnly` tells whether it can only be read.
  bool openPrivate(const std::wstring& path, bool& readOnly);
  void closeDatabase();
  /// Brings all that was answered to the disk.
  bool settle();
  bool isConnected();
  bool isOpen();
  bool isWritable();
  bool isReadOnly();
  std::wstring databaseName();
  bool errorPending();
  PendingError takeError();

  bool setTable(const std::wstring& table, const std::wstring& index);
  bool closeTable();
  bool closeAllTables();
  std::wstring currentTableName();
  std::wstring currentIndexName();
  bool recordCount(int32_t& count);

  bool moveTop(COleVariant& record);
  bool moveBottom(COleVariant& record);
  bool skip(int32_t count, COleVariant& record);
  bool currentRecord(COleVariant& record);
  bool seek1(const COleVariant& key, COleVariant& record);
  bool seek2(const COleVariant& key1, const COleVariant& key2, COleVariant& record);
  bool seek3(const COleVariant& key1, const COleVariant& key2, const COleVariant& key3, COleVariant& record);
  bool seekN(const SeekKeys& keys, int32_t count, COleVariant& record);

  bool append(const COleVariant& fields, bool flag, COleVariant& record);
  bool replace(const COleVariant& fields, COleVariant& record);
  bool deleteRecord();

  bool compactDatabase(const std::wstring& source, const std::wstring& destination);
  bool createDatabase(const std::wstring& path);

  // Statements and stored queries
  bool executeSql(const std::wstring& sql, COleVariant& rows);
  bool executeStatement(const std::wstring& sql);
  bool executeCommand(const std::wstring& sql, int32_t& count);
  bool runQuery(const std::wstring& name, const COleVariant& parameters, COleVariant& rows);
  bool createQuery(const std::wstring& name, const std::wstring& sql);

  // The schema. What is asked for comes out in `answer`.
  bool createTable(const std::wstring& table, const COleVariant& definition);
  bool modifyTable(const std::wstring& table, const COleVariant& definition);
  bool renameTable(const std::wstring& oldName, const std::wstring& newName);
  bool deleteTable(const std::wstring& table, bool flag);
  bool structure(COleVariant& pairs);
  bool attributes(const std::wstring& name, COleVariant& pairs);
  bool listTables(COleVariant& names);
  bool listIndexes(COleVariant& names);
  bool exists(const std::wstring& name, bool& answer);
  bool fieldRequired(const std::wstring& table, const std::wstring& field, bool& answer);
  bool createIndex(const std::wstring& first, const std::wstring& second, int16_t flag1, int16_t flag2);
  bool linkTable(const std::wstring& first, const std::wstring& second, const std::wstring& third,
                 bool& answer);
  bool relationExists(const std::wstring& name, bool& answer);
  bool relationDelete(const std::wstring& first, const std::wstring& second);

  /// The interface itself, for calls that have no plain form here; throws when empty.
  IZbEngine& object() const;

 private:
  ComPtr<IZbEngine> object_;
};
