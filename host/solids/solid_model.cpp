#include "host/solids/solid_model.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "brx/db_block.h"
#include "brx/lisp_calls.h"
#include "host/database/fields.h"
#include "host/database/header_variables.h"
#include "host/database/nested_visits.h"
#include "host/entities/block_extents.h"
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

double areaOf(const BrxSolidBody& body) {
  double area = 0;
  size_t begin = 0;
  for (const Adesk::UInt32 end : body.faceEnds) {
    AcGeVector3d sum;
    const auto at = [&](size_t i) { return body.points[body.corners[i]] - body.points[body.corners[begin]]; };
    for (size_t i = begin + 1; i + 1 < end; ++i) sum += at(i).crossProduct(at(i + 1));
    area += sum.length() / 2;
    begin = end;
  }
  return area;
}

/// A matrix that mirrors turns the faces round. False for one that leaves no body.
bool place(BrxSolidBody& body, const AcGeMatrix3d& matrix) {
  const double grows = matrix.det();
  if (!std::isfinite(grows) || grows == 0) return false;
  for (AcGePoint3d& point : body.points) point = matrix * point;
  body.centre = matrix * body.centre;
  body.volume *= std::abs(grows);
  if (grows < 0) {
    size_t begin = 0;
    for (const Adesk::UInt32 end : body.faceEnds) {
      std::reverse(body.corners.begin() + static_cast<std::ptrdiff_t>(begin), body.corners.begin() + end);
      begin = end;
    }
  }
  body.area = areaOf(body);
  return true;
}

/// What surrounds the entities of a block: its place, the handles of the references on the way to it, and the
/// look of the last one.
struct Surroundings {
  AcGeMatrix3d matrix;
  std::string handles;
  view::Resolved look;
};

/// Walks model space and, through references, blocks.
class ModelWalk {
 public:
  ModelWalk(AcDbDatabase& drawing, SolidModel& model) : looks_(drawing, unused_), model_(model) {}

  void block(AcDbObjectId id, const Surroundings* around) {
    AcDbObjectPointer<AcDbBlockTableRecord> record(id);
    if (!record.object()) return;
    for (const AcDbObjectId& each : record->entityIds()) {
      AcDbObjectPointer<AcDbEntity> entity(each);
      if (!entity.object() || entity->visibility() == AcDb::kInvisible) continue;
      if (around && !countNestedVisit()) return;
      this->entity(*entity.object(), around);
    }
  }

 private:
  void entity(AcDbEntity& entity, const Surroundings* around) {
    view::Traits traits(looks_);
    traits.take(entity, traits, around ? &around->look : nullptr);
    const view::Resolved look = traits.resolve();
    const view::LayerLook& layer = looks_.layer(look.layer);
    if (layer.frozen) return;
    if (const auto* const reference = AcDbBlockReference::cast(&entity))
      return cells(*reference, look, around);
    const auto* const solid = dynamic_cast<const BrxSolidBodies*>(&entity);
    if (solid && !layer.off) add(entity, *solid, look, around);
  }

  /// The block in each place of the grid.
  void cells(const AcDbBlockReference& reference, const view::Resolved& look, const Surroundings* around) {
    const NestedDescent descent;
    if (!descent.isAllowed()) return;
    const int columns = std::max<int>(reference.columns(), 1), rows = std::max<int>(reference.rows(), 1);
    const AcGeMatrix3d first = reference.blockTransform();
    for (int row = 0; row < rows; ++row) {
      for (int column = 0; column < columns; ++column) {
        if (!countNestedVisit()) return;
        Surroundings inside{cellShift(reference, column, row) * first, handleText(reference.handle()), look};
        if (reference.isGrid()) inside.handles += ':' + std::to_string(row * columns + column + 1);
        if (around) {
          inside.matrix = around->matrix * inside.matrix;
          inside.handles = around->handles + inside.handles;
        }
        inside.handles += '/';
        block(reference.blockTableRecord(), &inside);
      }
    }
  }

  void add(const AcDbEntity& entity, const BrxSolidBodies& solid, const view::Resolved& look,
           const Surroundings* around) {
    SolidElement element;
    element.kind = solid.kind();
    element.handle = (around ? around->handles : std::string()) + handleText(entity.handle());
    element.layer = toUtf8(nameOfRecord(look.layer));
    element.rgb = view::rgbOf(look.ink, view::Ground::dark);
    readProperties(entity, element);
    for (int i = 0; i < solid.bodyCount(); ++i) {
      BrxSolidBody body = solid.body(i);
      if (!around || place(body, around->matrix)) element.bodies.push_back(std::move(body));
    }
    if (!element.bodies.empty()) model_.elements.push_back(std::move(element));
  }

  view::DisplayList unused_;
  view::Looks looks_;
  SolidModel& model_;
};

}  // namespace

SolidModel solidModel(AcDbDatabase& drawing, const std::string& name) {
  SolidModel model{name, unitOf(drawing), {}};
  const NestedOperation operation;
  ModelWalk(drawing, model).block(drawing.modelSpaceId(), nullptr);
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
