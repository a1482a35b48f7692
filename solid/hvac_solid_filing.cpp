#include "brx/lisp_calls.h"
#include "solid/filing.h"
#include "solid/hvac_solid.h"

/// Filing: a version, the kind, and the bodies as bytes.

namespace {

constexpr Adesk::Int16 newestVersion = 1;
constexpr const ACHAR* subclass = L"kv_hvacSolid";
/// Of a group of bytes in an exchange file.
constexpr size_t bytesOfGroup = 127;

}  // namespace

Acad::ErrorStatus HvacSolid::take(int version, int kind, std::string_view bytes) {
  if (version > newestVersion) return Acad::eMakeMeProxy;
  if (version < 1) return Acad::eFilerError;
  kind_ = kind >= 0 && kind < brxSolidKinds ? static_cast<BrxSolidKind>(kind) : BrxSolidKind::other;
  solid::UnpackProblems problems;
  bodies_ = solid::unpacked(bytes, problems);
  for (const std::wstring& each : problems.texts) {
    acutPrintf(L"\nSolid %llx: %s; it is left out.", handle(), each.c_str());
  }
  return Acad::eOk;
}

Acad::ErrorStatus HvacSolid::dwgOutFields(AcDbDwgFiler* filer) const {
  AcDbEntity::dwgOutFields(filer);
  filer->writeInt16(newestVersion);
  filer->writeInt16(static_cast<Adesk::Int16>(kind_));
  const std::string bytes = solid::packed(bodies_);
  filer->writeInt32(static_cast<Adesk::Int32>(bytes.size()));
  filer->writeBytes(bytes.data(), static_cast<Adesk::UInt32>(bytes.size()));
  return filer->filerStatus();
}

Acad::ErrorStatus HvacSolid::dwgInFields(AcDbDwgFiler* filer) {
  assertWriteEnabled();
  AcDbEntity::dwgInFields(filer);
  Adesk::Int16 version = 0, kind = 0;
  Adesk::Int32 size = 0;
  filer->readInt16(&version);
  if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
  if (version > newestVersion) return Acad::eMakeMeProxy;
  filer->readInt16(&kind);
  filer->readInt32(&size);
  if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
  // Read in steps: a length that lies doesn't get its memory.
  std::string bytes;
  constexpr Adesk::Int32 step = 1 << 16;
  for (Adesk::Int32 left = size; left > 0 && filer->filerStatus() == Acad::eOk; left -= step) {
    const auto now = static_cast<Adesk::UInt32>(std::min(left, step));
    bytes.resize(bytes.size() + now);
    filer->readBytes(bytes.data() + bytes.size() - now, now);
  }
  if (filer->filerStatus() != Acad::eOk) return filer->filerStatus();
  return take(version, kind, bytes);
}

Acad::ErrorStatus HvacSolid::dxfOutFields(AcDbDxfFiler* filer) const {
  AcDbEntity::dxfOutFields(filer);
  filer->writeSubclass(subclass);
  filer->writeInt16(70, newestVersion);
  filer->writeInt16(71, static_cast<Adesk::Int16>(kind_));
  std::string bytes = solid::packed(bodies_);
  filer->writeInt32(90, static_cast<Adesk::Int32>(bytes.size()));
  for (size_t at = 0; at < bytes.size(); at += bytesOfGroup) {
    resbuf item{};
    item.restype = 310;
    item.resval.rbinary = {static_cast<short>(std::min(bytesOfGroup, bytes.size() - at)), bytes.data() + at};
    filer->writeItem(item);
  }
  return filer->filerStatus();
}

Acad::ErrorStatus HvacSolid::dxfInFields(AcDbDxfFiler* filer) {
  assertWriteEnabled();
  const Acad::ErrorStatus status = AcDbEntity::dxfInFields(filer);
  if (status != Acad::eOk) return status;
  if (!filer->atSubclassData(subclass)) return Acad::eBadDxfSequence;
  int version = 0, kind = static_cast<int>(kind_);
  std::string bytes;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    if (item.restype == 70) version = item.resval.rint;
    if (item.restype == 71) kind = item.resval.rint;
    if (item.restype == 310 && item.resval.rbinary.clen > 0) {
      bytes.append(item.resval.rbinary.buf, static_cast<size_t>(item.resval.rbinary.clen));
    }
  }
  const Acad::ErrorStatus taken = take(version, kind, bytes);
  return taken == Acad::eOk ? filer->filerStatus() : taken;
}
