#include <cmath>
#include <numbers>

#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/commands/polyline_drawing.h"

namespace host {
namespace {

constexpr int noNull = 1, noZero = 2, noNegative = 4;
constexpr double fullTurn = 2 * std::numbers::pi;

/// The circle through three points; nothing when they lie on a line.
struct CircleThrough {
  AcGePoint3d centre;
  double radius;
};

/// The centre has the same distance from all three: two linear equations.
std::optional<CircleThrough> circleThrough(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
  const AcGeVector2d ab = (b - a).convert2d(), ac = (c - a).convert2d();
  const double turn = 2 * (ab.x * ac.y - ab.y * ac.x);
  // Below this the circle is larger than any drawing.
  constexpr double straight = 1e-12;
  if (std::abs(turn) <= straight * ab.length() * ac.length()) return std::nullopt;
  const double ab2 = ab.dotProduct(ab), ac2 = ac.dotProduct(ac);
  const AcGeVector3d toCentre{(ac.y * ab2 - ab.y * ac2) / turn, (ab.x * ac2 - ac.x * ab2) / turn, 0};
  return CircleThrough{a + toCentre, toCentre.length()};
}

Task<> line(CommandInput& input) {
  const Answer first = co_await input.point(L"\nSpecify first point: ");
  if (!first.given()) co_return;
  std::vector<AcGePoint3d> points = {first.point};
  Entities made;
  while (true) {
    const bool mayClose = points.size() > 2;
    const Answer next = co_await input.point(
        mayClose ? L"\nSpecify next point or [Close/Undo]: " : L"\nSpecify next point or [Undo]: ",
        points.back(), mayClose ? L"Close Undo" : L"Undo");
    if (next.status == RTKWORD && next.text == L"Undo") {
      if (made.empty()) {
        input.say(L"\nAll segments already undone.");
        continue;
      }
      eraseAll({made.back()});
      made.pop_back(), points.pop_back();
      continue;
    }
    const bool closes = next.status == RTKWORD;
    if (!closes && !next.given()) co_return;
    const AcGePoint3d to = closes ? points.front() : next.point;
    made.push_back(addEntity(std::make_unique<AcDbLine>(points.back(), to)));
    points.push_back(to);
    if (closes) co_return;
  }
}

/// Points that coincide make none.
void addCircle(CommandInput& input, const AcGePoint3d& centre, double radius) {
  if (radius == 0) return input.say(L"\nCircle does not exist.");
  addEntity(std::make_unique<AcDbCircle>(centre, AcGeVector3d::kZAxis, radius));
}

Task<> circleByPoints(CommandInput& input, bool three) {
  const Answer a = co_await input.point(L"\nSpecify first point: ", {}, {}, noNull);
  const Answer b = co_await input.point(L"\nSpecify second point: ", a.point, {}, noNull);
  if (!three) {
    addCircle(input, a.point + (b.point - a.point) * 0.5, a.point.distanceTo(b.point) / 2);
    co_return;
  }
  const Answer c = co_await input.point(L"\nSpecify third point: ", b.point, {}, noNull);
  if (const auto circle = circleThrough(a.point, b.point, c.point)) {
    addCircle(input, circle->centre, circle->radius);
  } else {
    input.say(L"\nCircle does not exist.");
  }
}

Task<> circle(CommandInput& input) {
  const Answer centre = co_await input.point(L"\nSpecify center point for circle or [3P/2P]: ", {}, L"3P 2P");
  if (centre.status == RTKWORD) {
    co_await circleByPoints(input, centre.text == L"3P");
    co_return;
  }
  if (!centre.given()) co_return;
  const int positive = noNull | noZero | noNegative;
  Answer size = co_await input.number(Wanted::distance, L"\nSpecify radius of circle or [Diameter]: ",
                                      centre.point, L"Diameter", positive);
  if (size.status != RTKWORD) {
    addCircle(input, centre.point, size.real);
    co_return;
  }
  size =
      co_await input.number(Wanted::distance, L"\nSpecify diameter of circle: ", centre.point, {}, positive);
  addCircle(input, centre.point, size.real / 2);
}

void addArc(const AcGePoint3d& centre, double radius, double from, double to) {
  const auto withinTurn = [](double angle) { return angle - fullTurn * std::floor(angle / fullTurn); };
  addEntity(std::make_unique<AcDbArc>(centre, radius, withinTurn(from), withinTurn(to)));
}

double directionTo(const AcGePoint3d& from, const AcGePoint3d& to) { return (to - from).convert2d().angle(); }

Task<> arcByCentre(CommandInput& input) {
  const Answer centre = co_await input.point(L"\nSpecify center point of arc: ", {}, {}, noNull);
  const Answer start = co_await input.point(L"\nSpecify start point of arc: ", centre.point, {}, noNull);
  const double from = directionTo(centre.point, start.point), radius = centre.point.distanceTo(start.point);
  if (radius == 0) {
    input.say(L"\nStart point is the center.");
    co_return;
  }
  const Answer end =
      co_await input.point(L"\nSpecify end point of arc or [Angle]: ", centre.point, L"Angle", noNull);
  if (end.status != RTKWORD) {
    addArc(centre.point, radius, from, directionTo(centre.point, end.point));
    co_return;
  }
  const Answer angle =
      co_await input.number(Wanted::angle, L"\nSpecify included angle: ", centre.point, {}, noNull | noZero);
  const double to = from + angle.real;
  addArc(centre.point, radius, angle.real < 0 ? to : from, angle.real < 0 ? from : to);
}

Task<> arc(CommandInput& input) {
  const Answer a = co_await input.point(L"\nSpecify start point of arc or [Center]: ", {}, L"Center", noNull);
  if (a.status == RTKWORD) {
    co_await arcByCentre(input);
    co_return;
  }
  const Answer b = co_await input.point(L"\nSpecify second point of arc: ", a.point, {}, noNull);
  const Answer c = co_await input.point(L"\nSpecify end point of arc: ", b.point, {}, noNull);
  const auto circle = circleThrough(a.point, b.point, c.point);
  if (!circle) {
    input.say(L"\nPoints are collinear.");
    co_return;
  }
  const double from = directionTo(circle->centre, a.point), to = directionTo(circle->centre, c.point);
  const double passed = std::fmod(directionTo(circle->centre, b.point) - from + fullTurn, fullTurn);
  const double swept = std::fmod(to - from + fullTurn, fullTurn);
  const bool toTheLeft = passed <= swept;
  addArc(circle->centre, circle->radius, toTheLeft ? from : to, toTheLeft ? to : from);
}

Task<> point(CommandInput& input) {
  const Answer at = co_await input.point(L"\nSpecify a point: ", {}, {}, noNull);
  addEntity(std::make_unique<AcDbPoint>(at.point));
}

constexpr Command rows[] = {{L"LINE", line},   {L"CIRCLE", circle},      {L"ARC", arc},
                            {L"POINT", point}, {L"PLINE", drawPolyline}, {L"RECTANG", drawRectangle}};

}  // namespace

std::span<const Command> drawCommands() { return rows; }

}  // namespace host
