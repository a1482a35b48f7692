#include <functional>
#include <unordered_map>

#include "brx/db_dictionary.h"
#include "host/database/fields.h"
#include "host/database/memory_filer.h"
#include "host/database/subentities.h"

namespace {

/// Writes fields, and reads them with each id turned into that of the copy.
class CloneFiler : public host::MemoryFiler {
 public:
  using Translate = std::function<AcDbObjectId(AcDbObjectId)>;
  explicit CloneFiler(Translate translate)
      : MemoryFiler(AcDb::kDeepCloneFiler), translate_(std::move(translate)) {}
  Acad::ErrorStatus readHardPointerId(AcDbHardPointerId* id) override {
    return translated(MemoryFiler::readHardPointerId(id), id);
  }
  Acad::ErrorStatus readSoftPointerId(AcDbSoftPointerId* id) override {
    return translated(MemoryFiler::readSoftPointerId(id), id);
  }
  Acad::ErrorStatus readHardOwnershipId(AcDbHardOwnershipId* id) override {
    return translated(MemoryFiler::readHardOwnershipId(id), id);
  }
  Acad::ErrorStatus readSoftOwnershipId(AcDbSoftOwnershipId* id) override {
    return translated(MemoryFiler::readSoftOwnershipId(id), id);
  }

 private:
  template <class Id>
  Acad::ErrorStatus translated(Acad::ErrorStatus status, Id* id) {
    *id = translate_(*id);
    return status;
  }
  Translate translate_;
};

/// Copies objects into a database. Ids that were copied lead to the copies; records of tables are
/// found by name in the other database or copied with what they need; other ids lead nowhere there,
/// and stay as they are within one database.
class Cloner {
 public:
  explicit Cloner(AcDbDatabase& to) : to_(to) {}

  void alias(AcDbObjectId from, AcDbObjectId to) { map_[from.stub()] = to; }

  /// A copy outside any database. References to objects that are copied later are put right by `finish`.
  AcDbObject* copy(const AcDbObject& object) {
    auto* const made = static_cast<AcDbObject*>(object.isA()->create());
    if (!made) return nullptr;
    CloneFiler filer([this](AcDbObjectId id) { return translate(id); });
    object.dwgOutFields(&filer);
    filer.rewind();
    made->dwgInFields(&filer);
    return made;
  }

  /// Copies the entities of a block that aren't erased to the end of another.
  Acad::ErrorStatus copyEntities(const std::vector<AcDbObjectId>& ids, AcDbObjectId block,
                                 AcDbObjectIdArray* copies = nullptr) {
    for (const AcDbObjectId& id : ids) {
      const AcDbEntity* const entity = id.isErased() ? nullptr : AcDbEntity::cast(host::objectOf(id));
      if (!entity) continue;
      auto* const made = static_cast<AcDbEntity*>(copy(*entity));
      if (!made) continue;
      AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
      AcDbObjectId copied;
      const Acad::ErrorStatus status =
          record.object() ? record->appendAcDbEntity(copied, made) : record.openStatus();
      if (status != Acad::eOk) {
        delete made;
        return status;
      }
      map_[id.stub()] = copied;
      copyExtension(*entity, *made);
      made->close();
      if (copies) copies->append(copied);
    }
    return Acad::eOk;
  }

  Acad::ErrorStatus copyInto(const AcDbObject& object, AcDbObjectId dictionaryId, const std::wstring& name,
                             AcDbObjectId& copied) {
    AcDbObjectPointer<AcDbDictionary> dictionary(dictionaryId, AcDb::kForWrite);
    if (!dictionary.object()) return dictionary.openStatus();
    AcDbObject* const made = copy(object);
    if (!made) return Acad::eNotApplicable;
    const Acad::ErrorStatus status = dictionary->setAt(name.c_str(), made, copied);
    if (status != Acad::eOk) {
      delete made;
      return status;
    }
    map_[object.objectId().stub()] = copied;
    return made->close();
  }

 private:
  AcDbObjectId translate(AcDbObjectId id) {
    if (id.isNull()) return id;
    if (const auto known = map_.find(id.stub()); known != map_.end()) return known->second;
    if (id.database() == &to_) return id;
    const AcDbSymbolTableRecord* const record = AcDbSymbolTableRecord::cast(host::objectOf(id));
    return record ? recordFor(*record) : AcDbObjectId();
  }

  /// The record of that name, copied when the table lacks it.
  AcDbObjectId recordFor(const AcDbSymbolTableRecord& record) {
    const AcDbObject* const fromTable = host::objectOf(record.ownerId());
    if (!fromTable) return {};
    const AcDbObjectId tableId = to_.tableId(fromTable->isA());
    AcDbObjectId id;
    if (const auto* const style = AcDbTextStyleTableRecord::cast(&record); style && style->getName().empty())
      return map_[record.objectId().stub()] = shapeFileFor(*style, tableId);
    {
      AcDbObjectPointer<AcDbSymbolTable> table(tableId);
      if (table.object() && table->getAt(record.getName().c_str(), id) == Acad::eOk) {
        return map_[record.objectId().stub()] = id;
      }
    }
    auto* const made = static_cast<AcDbSymbolTableRecord*>(copy(record));
    AcDbObjectPointer<AcDbSymbolTable> table(tableId, AcDb::kForWrite);
    if (!table.object() || table->add(id, made) != Acad::eOk) {
      delete made;
      return {};
    }
    table.close();
    made->close();
    map_[record.objectId().stub()] = id;
    const AcDbBlockTableRecord* const block = AcDbBlockTableRecord::cast(&record);
    if (block) copyEntities(block->entityIds(), id);
    return id;
  }

