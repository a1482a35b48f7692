#pragma once

#include <array>

namespace host {

/// How the value of a group stands in a file. `none` is a code that the format doesn't have.
enum class WireKind : unsigned char { none, text, real, int16, int32, int64, boolean, handle, chunk };

inline constexpr int lastGroupCode = 1071;

constexpr auto wireKinds = [] {
  struct Range {
    int first, last;
    WireKind kind;
  };
  constexpr Range ranges[] = {
      {0, 9, WireKind::text},        {5, 5, WireKind::handle},       {10, 59, WireKind::real},
      {60, 79, WireKind::int16},     {90, 99, WireKind::int32},      {100, 102, WireKind::text},
      {105, 105, WireKind::handle},  {110, 149, WireKind::real},     {160, 169, WireKind::int64},
      {170, 179, WireKind::int16},   {210, 239, WireKind::real},     {270, 289, WireKind::int16},
      {290, 299, WireKind::boolean}, {300, 309, WireKind::text},     {310, 319, WireKind::chunk},
      {320, 369, WireKind::handle},  {370, 389, WireKind::int16},    {390, 399, WireKind::handle},
      {400, 409, WireKind::int16},   {410, 419, WireKind::text},     {420, 429, WireKind::int32},
      {430, 439, WireKind::text},    {440, 459, WireKind::int32},    {460, 469, WireKind::real},
      {470, 479, WireKind::text},    {480, 481, WireKind::handle},   {999, 1003, WireKind::text},
      {1004, 1004, WireKind::chunk}, {1005, 1005, WireKind::handle}, {1006, 1009, WireKind::text},
      {1010, 1059, WireKind::real},  {1060, 1070, WireKind::int16},  {1071, 1071, WireKind::int32},
  };
  std::array<WireKind, lastGroupCode + 1> kinds{};
  for (const Range& each : ranges) {
    for (int code = each.first; code <= each.last; ++code) kinds[static_cast<size_t>(code)] = each.kind;
  }
  return kinds;
}();

constexpr WireKind wireKind(int code) {
  return code < 0 || code > lastGroupCode ? WireKind::none : wireKinds[static_cast<size_t>(code)];
}

/// Codes of a first coordinate; the others follow with the code 10 and 20 above.
constexpr bool startsPoint(int code) {
  return (code >= 10 && code <= 18) || (code >= 110 && code <= 112) || code == 210 ||
         (code >= 1010 && code <= 1013);
}

}  // namespace host
