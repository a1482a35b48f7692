#include "host/database/selection_set.h"

#include <algorithm>

namespace host {

bool SelectionSet::add(AcDbObjectId entity) {
  if (!members_.insert(entity.stub()).second) return false;
  order_.push_back(entity);
  return true;
}

bool SelectionSet::remove(AcDbObjectId entity) {
  if (members_.erase(entity.stub()) == 0) return false;
  order_.erase(std::find(order_.begin(), order_.end(), entity));
  return true;
}

int64_t SelectionSets::add(SelectionSet set) {
  all_[++last_].set = std::move(set);
  return last_;
}

SelectionSet* SelectionSets::find(int64_t number) {
  const auto found = all_.find(number);
  return found == all_.end() ? nullptr : &found->second.set;
}

bool SelectionSets::free(int64_t number) {
  const auto found = all_.find(number);
  if (found == all_.end()) return false;
  found->second.byModule = false;
  if (found->second.values == 0) all_.erase(found);
  return true;
}

void SelectionSets::retain(int64_t number) {
  const auto found = all_.find(number);
  if (found == all_.end()) return;
  ++found->second.values;
  found->second.byModule = false;
}

void SelectionSets::release(int64_t number) {
  const auto found = all_.find(number);
  if (found == all_.end() || found->second.values == 0) return;
  if (--found->second.values == 0 && !found->second.byModule) all_.erase(found);
}

void SelectionSets::forget(const AcDbDatabase& drawing) {
  for (auto& [number, held] : all_) {
    const auto& entities = held.set.entities();
    if (!entities.empty() && entities.front().database() == &drawing) held.set = {};
  }
}

SelectionSets& selectionSets() {
  // Lives to the end: values of sets may belong to interpreters that end in any order.
  static SelectionSets* const instance = new SelectionSets;
  return *instance;
}

}  // namespace host
