#include "host/editor/selection_request.h"

#include "brx/db_database.h"
#include "host/access/coordinate_systems.h"
#include "host/documents/documents.h"
#include "host/documents/variables.h"
#include "host/editor/drawing_state.h"
#include "host/editor/search.h"
#include "host/editor/user_input.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using Way = SelectionMode::Way;

struct NamedWay {
  const wchar_t* name;
  Way way;
};

constexpr NamedWay ways[] = {
    {L"", Way::user},   {L".", Way::pick},           {L"X", Way::everything},       {L"A", Way::all},
    {L"ALL", Way::all}, {L"W", Way::window},         {L"C", Way::crossing},         {L"B", Way::box},
    {L"BOX", Way::box}, {L"WP", Way::windowPolygon}, {L"CP", Way::crossingPolygon}, {L"F", Way::fence},
    {L"L", Way::last},  {L"P", Way::previous},       {L"I", Way::implied},
};

bool setOption(SelectionMode& mode, wchar_t letter) {
  switch (letter) {
    case L'S':
      return mode.single = true;
    case L'E':
      return mode.everythingUnderPick = true;
    case L'L':
      return mode.refuseLocked = true;
    case L'$':
      return mode.prompts = true;
    case L'K':
      return mode.keywords = true;
    // They change how a selection is told of or kept, which is the same here.
    case L'N':
    case L'D':
    case L'V':
    case L'R':
    case L'U':
    case L'A':
    case L'P':
    case L'?':
      return true;
    default:
      return false;
  }
}

Selected chooseInRegion(const Region& region, Lies lies, const SelectionWish& wish) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return selectedFrom(drawing ? entitiesIn(*drawing, region, lies) : Entities(), wish);
}

AcGePoint2d seen(const AcGePoint3d& point) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? inViewPlane(*drawing, userSystem() * point) : AcGePoint2d{point.x, point.y};
}

Selected chooseInCorners(const SelectionRequest& request) {
  if (request.points.size() < 2) return {RTREJ, {}};
  const AcGePoint2d a = seen(request.points[0]), b = seen(request.points[1]);
  const bool wholly = request.mode.way == Way::window || (request.mode.way == Way::box && a.x <= b.x);
  return chooseInRegion(Region::box(a, b), wholly ? Lies::wholly : Lies::partly, request.wish);
}

Selected chooseByPoints(const SelectionRequest& request) {
  const bool isFence = request.mode.way == Way::fence;
  if (request.points.size() < (isFence ? 2u : 3u)) return {RTREJ, {}};
  std::vector<AcGePoint2d> corners;
  for (const AcGePoint3d& each : request.points) corners.push_back(seen(each));
  const Lies lies = request.mode.way == Way::windowPolygon ? Lies::wholly : Lies::partly;
  return chooseInRegion(Region(isFence ? Region::Kind::fence : Region::Kind::polygon, std::move(corners)),
                        lies, request.wish);
}

Selected chooseAtPoint(const SelectionRequest& request) {
  constexpr int errorOfMissedPick = 7;
  const Entities found = entitiesAtPick(request.points.front(), request.mode.everythingUnderPick);
  if (found.empty()) setVariable(L"ERRNO", errorOfMissedPick);
  return selectedFrom(found, request.wish);
}

Selected chooseByUser(SelectionWish wish) {
  const DocumentManager::Busy busy(documents());
  Task<Selected> task = selectEntities(userInput(), std::move(wish));
  task.start();
  return task.result();
}

Entities chosenBefore() {
  const DrawingState* const state = currentState();
  return state ? state->chosenBefore : Entities();
}

}  // namespace

std::optional<SelectionMode> parseSelectionMode(std::wstring_view text) {
  SelectionMode mode;
  std::wstring name;
  size_t at = 0;
  for (; at < text.size() && text[at] != L':'; ++at) {
    if (text[at] != L'_' && text[at] != L'+') name += upperLetter(text[at]);
  }
  for (; at < text.size(); at += 2) {
    const bool isOption = text[at] == L':' && at + 1 < text.size();
    if (!isOption || !setOption(mode, upperLetter(text[at + 1]))) return std::nullopt;
  }
  if (name.starts_with(L'.') && name.size() > 1) {
    mode.pointsOnly = true;
    name.erase(0, 1);
  }
  for (const NamedWay& each : ways) {
    if (name != each.name) continue;
    mode.way = each.way;
    mode.pointsOnly = mode.pointsOnly || each.way == Way::pick;
    return mode;
  }
  return std::nullopt;
}

SelectionWish wishOf(const SelectionMode& mode) {
  SelectionWish wish;
  wish.single = mode.single;
  wish.pointsOnly = mode.pointsOnly;
  wish.everythingUnderPick = mode.everythingUnderPick;
  wish.refuseLocked = mode.refuseLocked;
  return wish;
}

Selected select(const SelectionRequest& request) {
  switch (request.mode.way) {
    case Way::user:
    case Way::pick:
      return request.points.empty() ? chooseByUser(request.wish) : chooseAtPoint(request);
    case Way::everything:
      return selectedFrom(allEntities(true), request.wish);
    case Way::all:
      return selectedFrom(allEntities(false), request.wish);
    case Way::last:
      return selectedFrom(lastEntity(), request.wish);
    case Way::previous:
      return selectedFrom(previousEntities(), request.wish);
    case Way::implied:
      return selectedFrom(chosenBefore(), request.wish);
    case Way::window:
    case Way::crossing:
    case Way::box:
      return chooseInCorners(request);
    case Way::windowPolygon:
    case Way::crossingPolygon:
    case Way::fence:
      return chooseByPoints(request);
  }
  return {RTREJ, {}};
}

}  // namespace host
