#include "host/editor/view_variables.h"

#include <cmath>
#include <limits>

#include "host/access/coordinate_systems.h"
#include "host/documents/variables.h"
#include "host/editor/person.h"
#include "host/view/camera.h"

namespace host {
namespace {

Point pointOf(const AcGeVector3d& v) { return {v.x, v.y, v.z}; }

/// That of a new drawing where none is open.
const view::Camera& currentCamera() {
  static const view::Camera none;
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  return drawing ? view::Camera::of(*drawing) : none;
}

/// From the axes that belong to the direction of view by themselves.
double twistOf(const view::View& view) {
  const AcGeMatrix3d plain = AcGeMatrix3d::planeToWorld(view.towards);
  const AcGeVector3d right = view.projection().right;
  return std::atan2(-right.dotProduct(plain.column(1)), right.dotProduct(plain.column(0))) + 0.0;
}

AcGeVector3d upOfTwist(const AcGeVector3d& towards, double twist) {
  const AcGeMatrix3d plain = AcGeMatrix3d::planeToWorld(towards);
  return plain.column(0) * std::sin(twist) + plain.column(1) * std::cos(twist);
}

// What is set. What can't be a view changes nothing.

bool isWithin(double value, double bound) { return std::abs(value) <= bound; }
bool isWithin(const Point& p, double bound) {
  return isWithin(p.x, bound) && isWithin(p.y, bound) && isWithin(p.z, bound);
}

/// The number or point of the value; not finite where it is neither.
double numberOf(const VariableValue& value) {
  if (const auto* const whole = std::get_if<int>(&value)) return *whole;
  const auto* const real = std::get_if<double>(&value);
  return real ? *real : std::numeric_limits<double>::infinity();
}
AcGePoint3d pointOf(const VariableValue& value) {
  const auto* const point = std::get_if<Point>(&value);
  if (!point || !isWithin(*point, view::Camera::farthest)) {
    return {std::numeric_limits<double>::infinity(), 0, 0};
  }
  return {point->x, point->y, point->z};
}

/// What a value makes of the view; false when it can make nothing.
using ViewChange = bool (*)(view::View& view, const VariableValue& value);

SetVariable setView(ViewChange change, const VariableValue& value) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing) return SetVariable::readOnly;
  view::Camera& camera = view::Camera::of(*drawing);
  view::View view = camera.view();
  if (!change(view, value)) return SetVariable::wrongType;
  camera.show(view);
  return SetVariable::done;
}

bool setCentre(view::View& view, const VariableValue& value) {
  const AcGePoint3d point = pointOf(value);
  if (!std::isfinite(point.x)) return false;
  view.centre = userSystem() * point;
  return true;
}

bool setHeight(view::View& view, const VariableValue& value) {
  view.height = numberOf(value);
  return view.height >= view::Camera::lowest && view.height <= view::Camera::highest;
}

bool setDirection(view::View& view, const VariableValue& value) {
  const AcGePoint3d point = pointOf(value);
  if (!std::isfinite(point.x) || !(point.asVector().length() > 0)) return false;
  const double twist = twistOf(view);
  view.towards = (userSystem() * point.asVector()).normal();
  view.up = upOfTwist(view.towards, twist);
  return true;
}

bool setTwist(view::View& view, const VariableValue& value) {
  const double twist = numberOf(value);
  if (!std::isfinite(twist)) return false;
  view.up = upOfTwist(view.towards, twist);
  return true;
}

SetVariable setScreenSize(const VariableValue& value) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  if (!drawing || isOnScreen()) return SetVariable::readOnly;
  const AcGePoint3d size = pointOf(value);
  const auto suits = [](double pixels) {
    return pixels >= 1 && pixels <= view::Camera::mostPixels && pixels == std::floor(pixels);
  };
  if (!suits(size.x) || !suits(size.y)) return SetVariable::wrongType;
  view::Camera::of(*drawing).setSize(static_cast<int>(size.x), static_cast<int>(size.y));
  return SetVariable::done;
}

}  // namespace

void defineViewVariables() {
  const auto define = [](std::wstring_view name, std::function<VariableValue()> value, ViewChange change) {
    defineComputedVariable(name, std::move(value),
                           [change](const VariableValue& it) { return setView(change, it); });
  };
  define(
      L"VIEWCTR", [] { return pointOf((userSystem().inverse() * currentCamera().view().centre).asVector()); },
      setCentre);
  define(
      L"VIEWSIZE", [] { return currentCamera().view().height; }, setHeight);
  define(
      L"VIEWDIR", [] { return pointOf(userSystem().inverse() * currentCamera().view().towards); },
      setDirection);
  define(
      L"VIEWTWIST", [] { return twistOf(currentCamera().view()); }, setTwist);
  defineComputedVariable(
      L"SCREENSIZE",
      [] {
        return Point{static_cast<double>(currentCamera().width()),
                     static_cast<double>(currentCamera().height()), 0};
      },
      setScreenSize);
}

}  // namespace host
