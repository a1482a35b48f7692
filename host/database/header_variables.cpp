#include "host/database/header_variables.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <iterator>

#include "host/database/fields.h"

namespace host {
namespace {

constexpr double anything[] = {-1e300, 1e300};

// In the order of names, by which they are searched.
const HeaderVariable variables[] = {
    {L"ANGBASE", 50, 0.0},
    {L"ANGDIR", 70, 0, HeaderKind::plain, 0, 1},
    {L"ATTMODE", 70, 1, HeaderKind::plain, 0, 2},
    {L"AUNITS", 70, 0, HeaderKind::plain, 0, 4},
    {L"AUPREC", 70, 0, HeaderKind::plain, 0, 8},
    {L"CECOLOR", 62, std::wstring(L"BYLAYER"), HeaderKind::colour},
    {L"CELTSCALE", 40, 1.0, HeaderKind::plain, 1e-300, anything[1]},
    {L"CELTYPE", 6, AcDbObjectId{}, HeaderKind::linetype},
    {L"CELWEIGHT", 370, -1, HeaderKind::plain, -3, 211},
    {L"CHAMFERA", 40, 0.0, HeaderKind::plain, 0, anything[1]},
    {L"CHAMFERB", 40, 0.0, HeaderKind::plain, 0, anything[1]},
    {L"CHAMFERC", 40, 0.0, HeaderKind::plain, 0, anything[1]},
    {L"CHAMFERD", 40, 0.0},
    {L"CLAYER", 8, AcDbObjectId{}, HeaderKind::layer},
    {L"CMLJUST", 70, 0, HeaderKind::plain, 0, 2},
    {L"CMLSCALE", 40, 1.0},
    {L"CMLSTYLE", 2, std::wstring(L"Standard")},
    {L"DIMADEC", 70, 0},
    {L"DIMALT", 70, 0},
    {L"DIMALTD", 70, 2},
    {L"DIMALTF", 40, 25.4},
    {L"DIMASO", 70, 1},
    {L"DIMASZ", 40, 0.18},
    {L"DIMAUNIT", 70, 0},
    {L"DIMAZIN", 70, 0},
    {L"DIMCEN", 40, 0.09},
    {L"DIMCLRD", 70, 0},
    {L"DIMCLRE", 70, 0},
    {L"DIMCLRT", 70, 0},
    {L"DIMDEC", 70, 4},
    {L"DIMDLE", 40, 0.0},
    {L"DIMDLI", 40, 0.38},
    {L"DIMDSEP", 70, 46, HeaderKind::letter, 0, 65535},
    {L"DIMEXE", 40, 0.18},
    {L"DIMEXO", 40, 0.0625},
    {L"DIMFRAC", 70, 0},
    {L"DIMGAP", 40, 0.09},
    {L"DIMJUST", 70, 0},
    {L"DIMLFAC", 40, 1.0},
    {L"DIMLIM", 70, 0},
    {L"DIMLUNIT", 70, 2},
    {L"DIMLWD", 70, -2},
    {L"DIMLWE", 70, -2},
    {L"DIMPOST", 1, std::wstring()},
    {L"DIMRND", 40, 0.0},
    {L"DIMSAH", 70, 0},
    {L"DIMSCALE", 40, 1.0, HeaderKind::plain, 0, anything[1]},
    {L"DIMSD1", 70, 0},
    {L"DIMSD2", 70, 0},
    {L"DIMSE1", 70, 0},
    {L"DIMSE2", 70, 0},
    {L"DIMSHO", 70, 1},
    {L"DIMSOXD", 70, 0},
    {L"DIMSTYLE", 2, AcDbObjectId{}, HeaderKind::dimStyle, anything[0], anything[1], true},
    {L"DIMTAD", 70, 0},
    {L"DIMTDEC", 70, 4},
    {L"DIMTFAC", 40, 1.0},
    {L"DIMTIH", 70, 1},
    {L"DIMTIX", 70, 0},
    {L"DIMTM", 40, 0.0},
    {L"DIMTMOVE", 70, 0},
    {L"DIMTOFL", 70, 0},
    {L"DIMTOH", 70, 1},
    {L"DIMTOL", 70, 0},
    {L"DIMTOLJ", 70, 1},
    {L"DIMTP", 40, 0.0},
    {L"DIMTSZ", 40, 0.0},
    {L"DIMTVP", 40, 0.0},
    {L"DIMTXSTY", 7, AcDbObjectId{}, HeaderKind::textStyle},
    {L"DIMTXT", 40, 0.18},
    {L"DIMTZIN", 70, 0},
    {L"DIMUPT", 70, 0},
    {L"DIMZIN", 70, 0},
    {L"DISPSILH", 70, 0, HeaderKind::plain, 0, 1},
    {L"ELEVATION", 40, 0.0},
    {L"EXTMAX", 10, AcGePoint3d{-1e+20, -1e+20, -1e+20}, HeaderKind::plain, anything[0], anything[1], true},
    {L"EXTMIN", 10, AcGePoint3d{1e+20, 1e+20, 1e+20}, HeaderKind::plain, anything[0], anything[1], true},
    {L"FILLETRAD", 40, 0.0, HeaderKind::plain, 0, anything[1]},
    {L"FILLMODE", 70, 1, HeaderKind::plain, 0, 1},
    {L"HANDSEED", 5, std::wstring(), HeaderKind::handle, anything[0], anything[1], true},
    {L"INSBASE", 10, AcGePoint3d{0.0, 0.0, 0.0}},
    {L"INSUNITS", 70, 1, HeaderKind::plain, 0, 24},
    {L"LIMCHECK", 70, 0, HeaderKind::plain, 0, 1},
    {L"LIMMAX", 10, AcGePoint3d{12.0, 9.0, 0.0}},
    {L"LIMMIN", 10, AcGePoint3d{0.0, 0.0, 0.0}},
    {L"LTSCALE", 40, 1.0, HeaderKind::plain, 1e-300, anything[1]},
    {L"LUNITS", 70, 2, HeaderKind::plain, 1, 5},
    {L"LUPREC", 70, 4, HeaderKind::plain, 0, 8},
    {L"LWDISPLAY", 290, 0, HeaderKind::plain, 0, 1},
    {L"MEASUREMENT", 70, 0, HeaderKind::plain, 0, 1},
    {L"MENU", 1, std::wstring(L"."), HeaderKind::plain, anything[0], anything[1], true},
    {L"MIRRTEXT", 70, 0, HeaderKind::plain, 0, 1},
    {L"ORTHOMODE", 70, 0, HeaderKind::plain, 0, 1},
    {L"PDMODE", 70, 0, HeaderKind::plain, 0, 100},
    {L"PDSIZE", 40, 0.0},
    {L"PELEVATION", 40, 0.0},
    {L"PLINEGEN", 70, 0, HeaderKind::plain, 0, 1},
    {L"PLINEWID", 40, 0.0, HeaderKind::plain, 0, anything[1]},
    {L"PROXYGRAPHICS", 70, 1, HeaderKind::plain, 0, 1},
    {L"PSLTSCALE", 70, 1, HeaderKind::plain, 0, 1},
    {L"PSTYLEMODE", 290, 1, HeaderKind::plain, anything[0], anything[1], true},
    {L"QTEXTMODE", 70, 0, HeaderKind::plain, 0, 1},
    {L"REGENMODE", 70, 1, HeaderKind::plain, 0, 1},
    {L"SHADEDGE", 70, 3, HeaderKind::plain, 0, 3},
    {L"SKETCHINC", 40, 0.1, HeaderKind::plain, 0, anything[1]},
    {L"SPLFRAME", 70, 0, HeaderKind::plain, 0, 1},
    {L"SPLINESEGS", 70, 8, HeaderKind::plain, -32768.0, 32767},
    {L"SPLINETYPE", 70, 6, HeaderKind::plain, 5, 6},
    {L"SURFTAB1", 70, 6, HeaderKind::plain, 2, 32766},
    {L"SURFTAB2", 70, 6, HeaderKind::plain, 2, 32766},
    {L"SURFTYPE", 70, 6, HeaderKind::plain, 5, 8},
    {L"TEXTSIZE", 40, 0.2, HeaderKind::plain, 1e-300, anything[1]},
    {L"TEXTSTYLE", 7, AcDbObjectId{}, HeaderKind::textStyle},
    {L"THICKNESS", 40, 0.0},
    {L"TILEMODE", 70, 1, HeaderKind::plain, 0, 1},
    {L"TRACEWID", 40, 0.05, HeaderKind::plain, 0, anything[1]},
    {L"UCSNAME", 2, std::wstring(), HeaderKind::plain, anything[0], anything[1], true},
    {L"UCSORG", 10, AcGePoint3d{0.0, 0.0, 0.0}, HeaderKind::plain, anything[0], anything[1], true},
    {L"UCSXDIR", 10, AcGePoint3d{1.0, 0.0, 0.0}, HeaderKind::plain, anything[0], anything[1], true},
    {L"UCSYDIR", 10, AcGePoint3d{0.0, 1.0, 0.0}, HeaderKind::plain, anything[0], anything[1], true},
    {L"UNITMODE", 70, 0, HeaderKind::plain, 0, 1},
    {L"USERI1", 70, 0, HeaderKind::plain, -32768.0, 32767},
    {L"USERI2", 70, 0, HeaderKind::plain, -32768.0, 32767},
    {L"USERI3", 70, 0, HeaderKind::plain, -32768.0, 32767},
    {L"USERI4", 70, 0, HeaderKind::plain, -32768.0, 32767},
    {L"USERI5", 70, 0, HeaderKind::plain, -32768.0, 32767},
    {L"USERR1", 40, 0.0},
    {L"USERR2", 40, 0.0},
    {L"USERR3", 40, 0.0},
    {L"USERR4", 40, 0.0},
    {L"USERR5", 40, 0.0},
    {L"VISRETAIN", 70, 1, HeaderKind::plain, 0, 1},
    {L"WORLDVIEW", 70, 1, HeaderKind::plain, 0, 1},
};

constexpr size_t notFound = static_cast<size_t>(-1);

size_t indexOf(std::wstring_view upperName) {
  const auto found = std::lower_bound(
      std::begin(variables), std::end(variables), upperName,
      [](const HeaderVariable& each, std::wstring_view name) { return std::wstring_view(each.name) < name; });
  const bool is = found != std::end(variables) && upperName == found->name;
  return is ? static_cast<size_t>(found - variables) : notFound;
}

const AcRxClass* tableOf(HeaderKind kind) {
  switch (kind) {
    case HeaderKind::layer:
      return AcDbLayerTable::desc();
    case HeaderKind::linetype:
      return AcDbLinetypeTable::desc();
    case HeaderKind::textStyle:
      return AcDbTextStyleTable::desc();
    case HeaderKind::dimStyle:
      return AcDbDimStyleTable::desc();
    default:
      return nullptr;
  }
}

/// The record that a reference names where it was never set.
AcDbObjectId standardOf(const AcDbDatabase& drawing, HeaderKind kind) {
  switch (kind) {
    case HeaderKind::layer:
      return drawing.layerZero();
    case HeaderKind::linetype:
      return drawing.byLayerLinetype();
    case HeaderKind::textStyle:
      return drawing.imp().standardRecord<AcDbTextStyleTable>(drawing, L"Standard");
    case HeaderKind::dimStyle:
      return drawing.imp().standardRecord<AcDbDimStyleTable>(drawing, L"Standard");
    default:
      return {};
  }
}

Acad::ErrorStatus keep(AcDbDatabase& drawing, size_t variable, HeaderValue value) {
  drawing.imp().setHeader(variable, std::move(value));
  return Acad::eOk;
}

Acad::ErrorStatus setReference(AcDbDatabase& drawing, size_t variable, const HeaderValue& value) {
  const AcRxClass* const tableClass = tableOf(variables[variable].kind);
  if (const auto* const id = std::get_if<AcDbObjectId>(&value)) {
    if (!id->isNull() && id->database() != &drawing) return Acad::eWrongDatabase;
    return keep(drawing, variable, value);
  }
  const auto* const name = std::get_if<std::wstring>(&value);
  if (!name) return Acad::eInvalidInput;
  AcDbObjectPointer<AcDbSymbolTable> table(drawing.tableId(tableClass));
  AcDbObjectId id;
  if (!table.object() || table->getAt(name->c_str(), id) != Acad::eOk) return Acad::eKeyNotFound;
  if (variables[variable].kind == HeaderKind::layer) {
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id);
    if (layer.object() && layer->isFrozen()) return Acad::eInvalidInput;
  }
  return keep(drawing, variable, id);
}

}  // namespace

