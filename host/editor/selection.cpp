#include "host/editor/selection.h"

#include "brx/db_calls.h"
#include "brx/db_database.h"
#include "host/access/coordinate_systems.h"
#include "host/documents/variables.h"
#include "host/editor/acquisition.h"
#include "host/editor/drawing_state.h"
#include "host/editor/interpretation.h"
#include "host/editor/search.h"
#include "host/editor/user_input.h"
#include "host/script/queues.h"

namespace host {
namespace {

constexpr int errorOfMissedPick = 7;
constexpr int errorOfEnter = 52;

const KeywordList& options() {
  static const KeywordList list(
      L"Window Last Crossing BOX ALL Fence WPolygon CPolygon Add Remove Multiple Previous Undo AUto SIngle");
  return list;
}

const wchar_t* const expected =
    L"\n*Invalid selection*\nExpects a point or "
    L"Window/Last/Crossing/BOX/ALL/Fence/WPolygon/CPolygon/Add/Remove/Multiple/Previous/Undo/AUto/SIngle";

AcGePoint2d seen(const AcGePoint3d& point) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? inViewPlane(*drawing, userSystem() * point) : AcGePoint2d{point.x, point.y};
}
/// From the left corner to the right one what lies inside, the other way what is touched.
Lies liesBetween(const AcGePoint3d& first, const AcGePoint3d& second) {
  return seen(first).x <= seen(second).x ? Lies::wholly : Lies::partly;
}

Entities inRegion(const Region& region, Lies lies) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? entitiesIn(*drawing, region, lies) : Entities();
}

bool isLocked(AcDbObjectId layer) {
  AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
  return record.object() && record->isLocked();
}

struct Sifted {
  Entities accepted;
  size_t filteredOut = 0, locked = 0;
};

Sifted sift(const Entities& entities, const SelectionWish& wish) {
  Sifted result;
  for (const AcDbObjectId& id : entities) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity.object()) continue;
    if (wish.filter && !wish.filter->matches(id)) {
      ++result.filteredOut;
    } else if (wish.refuseLocked && isLocked(entity->layerId())) {
      ++result.locked;
    } else {
      result.accepted.push_back(id);
    }
  }
  return result;
}

/// A selection that goes on: the set, and what each step has changed, for Undo.
class Choosing {
 public:
  Choosing(InputSource& source, const SelectionWish& wish) : source_(source), wish_(wish) {}

  bool removing = false;
  SelectionSet set;

  const std::wstring& prompt() const { return removing ? wish_.removePrompt : wish_.addPrompt; }

  /// Tells how many were found, as the host does.
  void take(const Entities& entities) {
    const Sifted sifted = sift(entities, wish_);
    Entities changed;
    for (const AcDbObjectId& id : sifted.accepted) {
      if (removing ? set.remove(id) : set.add(id)) changed.push_back(id);
    }
    report(sifted, changed.size());
    steps_.push_back({removing, std::move(changed)});
  }

  void undo() {
    if (steps_.empty()) return source_.say(L"\nGroup of objects has been completely undone.");
    for (const AcDbObjectId& id : steps_.back().changed) {
      if (steps_.back().removed) {
        set.add(id);
      } else {
        set.remove(id);
      }
    }
    steps_.pop_back();
  }

 private:
  struct Step {
    bool removed;
    Entities changed;
  };

  void report(const Sifted& sifted, size_t changed) {
    std::wstring text = L"\n" + std::to_wstring(sifted.accepted.size()) + L" found";
    if (removing) {
      text += L", " + std::to_wstring(changed) + L" removed, " + std::to_wstring(set.size()) + L" total";
    } else {
      const size_t doubled = sifted.accepted.size() - changed;
      if (doubled) text += L" (" + std::to_wstring(doubled) + L" duplicate)";
      if (set.size() != changed) text += L", " + std::to_wstring(set.size()) + L" total";
    }
    source_.say(text);
    if (sifted.filteredOut) source_.say(L"\n" + std::to_wstring(sifted.filteredOut) + L" were filtered out.");
    if (sifted.locked) source_.say(L"\n" + std::to_wstring(sifted.locked) + L" were on a locked layer.");
  }

  InputSource& source_;
  const SelectionWish& wish_;
  std::vector<Step> steps_;
};

