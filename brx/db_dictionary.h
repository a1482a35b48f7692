#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "brx/db_curves.h"

/// Objects of a drawing that aren't drawn: dictionaries, records of free data, groups, draw order,
/// layouts.

class AcDbDictionaryIterator;
namespace host {
class GroupList;
}

/// Names and the objects that belong to them, in the order of names. Names are compared without
/// regard to case.
class BRX_API AcDbDictionary : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDictionary)
  /// `eKeyNotFound`; an entry whose object is erased counts as absent.
  Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
  template <class T>
  Acad::ErrorStatus getAt(const ACHAR* name, T*& object, AcDb::OpenMode mode = AcDb::kForRead) const {
    AcDbObjectId id;
    object = nullptr;
    const Acad::ErrorStatus status = getAt(name, id);
    return status == Acad::eOk ? acdbOpenObject(object, id, mode) : status;
  }
  bool has(const ACHAR* name) const;
  /// `eKeyNotFound` when the object isn't in here.
  Acad::ErrorStatus nameAt(AcDbObjectId id, std::wstring& name) const;
  /// Puts the object under the name; one that is in no database enters this dictionary's and stays
  /// open for write. What stood under the name is erased.
  Acad::ErrorStatus setAt(const ACHAR* name, AcDbObject* object, AcDbObjectId& id);
  /// Takes the entry away and erases its object, unless the dictionary only points at its objects.
  Acad::ErrorStatus remove(const ACHAR* name);
  Acad::ErrorStatus remove(AcDbObjectId id);
  Acad::ErrorStatus setName(const ACHAR* oldName, const ACHAR* newName);
  Adesk::UInt32 numEntries() const;
  /// The caller deletes the iterator; valid until the dictionary changes.
  AcDbDictionaryIterator* newIterator() const;
  bool isTreatElementsAsHard() const { return hard_; }
  void setTreatElementsAsHard(bool hard);
  Adesk::Int16 mergeStyle() const { return merge_; }
  void setMergeStyle(Adesk::Int16 style);
  BRX_FILES_ITSELF

 private:
  friend class AcDbDictionaryIterator;
  friend struct HostAccess;
  struct Entry {
    std::wstring name;
    AcDbObjectId id;
  };
  std::map<std::wstring, Entry, std::less<>> entries_;
  Adesk::Int16 merge_ = 1;
  bool hard_ = false;
};

class BRX_API AcDbDictionaryIterator {
 public:
  explicit AcDbDictionaryIterator(const AcDbDictionary& dictionary);
  const ACHAR* name() const { return at_->second.name.c_str(); }
  AcDbObjectId objectId() const { return at_->second.id; }
  template <class T>
  Acad::ErrorStatus getObject(T*& object, AcDb::OpenMode mode = AcDb::kForRead) const {
    return acdbOpenObject(object, objectId(), mode);
  }
  bool done() const { return at_ == dictionary_.entries_.end(); }
  bool next();

 private:
  void skipErased();
  const AcDbDictionary& dictionary_;
  decltype(AcDbDictionary::entries_)::const_iterator at_;
};

/// Answers its default entry for names that it lacks.
class BRX_API AcDbDictionaryWithDefault : public AcDbDictionary {
 public:
  ACRX_DECLARE_MEMBERS(AcDbDictionaryWithDefault)
  AcDbObjectId defaultId() const { return default_; }
  Acad::ErrorStatus setDefaultId(AcDbObjectId id);
  BRX_FILES_ITSELF

 private:
  AcDbObjectId default_;
};

/// Stands for a name that means something by itself, such as a plot style.
class BRX_API AcDbPlaceHolder : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbPlaceHolder)
  BRX_FILES_ITSELF
};

