#pragma once

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "brx/db_ids.h"

namespace host {

/// Entities of a drawing in the order of choosing, each once.
class SelectionSet {
 public:
  /// False when the entity is in the set already.
  bool add(AcDbObjectId entity);
  /// False when the entity isn't in the set.
  bool remove(AcDbObjectId entity);
  bool contains(AcDbObjectId entity) const { return places_.contains(entity.stub()); }
  size_t size() const { return places_.size(); }
  /// `index` counts from 0 and is below the size.
  AcDbObjectId at(size_t index) const;
  /// Costs the length of the set after a removal.
  const std::vector<AcDbObjectId>& entities() const;

 private:
  bool hasGaps() const { return order_.size() != places_.size(); }
  void countGaps();
  void countOneMore();
  void fillGaps();

  /// Removed ones leave a null id behind until somebody wants to see all.
  std::vector<AcDbObjectId> order_;
  std::unordered_map<const AcDbStub*, size_t> places_;
  /// While there are gaps: a binary indexed tree of how many are left in the runs of places, from place 1.
  std::vector<size_t> left_;
};

/// The sets that LISP and modules hold, by the number that names them. A set lives as long as a module hasn't
/// freed it or LISP has a value of it.
class SelectionSets {
 public:
  /// A new set that a module holds, or LISP as soon as it has a value of it.
  int64_t add(SelectionSet set);
  /// Null for a number that names none.
  SelectionSet* find(int64_t number);
  /// A module frees what it holds; false when there is no such set.
  bool free(int64_t number);
  /// LISP takes a value of the set, and with the first one the set itself.
  void retain(int64_t number);
  void release(int64_t number);
  /// Empties the sets of a drawing that goes.
  void forget(const AcDbDatabase& drawing);

 private:
  struct Held {
    SelectionSet set;
    size_t values = 0;
    bool byModule = true;
  };
  std::map<int64_t, Held> all_;
  int64_t last_ = 0;
};

SelectionSets& selectionSets();

}  // namespace host
