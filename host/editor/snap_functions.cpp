#include <optional>

#include "brx/db_database.h"
#include "host/bridge/lisp_points.h"
#include "host/database/nested_visits.h"
#include "host/documents/variables.h"
#include "host/editor/editor_functions.h"
#include "host/editor/search.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

struct Mode {
  std::wstring_view name;  // as far as it must be typed
  std::optional<AcDb::OsnapMode> mode;
};
constexpr Mode modes[] = {
    {L"END", AcDb::kOsModeEnd},  {L"MID", AcDb::kOsModeMid},  {L"CEN", AcDb::kOsModeCen},
    {L"NOD", AcDb::kOsModeNode}, {L"QUA", AcDb::kOsModeQuad}, {L"INS", AcDb::kOsModeIns},
    {L"PER", AcDb::kOsModePerp}, {L"TAN", AcDb::kOsModeTan},  {L"NEA", AcDb::kOsModeNear},
    {L"INT", std::nullopt},
};

/// The modes of a text, between commas; those that aren't known are passed over.
std::vector<Mode> modesOf(const std::wstring& text) {
  std::vector<Mode> found;
  const std::wstring names = upperCased(text);
  for (size_t at = 0; at < names.size();) {
    const size_t comma = std::min(names.find(L',', at), names.size());
    std::wstring_view name(names.data() + at, comma - at);
    name.remove_prefix(std::min(name.find_first_not_of(L" _"), name.size()));
    for (const Mode& each : modes) {
      if (name.starts_with(each.name)) found.push_back(each);
    }
    at = comma + 1;
  }
  return found;
}

AcGePoint3d lastPoint() {
  const auto value = getVariable(L"LASTPOINT");
  const Point* const point = value ? std::get_if<Point>(&*value) : nullptr;
  return point ? AcGePoint3d{point->x, point->y, point->z} : AcGePoint3d{};
}

/// Points of the entities under a pick, of one mode.
AcGePoint3dArray snapPoints(const std::vector<AcDbObjectId>& ids, const Mode& mode, const AcGePoint3d& pick) {
  AcGePoint3dArray points;
  AcDbIntArray unused;
  for (size_t i = 0; i < ids.size(); ++i) {
    const AcDbObjectPointer<AcDbEntity> entity(ids[i]);
    if (!entity.object()) continue;
    if (mode.mode) {
      entity->getOsnapPoints(*mode.mode, 0, pick, lastPoint(), AcGeMatrix3d::kIdentity, points, unused);
      continue;
    }
    for (size_t j = i + 1; j < ids.size(); ++j) {
      const AcDbObjectPointer<AcDbEntity> other(ids[j]);
      if (other.object()) entity->intersectWith(other.object(), AcDb::kOnBothOperands, points);
    }
  }
  return points;
}

/// The nearest point of all modes; one that is merely near a curve counts when there is no other.
Value osnap(const Call& call) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  const AcGePoint3d pick = pointArgument(call, 0);
  const std::vector<Mode> wanted = modesOf(call.text(1));
  if (!drawing) return {};
  const NestedOperation operation;
  const std::vector<AcDbObjectId> ids = entitiesIn(*drawing, apertureAt(pick), Lies::partly);
  std::optional<AcGePoint3d> best, near;
  for (const Mode& mode : wanted) {
    std::optional<AcGePoint3d>& kept = mode.mode == AcDb::kOsModeNear ? near : best;
    for (const AcGePoint3d& each : snapPoints(ids, mode, pick)) {
      if (!kept || each.distanceTo(pick) < kept->distanceTo(pick)) kept = each;
    }
  }
  const auto& found = best ? best : near;
  return found ? pointValue(*found) : Value();
}

}  // namespace

std::span<const lisp::Builtin> snapFunctions() {
  static const lisp::Builtin table[] = {{L"OSNAP", osnap, 2, 2}};
  return table;
}

}  // namespace host
