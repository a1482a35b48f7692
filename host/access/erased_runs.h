#pragma once

#include <map>
#include <vector>

#include "brx/db_database.h"

namespace host {

/// Where erased objects lie in a row among their fellows, found once and kept, so that walks over what is
/// erased bit by bit don't look at all of it again and again.
class ErasedRuns {
 public:
  /// The place of the first that isn't erased, from a place on; the number of all when there is none.
  size_t livingFrom(const std::vector<AcDbObjectId>& ids, size_t place);
  /// How many there are without the erased ones at the end.
  size_t livingUpTo(const std::vector<AcDbObjectId>& ids);
  /// What was found holds as long as nothing erased comes back.
  void forgetAfter(Adesk::UInt64 revivals);

 private:
  /// Begins and ends; ends are behind the last. No run touches another.
  std::map<size_t, size_t> runs_;
  Adesk::UInt64 revivals_ = 0;
};

}  // namespace host
