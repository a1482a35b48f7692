#pragma once

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <type_traits>
#include <vector>

#include "brx/db_block.h"
#include "brx/db_text.h"
#include "brx/lisp_calls.h"
#include "host/database/stubs.h"

namespace host {

/// A class names its fields once, in a function `fields(visitor, object)`; these visitors make the
/// four ways of filing of it. What the verbs mean:
///
/// | verb | a field that is |
/// |---|---|
/// | `v(code, field)` | a number, text, point or vector |
/// | `plane`, `height` | in the system of the plane: a point, the height over it |
/// | `direction` | a vector, or its angle in the plane |
/// | `named`, `hard`, `soft` | a reference: by the record's name, owned or not |
/// | `colour` | an index, and an exact colour beside it |
/// | `list`, `groups` | as many as there are |
/// | `contents`, `wide`, `flag` | a long text in pieces, 32 bits in files alone, left out where usual |
/// | `optional`, `later` | left out where null, not in snapshots of the first format |
/// | `hidden` | not in drawing exchange files |
/// | `name`, `flags` | of a record, which files have among those of its class |
/// | `subclass` | none: further ones stand behind another mark |

AcCmColor exactColour(Adesk::Int32 rgb);
void putColour(AcDbDwgFiler& filer, const AcCmColor& colour);
AcCmColor getColour(AcDbDwgFiler& filer);

struct DwgWriter {
  static constexpr bool isDxf = false;
  AcDbDwgFiler& filer;
  void subclass(const ACHAR*) {}
  void operator()(int, double v) { filer.writeDouble(v); }
  void operator()(int, Adesk::Int16 v) { filer.writeInt16(v); }
  void operator()(int, Adesk::Int32 v) { filer.writeInt32(v); }
  void operator()(int, bool v) { filer.writeBool(v); }
  void operator()(int, const std::wstring& v) { filer.writeString(v.c_str()); }
  void operator()(int, const AcGePoint3d& v) { filer.writePoint3d(v); }
  void operator()(int, const AcGeVector3d& v) { filer.writeVector3d(v); }
  void optional(int, const AcGeVector3d& v) { filer.writeVector3d(v); }
  void later(int code, const auto& v) { (*this)(code, v); }
  void hidden(const auto& v) { (*this)(0, v); }
  void wide(int code, Adesk::Int16 v) { (*this)(code, v); }
  void flag(int code, bool v, bool) { (*this)(code, v); }
  void contents(int code, int, const std::wstring& v) { (*this)(code, v); }
  void plane(int, const AcGePoint3d& v, const AcGeVector3d&) { filer.writePoint3d(v); }
  void height(int, double v) { filer.writeDouble(v); }
  void direction(int, int, const AcGeVector3d& v, const AcGeVector3d&) { filer.writeVector3d(v); }
  template <class Table>
  void named(int, const AcDbObjectId& v, const ACHAR* = nullptr) {
    filer.writeHardPointerId(v);
  }
  void hard(int, const AcDbObjectId& v) { filer.writeHardPointerId(v); }
  void soft(int, const AcDbObjectId& v) { filer.writeSoftPointerId(v); }
  void colour(int, int, const AcCmColor& v) { putColour(filer, v); }
  void groups(const GroupList& v) { v.dwgOut(filer); }
  void name(int, const AcDbSymbolTableRecord&) {}
  void flags(int, Adesk::Int16) {}
  template <class T>
  void list(int code, const std::vector<T>& all) {
    filer.writeInt32(static_cast<Adesk::Int32>(all.size()));
    for (const T& each : all) item(code, each);
  }
  void item(int code, const AcDbObjectId& v) { soft(code, v); }
  void item(int code, const auto& v) { (*this)(code, v); }
};

struct DwgReader {
  static constexpr bool isDxf = false;
  AcDbDwgFiler& filer;
  void subclass(const ACHAR*) {}
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
  void optional(int code, AcGeVector3d& v) { later(code, v); }
  /// Stands at the end of its class's fields.
  void later(int code, auto& v) {
    if (filer.filerStatus() != Acad::eOk) return;
    (*this)(code, v);
    if (filer.filerStatus() == Acad::eEndOfFile) filer.resetFilerStatus();
  }
  void hidden(auto& v) { (*this)(0, v); }
  void wide(int code, Adesk::Int16& v) { (*this)(code, v); }
  void flag(int code, bool& v, bool) { (*this)(code, v); }
  void contents(int code, int, std::wstring& v) { (*this)(code, v); }
  void plane(int, AcGePoint3d& v, const AcGeVector3d&) { filer.readPoint3d(&v); }
  void height(int, double& v) { filer.readDouble(&v); }
  void direction(int, int, AcGeVector3d& v, const AcGeVector3d&) { filer.readVector3d(&v); }
  template <class Table>
  void named(int code, AcDbObjectId& v, const ACHAR* = nullptr) {
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
  void groups(GroupList& v) { v.dwgIn(filer); }
  void name(int, AcDbSymbolTableRecord&) {}
  void flags(int, Adesk::Int16&) {}
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
  static constexpr bool isDxf = true;
  AcDbDxfFiler& filer;
  void subclass(const ACHAR* name) { filer.writeSubclass(name); }
  void operator()(int code, double v) { filer.writeDouble(code, v); }
  void operator()(int code, Adesk::Int16 v) { filer.writeInt16(code, v); }
  void operator()(int code, Adesk::Int32 v) { filer.writeInt32(code, v); }
  void operator()(int code, bool v) { filer.writeBool(code, v); }
  void operator()(int code, const std::wstring& v) { filer.writeString(code, v.c_str()); }
  void operator()(int code, const AcGePoint3d& v) { filer.writePoint3d(code, v); }
  void operator()(int code, const AcGeVector3d& v) { filer.writeVector3d(code, v); }
  void optional(int code, const AcGeVector3d& v) {
    if (!v.isZeroLength()) filer.writeVector3d(code, v);
  }
  void later(int code, const auto& v) { (*this)(code, v); }
  void hidden(const auto&) {}
  void wide(int code, Adesk::Int16 v) { filer.writeInt32(code, v); }
  void flag(int code, bool v, bool usual) {
    if (v != usual) filer.writeBool(code, v);
  }
  /// In pieces, all but the last under a code of their own.
  void contents(int code, int pieceCode, std::wstring_view v) {
    constexpr size_t longestPiece = 250;
    for (; v.size() > longestPiece; v.remove_prefix(longestPiece)) {
      filer.writeString(pieceCode, std::wstring(v.substr(0, longestPiece)).c_str());
    }
    filer.writeString(code, std::wstring(v).c_str());
  }
  void plane(int code, const AcGePoint3d& v, const AcGeVector3d& normal) {
    filer.writePoint3d(code, AcGeMatrix3d::worldToPlane(normal) * v);
  }
  /// A height over the plane stands as the Z of a point.
  void height(int code, double v) { filer.writePoint3d(code, {0, 0, v}); }
  void direction(int code, int, const AcGeVector3d& v, const AcGeVector3d&) { filer.writeVector3d(code, v); }
  /// A null reference is left out, or written as the name `instead`.
  template <class Table>
  void named(int code, const AcDbObjectId& v, const ACHAR* instead = nullptr) {
    if (!v.isNull()) {
      filer.writeString(code, nameOfRecord(v).c_str());
    } else if (instead) {
      filer.writeString(code, instead);
    }
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
  void groups(const GroupList& v) { v.dxfOut(filer); }
  void name(int code, const AcDbSymbolTableRecord& record) {
    filer.writeString(code, record.getName().c_str());
  }
  void flags(int code, Adesk::Int16 v) { filer.writeInt16(code, v); }
  template <class T>
  void list(int code, const std::vector<T>& all) {
    for (const T& each : all) item(code, each);
  }
  void item(int code, const AcDbObjectId& v) { hard(code, v); }
  void item(int code, const auto& v) { (*this)(code, v); }
};

/// Takes one item after the other into the field of its code, among the fields of the section that is being
/// read. Lists are replaced when an item of theirs comes first.
struct DxfReader {
  static constexpr bool isDxf = true;
  AcDbDxfFiler& filer;
  const resbuf& item;
  Acad::ErrorStatus status = Acad::eOk;
  std::wstring_view section = {};
  bool active = true;
  std::vector<const void*> begun = {};

  bool is(int code) const { return active && code == item.restype; }
  bool isBegun(const void* field) const {
    return std::find(begun.begin(), begun.end(), field) != begun.end();
  }
  void subclass(const ACHAR* name) { active = section == name; }
  void operator()(int code, double& v) {
    if (is(code)) v = item.resval.rreal;
  }
  void operator()(int code, Adesk::Int16& v) {
    if (is(code)) v = item.resval.rint;
  }
  void operator()(int code, Adesk::Int32& v) {
    if (is(code)) v = item.resval.rlong;
  }
  void operator()(int code, bool& v) {
    if (is(code)) v = item.resval.rint != 0;
  }
  void operator()(int code, std::wstring& v) {
    if (is(code)) v = item.resval.rstring;
  }
  void operator()(int code, AcGePoint3d& v) {
    if (is(code)) v = asPnt3d(item.resval.rpoint);
  }
  void operator()(int code, AcGeVector3d& v) {
    if (is(code)) v = asPnt3d(item.resval.rpoint).asVector();
  }
  void optional(int code, AcGeVector3d& v) { (*this)(code, v); }
  void later(int code, auto& v) { (*this)(code, v); }
  void hidden(auto&) {}
  void wide(int code, Adesk::Int16& v) {
    if (is(code)) v = static_cast<Adesk::Int16>(item.resval.rlong & 0x7FFF);
  }
  void flag(int code, bool& v, bool) { (*this)(code, v); }
  void contents(int code, int pieceCode, std::wstring& v) {
    if (!is(code) && !is(pieceCode)) return;
    if (!isBegun(&v)) begun.push_back(&v), v.clear();
    v += item.resval.rstring;
  }
  void plane(int code, AcGePoint3d& v, const AcGeVector3d&) {
    if (is(code)) begun.push_back(&v);
    (*this)(code, v);
  }
  void height(int code, double& v) {
    if (is(code)) v = item.resval.rpoint[2];
  }
  /// Of vector and angle the one that comes last counts; an angle waits for the normal.
  void direction(int code, int angleCode, AcGeVector3d& v, const AcGeVector3d&) {
    if (is(code)) std::erase(begun, &v);
    (*this)(code, v);
    if (!is(angleCode)) return;
    begun.push_back(&v);
    v = {std::cos(item.resval.rreal), std::sin(item.resval.rreal), 0};
  }
  template <class Table>
  void named(int code, AcDbObjectId& v, const ACHAR* = nullptr) {
    if (!is(code) || !filer.database()) return;
    AcDbObjectPointer<Table> table(filer.database()->tableId(Table::desc()));
    const Acad::ErrorStatus found = table.object() ? table->getAt(item.resval.rstring, v) : Acad::eNoDatabase;
    if (found != Acad::eOk) status = found;
  }
  void hard(int code, AcDbObjectId& v) {
    if (is(code)) v = AcDbObjectId(reinterpret_cast<AcDbStub*>(item.resval.rlname[0]));
  }
  void soft(int code, AcDbObjectId& v) { hard(code, v); }
  /// The index and the exact colour are kept beside one another, whichever comes first.
  void colour(int indexCode, int exactCode, AcCmColor& v) {
    const void* const exactRead = reinterpret_cast<const char*>(&v) + 1;
    if (is(indexCode)) {
      const auto index = static_cast<Adesk::UInt16>(std::abs(item.resval.rint));
      isBegun(exactRead) ? v.setIndexBeside(index) : void(v.setColorIndex(index));
      begun.push_back(&v);
    } else if (is(exactCode)) {
      const Adesk::UInt16 index = v.colorIndex();
      v = exactColour(item.resval.rlong);
      if (isBegun(&v)) v.setIndexBeside(index);
      begun.push_back(exactRead);
    }
  }
  /// All but a record's name and flags.
  void groups(GroupList& v) {
    if (!active || item.restype == 2 || item.restype == 70) return;
    if (!isBegun(&v)) begun.push_back(&v), v.clear();
    v.append(item);
  }
  void name(int code, AcDbSymbolTableRecord& record) {
    if (!is(code) || record.getName() == item.resval.rstring) return;
    const Acad::ErrorStatus taken = record.setName(item.resval.rstring);
    if (taken != Acad::eOk) status = taken;
  }
  /// Without what marks references to other drawings.
  void flags(int code, Adesk::Int16& v) {
    constexpr int ofReferences = 16 | 32 | 64;
    if (is(code)) v = static_cast<Adesk::Int16>(item.resval.rint & ~ofReferences);
  }
  template <class T>
  void list(int code, std::vector<T>& all) {
    if (!is(code)) return;
    if (!isBegun(&all)) begun.push_back(&all), all.clear();
    element(code, all.emplace_back());
  }
  void element(int code, AcDbObjectId& v) { hard(code, v); }
  void element(int code, auto& v) { (*this)(code, v); }
};

/// Does nothing with any field.
struct NoVerbs {
  static constexpr bool isDxf = true;
  void subclass(const ACHAR*) {}
  void operator()(int, auto&) {}
  void optional(int, auto&) {}
  void later(int, auto&) {}
  void hidden(auto&) {}
  void wide(int, auto&) {}
  void flag(int, bool&, bool) {}
  void contents(int, int, std::wstring&) {}
  void plane(int, AcGePoint3d&, const AcGeVector3d&) {}
  void height(int, double&) {}
  void direction(int, int, AcGeVector3d&, const AcGeVector3d&) {}
  template <class Table>
  void named(int, AcDbObjectId&, const ACHAR* = nullptr) {}
  void hard(int, AcDbObjectId&) {}
  void soft(int, AcDbObjectId&) {}
  void colour(int, int, AcCmColor&) {}
  void groups(GroupList&) {}
  void name(int, AcDbSymbolTableRecord&) {}
  void flags(int, Adesk::Int16&) {}
  template <class T>
  void list(int, std::vector<T>&) {}
};

/// Points and directions that were read in the plane's system come to the world's when the normal is known.
struct PlaneToWorld : NoVerbs {
  explicit PlaneToWorld(const std::vector<const void*>& read) : read(read) {}
  const std::vector<const void*>& read;
  bool isRead(const void* field) const { return std::find(read.begin(), read.end(), field) != read.end(); }
  void plane(int, AcGePoint3d& v, const AcGeVector3d& normal) {
    if (isRead(&v)) v = AcGeMatrix3d::planeToWorld(normal) * v;
  }
  void direction(int, int, AcGeVector3d& v, const AcGeVector3d& normal) {
    if (isRead(&v)) v = AcGeMatrix3d::planeToWorld(normal) * v;
  }
};

/// The marks behind which a class has fields.
struct SubclassNames : NoVerbs {
  explicit SubclassNames(std::wstring_view first) : all{first} {}
  std::vector<std::wstring_view> all;
  void subclass(const ACHAR* name) { all.push_back(name); }
};

template <class Fields>
Acad::ErrorStatus readDxf(AcDbDxfFiler* filer, const ACHAR* subclass, Fields fields) {
  resbuf item{};
  DxfReader reader{*filer, item};
  SubclassNames names(subclass);
  fields(names);
  for (const std::wstring_view name : names.all) {
    if (!filer->atSubclassData(name.data())) return Acad::eBadDxfSequence;
    reader.section = name;
    while (filer->readItem(&item) == Acad::eOk) {
      reader.active = name == subclass;
      fields(reader);
      if (reader.status != Acad::eOk) return reader.status;
    }
  }
  PlaneToWorld finish(reader.begun);
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
