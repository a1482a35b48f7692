#include "host/solids/solid_model.h"

#include <charconv>
#include <map>

#include "brx/lisp_calls.h"
#include "host/database/header_variables.h"
#include "host/view/painter.h"
#include "host/view/traits.h"
#include "platform/text/utf.h"

namespace host {
namespace {

constexpr LengthUnit units[] = {
    {0.0254, "INCH", nullptr},
    {0.0254, "INCH", nullptr},
    {0.3048, "FOOT", nullptr},
    {1609.344, "MILE", nullptr},
    {0.001, "METRE", "MILLI"},
    {0.01, "METRE", "CENTI"},
    {1, "METRE", ""},
    {1000, "METRE", "KILO"},
    {2.54e-8, "MICROINCH", nullptr},
    {2.54e-5, "MIL", nullptr},
    {0.9144, "YARD", nullptr},
    {1e-10, "ANGSTROM", nullptr},
    {1e-9, "METRE", "NANO"},
    {1e-6, "METRE", "MICRO"},
    {0.1, "METRE", "DECI"},
    {10, "METRE", "DECA"},
    {100, "METRE", "HECTO"},
    {1e9, "METRE", "GIGA"},
};
constexpr size_t millimetres = 4;

int integerVariable(const AcDbDatabase& drawing, std::wstring_view name) {
  const auto index = findHeaderVariable(name);
  if (!index) return 0;
  const HeaderValue value = headerValue(drawing, *index);
  const int* const found = std::get_if<int>(&value);
  return found ? *found : 0;
}

/// A drawing that names no unit is in inches or, when it is a metric one, in millimetres.
LengthUnit unitOf(const AcDbDatabase& drawing) {
  const auto index = static_cast<size_t>(integerVariable(drawing, L"INSUNITS"));
  if (index > 0 && index < std::size(units)) return units[index];
  return units[integerVariable(drawing, L"MEASUREMENT") == 1 ? millimetres : 0];
}

std::string numberText(double value) {
  char text[32];
  return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

std::string valueText(const resbuf& item) {
  switch (item.restype) {
    case 1040:
    case 1041:
    case 1042:
      return numberText(item.resval.rreal);
    case 1070:
      return std::to_string(item.resval.rint);
    case 1071:
      return std::to_string(item.resval.rlong);
    default:
      return {};
  }
}

/// The application's data are keys, each with its value behind it.
void readProperties(const AcDbObject& object, SolidElement& element) {
  constexpr short textGroup = 1000;
  resbuf* const data = object.xData(L"KORVANE");
  for (const resbuf* item = data ? data->rbnext : nullptr; item && item->rbnext;
       item = item->rbnext->rbnext) {
    if (item->restype != textGroup) break;
    const resbuf& value = *item->rbnext;
    element.properties.emplace_back(toUtf8(item->resval.rstring), value.restype == textGroup
                                                                      ? toUtf8(value.resval.rstring)
                                                                      : valueText(value));
  }
  if (data) acutRelRb(data);
}

std::string handleText(AcDbHandle handle) {
  char text[20];
  std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
  return text;
}

}  // namespace

SolidModel solidModel(AcDbDatabase& drawing, const std::string& name) {
  SolidModel model{name, unitOf(drawing), {}};
  view::DisplayList unused;
  view::Looks looks(drawing, unused);
  AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId());
  if (!space.object()) return model;
  for (const AcDbObjectId& id : space->entityIds()) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    const auto* const solid = dynamic_cast<const BrxSolidBodies*>(entity.object());
    if (!solid || solid->bodyCount() == 0 || entity->visibility() == AcDb::kInvisible) continue;
    view::Traits traits(looks);
    traits.take(*entity.object(), traits, nullptr);
    const view::Resolved look = traits.resolve();
    const view::LayerLook& layer = looks.layer(look.layer);
    if (layer.off || layer.frozen) continue;
    SolidElement element;
    element.kind = solid->kind();
    element.handle = handleText(entity->handle());
    element.layer = toUtf8(entity->layer());
    element.rgb = view::rgbOf(look.ink, view::Ground::dark);
    readProperties(*entity.object(), element);
    for (int i = 0; i < solid->bodyCount(); ++i) element.bodies.push_back(solid->body(i));
    model.elements.push_back(std::move(element));
  }
  return model;
}

const char* wordFor(BrxSolidKind kind) {
  switch (kind) {
    case BrxSolidKind::segment:
      return "segment";
    case BrxSolidKind::transition:
      return "transition";
    case BrxSolidKind::elbow:
      return "elbow";
    case BrxSolidKind::wye:
      return "wye";
    case BrxSolidKind::takeoff:
      return "takeoff";
    case BrxSolidKind::hanger:
      return "hanger";
    default:
      return "solid";
  }
}

}  // namespace host
