#include "host/database/selection_set.h"

#include <bit>

#include "host/database/kept_for_drawing.h"
#include "host/root/host.h"

namespace host {

namespace {

/// Kept for a drawing of which entities are in sets.
struct EmptySetsAtTheEnd {
  explicit EmptySetsAtTheEnd(AcDbDatabase& ofSets) : drawing(ofSets) {}
  ~EmptySetsAtTheEnd() { selectionSets().forget(drawing); }
  AcDbDatabase& drawing;
};

}  // namespace

bool SelectionSet::add(AcDbObjectId entity) {
  if (contains(entity)) return false;
  if (order_.empty() && entity.database()) keptFor<EmptySetsAtTheEnd>(*entity.database());
  if (hasGaps()) countOneMore();
  places_.emplace(entity.stub(), order_.size());
  order_.push_back(entity);
  return true;
}

bool SelectionSet::remove(AcDbObjectId entity) {
  const auto found = places_.find(entity.stub());
  if (found == places_.end()) return false;
  if (!hasGaps()) countGaps();
  const size_t place = found->second;
  places_.erase(found);
  order_[place] = {};
  for (size_t run = place + 1; run < left_.size(); run += run & -run) --left_[run];
  if (order_.size() > 2 * places_.size()) fillGaps();
  return true;
}

AcDbObjectId SelectionSet::at(size_t index) const {
  if (!hasGaps()) return order_[index];
  // The largest number of places that hold no more than `index` entities.
  size_t place = 0;
  for (size_t step = std::bit_floor(order_.size()); step > 0; step /= 2) {
    if (place + step < left_.size() && left_[place + step] <= index) index -= left_[place += step];
  }
  return order_[place];
}

const std::vector<AcDbObjectId>& SelectionSet::entities() const {
  if (hasGaps()) const_cast<SelectionSet*>(this)->fillGaps();
  return order_;
}

void SelectionSet::countGaps() {
  left_.resize(order_.size() + 1);
  for (size_t run = 1; run < left_.size(); ++run) left_[run] = run & -run;
}

void SelectionSet::countOneMore() {
  const size_t run = left_.size();
  size_t left = 1;
  for (size_t step = 1; step < (run & -run); step *= 2) left += left_[run - step];
  left_.push_back(left);
}

void SelectionSet::fillGaps() {
  std::erase_if(order_, [](const AcDbObjectId& id) { return id.isNull(); });
  for (size_t i = 0; i < order_.size(); ++i) places_[order_[i].stub()] = i;
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

SelectionSets& selectionSets() { return theOne<SelectionSets>(); }

}  // namespace host