Task<std::optional<AcGePoint3d>> askPoint(InputSource& source, std::wstring prompt,
                                          std::optional<AcGePoint3d> base, bool enterEnds) {
  Request request;
  request.prompt = std::move(prompt);
  request.base = base;
  request.rubberBox = base && !enterEnds;
  if (!enterEnds) request.rules.bits = 1;
  const Answer answer = co_await acquire(source, std::move(request));
  co_return answer.given() ? std::optional(answer.point) : std::nullopt;
}

/// By two corners; nothing when cancelled.
Task<Entities> chooseInBox(InputSource& source, std::optional<Lies> lies) {
  const auto first = co_await askPoint(source, L"\nSpecify first corner: ", {}, false);
  if (!first) co_return Entities();
  const auto second = co_await askPoint(source, L"\nSpecify opposite corner: ", first, false);
  if (!second) co_return Entities();
  if (!lies) lies = liesBetween(*first, *second);
  co_return inRegion(Region::box(seen(*first), seen(*second)), *lies);
}

/// By points up to Enter.
Task<Entities> chooseByPoints(InputSource& source, Region::Kind kind, Lies lies) {
  std::vector<AcGePoint2d> corners;
  std::optional<AcGePoint3d> last;
  std::wstring prompt =
      kind == Region::Kind::fence ? L"\nSpecify first fence point: " : L"\nFirst polygon point: ";
  while (true) {
    const auto point = co_await askPoint(source, prompt, last, true);
    if (!point) break;
    last = point;
    corners.push_back(seen(*point));
    prompt = kind == Region::Kind::fence ? L"\nSpecify next fence point: " : L"\nSpecify endpoint of line: ";
  }
  const size_t fewest = kind == Region::Kind::fence ? 2 : 3;
  if (corners.size() < fewest) co_return Entities();
  co_return inRegion(Region(kind, std::move(corners)), lies);
}

/// One choice: its entities, or what else the input meant.
struct Choice {
  enum class Kind { entities, end, cancelled, keyword, missed, other } kind = Kind::entities;
  Entities entities;
};

Task<Choice> chooseAt(InputSource& source, const SelectionWish& wish, AcGePoint3d point) {
  setVariable(L"LASTPOINT", Point{point.x, point.y, point.z});
  Choice choice;
  choice.entities = entitiesAtPick(point, wish.everythingUnderPick);
  if (!choice.entities.empty()) co_return choice;
  if (wish.pointsOnly || wish.single) {
    choice.kind = Choice::Kind::missed;
    co_return choice;
  }
  const auto corner = co_await askPoint(source, L"\nSpecify opposite corner: ", point, false);
  if (!corner) {
    choice.kind = Choice::Kind::cancelled;
    co_return choice;
  }
  const Lies lies = liesBetween(point, *corner);
  choice.entities = inRegion(Region::box(seen(point), seen(*corner)), lies);
  co_return choice;
}

Task<Choice> chooseByOption(InputSource& source, std::wstring option, Choosing& choosing,
                            SelectionWish& wish) {
  Choice choice;
  if (option == L"Window") {
    choice.entities = co_await chooseInBox(source, Lies::wholly);
  } else if (option == L"Crossing") {
    choice.entities = co_await chooseInBox(source, Lies::partly);
  } else if (option == L"BOX") {
    choice.entities = co_await chooseInBox(source, std::nullopt);
  } else if (option == L"WPolygon") {
    choice.entities = co_await chooseByPoints(source, Region::Kind::polygon, Lies::wholly);
  } else if (option == L"CPolygon") {
    choice.entities = co_await chooseByPoints(source, Region::Kind::polygon, Lies::partly);
  } else if (option == L"Fence") {
    choice.entities = co_await chooseByPoints(source, Region::Kind::fence, Lies::partly);
  } else if (option == L"ALL") {
    choice.entities = allEntities(false);
  } else if (option == L"Last") {
    choice.entities = lastEntity();
  } else if (option == L"Previous") {
    choice.entities = previousEntities();
  } else {
    choice.kind = Choice::Kind::other;
    if (option == L"Undo") choosing.undo();
    if (option == L"Add") choosing.removing = false;
    if (option == L"Remove") choosing.removing = true;
    if (option == L"SIngle") wish.single = true;
  }
  co_return choice;
}

