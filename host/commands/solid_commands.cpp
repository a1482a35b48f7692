#include "brx/lisp_calls.h"
#include "host/commands/commands.h"
#include "host/commands/drawing_edit.h"
#include "host/filing/files.h"
#include "host/geometry/solid_sums.h"
#include "host/solids/solid_export.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

/// What is asked about objects, and the hand-over of solids.

namespace host {
namespace {

Task<> list(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  for (const AcDbObjectId& id : chosen) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity.object()) continue;
    acutPrintf(L"\n");
    entity->list();
  }
}

void printSums(const ACHAR* what, const SolidSums& sums) {
  acutPrintf(L"\n%s\n", what);
  acutPrintf(L"Bodies:  %d\n", sums.bodies);
  acutPrintf(L"Faces:   %d\n", sums.faces);
  acutPrintf(L"Volume:  %.6f\n", sums.volume);
  acutPrintf(L"Area:    %.6f\n", sums.area);
  acutPrintf(L"Centre:  %.6f, %.6f, %.6f\n", sums.centre.x, sums.centre.y, sums.centre.z);
  acutPrintf(L"Closed:  %s\n", sums.closed ? L"yes" : L"no");
}

/// Each solid, and all together where there are several. Other objects are passed over.
Task<> massProperties(CommandInput& input) {
  const Entities chosen = co_await input.objects();
  SolidSums all;
  int count = 0;
  for (const AcDbObjectId& id : chosen) {
    AcDbObjectPointer<AcDbEntity> entity(id);
    const auto* const solid = dynamic_cast<const BrxSolidBodies*>(entity.object());
    if (!solid) continue;
    SolidSums one;
    one.add(*solid);
    all.add(*solid);
    ++count;
    wchar_t name[40];
    std::swprintf(name, std::size(name), L"Solid %llX", static_cast<unsigned long long>(entity->handle()));
    printSums(name, one);
  }
  if (count == 0) acutPrintf(L"\nNo solids were chosen.\n");
  if (count > 1) printSums(L"All together", all);
}

bool isDxf(const std::string& file) { return file.ends_with(".dxf") || file.ends_with(".DXF"); }

/// By the ending: a format for solids, or a drawing exchange file with a mesh beside each solid.
Task<> exportFile(CommandInput& input) {
  const std::string file = toUtf8(co_await input.text(L"\nEnter file name (.ifc .step .stl .glb .dxf): "));
  if (file.empty()) co_return;
  AcDbDatabase& drawing = *acdbHostWorkingDatabase();
  std::string problem;
  const bool done = isDxf(file) ? writeDxfWithMeshes(drawing, fromUtf8(file)) == Acad::eOk ||
                                      (problem = "can't be written", false)
                                : exportSolids(drawing, file, problem);
  if (done) co_return;
  acutPrintf(L"\n%s\n", fromUtf8(file + ": " + problem).c_str());
  throw CommandFailed();
}

constexpr Command rows[] = {{L"LIST", list, false},
                            {L"LI", list, false},
                            {L"MASSPROP", massProperties, false},
                            {L"EXPORT", exportFile, false}};

}  // namespace

std::span<const Command> solidCommands() { return rows; }

}  // namespace host
