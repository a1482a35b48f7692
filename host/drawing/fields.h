#pragma once

#include "brx/db_block.h"
#include "brx/db_text.h"
#include "brx/lisp_calls.h"
#include "host/drawing/stubs.h"

namespace host {

/// A class names its fields once, in a function `fields(visitor, object)`; these visitors make the
/// four ways of filing of it.

struct DwgWriter {
  AcDbDwgFiler& filer;
  void operator()(int, double v) { filer.writeDouble(v); }
  void operator()(int, Adesk::Int16 v) { filer.writeInt16(v); }
  void operator()(int, bool v) { filer.writeBool(v); }
  void operator()(int, const std::wstring& v) { filer.writeString(v.c_str()); }
  void operator()(int, const AcGePoint3d& v) { filer.writePoint3d(v); }
  void operator()(int, const AcGeVector3d& v) { filer.writeVector3d(v); }
  void plane(int, const AcGePoint3d& v, const AcGeVector3d&) { filer.writePoint3d(v); }
  template <class Table>
  void named(int, const AcDbObjectId& v) {
    filer.writeHardPointerId(v);
  }
};

struct DwgReader {
  AcDbDwgFiler& filer;
  void operator()(int, double& v) { filer.readDouble(&v); }
  void operator()(int, Adesk::Int16& v) { filer.readInt16(&v); }
  void operator()(int, bool& v) { filer.readBool(&v); }
  void operator()(int, std::wstring& v) {
    ACHAR* text = nullptr;
    filer.readString(&text);
    v = text ? text : L"";
    acutDelString(text);
  }
  void operator()(int, AcGePoint3d& v) { filer.readPoint3d(&v); }
  void operator()(int, AcGeVector3d& v) { filer.readVector3d(&v); }
  void plane(int, AcGePoint3d& v, const AcGeVector3d&) { filer.readPoint3d(&v); }
  template <class Table>
  void named(int, AcDbObjectId& v) {
    AcDbHardPointerId id;
    filer.readHardPointerId(&id);
    v = id;
  }
};

std::wstring nameOfRecord(AcDbObjectId id);

struct DxfWriter {
  AcDbDxfFiler& filer;
  void operator()(int code, double v) { filer.writeDouble(code, v); }
  void operator()(int code, Adesk::Int16 v) { filer.writeInt16(code, v); }
  void operator()(int code, bool v) { filer.writeBool(code, v); }
  void operator()(int code, const std::wstring& v) { filer.writeString(code, v.c_str()); }
  void operator()(int code, const AcGePoint3d& v) { filer.writePoint3d(code, v); }
  void operator()(int code, const AcGeVector3d& v) { filer.writeVector3d(code, v); }
  void plane(int code, const AcGePoint3d& v, const AcGeVector3d& normal) {
    filer.writePoint3d(code, AcGeMatrix3d::worldToPlane(normal) * v);
  }
  template <class Table>
  void named(int code, const AcDbObjectId& v) {
    if (!v.isNull()) filer.writeString(code, nameOfRecord(v).c_str());
  }
};

/// Takes one item into the field of its code.
struct DxfReader {
  AcDbDxfFiler& filer;
  const resbuf& item;
  Acad::ErrorStatus status = Acad::eOk;
  void operator()(int code, double& v) {
    if (code == item.restype) v = item.resval.rreal;
  }
  void operator()(int code, Adesk::Int16& v) {
    if (code == item.restype) v = item.resval.rint;
  }
  void operator()(int code, bool& v) {
    if (code == item.restype) v = item.resval.rint != 0;
  }
  void operator()(int code, std::wstring& v) {
    if (code == item.restype) v = item.resval.rstring;
  }
  void operator()(int code, AcGePoint3d& v) {
    if (code == item.restype) v = asPnt3d(item.resval.rpoint);
  }
  void operator()(int code, AcGeVector3d& v) {
    if (code == item.restype) v = asPnt3d(item.resval.rpoint).asVector();
  }
  void plane(int code, AcGePoint3d& v, const AcGeVector3d&) { (*this)(code, v); }
  template <class Table>
  void named(int code, AcDbObjectId& v) {
    if (code != item.restype || !filer.database()) return;
    AcDbObjectPointer<Table> table(filer.database()->tableId(Table::desc()));
    const Acad::ErrorStatus found = table.object() ? table->getAt(item.resval.rstring, v) : Acad::eNoDatabase;
    if (found != Acad::eOk) status = found;
  }
};

/// Points that are filed in the plane's system come to the world's when the normal is known.
struct PlaneToWorld {
  template <class T>
  void operator()(int, T&) {}
  void plane(int, AcGePoint3d& v, const AcGeVector3d& normal) { v = AcGeMatrix3d::planeToWorld(normal) * v; }
  template <class Table>
  void named(int, AcDbObjectId&) {}
};

template <class Fields>
Acad::ErrorStatus readDxf(AcDbDxfFiler* filer, const ACHAR* subclass, Fields fields) {
  if (!filer->atSubclassData(subclass)) return Acad::eBadDxfSequence;
  resbuf item{};
  while (filer->readItem(&item) == Acad::eOk) {
    DxfReader reader{*filer, item};
    fields(reader);
    if (reader.status != Acad::eOk) return reader.status;
  }
  PlaneToWorld finish;
  fields(finish);
  return filer->filerStatus();
}

}  // namespace host

/// Defines the four filing members of `Class` by `HostAccess::fields`-like function `Fields`.
#define HOST_FILING(Class, Base, Fields)                                                        \
  Acad::ErrorStatus Class::dwgOutFields(AcDbDwgFiler* filer) const {                            \
    Base::dwgOutFields(filer);                                                                  \
    host::DwgWriter visitor{*filer};                                                            \
    Fields(visitor, *this);                                                                     \
    return filer->filerStatus();                                                                \
  }                                                                                             \
  Acad::ErrorStatus Class::dwgInFields(AcDbDwgFiler* filer) {                                   \
    assertWriteEnabled();                                                                       \
    Base::dwgInFields(filer);                                                                   \
    host::DwgReader visitor{*filer};                                                            \
    Fields(visitor, *this);                                                                     \
    return filer->filerStatus();                                                                \
  }                                                                                             \
  Acad::ErrorStatus Class::dxfOutFields(AcDbDxfFiler* filer) const {                            \
    Base::dxfOutFields(filer);                                                                  \
    filer->writeSubclass(L"" #Class);                                                           \
    host::DxfWriter visitor{*filer};                                                            \
    Fields(visitor, *this);                                                                     \
    return filer->filerStatus();                                                                \
  }                                                                                             \
  Acad::ErrorStatus Class::dxfInFields(AcDbDxfFiler* filer) {                                   \
    assertWriteEnabled();                                                                       \
    const Acad::ErrorStatus status = Base::dxfInFields(filer);                                  \
    if (status != Acad::eOk) return status;                                                     \
    return host::readDxf(filer, L"" #Class, [this](auto& visitor) { Fields(visitor, *this); }); \
  }