  /// Files of shapes are styles without a name, of which a table has many.
  AcDbObjectId shapeFileFor(const AcDbTextStyleTableRecord& style, AcDbObjectId tableId) {
    AcDbObjectPointer<AcDbSymbolTable> table(tableId, AcDb::kForWrite);
    if (!table.object()) return {};
    for (const AcDbObjectId& each : table->recordIds()) {
      const auto* const other = AcDbTextStyleTableRecord::cast(host::objectOf(each));
      const bool isSame =
          other && !each.isErased() && other->getName().empty() &&
          host::symbolKey(other->fileName().c_str()) == host::symbolKey(style.fileName().c_str());
      if (isSame) return each;
    }
    auto* const made = static_cast<AcDbTextStyleTableRecord*>(copy(style));
    AcDbObjectId id;
    if (to_.addAcDbObject(id, made, tableId) != Acad::eOk) return delete made, AcDbObjectId();
    HostAccess::addRecord(*table.object(), L"", id);
    made->close();
    return id;
  }

  void copyExtension(const AcDbObject& from, AcDbObject& to) {
    const AcDbDictionary* const dictionary = AcDbDictionary::cast(host::objectOf(from.extensionDictionary()));
    if (!dictionary || dictionary->isErased() || to.createExtensionDictionary() != Acad::eOk) return;
    for (AcDbDictionaryIterator walk(*dictionary); !walk.done(); walk.next()) {
      const AcDbObject* const object = host::objectOf(walk.objectId());
      AcDbObjectId copied;
      if (object) copyInto(*object, to.extensionDictionary(), walk.name(), copied);
    }
  }

  AcDbDatabase& to_;
  std::unordered_map<AcDbStub*, AcDbObjectId> map_;
};

/// The block of that name, empty, for a new definition.
Acad::ErrorStatus emptyBlock(AcDbDatabase& drawing, const ACHAR* name, AcDbObjectId& id) {
  AcDbObjectPointer<AcDbBlockTable> table(drawing.blockTableId(), AcDb::kForWrite);
  if (!table.object()) return table.openStatus();
  if (table->getAt(name, id) == Acad::eOk) {
    AcDbObjectPointer<AcDbBlockTableRecord> old(id, AcDb::kForWrite);
    if (!old.object()) return old.openStatus();
    for (const AcDbObjectId& each : old->entityIds()) {
      if (!each.isErased()) host::markErased(*each.stub(), true);
    }
    return Acad::eOk;
  }
  auto made = std::make_unique<AcDbBlockTableRecord>();
  Acad::ErrorStatus status = made->setName(name);
  if (status == Acad::eOk) status = table->add(id, made.get());
  if (status != Acad::eOk) return status;
  return made.release()->close();
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& block, const ACHAR* name, AcDbDatabase* from, bool) {
  if (!from || from == this) return Acad::eWrongDatabase;
  const AcDbBlockTableRecord* const space = AcDbBlockTableRecord::cast(host::objectOf(from->modelSpaceId()));
  if (!space) return Acad::eNullObjectId;
  AcDbObjectId id;
  Acad::ErrorStatus status = emptyBlock(*this, name, id);
  if (status != Acad::eOk) return status;
  AcDbObjectPointer<AcDbBlockTableRecord>(id, AcDb::kForWrite)->setOrigin(from->insbase());
  Cloner cloner(*this);
  cloner.alias(space->objectId(), id);
  status = cloner.copyEntities(space->entityIds(), id);
  if (status == Acad::eOk) block = id;
  return status;
}

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const AcDbObjectIdArray& ids, AcDbObjectId owner,
                                                 AcDbObjectIdArray& copies) {
  if (owner.database() != this) return Acad::eWrongDatabase;
  Cloner cloner(*this);
  const AcDbObject* const target = host::objectOf(owner);
  if (AcDbBlockTableRecord::cast(target)) {
    return cloner.copyEntities(std::vector<AcDbObjectId>(ids.begin(), ids.end()), owner, &copies);
  }
  if (!AcDbDictionary::cast(target)) return Acad::eIllegalReplacement;
  for (const AcDbObjectId& id : ids) {
    const AcDbObject* const object = host::objectOf(id);
    if (!object || id.isErased()) return Acad::eWasErased;
    AcDbObjectId copied;
    // The name is the caller's to give; until then the handle of the original is.
    const Acad::ErrorStatus status =
        cloner.copyInto(*object, owner, L"*" + std::to_wstring(id.handle()), copied);
    if (status != Acad::eOk) return status;
    copies.append(copied);
  }
  return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::wblock(AcDbDatabase*& made, AcDbObjectId block) {
  made = nullptr;
  const AcDbBlockTableRecord* const record = AcDbBlockTableRecord::cast(host::objectOf(block));
  if (!record || block.isErased()) return Acad::eInvalidInput;
  auto drawing = std::make_unique<AcDbDatabase>();
  Cloner cloner(*drawing);
  cloner.alias(block, drawing->modelSpaceId());
  const Acad::ErrorStatus status = cloner.copyEntities(record->entityIds(), drawing->modelSpaceId());
  if (status != Acad::eOk) return status;
  host::setHeaderValue(*drawing, *host::findHeaderVariable(L"INSBASE"), record->origin());
  made = drawing.release();
  return Acad::eOk;
}
