#include "host/filing/layout_links.h"

#include <algorithm>
#include <vector>

#include "brx/db_dictionary.h"
#include "host/filing/object_walk.h"

namespace host {
namespace {

template <class T>
T* living(AcDbObjectId id) {
  return isLiving(id) ? T::cast(id.stub()->object) : nullptr;
}

/// Changes an object without opening it.
template <class T, class Change>
void changed(T& object, Change change) {
  AcDbStub& stub = *object.objectId().stub();
  const bool before = stub.writing;
  stub.writing = true;
  change(object);
  stub.writing = before;
}

void link(AcDbLayout& layout, AcDbBlockTableRecord& block) {
  changed(layout, [&](AcDbLayout& each) { each.setBlockTableRecordId(block.objectId()); });
  changed(block, [&](AcDbBlockTableRecord& each) { each.setLayoutId(layout.objectId()); });
}

std::vector<AcDbBlockTableRecord*> spacesOf(AcDbDatabase& drawing) {
  std::vector<AcDbBlockTableRecord*> spaces;
  const AcDbStub& table = *drawing.tableId(AcDbBlockTable::desc()).stub();
  forEachRecord<AcDbBlockTableRecord>(static_cast<AcDbSymbolTable&>(*table.object),
                                      [&](AcDbBlockTableRecord& each) {
                                        if (each.isLayout()) spaces.push_back(&each);
                                      });
  return spaces;
}

/// In the order of their tabs; the model's is the first.
std::vector<AcDbLayout*> layoutsOf(AcDbDatabase& drawing) {
  std::vector<AcDbLayout*> layouts;
  forEachPlainObject(drawing, [&](AcDbObject& each) {
    if (AcDbLayout* const layout = AcDbLayout::cast(&each)) layouts.push_back(layout);
  });
  std::stable_sort(layouts.begin(), layouts.end(), [](const AcDbLayout* a, const AcDbLayout* b) {
    return a->getTabOrder() < b->getTabOrder();
  });
  return layouts;
}

bool isModel(const AcDbLayout& layout) { return symbolKey(layout.getLayoutName().c_str()) == L"MODEL"; }

}  // namespace

void linkLayouts(AcDbDatabase& drawing) {
  std::vector<AcDbBlockTableRecord*> spaces = spacesOf(drawing);
  std::vector<AcDbLayout*> layouts = layoutsOf(drawing);
  const auto blockOf = [](const AcDbLayout& each) {
    return living<AcDbBlockTableRecord>(each.getBlockTableRecordId());
  };
  for (AcDbBlockTableRecord* const space : spaces) {
    AcDbLayout* const layout = living<AcDbLayout>(space->getLayoutId());
    if (layout && !blockOf(*layout)) link(*layout, *space);
  }
  for (AcDbLayout* const layout : layouts) {
    AcDbBlockTableRecord* const block = blockOf(*layout);
    if (block && !living<AcDbLayout>(block->getLayoutId())) link(*layout, *block);
  }
  std::erase_if(layouts, [&](const AcDbLayout* each) { return blockOf(*each); });
  std::erase_if(spaces,
                [](const AcDbBlockTableRecord* each) { return living<AcDbLayout>(each->getLayoutId()); });
  for (AcDbLayout* const layout : layouts) {
    const bool model = isModel(*layout);
    const auto space = std::find_if(spaces.begin(), spaces.end(), [&](const AcDbBlockTableRecord* each) {
      return (each->objectId() == drawing.modelSpaceId()) == model;
    });
    if (space == spaces.end()) continue;
    link(*layout, **space);
    spaces.erase(space);
  }
}

}  // namespace host
