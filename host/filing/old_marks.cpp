#include "host/filing/old_marks.h"

#include <algorithm>

namespace host {
namespace {

/// A subclass and the codes that stand in it; the one that takes the rest has none.
struct Section {
  std::string_view mark;
  std::vector<int> codes;
};
using Sections = std::vector<Section>;

constexpr int takesRest = -1;
const Section common{"AcDbEntity", {6, 8, 48, 60, 62, 370, 420, 430, 440}};

Sections sectionsOfDimension(int64_t flags) {
  Section whole{"AcDbDimension", {1, 2, 3, 10, 11, 41, 42, 51, 53, 70, 71, 72, 210}};
  switch (flags & 7) {
    case 1:
      return {whole, {"AcDbAlignedDimension", {takesRest}}};
    case 2:
      return {whole, {"AcDb2LineAngularDimension", {takesRest}}};
    case 3:
      return {whole, {"AcDbDiametricDimension", {takesRest}}};
    case 4:
      return {whole, {"AcDbRadialDimension", {takesRest}}};
    case 5:
      return {whole, {"AcDb3PointAngularDimension", {takesRest}}};
    case 6:
      return {whole, {"AcDbOrdinateDimension", {takesRest}}};
    default:
      return {whole, {"AcDbAlignedDimension", {takesRest}}, {"AcDbRotatedDimension", {}}};
  }
}

Sections sectionsOfVertex(int64_t flags) {
  enum : int64_t { ofMesh = 64, ofFaces = 128 };
  if ((flags & ofFaces) && !(flags & ofMesh)) return {{"AcDbFaceRecord", {takesRest}}};
  return {{"AcDbVertex", {}},
          {flags & ofFaces ? "AcDbPolyFaceMeshVertex" : "AcDbPolygonMeshVertex", {takesRest}}};
}

/// Behind the common ones. Old files have only a few kinds.
Sections sectionsOf(const DxfRecord& record) {
  constexpr int64_t faces = 64;
  const int64_t flags = record.integer(70);
  if (record.name == "DIMENSION") return sectionsOfDimension(flags);
  if (record.name == "VERTEX") return sectionsOfVertex(flags);
  if (record.name == "SHAPE") return {{"AcDbShape", {takesRest}}};
  if (record.name == "POLYLINE")
    return {{flags & faces ? "AcDbPolyFaceMesh" : "AcDbPolygonMesh", {takesRest}}};
  return {};
}

/// The code of the first coordinate for those of a point.
int mainCode(int code) {
  if (code >= 20 && code <= 28) return code - 10;
  if (code >= 30 && code <= 37) return code - 20;
  return code == 220 || code == 230 ? 210 : code;
}

bool holds(const Section& section, int code) {
  return std::find(section.codes.begin(), section.codes.end(), code) != section.codes.end();
}

/// Index of the section of a code; that which takes the rest for one that is in none.
size_t placeOf(const Sections& sections, int code) {
  for (const int wanted : {mainCode(code), takesRest}) {
    for (size_t i = 0; i < sections.size(); ++i) {
      if (holds(sections[i], wanted)) return i;
    }
  }
  return sections.size() - 1;
}

}  // namespace

DxfRecord withMarks(const DxfRecord& record) {
  if (record.find(100)) return record;
  Sections sections = sectionsOf(record);
  sections.insert(sections.begin(), common);
  std::vector<std::vector<DxfGroup>> sorted(sections.size());
  for (const DxfGroup& each : record.body) sorted[placeOf(sections, each.code)].push_back(each);
  DxfRecord marked = record;
  marked.body.clear();
  for (size_t i = 0; i < sections.size(); ++i) {
    DxfGroup mark;
    mark.code = 100, mark.raw = sections[i].mark, mark.place = record.place;
    marked.body.push_back(mark);
    marked.body.insert(marked.body.end(), sorted[i].begin(), sorted[i].end());
  }
  return marked;
}

}  // namespace host
