#include "host/documents/variables.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <map>

#include "host/database/header_variables.h"
#include "host/database/spaces.h"
#include "host/database/stubs.h"
#include "host/documents/documents.h"
#include "host/root/host.h"
#include "platform/files/native_path.h"
#include "platform/text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

struct Variable {
  VariableValue value;
  bool readOnly = false;
};

struct ComputedVariable {
  std::function<VariableValue()> value;
  std::function<SetVariable(const VariableValue&)> set;
};

using Variables = std::map<std::wstring, Variable, std::less<>>;

Variables initialVariables() {
  return {
      {L"ACADVER", {std::wstring(L"21.0"), true}},
      {L"APERTURE", {10}},
      {L"AREA", {0.0, true}},
      {L"ATTDIA", {0}},
      {L"ATTREQ", {1}},
      {L"AUTOSNAP", {63}},
      {L"BLIPMODE", {0}},
      {L"CIRCLERAD", {0.0}},
      {L"CMDACTIVE", {0, true}},
      {L"CMDDIA", {1}},
      {L"CMDECHO", {1}},
      {L"COORDS", {1}},
      {L"DELOBJ", {1}},
      {L"DISTANCE", {0.0, true}},
      {L"DRAGMODE", {2}},
      {L"ERRNO", {0}},
      {L"EXPERT", {0}},
      {L"FILEDIA", {1}},
      {L"GRIDMODE", {0}},
      {L"GRIDUNIT", {Point{0.5, 0.5, 0}}},
      {L"HIGHLIGHT", {1}},
      {L"HPNAME", {std::wstring(L"ANSI31")}},
      {L"HPSCALE", {1.0}},
      {L"INSNAME", {std::wstring()}},
      {L"ISAVEBAK", {1}},
      {L"LASTANGLE", {0.0, true}},
      {L"LASTPOINT", {Point{}}},
      {L"MENUECHO", {0}},
      {L"MODEMACRO", {std::wstring()}},
      {L"NOMUTT", {0}},
      {L"OFFSETDIST", {1.0}},
      {L"OSMODE", {4133}},
      {L"PERIMETER", {0.0, true}},
      {L"PICKBOX", {3}},
      {L"PICKFIRST", {1}},
      {L"PLATFORM", {std::wstring(L"Embedded host"), true}},
      {L"PLINETYPE", {2}},
      {L"POLARMODE", {0}},
      {L"PRODUCT", {std::wstring(L"Zarbo host"), true}},
      {L"PROJECTNAME", {std::wstring()}},
      {L"QAFLAGS", {0}},
      {L"SCREENBOXES", {0, true}},
      {L"SDI", {0, true}},
      {L"SNAPANG", {0.0}},
      {L"SNAPMODE", {0}},
      {L"SNAPUNIT", {Point{0.5, 0.5, 0}}},
      {L"SYSCODEPAGE", {std::wstring(L"UTF-8"), true}},
      {L"TARGET", {Point{}, true}},
      {L"TEXTEVAL", {0}},
      {L"UCSFOLLOW", {0}},
      {L"UCSICON", {3}},
      {L"USERS1", {std::wstring()}},
      {L"USERS2", {std::wstring()}},
      {L"USERS3", {std::wstring()}},
      {L"USERS4", {std::wstring()}},
      {L"USERS5", {std::wstring()}},
      {L"WORLDUCS", {1, true}},
      {L"WRITESTAT", {1, true}},
      {L"XREFNOTIFY", {2}},
  };
}

struct SessionVariables {
  Variables stored = initialVariables();  ///< which hold what was put into them
  std::map<std::wstring, ComputedVariable, std::less<>> computed;
  std::vector<std::wstring> supportPath;
};

Variables& stored() { return theOne<SessionVariables>().stored; }

std::wstring upper(std::wstring_view name) {
  std::wstring made(name);
  for (wchar_t& c : made) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  return made;
}

fs::path currentDrawing() {
  const Document* const document = documents().current();
  return document ? fs::path(toUtf8(document->fileName())) : fs::path();
}

std::wstring withSeparator(const fs::path& folder) {
  const std::wstring text = fromUtf8(folder.string());
  return text.empty() || text.back() == L'/' ? text : text + L'/';
}

std::wstring currentFolder() {
  std::error_code ignored;
  return withSeparator(fs::current_path(ignored));
}

std::tm localTime() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return parts;
}

