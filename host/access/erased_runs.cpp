#include "host/access/erased_runs.h"

#include <algorithm>
#include <iterator>

namespace host {

size_t ErasedRuns::livingFrom(const std::vector<AcDbObjectId>& ids, size_t place) {
  auto known = runs_.upper_bound(place);
  size_t begin = place, end = place;
  if (known != runs_.begin() && std::prev(known)->second >= place) {
    --known;
    begin = known->first, end = known->second;
    known = runs_.erase(known);
  }
  while (end < ids.size()) {
    if (known != runs_.end() && known->first == end) {
      end = known->second;
      known = runs_.erase(known);
    } else if (ids[end].isErased()) {
      ++end;
    } else {
      break;
    }
  }
  if (begin < end) runs_.emplace(begin, end);
  return std::min(end, ids.size());
}

size_t ErasedRuns::livingUpTo(const std::vector<AcDbObjectId>& ids) {
  size_t begin = ids.size();
  while (begin > 0) {
    const auto last = runs_.empty() ? runs_.end() : std::prev(runs_.end());
    if (last != runs_.end() && last->second >= begin) {
      begin = std::min(begin, last->first);
      runs_.erase(last);
    } else if (ids[begin - 1].isErased()) {
      --begin;
    } else {
      break;
    }
  }
  if (begin < ids.size()) runs_.emplace(begin, ids.size());
  return begin;
}

void ErasedRuns::forgetAfter(Adesk::UInt64 revivals) {
  if (revivals_ == revivals) return;
  runs_.clear();
  revivals_ = revivals;
}

}  // namespace host
