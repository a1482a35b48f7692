#include "host/calls/variables.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <map>

#include "host/documents/documents.h"
#include "platform/text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

struct Variable {
  VariableValue value;
  bool readOnly = false;
};

using Variables = std::map<std::wstring, Variable, std::less<>>;

/// The variables that hold what was put into them.
Variables& stored() {
  static Variables all = {
      {L"ACADVER", {std::wstring(L"21.0"), true}},
      {L"ANGBASE", {0.0}},
      {L"ANGDIR", {0}},
      {L"APERTURE", {10}},
      {L"ATTDIA", {0}},
      {L"ATTREQ", {1}},
      {L"AUNITS", {0}},
      {L"AUPREC", {0}},
      {L"AUTOSNAP", {63}},
      {L"BLIPMODE", {0}},
      {L"CECOLOR", {std::wstring(L"BYLAYER")}},
      {L"CELTYPE", {std::wstring(L"ByLayer")}},
      {L"CELTSCALE", {1.0}},
      {L"CLAYER", {std::wstring(L"0")}},
      {L"CMDACTIVE", {0, true}},
      {L"CMDDIA", {1}},
      {L"CMDECHO", {1}},
      {L"CTAB", {std::wstring(L"Model")}},
      {L"CVPORT", {2}},
      {L"DIMSCALE", {1.0}},
      {L"DIMZIN", {0}},
      {L"ELEVATION", {0.0}},
      {L"ERRNO", {0}},
      {L"EXPERT", {0}},
      {L"FILEDIA", {1}},
      {L"FILLMODE", {1}},
      {L"HIGHLIGHT", {1}},
      {L"INSUNITS", {1}},
      {L"LASTPOINT", {Point{}}},
      {L"LTSCALE", {1.0}},
      {L"LUNITS", {2}},
      {L"LUPREC", {4}},
      {L"MEASUREMENT", {0}},
      {L"MENUECHO", {0}},
      {L"MIRRTEXT", {0}},
      {L"MODEMACRO", {std::wstring()}},
      {L"NOMUTT", {0}},
      {L"OFFSETDIST", {1.0}},
      {L"ORTHOMODE", {0}},
      {L"OSMODE", {4133}},
      {L"PICKBOX", {3}},
      {L"PICKFIRST", {1}},
      {L"PLATFORM", {std::wstring(L"Embedded host"), true}},
      {L"PLINEWID", {0.0}},
      {L"PRODUCT", {std::wstring(L"Zarbo host"), true}},
      {L"PSLTSCALE", {1}},
      {L"REGENMODE", {1}},
      {L"SCREENBOXES", {0, true}},
      {L"SNAPANG", {0.0}},
      {L"SNAPMODE", {0}},
      {L"TARGET", {Point{}, true}},
      {L"TEXTSIZE", {0.2}},
      {L"TEXTSTYLE", {std::wstring(L"Standard")}},
      {L"THICKNESS", {0.0}},
      {L"TILEMODE", {1}},
      {L"UCSFOLLOW", {0}},
      {L"UCSICON", {3}},
      {L"UCSNAME", {std::wstring(), true}},
      {L"UCSORG", {Point{}, true}},
      {L"UCSXDIR", {Point{1, 0, 0}, true}},
      {L"UCSYDIR", {Point{0, 1, 0}, true}},
      {L"UNITMODE", {0}},
      {L"USERI1", {0}},
      {L"USERI2", {0}},
      {L"USERI3", {0}},
      {L"USERI4", {0}},
      {L"USERI5", {0}},
      {L"USERR1", {0.0}},
      {L"USERR2", {0.0}},
      {L"USERR3", {0.0}},
      {L"USERR4", {0.0}},
      {L"USERR5", {0.0}},
      {L"USERS1", {std::wstring()}},
      {L"USERS2", {std::wstring()}},
      {L"USERS3", {std::wstring()}},
      {L"USERS4", {std::wstring()}},
      {L"USERS5", {std::wstring()}},
      {L"VIEWCTR", {Point{}, true}},
      {L"VIEWDIR", {Point{0, 0, 1}, true}},
      {L"VIEWSIZE", {9.0, true}},
      {L"VIEWTWIST", {0.0, true}},
      {L"WORLDUCS", {1, true}},
  };
  return all;
}

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

std::map<std::wstring, std::function<VariableValue()>, std::less<>>& computedElsewhere() {
  static std::map<std::wstring, std::function<VariableValue()>, std::less<>> all;
  return all;
}

/// "DWGNAME" and others that are asked for when they are read; nothing for other names.
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
  if (elsewhere != computedElsewhere().end()) return elsewhere->second();
  return std::nullopt;
}

std::vector<std::wstring>& folders() {
  static std::vector<std::wstring> all;
  return all;
}

}  // namespace

std::optional<VariableValue> getVariable(std::wstring_view name) {
  const std::wstring key = upper(name);
  if (auto value = computed(key)) return value;
  const auto found = stored().find(key);
  if (found == stored().end()) return std::nullopt;
  return found->second.value;
}

SetVariable setVariable(std::wstring_view name, const VariableValue& value) {
  const std::wstring key = upper(name);
  if (computed(key)) return SetVariable::readOnly;
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

void setHostVariable(std::wstring_view name, const VariableValue& value) {
  stored()[upper(name)].value = value;
}

void defineComputedVariable(std::wstring_view name, std::function<VariableValue()> value) {
  computedElsewhere()[upper(name)] = std::move(value);
}

const std::vector<std::wstring>& supportPath() { return folders(); }
void setSupportPath(std::vector<std::wstring> path) { folders() = std::move(path); }

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
      return fromUtf8(fs::absolute(each, ignored).lexically_normal().string());
    }
  }
  return {};
}

}  // namespace host
