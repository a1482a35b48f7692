#include <cmath>

#include "brx/db_dictionary.h"
#include "brx/db_proxy.h"
#include "brx/lisp_calls.h"
#include "host/database/changes.h"
#include "host/database/drawing_files.h"
#include "host/database/header_variables.h"
#include "host/database/stubs.h"

/// Variables and dictionaries of a drawing by their own names.

namespace {

/// Index of a variable that is in the table; the name is a literal.
size_t variable(const ACHAR* name) { return host::findHeaderVariable(name).value(); }

template <class T>
T value(const AcDbDatabaseImp& imp, const ACHAR* name) {
  return std::get<T>(imp.header(variable(name)));
}

}  // namespace

const host::HeaderValue& AcDbDatabaseImp::header(size_t index) const {
  host::ReadLog::noteVariable(index);
  return index < header_.size() ? header_[index] : host::headerVariables()[index].initial;
}

void AcDbDatabaseImp::setHeader(size_t index, host::HeaderValue value) {
  if (header_.empty()) {
    for (const host::HeaderVariable& each : host::headerVariables()) header_.push_back(each.initial);
  }
  if (openMarks && !undoing) journal.push_back({nullptr, false, {}, index, header_[index]});
  header_[index] = std::move(value);
  noteVariable(index);
}

AcDbObjectId AcDbDatabase::clayer() const {
  static const size_t index = variable(L"CLAYER");
  const auto id = std::get<AcDbObjectId>(imp_->header(index));
  return id.isNull() || id.isErased() ? layerZero() : id;
}
Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
  AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
  if (record.openStatus() != Acad::eOk) return record.openStatus();
  if (layer.database() != this) return Acad::eWrongDatabase;
  if (record->isFrozen()) return Acad::eInvalidInput;
  imp_->setHeader(variable(L"CLAYER"), layer);
  return Acad::eOk;
}
AcDbObjectId AcDbDatabase::textstyle() const {
  const auto id = value<AcDbObjectId>(*imp_, L"TEXTSTYLE");
  return id.isNull() || id.isErased() ? imp_->standardRecord<AcDbTextStyleTable>(*this, L"Standard") : id;
}
Acad::ErrorStatus AcDbDatabase::setTextstyle(AcDbObjectId style) {
  AcDbObjectPointer<AcDbTextStyleTableRecord> record(style);
  if (record.openStatus() != Acad::eOk) return record.openStatus();
  return host::setHeaderValue(*this, variable(L"TEXTSTYLE"), style);
}
AcDbObjectId AcDbDatabase::celtype() const {
  static const size_t index = variable(L"CELTYPE");
  const auto id = std::get<AcDbObjectId>(imp_->header(index));
  return id.isNull() || id.isErased() ? byLayerLinetype() : id;
}
Acad::ErrorStatus AcDbDatabase::setCeltype(AcDbObjectId linetype) {
  AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype);
  if (record.openStatus() != Acad::eOk) return record.openStatus();
  return host::setHeaderValue(*this, variable(L"CELTYPE"), linetype);
}
AcDbObjectId AcDbDatabase::dimstyle() const {
  const auto id = value<AcDbObjectId>(*imp_, L"DIMSTYLE");
  return id.isNull() || id.isErased() ? imp_->standardRecord<AcDbDimStyleTable>(*this, L"Standard") : id;
}
AcCmColor AcDbDatabase::cecolor() const {
  static const size_t index = variable(L"CECOLOR");
  const auto& text = std::get<std::wstring>(imp_->header(index));
  return text == L"BYLAYER" ? AcCmColor() : host::colourFromText(text).value_or(AcCmColor());
}
double AcDbDatabase::celtscale() const {
  static const size_t index = variable(L"CELTSCALE");
  return std::get<double>(imp_->header(index));
}
double AcDbDatabase::ltscale() const { return value<double>(*imp_, L"LTSCALE"); }
Acad::ErrorStatus AcDbDatabase::setLtscale(double scale) {
  return host::setHeaderValue(*this, variable(L"LTSCALE"), scale);
}
double AcDbDatabase::dimscale() const { return value<double>(*imp_, L"DIMSCALE"); }
Acad::ErrorStatus AcDbDatabase::setDimscale(double scale) {
  return host::setHeaderValue(*this, variable(L"DIMSCALE"), scale);
}
AcGePoint3d AcDbDatabase::insbase() const { return value<AcGePoint3d>(*imp_, L"INSBASE"); }
bool AcDbDatabase::plotStyleMode() const { return value<int>(*imp_, L"PSTYLEMODE") != 0; }

