#include <optional>

#include "brx/db_database.h"
#include "host/access/coordinate_systems.h"
#include "host/bridge/lisp_points.h"
#include "host/documents/variables.h"
#include "host/editor/editor_functions.h"
#include "host/editor/snaps.h"
#include "platform/text/letters.h"

namespace host {
namespace {

using lisp::Call;
using lisp::Value;

struct Mode {
  std::wstring_view name;  // as far as it must be typed
  SnapMode mode;
};
constexpr Mode modes[] = {
    {L"END", snapEnd},      {L"MID", snapMiddle},       {L"CEN", snapCentre},        {L"NOD", snapNode},
    {L"QUA", snapQuadrant}, {L"INS", snapInsertion},    {L"PER", snapPerpendicular}, {L"TAN", snapTangent},
    {L"NEA", snapNearest},  {L"INT", snapIntersection},
};

/// The modes of a text, between commas; those that aren't known are passed over.
int modesOf(const std::wstring& text) {
  int found = 0;
  const std::wstring names = upperCased(text);
  for (size_t at = 0; at < names.size();) {
    const size_t comma = std::min(names.find(L',', at), names.size());
    std::wstring_view name(names.data() + at, comma - at);
    name.remove_prefix(std::min(name.find_first_not_of(L" _"), name.size()));
    for (const Mode& each : modes) {
      if (name.starts_with(each.name)) found |= each.mode;
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

Value osnap(const Call& call) {
  AcDbDatabase* const drawing = acdbHostWorkingDatabase();
  const AcGePoint3d pick = pointArgument(call, 0);
  const int wanted = modesOf(call.text(1));
  const auto snap =
      drawing ? snapAt(*drawing, userSystem() * pick, wanted, userSystem() * lastPoint()) : std::nullopt;
  return snap ? pointValue(userSystem().inverse() * snap->point) : Value();
}

}  // namespace

std::span<const lisp::Builtin> snapFunctions() {
  static const lisp::Builtin table[] = {{L"OSNAP", osnap, 2, 2}};
  return table;
}

}  // namespace host
