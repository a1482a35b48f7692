#pragma once

#include <array>

#include "brx/adesk.h"

namespace host {

/// What kind of value stands behind a group code of a drawing file, by the format's own ranges.
/// Codes of no range hold 16 bits, as the host has them.
enum class GroupKind : Adesk::UInt8 { text, real, point, int16, int32, int64, boolean, handle, binary };

constexpr GroupKind kindByRange(int code) {
  struct Range {
    int first, last;
    GroupKind kind;
  };
  constexpr Range ranges[] = {
      {0, 9, GroupKind::text},        {10, 18, GroupKind::point},     {38, 59, GroupKind::real},
      {90, 99, GroupKind::int32},     {100, 102, GroupKind::text},    {105, 105, GroupKind::text},
      {110, 112, GroupKind::point},   {140, 149, GroupKind::real},    {160, 169, GroupKind::int64},
      {210, 213, GroupKind::point},   {290, 299, GroupKind::boolean}, {300, 309, GroupKind::text},
      {310, 319, GroupKind::binary},  {320, 369, GroupKind::handle},  {390, 399, GroupKind::handle},
      {410, 419, GroupKind::text},    {420, 429, GroupKind::int32},   {430, 439, GroupKind::text},
      {440, 459, GroupKind::int32},   {460, 469, GroupKind::real},    {470, 479, GroupKind::text},
      {480, 481, GroupKind::handle},  {999, 1003, GroupKind::text},   {1004, 1004, GroupKind::binary},
      {1005, 1005, GroupKind::text},  {1010, 1013, GroupKind::point}, {1040, 1042, GroupKind::real},
      {1071, 1071, GroupKind::int32},
  };
  for (const Range& each : ranges) {
    if (code >= each.first && code <= each.last) return each.kind;
  }
  return GroupKind::int16;
}

/// Of the codes from 0 on. At this level, since a table inside the function is built anew at each call.
inline constexpr auto kindsByCode = [] {
  std::array<GroupKind, 1072> made{};
  for (size_t each = 0; each < made.size(); ++each) made[each] = kindByRange(static_cast<int>(each));
  return made;
}();

constexpr GroupKind groupKind(int code) {
  if (code >= 0 && code < static_cast<int>(kindsByCode.size())) return kindsByCode[static_cast<size_t>(code)];
  // Filters and entity lists of LISP: operators are texts, names stand for objects.
  if (code == -4) return GroupKind::text;
  return code == -1 || code == -2 || code == -5 ? GroupKind::handle : GroupKind::int16;
}

}  // namespace host