double secondsOfDay(const std::tm& now) { return now.tm_hour * 3600.0 + now.tm_min * 60.0 + now.tm_sec; }

/// yyyymmdd.hhmmss as one number.
double calendarDate() {
  const std::tm now = localTime();
  return (now.tm_year + 1900) * 10000.0 + (now.tm_mon + 1) * 100.0 + now.tm_mday + now.tm_hour / 100.0 +
         now.tm_min / 10000.0 + now.tm_sec / 1000000.0;
}

/// Julian day number of the local date, with the part of the day that is over.
double julianDate() {
  using namespace std::chrono;
  const std::tm now = localTime();
  const sys_days day = year(now.tm_year + 1900) / (now.tm_mon + 1) / now.tm_mday;
  constexpr double dayOfEpoch = 2440588;
  return dayOfEpoch + static_cast<double>(day.time_since_epoch().count()) + secondsOfDay(now) / 86400;
}

AcDbDatabase* currentDatabase() {
  const Document* const document = documents().current();
  return document ? document->database() : nullptr;
}

auto& computedElsewhere() { return theOne<SessionVariables>().computed; }

constexpr std::wstring_view askedFor[] = {L"ACADPREFIX", L"CDATE",     L"DATE",      L"DWGCODEPAGE",
                                          L"DWGNAME",    L"DWGPREFIX", L"DWGTITLED", L"MILLISECS",
                                          L"SAVENAME",   L"TEMPPREFIX"};

/// Those and others that are asked for when they are read; nothing for other names.
std::optional<VariableValue> computed(std::wstring_view name) {
  if (name == L"ACADPREFIX") {
    std::wstring folders;
    for (const std::wstring& each : supportPath()) folders += each + L";";
    return folders;
  }
  if (name == L"DWGNAME") return fromUtf8(currentDrawing().filename().string());
  if (name == L"DWGPREFIX") {
    return currentDrawing().has_parent_path() ? withSeparator(currentDrawing().parent_path())
                                              : currentFolder();
  }
  if (name == L"DWGCODEPAGE")
    return currentDatabase() ? currentDatabase()->imp().kept.codePage : std::wstring();
  if (name == L"DWGTITLED") return currentDrawing().has_parent_path() ? 1 : 0;
  if (name == L"SAVENAME") return fromUtf8(currentDrawing().string());
  if (name == L"TEMPPREFIX") {
    std::error_code ignored;
    return withSeparator(fs::temp_directory_path(ignored));
  }
  if (name == L"CDATE") return calendarDate();
  if (name == L"DATE") return julianDate();
  if (name == L"MILLISECS") {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    return static_cast<int>(now.count() & 0x7FFFFFFF);
  }
  const auto elsewhere = computedElsewhere().find(name);
  if (elsewhere != computedElsewhere().end()) return elsewhere->second.value();
  return std::nullopt;
}

VariableValue fromHeader(const HeaderVariable& variable, const HeaderValue& value) {
  if (const auto* whole = std::get_if<int>(&value)) {
    if (variable.kind != HeaderKind::letter) return *whole;
    return *whole == 0 ? std::wstring() : std::wstring(1, static_cast<wchar_t>(*whole));
  }
  if (const auto* real = std::get_if<double>(&value)) return *real;
  if (const auto* text = std::get_if<std::wstring>(&value)) return *text;
  const auto& point = std::get<AcGePoint3d>(value);
  return Point{point.x, point.y, point.z};
}

struct ToHeader {
  HeaderValue operator()(const Point& point) const { return AcGePoint3d{point.x, point.y, point.z}; }
  HeaderValue operator()(const auto& value) const { return value; }
};

SetVariable setInDrawing(AcDbDatabase& drawing, size_t index, const VariableValue& value) {
  const HeaderVariable& variable = headerVariables()[index];
  if (variable.readOnly) return SetVariable::readOnly;
  HeaderValue suited = std::visit(ToHeader{}, value);
  if (variable.kind == HeaderKind::letter) {
    const auto* const text = std::get_if<std::wstring>(&value);
    if (!text || text->size() > 1) return SetVariable::wrongType;
    suited = text->empty() ? 0 : static_cast<int>(text->front());
  }
  const Acad::ErrorStatus status = setHeaderValue(drawing, index, suited);
  return status == Acad::eOk ? SetVariable::done : SetVariable::wrongType;
}

