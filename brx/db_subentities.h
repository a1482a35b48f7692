#pragma once

#include <memory>
#include <vector>

#include "brx/db_curves.h"

/// Entities that belong to another entity: vertices of polylines, attributes of block references.

/// Ends the subentities of an entity in drawing files, where it has no fields of its own.
class BRX_API AcDbSequenceEnd : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSequenceEnd)
};

/// The subentities of one owner: `loose` ones are the owner's while it is in no database; they enter
/// the database with it and are then named by `ids`, the erased ones among them.
struct BRX_API BrxSubentities {
  std::vector<AcDbObjectId> ids;
  std::vector<std::unique_ptr<AcDbEntity>> loose;
  AcDbObjectId end;
};

/// Walks subentities; valid while the owner lives and gets no others.
class BRX_API AcDbObjectIterator {
 public:
  explicit AcDbObjectIterator(const BrxSubentities& list, bool skipDeleted = true);
  bool done() const { return index_ >= size(); }
  void step(bool backwards = false, bool skipDeleted = true);
  /// Null for an entity that is in no database.
  AcDbObjectId objectId() const;
  /// Without opening it; null for one that is in a database.
  AcDbEntity* entity() const;

 private:
  size_t size() const { return list_.loose.size() + list_.ids.size(); }
  const BrxSubentities& list_;
  size_t index_ = 0;
};