Task<Choice> chooseTyped(InputSource& source, std::wstring text, Choosing& choosing, SelectionWish& wish) {
  Choice choice;
  if (text.find(L'\x1b') != std::wstring::npos) {
    choice.kind = Choice::Kind::cancelled;
    co_return choice;
  }
  if (const auto keyword = wish.keywords.match(text)) {
    setLastKeyword(*keyword);
    choice.kind = Choice::Kind::keyword;
    co_return choice;
  }
  if (const auto option = options().match(text)) {
    choice = co_await chooseByOption(source, *option, choosing, wish);
    co_return choice;
  }
  if (const auto point = parsePoint(text, CoordinateRules::current())) {
    choice = co_await chooseAt(source, wish, *point);
    co_return choice;
  }
  source.say(expected);
  choice.kind = Choice::Kind::other;
  co_return choice;
}

Task<Choice> chooseOnce(InputSource& source, Choosing& choosing, SelectionWish& wish) {
  Request request{Wanted::entity, choosing.prompt(), {}, {}};
  request.chosen = choosing.set.entities();
  source.prompt(request.prompt);
  const InputItem item = co_await NextInput{source, request};
  Choice choice;
  if (std::holds_alternative<Enter>(item)) {
    choice.kind = Choice::Kind::end;
  } else if (std::holds_alternative<Cancel>(item)) {
    choice.kind = Choice::Kind::cancelled;
  } else if (const auto* typed = std::get_if<Typed>(&item)) {
    choice = co_await chooseTyped(source, typed->text, choosing, wish);
  } else if (const auto* point = std::get_if<AcGePoint3d>(&item)) {
    choice = co_await chooseAt(source, wish, *point);
  } else if (const auto* picked = std::get_if<Picked>(&item)) {
    choice.entities = {picked->entity};
  } else if (const auto* entities = std::get_if<Entities>(&item)) {
    choice.entities = *entities;
  } else {
    source.say(expected);
    choice.kind = Choice::Kind::other;
  }
  co_return choice;
}

Selected finished(SelectionSet set) {
  Selected selected;
  selected.status = set.size() == 0 ? RTERROR : RTNORM;
  if (set.size() > 0) keepAsPrevious(set);
  selected.set = std::move(set);
  return selected;
}

}  // namespace

Entities entitiesAtPick(const AcGePoint3d& point, bool everything) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing) return {};
  const AcGePoint3d place = userSystem() * point;
  if (everything) return entitiesIn(*drawing, apertureAt(*drawing, place), Lies::partly);
  const auto hit = entityAt(*drawing, place);
  return hit ? Entities{hit->entity} : Entities();
}

Entities allEntities(bool everySpaceAndLayer) {
  Entities found;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing) return found;
  const Spaces spaces = everySpaceAndLayer ? Spaces::all : Spaces::current;
  forEachEntity(*drawing, spaces, [&](AcDbEntity& entity, VisibleLayers::State layer) {
    if (everySpaceAndLayer || !layer.frozen) found.push_back(entity.objectId());
  });
  return found;
}

Entities lastEntity() {
  ads_name name;
  AcDbObjectId id;
  if (acdbEntLast(name) != RTNORM || acdbGetObjectId(id, name) != Acad::eOk) return {};
  return {id};
}

Entities previousEntities() {
  const DrawingState* const state = currentState();
  return state ? state->previous : Entities();
}

void keepAsPrevious(const SelectionSet& set) {
  if (DrawingState* const state = currentState()) state->previous = set.entities();
}

SelectionSet accepted(const Entities& entities, const SelectionWish& wish) {
  SelectionSet set;
  for (const AcDbObjectId& id : sift(entities, wish).accepted) set.add(id);
  return set;
}

Selected selectedFrom(const Entities& entities, const SelectionWish& wish) {
  return finished(accepted(entities, wish));
}

Task<Selected> selectEntities(InputSource& source, SelectionWish wish) {
  Choosing choosing(source, wish);
  while (true) {
    Choice choice = co_await chooseOnce(source, choosing, wish);
    switch (choice.kind) {
      case Choice::Kind::end:
        if (choosing.set.size() == 0) setVariable(L"ERRNO", errorOfEnter);
        co_return finished(std::move(choosing.set));
      case Choice::Kind::cancelled:
        co_return Selected{RTCAN, {}};
      case Choice::Kind::keyword:
        co_return Selected{RTKWORD, {}};
      case Choice::Kind::missed:
        setVariable(L"ERRNO", errorOfMissedPick);
        source.say(L"\n0 found");
        if (wish.single) co_return finished(std::move(choosing.set));
        break;
      case Choice::Kind::entities:
        choosing.take(choice.entities);
        if (wish.single || source.endsSelection()) co_return finished(std::move(choosing.set));
        break;
      case Choice::Kind::other:
        break;
    }
  }
}

}  // namespace host
