#include "zarbo/drawing/block_lookup.h"

#include "brx/db_services.h"
#include "brx/lisp_calls.h"
#include "zarbo/frame/application_call.h"
#include "zarbo/support/current_drawing.h"

namespace {

constexpr int pathRoom = 1024;
constexpr int allMayShare = 3;

/// The application shows its own message.
void alertMissing(const std::wstring& name) { ApplicationCall(L"kvBlock-alertMissing").text(name).invoke(); }

}  // namespace

bool lookUpBlock(const std::wstring& name, AcDbObjectId& block) {
  AcDbDatabase* const drawing = currentDatabase();
  AcDbBlockTable* blocks = nullptr;
  if (!drawing || drawing->getBlockTable(blocks, AcDb::kForRead) != Acad::eOk) return false;
  const Acad::ErrorStatus known = blocks->getAt(name.c_str(), block);
  blocks->close();
  if (known == Acad::eOk) return true;

  ACHAR path[pathRoom];
  if (acdbHostApplicationServices()->findFile(path, pathRoom, (name + L".dwg").c_str()) != Acad::eOk) {
    alertMissing(name);
    return false;
  }
  AcDbDatabase file(false, false);
  // A file that can't be read has nothing to insert, so the insert alone decides.
  file.readDwgFile(path, allMayShare);
  return drawing->insert(block, name.c_str(), &file) == Acad::eOk;
}
