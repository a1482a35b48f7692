#pragma once

#include <array>
#include <memory>
#include <set>
#include <typeindex>
#include <unordered_map>
#include <vector>

#include "brx/db_database.h"
#include "brx/db_subentities.h"
#include "brx/db_transactions.h"
#include "host/database/group_list.h"
#include "host/database/header_variables.h"
#include "host/database/stub_pages.h"

/// What stands behind an id: made once for each handle, kept as long as the database.
struct AcDbStub {
  AcDbObject* object = nullptr;  // owned; null until an object comes for a handle that was referred to
  AcDbHandle handle = 0;
  AcDbDatabase* database = nullptr;
  AcDbStub* owner = nullptr;
  Adesk::UInt16 readers = 0;
  bool noted = false;            // among the changed objects of the drawing
  Adesk::UInt32 position = 0;    // among the entities of its block
  Adesk::UInt32 recordedAt = 0;  // undo mark since which the state before the first change is recorded
  bool writing = false, erased = false;
  bool inTransaction = false;    // one reader or the writer is a transaction
  bool erasedWithOwner = false;  // and comes back with it
};

/// Rarely present data of an object.
struct AcDbObjectExtras {
  host::GroupList xdata;
  AcDbObjectId extensionDictionary;
  std::vector<AcDbObjectId> reactors;
  /// Groups of a drawing file that the object's class doesn't know, with the marks of their subclasses.
  host::GroupList kept;
};

/// What a drawing file held that the host has no place for.
struct KeptGroups {
  std::wstring version;                  // of the file's format; empty for a new drawing
  std::wstring codePage = L"ANSI_1252";  // of the program that made the file
  host::GroupList header, classes, tables, sections;
  std::array<host::GroupList*, 4> lists() { return {&header, &classes, &tables, &sections}; }
};

/// One change that can be taken back. `before` is empty for a change of the erased flag alone. Without
/// an object it is the change of a variable.
struct UndoRecord {
  AcDbStub* stub;
  bool wasErased;
  std::vector<unsigned char> before;
  size_t variable = 0;
  host::HeaderValue value;
};

struct AcDbDatabaseImp {
  static constexpr AcDbHandle pageSize = 64;
  host::StubPages stubs;
  /// Handles come in runs, so that pages of neighbours cost one pointer for each.
  std::unordered_map<AcDbHandle, std::unique_ptr<AcDbStub*[]>> pages;
  AcDbHandle nextHandle = 1;
  std::map<const AcRxClass*, AcDbStub*> tables;
  /// Records that are asked for often, by their table and name.
  std::map<std::pair<const AcRxClass*, std::wstring_view>, AcDbObjectId> standards;
  AcDbObjectId namedObjects;
  std::wstring fileName;
  KeptGroups kept;
  bool undoing = false;
  size_t openMarks = 0;
  Adesk::UInt32 markSerial = 0;  // number of the mark set last
  Adesk::UInt64 changes = 0;     // grows with every opening for writing, change, erasing and adding
  Adesk::UInt64 revivals = 0;    // grows when something erased comes back, or the order of entities changes
  Adesk::UInt64 extentsKnownAt = 0;  // `changes` when the variables last told the extents
  std::vector<UndoRecord> journal;
  /// For whoever draws the drawing (changes.h); nothing is noted before someone asks for it.
  bool notesChanges = false;
  std::vector<AcDbStub*> changed;
  std::set<size_t> changedVariables;
  std::unique_ptr<AcDbTransactionManager, void (*)(AcDbTransactionManager*)> transactions{nullptr, nullptr};
  /// What rooms above keep for the drawing, by its type.
  std::unordered_map<std::type_index, std::shared_ptr<void>> keptByOthers;

  void note(AcDbStub& stub) {
    if (!notesChanges || stub.noted) return;
    stub.noted = true;
    changed.push_back(&stub);
  }
  void noteVariable(size_t variable);
  AcDbStub*& slot(AcDbHandle handle);
  AcDbStub* find(AcDbHandle handle) const;
  AcDbStub& make(AcDbDatabase& database, AcDbHandle handle);
  const host::HeaderValue& header(size_t variable) const;
  void setHeader(size_t variable, host::HeaderValue value);
  /// The record of that name, which must be a literal; null while the table lacks it.
  template <class Table>
  AcDbObjectId standardRecord(const AcDbDatabase& database, std::wstring_view name) {
    AcDbObjectId& kept = standards[{Table::desc(), name}];
    if (kept.isNull() || kept.isErased()) kept = findRecord(database.tableId(Table::desc()), name);
    return kept;
  }

 private:
  static AcDbObjectId findRecord(AcDbObjectId table, std::wstring_view name);
  std::vector<host::HeaderValue> header_;
};

namespace host {
/// Every drawing of the process, also those without a document.
const std::set<AcDbDatabase*>& allDrawings();
}  // namespace host

/// The host's way to what objects keep private.
struct HostAccess {
  static AcDbStub*& stub(AcDbObject& object) { return object.stub_; }
  static AcDbObjectExtras*& extras(AcDbObject& object) { return object.extras_; }
  static AcDbObjectExtras* extras(const AcDbObject& object) { return object.extras_; }
  static void addEntity(AcDbBlockTableRecord& record, AcDbObjectId id) {
    id.stub()->position = static_cast<Adesk::UInt32>(record.entities_.size());
    record.entities_.push_back(id);
  }
  /// What the block beside a record holds in drawing files.
  static void setBlock(AcDbBlockTableRecord& record, const AcGePoint3d& origin, Adesk::Int16 flags,
                       const std::wstring& path, const std::wstring& comments);
  static void addRecord(AcDbSymbolTable& table, const std::wstring& key, AcDbObjectId id) {
    table.byName_[key] = id;
    table.order_.push_back(id);
  }
  static void rename(AcDbSymbolTable& table, const std::wstring& from, const std::wstring& to,
                     AcDbObjectId id) {
    if (const auto old = table.byName_.find(from); old != table.byName_.end() && old->second == id) {
      table.byName_.erase(old);
    }
    table.byName_[to] = id;
    // Records that are kept by their names may be others now.
    if (table.database()) table.database()->imp().standards.clear();
  }
  static BrxSubentities* subentities(AcDbEntity& entity);
  static void setPosition(AcDbStub* stub, size_t position) {
    stub->position = static_cast<Adesk::UInt32>(position);
  }
  /// A name of a file is taken as it stands.
  static void setName(AcDbSymbolTableRecord& record, std::wstring name) { record.name_ = std::move(name); }
  static Adesk::Int16 flags(const AcDbSymbolTableRecord& record) { return record.flags_; }
  /// By the names' keys.
  static const auto& entries(const auto& dictionary) { return dictionary.entries_; }
};

namespace host {

/// The object without opening it; null for a null id or one that nothing fills.
inline AcDbObject* objectOf(AcDbObjectId id) { return id.stub() ? id.stub()->object : nullptr; }
/// Sets the erased flag of an object, whatever it is open for, and records that for undo.
void markErased(AcDbStub& stub, bool erased);

/// Registers the host's database classes once.
void registerDatabaseClasses();
/// The form of a symbol name under which tables keep it.
std::wstring symbolKey(const ACHAR* name);

}  // namespace host