AcGePoint3d AcDbDatabase::extmin() const { return value<AcGePoint3d>(*imp_, L"EXTMIN"); }
AcGePoint3d AcDbDatabase::extmax() const { return value<AcGePoint3d>(*imp_, L"EXTMAX"); }
Acad::ErrorStatus AcDbDatabase::updateExt(bool) {
  AcDbObjectPointer<AcDbBlockTableRecord> space(modelSpaceId());
  if (!space.object()) return space.openStatus();
  AcDbExtents all;
  bool hasCarried = false;
  for (const AcDbObjectId& id : space->entityIds()) {
    const AcDbEntity* const entity = id.isErased() ? nullptr : AcDbEntity::cast(host::objectOf(id));
    AcDbExtents own;
    if (entity && entity->getGeomExtents(own) == Acad::eOk) all.addExt(own);
    hasCarried = hasCarried || AcDbProxyEntity::cast(entity);
  }
  // How far what is carried reaches, only the program that wrote the file knew.
  if (hasCarried && extmin().x <= extmax().x) all.addPoint(extmin()), all.addPoint(extmax());
  constexpr double empty = 1e20;
  const bool isEmpty = all.isEmpty();
  imp_->setHeader(variable(L"EXTMIN"), isEmpty ? AcGePoint3d{empty, empty, empty} : all.minPoint());
  imp_->setHeader(variable(L"EXTMAX"), isEmpty ? AcGePoint3d{-empty, -empty, -empty} : all.maxPoint());
  imp_->extentsKnownAt = imp_->changes;
  return Acad::eOk;
}
void host::trustExtents(AcDbDatabase& drawing) {
  const bool isTold = drawing.extmin().x <= drawing.extmax().x;
  if (isTold) drawing.imp().extentsKnownAt = drawing.imp().changes;
}

AcDbObjectId AcDbDatabase::namedObjectsDictionaryId() const { return imp_->namedObjects; }
AcDbObjectId AcDbDatabase::dictionaryId(const ACHAR* name) const {
  AcDbObjectPointer<AcDbDictionary> root(imp_->namedObjects);
  AcDbObjectId id;
  if (root.object()) root->getAt(name, id);
  return id;
}

namespace {

Acad::ErrorStatus openDictionary(AcDbDictionary*& dictionary, AcDbObjectId id, AcDb::OpenMode mode) {
  return id.isNull() ? (dictionary = nullptr, Acad::eKeyNotFound) : acdbOpenObject(dictionary, id, mode);
}

}  // namespace

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return openDictionary(d, namedObjectsDictionaryId(), m);
}
Acad::ErrorStatus AcDbDatabase::getGroupDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return openDictionary(d, groupDictionaryId(), m);
}
Acad::ErrorStatus AcDbDatabase::getLayoutDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return openDictionary(d, layoutDictionaryId(), m);
}
Acad::ErrorStatus AcDbDatabase::getPlotStyleNameDictionary(AcDbDictionary*& d, AcDb::OpenMode m) {
  return openDictionary(d, plotStyleNameDictionaryId(), m);
}

namespace host {
namespace {

DrawingFiles& registered() {
  static DrawingFiles files{};
  return files;
}

}  // namespace

void setDrawingFiles(DrawingFiles files) { registered() = files; }
const DrawingFiles& drawingFiles() { return registered(); }

}  // namespace host

std::wstring AcDbDatabase::getFilename() const { return imp_->fileName; }
Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* path, int) {
  const auto read = host::drawingFiles().read;
  if (!path || !*path) return Acad::eInvalidInput;
  if (!read) return Acad::eNotImplementedYet;
  std::wstring problem;
  const Acad::ErrorStatus status = read(*this, path, problem);
  // Callers have the status alone, and a person must be told why.
  if (!problem.empty()) acutPrintf(L"\n%s", problem.c_str());
  if (status == Acad::eOk) imp_->fileName = path;
  return status;
}
Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* path) {
  const auto write = host::drawingFiles().write;
  if (!path || !*path) return Acad::eInvalidInput;
  if (!write) return Acad::eNotImplementedYet;
  std::wstring problem;
  const Acad::ErrorStatus status = write(*this, path, problem);
  if (status == Acad::eOk) imp_->fileName = path;
  return status;
}
