#pragma once

#include <algorithm>
#include <cstdlib>
#include <type_traits>
#include <vector>

#include "brx/db_block.h"
#include "brx/db_text.h"
#include "brx/lisp_calls.h"
#include "host/database/stubs.h"

namespace host {

/// A class names its fields once, in a function `fields(visitor, object)`; these visitors make the
/// four ways of filing of it.

/// `Base`, const where `Self` is.
template <class Self, class Base>
using LikeConst = std::conditional_t<std::is_const_v<Self>, const Base, Base>;

AcCmColor exactColour(Adesk::Int32 rgb);
void putColour(AcDbDwgFiler& filer, const AcCmColor& colour);
AcCmColor getColour(AcDbDwgFiler& filer);

struct DwgWriter {
  AcDbDwgFiler& filer;
  void operator()(int, double v) { filer.writeDouble(v); }
  void operator()(int, Adesk::Int16 v) { filer.writeInt16(v); }
  void operator()(int, Adesk::Int32 v) { filer.writeInt32(v); }
  void operator()(int, bool v) { filer.writeBool(v); }
  void operator()(int, const std::wstring& v) { filer.writeString(v.c_str()); }
  void operator()(int, const AcGePoint3d& v) { filer.writePoint3d(v); }
  void operator()(int, const AcGeVector3d& v) { filer.writeVector3d(v); }
  void optional(int, const AcGeVector3d& v) { filer.writeVector3d(v); }
  void plane(int, const AcGePoint3d& v, const AcGeVector3d&) { filer.writePoint3d(v); }
  void height(int, double v) { filer.writeDouble(v); }
  template <class Table>
  void named(int, const AcDbObjectId& v) {
    filer.writeHardPointerId(v);
  }
  void hard(int, const AcDbObjectId& v) { filer.writeHardPointerId(v); }
  void soft(int, const AcDbObjectId& v) { filer.writeSoftPointerId(v); }
  void colour(int, int, const AcCmColor& v) { putColour(filer, v); }
  template <class T>
  void list(int code, const std::vector<T>& all) {
    filer.writeInt32(static_cast<Adesk::Int32>(all.size()));
    for (const T& each : all) item(code, each);
  }
  void item(int code, const AcDbObjectId& v) { soft(code, v); }
  void item(int code, const auto& v) { (*this)(code, v); }
};

struct DwgReader {
  AcDbDwgFiler& filer;
  void operator()(int, double& v) { filer.readDouble(&v); }
  void operator()(int, Adesk::Int16& v) { filer.readInt16(&v); }
  void operator()(int, Adesk::Int32& v) { filer.readInt32(&v); }
  void operator()(int, bool& v) { filer.readBool(&v); }
  void operator()(int, std::wstring& v) {
    ACHAR* text = nullptr;
    filer.readString(&text);
    v = text ? text : L"";
    acutDelString(text);
  }
  void operator()(int, AcGePoint3d& v) { filer.readPoint3d(&v); }
  void operator()(int, AcGeVector3d& v) { filer.readVector3d(&v); }
  /// Stands at the end of its class's fields; snapshots of the first format end before it.
  void optional(int, AcGeVector3d& v) {
    if (filer.readVector3d(&v) == Acad::eEndOfFile) filer.resetFilerStatus();
  }
  void plane(int, AcGePoint3d& v, const AcGeVector3d&) { filer.readPoint3d(&v); }
  void height(int, double& v) { filer.readDouble(&v); }
  template <class Table>
  void named(int code, AcDbObjectId& v) {
    hard(code, v);
  }
  void hard(int, AcDbObjectId& v) {
    AcDbHardPointerId id;
    filer.readHardPointerId(&id);
    v = id;
  }
  void soft(int, AcDbObjectId& v) {
    AcDbSoftPointerId id;
    if (filer.readSoftPointerId(&id) == Acad::eUnknownHandle) filer.resetFilerStatus();
    v = id;
  }
  void colour(int, int, AcCmColor& v) { v = getColour(filer); }
  template <class T>
  void list(int code, std::vector<T>& all) {
    Adesk::Int32 count = 0;
    filer.readInt32(&count);
    all.clear();
    for (; count > 0 && filer.filerStatus() == Acad::eOk; --count) item(code, all.emplace_back());
  }
  void item(int code, AcDbObjectId& v) { soft(code, v); }
  void item(int code, auto& v) { (*this)(code, v); }
};

std::wstring nameOfRecord(AcDbObjectId id);
/// Hundredths of a millimetre that the host knows; without the negative ones that refer to others.
bool isLineWeight(int weight);
struct DxfWriter {
  AcDbDxfFiler& filer;
  void operator()(int code, double v) { filer.writeDouble(code, v); }
  void operator()(int code, Adesk::Int16 v) { filer.writeInt16(code, v); }
  void operator()(int code, Adesk::Int32 v) { filer.writeInt32(code, v); }
  void operator()(int code, bool v) { filer.writeBool(code, v); }
  void operator()(int code, const std::wstring& v) { filer.writeString(code, v.c_str()); }
  void operator()(int code, const AcGePoint3d& v) { filer.writePoint3d(code, v); }
  void operator()(int code, const AcGeVector3d& v) { filer.writeVector3d(code, v); }
  /// A null vector is left out.
  void optional(int code, const AcGeVector3d& v) {
    if (!v.isZeroLength()) filer.writeVector3d(code, v);
  }
  void plane(int code, const AcGePoint3d& v, const AcGeVector3d& normal) {
    filer.writePoint3d(code, AcGeMatrix3d::worldToPlane(normal) * v);
  }
  /// A height over the plane stands as the Z of a point.
  void height(int code, double v) { filer.writePoint3d(code, {0, 0, v}); }
  template <class Table>
  void named(int code, const AcDbObjectId& v) {
    if (!v.isNull()) filer.writeString(code, nameOfRecord(v).c_str());
  }
  void hard(int code, const AcDbObjectId& v) {
    if (!v.isNull()) filer.writeObjectId(code, v);
  }
  void soft(int code, const AcDbObjectId& v) { hard(code, v); }
  /// An index, and with it the exact colour; neither of what follows the layer.
  void colour(int indexCode, int exactCode, const AcCmColor& v) {
    constexpr Adesk::UInt16 byLayer = 256;
    if (v.colorIndex() != byLayer) (*this)(indexCode, static_cast<Adesk::Int16>(v.colorIndex()));
    if (v.isByColor()) (*this)(exactCode, static_cast<Adesk::Int32>(v.rgb()));
  }
  template <class T>
  void list(int code, const std::vector<T>& all) {
    for (const T& each : all) item(code, each);
  }
  void item(int code, const AcDbObjectId& v) { hard(code, v); }
  void item(int code, const auto& v) { (*this)(code, v); }
};

/// Takes one item after the other into the field of its code. Lists are replaced when an item of
/// theirs comes first.
struct DxfReader {
  AcDbDxfFiler& filer;
  const resbuf& item;
  Acad::ErrorStatus status = Acad::eOk;
  std::vector<const void*> begun = {};
  void operator()(int code, double& v) {
    if (code == item.restype) v = item.resval.rreal;
  }
  void operator()(int code, Adesk::Int16& v) {
    if (code == item.restype) v = item.resval.rint;
  }
  void operator()(int code, Adesk::Int32& v) {
    if (code == item.restype) v = item.resval.rlong;
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
  void optional(int code, AcGeVector3d& v) { (*this)(code, v); }
  void plane(int code, AcGePoint3d& v, const AcGeVector3d&) {
    if (code == item.restype) begun.push_back(&v);
    (*this)(code, v);
  }
  void height(int code, double& v) {
    if (code == item.restype) v = item.resval.rpoint[2];
  }
  template <class Table>
  void named(int code, AcDbObjectId& v) {
    if (code != item.restype || !filer.database()) return;
    AcDbObjectPointer<Table> table(filer.database()->tableId(Table::desc()));
    const Acad::ErrorStatus found = table.object() ? table->getAt(item.resval.rstring, v) : Acad::eNoDatabase;
    if (found != Acad::eOk) status = found;
  }
  void hard(int code, AcDbObjectId& v) {
    if (code == item.restype) v = AcDbObjectId(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
  }
  void soft(int code, AcDbObjectId& v) { hard(code, v); }
  /// The index and the exact colour are kept beside one another, whichever comes first.
  void colour(int indexCode, int exactCode, AcCmColor& v) {
    const void* const exactRead = reinterpret_cast<const char*>(&v) + 1;
    if (item.restype == indexCode) {
      const auto index = static_cast<Adesk::UInt16>(std::abs(item.resval.rint));
      isBegun(exactRead) ? v.setIndexBeside(index) : void(v.setColorIndex(index));
      begun.push_back(&v);
    } else if (item.restype == exactCode) {
      const Adesk::UInt16 index = v.colorIndex();
      v = exactColour(item.resval.rlong);
      if (isBegun(&v)) v.setIndexBeside(index);
      begun.push_back(exactRead);
    }
  }
  bool isBegun(const void* field) const {
    return std::find(begun.begin(), begun.end(), field) != begun.end();
  }
  template <class T>
  void list(int code, std::vector<T>& all) {
    if (code != item.restype) return;
    if (!isBegun(&all)) begun.push_back(&all), all.clear();
    element(code, all.emplace_back());
  }
  void element(int code, AcDbObjectId& v) { hard(code, v); }
  void element(int code, auto& v) { (*this)(code, v); }
};

/// Points that were read in the plane's system come to the world's when the normal is known.
struct PlaneToWorld {
  const std::vector<const void*>& read;
  template <class T>
  void operator()(int, T&) {}
  void plane(int, AcGePoint3d& v, const AcGeVector3d& normal) {
    if (std::find(read.begin(), read.end(), &v) == read.end()) return;
    v = AcGeMatrix3d::planeToWorld(normal) * v;
  }
  void height(int, double&) {}
  void optional(int, AcGeVector3d&) {}
  template <class Table>
  void named(int, AcDbObjectId&) {}
  void hard(int, AcDbObjectId&) {}
  void soft(int, AcDbObjectId&) {}
  void colour(int, int, AcCmColor&) {}
  template <class T>
  void list(int, std::vector<T>&) {}
};

template <class Fields>
Acad::ErrorStatus readDxf(AcDbDxfFiler* filer, const ACHAR* subclass, Fields fields) {
  if (!filer->atSubclassData(subclass)) return Acad::eBadDxfSequence;
  resbuf item{};
  DxfReader reader{*filer, item};
  while (filer->readItem(&item) == Acad::eOk) {
    fields(reader);
    if (reader.status != Acad::eOk) return reader.status;
  }
  PlaneToWorld finish{reader.begun};
  fields(finish);
  return filer->filerStatus();
}

}  // namespace host

/// Defines the four filing members of `Class` by the function `Fields`: for a class that declares its
/// fields by `BRX_DECLARES_FIELDS` it is `fields`.
#define HOST_FILING(Class, Base, Fields) HOST_FILING_AS(Class, Base, Fields, L"" #Class)
/// With another name of the subclass in DXF files.
#define HOST_FILING_AS(Class, Base, Fields, Subclass) \
  HOST_FILING_MARKED(Class, Base, Fields, Subclass, Subclass)
/// With one that is written for some objects and read as another.
#define HOST_FILING_MARKED(Class, Base, Fields, Subclass, Written)                            \
  Acad::ErrorStatus Class::dwgOutFields(AcDbDwgFiler* filer) const {                          \
    Base::dwgOutFields(filer);                                                                \
    host::DwgWriter visitor{*filer};                                                          \
    Fields(visitor, *this);                                                                   \
    return filer->filerStatus();                                                              \
  }                                                                                           \
  Acad::ErrorStatus Class::dwgInFields(AcDbDwgFiler* filer) {                                 \
    assertWriteEnabled();                                                                     \
    Base::dwgInFields(filer);                                                                 \
    host::DwgReader visitor{*filer};                                                          \
    Fields(visitor, *this);                                                                   \
    return filer->filerStatus();                                                              \
  }                                                                                           \
  Acad::ErrorStatus Class::dxfOutFields(AcDbDxfFiler* filer) const {                          \
    Base::dxfOutFields(filer);                                                                \
    filer->writeSubclass(Written);                                                            \
    host::DxfWriter visitor{*filer};                                                          \
    Fields(visitor, *this);                                                                   \
    return filer->filerStatus();                                                              \
  }                                                                                           \
  Acad::ErrorStatus Class::dxfInFields(AcDbDxfFiler* filer) {                                 \
    assertWriteEnabled();                                                                     \
    const Acad::ErrorStatus status = Base::dxfInFields(filer);                                \
    if (status != Acad::eOk) return status;                                                   \
    return host::readDxf(filer, Subclass, [this](auto& visitor) { Fields(visitor, *this); }); \
  }