std::span<const HeaderVariable> headerVariables() { return variables; }

std::optional<size_t> findHeaderVariable(std::wstring_view name) {
  const size_t found = indexOf(symbolKey(std::wstring(name).c_str()));
  return found == notFound ? std::nullopt : std::optional(found);
}

HeaderValue headerValue(const AcDbDatabase& drawing, size_t variable) {
  const HeaderVariable& row = variables[variable];
  if (row.kind == HeaderKind::handle) {
    wchar_t digits[20];
    std::swprintf(digits, std::size(digits), L"%llX", static_cast<unsigned long long>(drawing.handseed()));
    return std::wstring(digits);
  }
  const HeaderValue& value = drawing.imp().header(variable);
  const auto* const id = std::get_if<AcDbObjectId>(&value);
  if (!id) return value;
  return nameOfRecord(id->isNull() || id->isErased() ? standardOf(drawing, row.kind) : *id);
}

Acad::ErrorStatus setHeaderValue(AcDbDatabase& drawing, size_t variable, const HeaderValue& value) {
  const HeaderVariable& row = variables[variable];
  if (row.kind == HeaderKind::handle) return Acad::eOk;  // handles that are in use tell it
  if (tableOf(row.kind)) return setReference(drawing, variable, value);
  if (row.kind == HeaderKind::colour) {
    const auto* const text = std::get_if<std::wstring>(&value);
    const auto colour = text ? colourFromText(*text) : std::nullopt;
    return colour ? keep(drawing, variable, colourText(*colour)) : Acad::eInvalidInput;
  }
  HeaderValue suited = value;
  if (std::holds_alternative<double>(row.initial) && std::holds_alternative<int>(value)) {
    suited = static_cast<double>(std::get<int>(value));
  }
  if (suited.index() != row.initial.index()) return Acad::eInvalidInput;
  const double* const real = std::get_if<double>(&suited);
  const int* const whole = std::get_if<int>(&suited);
  if (real && !(*real >= row.lowest && *real <= row.highest)) return Acad::eInvalidInput;
  if (whole && (*whole < row.lowest || *whole > row.highest)) return Acad::eInvalidInput;
  return keep(drawing, variable, std::move(suited));
}