/// Free data: a list of groups with the codes of drawing files.
class BRX_API AcDbXrecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbXrecord)
  AcDbXrecord();
  ~AcDbXrecord() override;
  /// A list that the caller frees; null when there are no data.
  Acad::ErrorStatus rbChain(resbuf** list) const;
  /// The list is copied. `eInvalidResBuf` for a code that is no group code of data.
  Acad::ErrorStatus setFromRbChain(const resbuf& list);
  BRX_FILES_ITSELF

 private:
  std::unique_ptr<host::GroupList> data_;
  Adesk::Int16 cloning_ = 1;
};

class AcDbGroupIterator;

/// A named set of entities.
class BRX_API AcDbGroup : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbGroup)
  explicit AcDbGroup(const ACHAR* description = L"") : description_(description) {}
  /// The name in the group dictionary.
  std::wstring getName() const;
  std::wstring description() const { return description_; }
  Acad::ErrorStatus setDescription(const ACHAR* text);
  bool isSelectable() const { return selectable_; }
  Acad::ErrorStatus setSelectable(bool selectable);
  bool isAnonymous() const { return anonymous_; }
  Acad::ErrorStatus setAnonymous();
  /// `eDuplicateKey` for an entity that is in the group already.
  Acad::ErrorStatus append(AcDbObjectId id);
  Acad::ErrorStatus remove(AcDbObjectId id);
  Acad::ErrorStatus clear();
  bool has(const AcDbEntity* entity) const;
  /// Entities that aren't erased.
  Adesk::UInt32 numEntities() const;
  /// The caller deletes the iterator.
  AcDbGroupIterator* newIterator() const;
  const std::vector<AcDbObjectId>& entityIds() const { return entities_; }
  BRX_FILES_ITSELF

 private:
  BRX_DECLARES_FIELDS
  std::wstring description_;
  std::vector<AcDbObjectId> entities_;
  bool selectable_ = true, anonymous_ = false;
};

class BRX_API AcDbGroupIterator {
 public:
  explicit AcDbGroupIterator(const AcDbGroup& group);
  AcDbObjectId objectId() const { return ids_[index_]; }
  template <class T>
  Acad::ErrorStatus getObject(T*& object, AcDb::OpenMode mode = AcDb::kForRead) const {
    return acdbOpenObject(object, objectId(), mode);
  }
  bool done() const { return index_ >= ids_.size(); }
  bool next();

 private:
  std::vector<AcDbObjectId> ids_;
  size_t index_ = 0;
};

/// The order in which the entities of a block are drawn where it differs from that of appending.
class BRX_API AcDbSortentsTable : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSortentsTable)
  AcDbObjectId blockId() const { return block_; }
  void setBlockId(AcDbObjectId block);
  /// Ids of other blocks' entities give `eInvalidInput`; those that move keep their order.
  Acad::ErrorStatus moveToBottom(const AcDbObjectIdArray& ids);
  Acad::ErrorStatus moveToTop(const AcDbObjectIdArray& ids);
  /// All entities of the block that aren't erased, first drawn first.
  Acad::ErrorStatus getFullDrawOrder(AcDbObjectIdArray& ids) const;
  BRX_FILES_ITSELF

 private:
  Acad::ErrorStatus move(const AcDbObjectIdArray& ids, bool toTop);
  AcDbObjectId block_;
  /// Entity and the handle as whose the entity is drawn.
  std::map<AcDbObjectId, AcDbHandle> handles_;
};

/// A sheet: the block that holds its entities, its name and place among the others, and the settings
/// of plotting as groups of the file.
class BRX_API AcDbLayout : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLayout)
  AcDbLayout();
  ~AcDbLayout() override;
  std::wstring getLayoutName() const { return name_; }
  Acad::ErrorStatus setLayoutName(const ACHAR* name);
  Adesk::Int16 getTabOrder() const { return tab_; }
  void setTabOrder(Adesk::Int16 order);
  AcDbObjectId getBlockTableRecordId() const { return block_; }
  Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId record);
  BRX_FILES_ITSELF

 private:
  std::wstring name_;
  Adesk::Int16 tab_ = 0;
  AcDbObjectId block_;
  std::unique_ptr<host::GroupList> plotSettings_, others_;
};
