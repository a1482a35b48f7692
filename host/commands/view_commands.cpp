#include <cmath>

#include "brx/editor_input.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/documents/variables.h"
#include "host/editor/search.h"
#include "host/lisp/units.h"

namespace host {
namespace {

constexpr int noNull = 1, noZero = 2, noNegative = 4;

/// Width by height of a view that nobody has sized.
constexpr double aspect = 4.0 / 3;

void show(const AcGePoint3d& centre, double height) {
  setHostVariable(L"VIEWCTR", Point{centre.x, centre.y, centre.z});
  if (height > 0) setHostVariable(L"VIEWSIZE", height);
}

void showBox(const AcGePoint3d& a, const AcGePoint3d& b) {
  const double height = std::max(std::abs(b.y - a.y), std::abs(b.x - a.x) / aspect);
  show(a + (b - a) * 0.5, height);
}

void showExtents() {
  AcDbExtents all;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  forEachEntity(*drawing, Spaces::current, [&](AcDbEntity& entity, VisibleLayers::State layer) {
    AcDbExtents one;
    if (!layer.frozen && entity.getGeomExtents(one) == Acad::eOk) all.addExt(one);
  });
  if (!all.isEmpty()) showBox(all.minPoint(), all.maxPoint());
}

double viewHeight() {
  const auto value = getVariable(L"VIEWSIZE");
  const double* const height = value ? std::get_if<double>(&*value) : nullptr;
  return height ? *height : 9;
}

Task<> zoomCentre(CommandInput& input) {
  const Answer centre = co_await input.point(L"\nSpecify center point: ", {}, {}, noNull);
  const Answer height = co_await input.number(Wanted::distance, L"\nEnter magnification or height: ",
                                              centre.point, {}, noZero | noNegative);
  show(centre.point, height.given() ? height.real : viewHeight());
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

void magnify(const std::wstring& text) {
  const auto factor = parseMagnification(text);
  if (factor) setHostVariable(L"VIEWSIZE", viewHeight() / *factor);
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
    showExtents();
  } else if (answer.text == L"Center") {
    co_await zoomCentre(input);
  } else if (answer.text == L"Window") {
    co_await zoomWindow(input);
  } else if (answer.text == L"Scale") {
    magnify(co_await input.text(L"\nEnter a scale factor (nX or nXP): "));
  } else if (answer.text != L"Previous") {
    magnify(answer.text);
  }
}

/// Pictures are made when they are asked for, so that there is nothing to do.
Task<> regen(CommandInput& input) {
  input.say(L"\nRegenerating model.");
  co_return;
}

Task<> redraw(CommandInput&) { co_return; }

constexpr Command rows[] = {{L"ZOOM", zoom, false},
                            {L"Z", zoom, false},
                            {L"REGEN", regen, false},
                            {L"REGENALL", regen, false},
                            {L"REDRAW", redraw, false}};

}  // namespace

std::span<const Command> viewCommands() { return rows; }

}  // namespace host
