#include <algorithm>
#include <iterator>

#include "brx/editor_input.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/editor/search.h"
#include "host/lisp/units.h"
#include "host/view/camera.h"

namespace host {
namespace {

constexpr int noNull = 1, noZero = 2, noNegative = 4;

view::Camera& camera() { return view::Camera::of(*acdbHostWorkingDatabase()); }

void showBox(const AcGePoint3d& a, const AcGePoint3d& b) {
  view::PlaneBox box;
  box.add(camera().projection()(a)), box.add(camera().projection()(b));
  camera().fit(box);
}

void showExtents(CommandInput& input) {
  AcDbExtents all;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  forEachEntity(*drawing, Spaces::current, [&](AcDbEntity& entity, VisibleLayers::State layer) {
    AcDbExtents one;
    if (!layer.frozen && entity.getGeomExtents(one) == Acad::eOk) all.addExt(one);
  });
  if (all.isEmpty()) return input.say(L"\nThere is nothing to see.");
  camera().fit(all);
}

Task<> zoomCentre(CommandInput& input) {
  const Answer centre = co_await input.point(L"\nSpecify center point: ", {}, {}, noNull);
  const Answer height = co_await input.number(Wanted::distance, L"\nEnter magnification or height: ",
                                              centre.point, {}, noZero | noNegative);
  camera().show(centre.point, height.given() ? height.real : camera().view().height);
}

Task<> zoomWindow(CommandInput& input) {
  const Answer a = co_await input.point(L"\nSpecify first corner: ", {}, {}, noNull);
  const Answer b = co_await input.point(L"\nSpecify opposite corner: ", a.point, {}, noNull);
  showBox(a.point, b.point);
}

/// "2", "0.5x" and "1xp" scale the view that is.
std::optional<double> parseMagnification(std::wstring text) {
  while (!text.empty() && std::wstring_view(L"xXpP").find(text.back()) != std::wstring_view::npos)
    text.pop_back();
  const auto factor = lisp::parseLength(text);
  return factor && *factor > 0 ? factor : std::nullopt;
}

void magnify(CommandInput& input, const std::wstring& text) {
  const auto factor = parseMagnification(text);
  if (!factor) return input.say(L"\nRequires a scale factor (nX or nXP).");
  camera().show(camera().view().centre, camera().view().height / *factor);
}

Task<> zoom(CommandInput& input) {
  const Answer answer = co_await input.point(
      L"\nSpecify corner of window, enter a scale factor (nX or nXP), or "
      L"[All/Center/Extents/Previous/Scale/Window]: ",
      {}, L"All Center Extents Previous Scale Window", RSG_OTHER);
  if (answer.given()) {
    const Answer b = co_await input.point(L"\nSpecify opposite corner: ", answer.point, {}, noNull);
    showBox(answer.point, b.point);
  } else if (answer.status != RTKWORD) {
    co_return;
  } else if (answer.text == L"All" || answer.text == L"Extents") {
    showExtents(input);
  } else if (answer.text == L"Center") {
    co_await zoomCentre(input);
  } else if (answer.text == L"Previous") {
    if (!camera().previous()) input.say(L"\nThere is no previous view.");
  } else if (answer.text == L"Window") {
    co_await zoomWindow(input);
  } else if (answer.text == L"Scale") {
    magnify(input, co_await input.text(L"\nEnter a scale factor (nX or nXP): "));
  } else {
    magnify(input, answer.text);
  }
}

/// From the sides, and from above over the corners.
Task<> lookFromSide(CommandInput& input) {
  constexpr std::wstring_view sides[] = {L"Top",   L"BOttom", L"Front", L"BAck", L"Left",
                                         L"Right", L"SW",     L"SE",    L"NE",   L"NW"};
  const Answer answer =
      co_await input.keyword(L"\nSpecify a side [Top/BOttom/Front/BAck/Left/Right/SW/SE/NE/NW]: ",
                             L"Top BOttom Front BAck Left Right SW SE NE NW");
  const auto found = std::find(std::begin(sides), std::end(sides), answer.text);
  if (found == std::end(sides)) co_return;
  camera().look(static_cast<view::StandardView>(found - std::begin(sides)));
}

Task<> lookFromPoint(CommandInput& input) {
  const Answer point = co_await input.point(L"\nSpecify a view point: ", {}, {}, noNull);
  if (!camera().lookFrom(point.point.asVector())) input.say(L"\nThe view point must not be the origin.");
}

Task<> lookFromAbove(CommandInput&) {
  camera().look(view::StandardView::top);
  co_return;
}

/// What shows the drawing follows it by itself, so that there is nothing to do.
Task<> regen(CommandInput& input) {
  input.say(L"\nRegenerating model.");
  co_return;
}

Task<> redraw(CommandInput&) { co_return; }

constexpr Command rows[] = {{L"ZOOM", zoom, false},          {L"Z", zoom, false},
                            {L"VIEW", lookFromSide, false},  {L"VPOINT", lookFromPoint, false},
                            {L"PLAN", lookFromAbove, false}, {L"REGEN", regen, false},
                            {L"REGENALL", regen, false},     {L"REDRAW", redraw, false}};

}  // namespace

std::span<const Command> viewCommands() { return rows; }

}  // namespace host