namespace {

const ACHAR* const colourNames[] = {L"BYBLOCK", L"RED",  L"YELLOW",  L"GREEN",
                                    L"CYAN",    L"BLUE", L"MAGENTA", L"WHITE"};

std::optional<AcCmColor> exactColour(const std::wstring& text) {
  unsigned parts[3] = {256, 256, 256};
  int end = 0;
  const int count = std::swscanf(text.c_str(), L"RGB:%u,%u,%u%n", &parts[0], &parts[1], &parts[2], &end);
  if (count != 3 || static_cast<size_t>(end) != text.size()) return std::nullopt;
  for (const unsigned part : parts) {
    if (part > 255) return std::nullopt;
  }
  AcCmColor made;
  made.setRGB(static_cast<Adesk::UInt8>(parts[0]), static_cast<Adesk::UInt8>(parts[1]),
              static_cast<Adesk::UInt8>(parts[2]));
  return made;
}

}  // namespace

std::wstring colourText(const AcCmColor& colour) {
  if (colour.isByLayer()) return L"BYLAYER";
  if (colour.isByBlock()) return L"BYBLOCK";
  if (!colour.isByColor()) return std::to_wstring(colour.colorIndex());
  return L"RGB:" + std::to_wstring(colour.red()) + L"," + std::to_wstring(colour.green()) + L"," +
         std::to_wstring(colour.blue());
}

std::optional<AcCmColor> colourFromText(std::wstring_view given) {
  const std::wstring text = symbolKey(std::wstring(given).c_str());
  if (text.starts_with(L"RGB:")) return exactColour(text);
  AcCmColor made;
  if (text == L"BYLAYER") return made;
  for (Adesk::UInt16 index = 0; index < std::size(colourNames); ++index) {
    if (text == colourNames[index]) return made.setColorIndex(index), made;
  }
  wchar_t* end = nullptr;
  const unsigned long index = std::wcstoul(text.c_str(), &end, 10);
  if (text.empty() || *end || index > 256) return std::nullopt;
  made.setColorIndex(static_cast<Adesk::UInt16>(index));
  return made;
}

}  // namespace host