/// What tells the space that is current besides TILEMODE: the layout's name, and the viewport, which is 1
/// for a sheet and 2 for the one of the model.
std::optional<VariableValue> ofSpace(const AcDbDatabase& drawing, std::wstring_view name) {
  if (name == L"CTAB") return layoutNameOf(currentSpace(drawing));
  if (name == L"CVPORT") return currentSpace(drawing) == drawing.modelSpaceId() ? 2 : 1;
  return std::nullopt;
}

SetVariable setOfSpace(AcDbDatabase& drawing, std::wstring_view name, const VariableValue& value) {
  const auto* const layout = std::get_if<std::wstring>(&value);
  const auto* const viewport = std::get_if<int>(&value);
  const bool taken = name == L"CTAB" ? layout && switchToLayout(drawing, *layout)
                                     : viewport && *viewport == std::get<int>(*ofSpace(drawing, name));
  return taken ? SetVariable::done : SetVariable::wrongType;
}

}  // namespace

std::optional<VariableValue> getVariable(std::wstring_view name) {
  const std::wstring key = upper(name);
  if (auto value = computed(key)) return value;
  AcDbDatabase* const drawing = currentDatabase();
  if (const auto index = findHeaderVariable(key); index && drawing) {
    if (key.starts_with(L"EXTM")) drawing->updateExt();
    return fromHeader(headerVariables()[*index], headerValue(*drawing, *index));
  }
  if (drawing) {
    if (auto value = ofSpace(*drawing, key)) return value;
  }
  const auto found = stored().find(key);
  if (found == stored().end()) return std::nullopt;
  return found->second.value;
}

SetVariable setVariable(std::wstring_view name, const VariableValue& value) {
  const std::wstring key = upper(name);
  const auto elsewhere = computedElsewhere().find(key);
  if (elsewhere != computedElsewhere().end() && elsewhere->second.set) return elsewhere->second.set(value);
  if (computed(key)) return SetVariable::readOnly;
  AcDbDatabase* const drawing = currentDatabase();
  if (const auto index = findHeaderVariable(key); index && drawing) {
    return setInDrawing(*drawing, *index, value);
  }
  if (drawing && ofSpace(*drawing, key)) return setOfSpace(*drawing, key, value);
  const auto found = stored().find(key);
  if (found == stored().end()) return SetVariable::unknown;
  Variable& variable = found->second;
  if (variable.readOnly) return SetVariable::readOnly;
  if (std::holds_alternative<double>(variable.value) && std::holds_alternative<int>(value)) {
    variable.value = static_cast<double>(std::get<int>(value));
    return SetVariable::done;
  }
  if (variable.value.index() != value.index()) return SetVariable::wrongType;
  variable.value = value;
  return SetVariable::done;
}

std::vector<std::wstring> variableNames() {
  std::vector<std::wstring> names(std::begin(askedFor), std::end(askedFor));
  for (const HeaderVariable& each : headerVariables()) names.push_back(each.name);
  for (const auto& [name, value] : stored()) names.push_back(name);
  for (const auto& [name, value] : computedElsewhere()) names.push_back(name);
  return names;
}

void setHostVariable(std::wstring_view name, const VariableValue& value) {
  stored()[upper(name)].value = value;
}

void defineComputedVariable(std::wstring_view name, std::function<VariableValue()> value,
                            std::function<SetVariable(const VariableValue&)> set) {
  computedElsewhere()[upper(name)] = {std::move(value), std::move(set)};
}

const std::vector<std::wstring>& supportPath() { return theOne<SessionVariables>().supportPath; }
void setSupportPath(std::vector<std::wstring> path) {
  theOne<SessionVariables>().supportPath = std::move(path);
}

std::wstring findSupportFile(const std::wstring& name) {
  std::error_code ignored;
  const fs::path file = toUtf8(name);
  if (file.empty()) return {};
  std::vector<fs::path> candidates = {file};
  if (file.is_relative()) {
    if (currentDrawing().has_parent_path()) candidates.push_back(currentDrawing().parent_path() / file);
    for (const std::wstring& each : supportPath()) candidates.push_back(fs::path(toUtf8(each)) / file);
  }
  for (const fs::path& each : candidates) {
    if (fs::is_regular_file(each, ignored)) {
      return fromUtf8(platform::absolutePath(each.string()));
    }
  }
  return {};
}

}  // namespace host
