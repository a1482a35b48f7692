#include "host/access/group_checks.h"

#include <algorithm>
#include <cmath>

#include "host/access/refusal.h"
#include "host/database/fields.h"

namespace host {
namespace {

using lisp::Value;

struct Needed {
  std::wstring_view type;
  int codes[4];  // 0 is none
};

constexpr Needed needed[] = {
    {L"LINE", {10, 11}},
    {L"POINT", {10}},
    {L"CIRCLE", {10, 40}},
    {L"ARC", {10, 40, 50, 51}},
    {L"ELLIPSE", {10, 11, 40}},
    {L"TEXT", {1, 10, 40}},
    {L"MTEXT", {10}},
    {L"ATTRIB", {1, 2, 10, 40}},
    {L"ATTDEF", {2, 10, 40}},
    {L"INSERT", {2, 10}},
    {L"LWPOLYLINE", {10}},
    {L"VERTEX", {10}},
    {L"SOLID", {10, 11, 12, 13}},
    {L"TRACE", {10, 11, 12, 13}},
    {L"3DFACE", {10, 11, 12}},
    {L"LEADER", {10}},
    {L"BLOCK", {2}},
    {L"LAYER", {2}},
    {L"LTYPE", {2}},
    {L"STYLE", {2}},
    {L"APPID", {2}},
    {L"DIMSTYLE", {2}},
    {L"VIEW", {2}},
    {L"UCS", {2}},
    {L"VPORT", {2}},
    {L"BLOCK_RECORD", {2}},
};

constexpr std::wstring_view withSize[] = {L"CIRCLE", L"ARC", L"TEXT", L"MTEXT", L"ATTRIB", L"ATTDEF"};
constexpr std::wstring_view withStyle[] = {L"TEXT", L"MTEXT", L"ATTRIB", L"ATTDEF"};

bool isAmong(std::wstring_view type, const auto& types) {
  return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

bool isColour(std::wstring_view type, int index) {
  if (type == L"LAYER") return index >= -255 && index <= 255 && index != 0;
  return index >= 0 && index <= 256;
}

bool isWeight(int weight) { return (weight >= -3 && weight <= -1) || isLineWeight(weight); }

bool isNullVector(const Value& point) {
  double size = 0;
  for (const Value& each : lisp::Elements(point)) size += std::abs(each.number());
  return size < 1e-12;
}

template <class Table>
void requireRecord(const AcDbDatabase& drawing, const Value& name, Errno reason) {
  AcDbObjectPointer<Table> table(drawing.tableId(Table::desc()));
  require(table.object() && table->has(name.text().c_str()), reason);
}

}  // namespace

void requireNeeded(std::wstring_view type, const ListGroups& groups) {
  for (const Needed& each : needed) {
    if (each.type != type) continue;
    for (const int code : each.codes) require(code == 0 || findGroup(groups, code), Errno::missingField);
  }
}

void requireSuitable(std::wstring_view type, const ListGroups& groups, const AcDbDatabase& drawing) {
  for (const auto& [code, value] : groups) {
    switch (code) {
      case 2:
        if (type == L"INSERT") requireRecord<AcDbBlockTable>(drawing, *value, Errno::missingBlock);
        break;
      case 6:
        requireRecord<AcDbLinetypeTable>(drawing, *value, Errno::badLinetype);
        break;
      case 7:
        if (isAmong(type, withStyle)) requireRecord<AcDbTextStyleTable>(drawing, *value, Errno::badStyle);
        break;
      case 40:
        require(!isAmong(type, withSize) || value->number() > 0, Errno::badField);
        break;
      case 48:
        require(type == L"VIEWPORT" || value->number() > 0, Errno::badField);
        break;
      case 62:
        require(isColour(type, value->integer()), Errno::badColour);
        break;
      case 210:
        require(!isNullVector(*value), Errno::badField);
        break;
      case 370:
        require(isWeight(value->integer()), Errno::badField);
        break;
      default:
        break;
    }
  }
}

}  // namespace host
