#include "host/filing/block_cycles.h"

#include <unordered_map>
#include <vector>

#include "brx/db_block.h"
#include "host/filing/object_walk.h"

namespace host {
namespace {

/// Depth first through the blocks, with a stack of its own, since files may nest without end.
class CycleBreaker {
 public:
  explicit CycleBreaker(FilingReport& report) : report_(report) {}

  void start(AcDbBlockTableRecord& block) {
    enter(block);
    while (!stack_.empty()) {
      Place& place = stack_.back();
      const auto& ids = place.block->entityIds();
      if (place.next == ids.size()) {
        states_[place.block] = done;
        stack_.pop_back();
      } else {
        follow(*place.block, ids[place.next++]);
      }
    }
  }

 private:
  enum State { unseen, open, done };
  struct Place {
    AcDbBlockTableRecord* block;
    size_t next;
  };

  void enter(AcDbBlockTableRecord& block) {
    State& state = states_[&block];
    if (state != unseen) return;
    state = open;
    stack_.push_back({&block, 0});
  }

  void follow(const AcDbBlockTableRecord& from, const AcDbObjectId& id) {
    const auto* const reference = isLiving(id) ? AcDbBlockReference::cast(id.stub()->object) : nullptr;
    if (!reference || !isLiving(reference->blockTableRecord())) return;
    auto* const block = AcDbBlockTableRecord::cast(reference->blockTableRecord().stub()->object);
    if (!block) return;
    if (states_[block] != open) return enter(*block);
    id.stub()->erased = true;
    report_.add(0, id.handle(),
                L"INSERT: block '" + from.getName() + L"' would contain itself through '" + block->getName() +
                    L"'; the reference is left out");
  }

  FilingReport& report_;
  std::unordered_map<const AcDbBlockTableRecord*, State> states_;
  std::vector<Place> stack_;
};

}  // namespace

void breakBlockCycles(AcDbDatabase& drawing, FilingReport& report) {
  CycleBreaker breaker(report);
  const auto& table = static_cast<AcDbSymbolTable&>(*drawing.tableId(AcDbBlockTable::desc()).stub()->object);
  forEachRecord<AcDbBlockTableRecord>(table, [&](AcDbBlockTableRecord& each) { breaker.start(each); });
}

}  // namespace host
