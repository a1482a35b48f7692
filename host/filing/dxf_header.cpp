#include "host/filing/dxf_header.h"

#include <algorithm>
#include <cmath>

#include "host/filing/dxf_out_filer.h"
#include "platform/text/utf.h"

namespace host {
namespace {

/// Told by the file itself, so that they are never those of a former file.
bool isOfFile(std::string_view name) {
  return name == "$ACADVER" || name == "$ACADMAINTVER" || name == "$DWGCODEPAGE" || name == "$HANDSEED";
}

/// Calls `visit(name, groups)` for each variable.
template <class Visit>
void forEachVariable(DxfTokens& tokens, const DxfTokens::Position& header, Visit visit) {
  tokens.goTo(header);
  std::vector<DxfGroup> groups;
  std::string_view name;
  DxfGroup group;
  const auto finish = [&] {
    if (!name.empty() && !groups.empty()) visit(name, groups);
    groups.clear();
  };
  while (tokens.next(group) && group.code != 0) {
    if (group.code == 9) {
      finish();
      name = group.raw;
    } else {
      groups.push_back(group);
    }
  }
  finish();
}

HeaderValue valueOf(const HeaderVariable& row, const resbuf& item) {
  if (std::holds_alternative<AcGePoint3d>(row.initial)) return asPnt3d(item.resval.rpoint);
  if (std::holds_alternative<double>(row.initial)) return item.resval.rreal;
  if (std::holds_alternative<int>(row.initial)) return static_cast<int>(item.resval.rint);
  if (row.kind == HeaderKind::colour) {
    return item.resval.rint == 256 ? std::wstring(L"BYLAYER")
           : item.resval.rint == 0 ? std::wstring(L"BYBLOCK")
                                   : std::to_wstring(item.resval.rint);
  }
  return std::wstring(item.resval.rstring);
}

}  // namespace

DxfVersion readDxfVersion(DxfTokens& tokens, const DxfTokens::Position& header) {
  DxfVersion found;
  forEachVariable(tokens, header, [&](std::string_view name, const std::vector<DxfGroup>& groups) {
    if (name == "$ACADVER") found.version = groups[0].raw;
    if (name == "$DWGCODEPAGE") found.codePage = groups[0].raw;
    if (name == "$HANDSEED") groups[0].handle(found.handleSeed);
  });
  return found;
}

void readDxfHeader(DxfTokens& tokens, const DxfTokens::Position& header, DxfObjects& objects) {
  AcDbDatabase& drawing = objects.drawing();
  forEachVariable(tokens, header, [&](std::string_view name, const std::vector<DxfGroup>& groups) {
    if (isOfFile(name)) return;
    const auto row = findHeaderVariable(fromUtf8(name.substr(1)));
    const bool suits = row && groups[0].code == headerVariables()[*row].code;
    if (!suits) {
      objects.drawing().imp().kept.header.append(9, fromUtf8(name).c_str());
      return objects.keepGroups(groups, objects.drawing().imp().kept.header);
    }
    objects.withItem(groups, [&](const resbuf& item) {
      const HeaderValue value = valueOf(headerVariables()[*row], item);
      if (setHeaderValue(drawing, *row, value) == Acad::eOk) return;
      objects.report().add(groups[0].place, 0,
                           fromUtf8(name) + L": the value is out of range; the standard value is taken");
    });
  });
}

std::string dxfVersionOf(const AcDbDatabase& drawing) {
  const std::string own = toUtf8(drawing.imp().kept.version);
  if (own.empty()) return "AC1027";
  return std::clamp(own, std::string("AC1021"), std::string("AC1032"));
}

namespace {

void writeValue(const AcDbDatabase& drawing, size_t index, DxfSink& sink) {
  const HeaderVariable& row = headerVariables()[index];
  const HeaderValue value = headerValue(drawing, index);
  sink.text(9, std::wstring(L"$") + row.name);
  if (const auto* const point = std::get_if<AcGePoint3d>(&value)) {
    sink.real(row.code, point->x), sink.real(row.code + 10, point->y);
    const std::wstring_view name = row.name;
    if (name != L"LIMMIN" && name != L"LIMMAX") sink.real(row.code + 20, point->z);
  } else if (const auto* const real = std::get_if<double>(&value)) {
    sink.real(row.code, isAngle(row.code) ? degreesOf(*real) : *real);
  } else if (const auto* const whole = std::get_if<int>(&value)) {
    sink.integer(row.code, *whole);
  } else if (row.kind == HeaderKind::colour) {
    const auto colour = colourFromText(std::get<std::wstring>(value));
    sink.integer(row.code, colour ? colour->colorIndex() : 256);
  } else if (const auto* const text = std::get_if<std::wstring>(&value)) {
    sink.text(row.code, *text);
  }
}

}  // namespace

void writeDxfHeader(const AcDbDatabase& drawing, DxfSink& sink) {
  sink.word(0, "SECTION"), sink.word(2, "HEADER");
  sink.word(9, "$ACADVER"), sink.word(1, dxfVersionOf(drawing));
  sink.word(9, "$DWGCODEPAGE"), sink.word(3, "ANSI_1252");
  const auto rows = headerVariables();
  for (size_t i = 0; i < rows.size(); ++i) {
    if (rows[i].inFiles && rows[i].kind != HeaderKind::handle) writeValue(drawing, i, sink);
  }
  putGroups(drawing.imp().kept.header.head(), sink);
  sink.word(9, "$HANDSEED"), sink.handle(5, drawing.handseed());
  sink.word(0, "ENDSEC");
}

}  // namespace host
