// Builds a standards database from its readable source: make_standards SOURCE-FOLDER DATABASE
//
// Everything goes through the engine's interface, as an application's would.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "interfaces/engine.h"
#include "platform/com/class_objects.h"
#include "platform/com/owners.h"
#include "platform/text/utf.h"

namespace {

using Row = std::map<std::string, std::string>;

std::vector<std::string> splitAtTabs(const std::string& line) {
  std::vector<std::string> fields;
  size_t from = 0;
  for (size_t tab; (tab = line.find('\t', from)) != std::string::npos; from = tab + 1) {
    fields.push_back(line.substr(from, tab - from));
  }
  fields.push_back(line.substr(from));
  return fields;
}

// A source file: lines beginning with # are remarks, the first other line names the columns.
std::vector<Row> readSource(const std::filesystem::path& file) {
  std::ifstream in(file);
  if (!in) throw std::runtime_error(file.string() + ": can't be read");
  std::vector<std::string> names;
  std::vector<Row> rows;
  int number = 0;
  for (std::string line; std::getline(in, line);) {
    ++number;
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> fields = splitAtTabs(line);
    if (names.empty()) {
      names = std::move(fields);
      continue;
    }
    if (fields.size() > names.size()) {
      throw std::runtime_error(file.string() + ":" + std::to_string(number) + ": more fields than columns");
    }
    fields.resize(names.size());
    Row row;
    for (size_t i = 0; i < names.size(); ++i) row[names[i]] = fields[i];
    rows.push_back(std::move(row));
  }
  return rows;
}

using Fields = std::vector<std::pair<std::string, COleVariant>>;

COleVariant text(const std::string& value) { return COleVariant(fromUtf8(value)); }
COleVariant textOrNull(const std::string& value) { return value.empty() ? COleVariant::null() : text(value); }
COleVariant yesNo(const std::string& value) { return COleVariant::boolean(value == "yes"); }

double numberOf(const std::string& value) {
  char* end = nullptr;
  const double number = std::strtod(value.c_str(), &end);
  if (value.empty() || *end != '\0') throw std::runtime_error("'" + value + "' is not a number");
  return number;
}
COleVariant real(const std::string& value) { return COleVariant(numberOf(value)); }
COleVariant realOrNull(const std::string& value) { return value.empty() ? COleVariant::null() : real(value); }
COleVariant integer(const std::string& value) { return COleVariant(static_cast<LONG>(numberOf(value))); }
COleVariant integerOrNull(const std::string& value) {
  return value.empty() ? COleVariant::null() : integer(value);
}

COleSafeArray arrayOf(const std::vector<COleVariant>& items) {
  COleSafeArray array;
  array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(items.size()), items.data());
  return array;
}

/// A database that is being made; what fails throws with the engine's text.
class Maker {
 public:
  explicit Maker(const std::string& path) : engine_(createObject<IZbEngine>(engineClassId)) {
    if (!engine_) throw std::runtime_error("the database engine can't be loaded");
    const Bstr name(fromUtf8(path));
    VARIANT_BOOL ok;
    engine_->CreateDatabase(name.get(), &ok);
    require(ok);
    Bstr status;
    engine_->Connect(name.get(), 0, 0, status.put());
    require(status.view() == L"OK");
  }

  using Definition = std::vector<std::pair<std::string, std::string>>;
  void table(const std::string& name, const Definition& definition) {
    std::vector<COleVariant> items;
    for (const auto& [item, description] : definition) {
      for (const std::string& each :
           {std::string("*RTLB*"), item, std::string("*RTDOTE*"), description, std::string("*RTLE*")}) {
        items.push_back(text(each));
      }
    }
    VARIANT_BOOL ok;
    const Bstr table(fromUtf8(name)), none;
    engine_->CreateTable(table.get(), arrayOf(items), &ok);
    require(ok);
    engine_->SetTable(table.get(), none.get(), &ok);
    require(ok);
  }

  /// The new row's counter.
  LONG append(const Fields& fields) {
    std::vector<COleVariant> items;
    for (const auto& [name, value] : fields) {
      items.push_back(text(name));
      items.push_back(value);
    }
    COleVariant record;
    VARIANT_BOOL ok;
    engine_->Append(arrayOf(items), 0, record.put(), &ok);
    require(ok);
    return VariantElements(record)[1].lVal;
  }

 private:
  void require(bool done) {
    if (done) return;
    LONG code;
    Bstr why;
    engine_->LastError(&code, why.put());
    throw std::runtime_error("(" + std::to_string(code) + ") " + toUtf8(why.view()));
  }

  ComPtr<IZbEngine> engine_;
};

using Counters = std::map<std::string, LONG>;

LONG find(const Counters& counters, const std::string& name, const char* what) {
  const auto found = counters.find(name);
  if (found == counters.end())
    throw std::runtime_error(std::string("no ") + what + " is named '" + name + "'");
  return found->second;
}

Counters makeLayers(Maker& maker, const std::filesystem::path& source) {
  maker.table("tblLayer", {{"ixLayer", "counter"},
                           {"sName", "text(255) required"},
                           {"bRGBColor", "yesno"},
                           {"iColor", "long"},
                           {"iRed", "long"},
                           {"iGreen", "long"},
                           {"iBlue", "long"},
                           {"sLinetype", "text(255)"},
                           {"bPlot", "yesno"},
                           {"sLineweight", "text(50)"},
                           {"sPlotstyle", "text(255)"},
                           {"ixMasterDatabase", "long"},
                           {"iMasterDatabaseIndex", "long"},
                           {"ixLayer", "index primary"},
                           {"sName", "index unique"}});
  Counters layers;
  for (Row& row : readSource(source / "layers.tsv")) {
    layers[row["sName"]] = maker.append({{"sName", text(row["sName"])},
                                         {"iColor", integerOrNull(row["iColor"])},
                                         {"sLinetype", text(row["sLinetype"])},
                                         {"bPlot", yesNo(row["bPlot"])},
                                         {"sLineweight", textOrNull(row["sLineweight"])},
                                         {"sPlotstyle", textOrNull(row["sPlotstyle"])}});
  }
  return layers;
}

Counters makeSystems(Maker& maker, const std::filesystem::path& source) {
  Maker::Definition definition = {{"ixLayerSystem", "counter"},     {"sDescription", "text(255) required"},
                                  {"iSortOrder", "long"},           {"ixMasterDatabase", "long"},
                                  {"iMasterDatabaseIndex", "long"}, {"bSolid", "yesno"},
                                  {"sPrefix", "text(50)"},          {"sSuffix", "text(50)"}};
  const std::string ducts[] = {"supply", "return", "exhaust", "outside"};
  for (const std::string& duct : ducts) {
    definition.insert(definition.end(), {{duct + "HatchOn", "yesno"},
                                         {duct + "HatchType", "text(50)"},
                                         {duct + "HatchPattern", "text(255)"},
                                         {duct + "HatchAngle", "double default 0"},
                                         {duct + "HatchScale", "double default 0"}});
  }
  definition.insert(definition.end(), {{"bHatchFlexDucts", "yesno"},
                                       {"dHatchOverhang", "double default 0"},
                                       {"ixLayerSystem", "index primary"},
                                       {"iSortOrder", "index"}});
  maker.table("tblLayerSystem", definition);
  std::map<std::string, Fields> hatches;
  for (Row& row : readSource(source / "hatches.tsv")) {
    const std::string prefix = row["duct"] + "Hatch";
    Fields& fields = hatches[row["system"]];
    fields.emplace_back(prefix + "On", yesNo(row["on"]));
    fields.emplace_back(prefix + "Type", text(row["type"]));
    fields.emplace_back(prefix + "Pattern", text(row["pattern"]));
    fields.emplace_back(prefix + "Angle", COleVariant(numberOf(row["angle"]) * 3.14159265 / 180.0));
    fields.emplace_back(prefix + "Scale", real(row["scale"]));
  }
  Counters systems;
  for (Row& row : readSource(source / "layer_systems.tsv")) {
    Fields fields = {{"sDescription", text(row["sDescription"])},
                     {"iSortOrder", integer(row["iSortOrder"])},
                     {"bSolid", yesNo(row["bSolid"])},
                     {"sPrefix", text(row["sPrefix"])},
                     {"sSuffix", text(row["sSuffix"])}};
    const Fields& own = hatches[row["sDescription"]];
    fields.insert(fields.end(), own.begin(), own.end());
    systems[row["sDescription"]] = maker.append(fields);
  }
  return systems;
}

void makeKeys(Maker& maker, const std::filesystem::path& source, const Counters& layers,
              const Counters& systems) {
  maker.table("tblLayerKey", {{"ixLayerKey", "counter"},
                              {"ixLayerSystem", "long"},
                              {"ixLayer", "long"},
                              {"sKey", "text(255) required"},
                              {"ixMasterDatabase", "long"},
                              {"iMasterDatabaseIndex", "long"},
                              {"ixLayerKey", "index primary"},
                              {"sKey", "index"},
                              {"isxLayerSystemKey", "index(ixLayerSystem, sKey) unique"}});
  for (Row& row : readSource(source / "layer_keys.tsv")) {
    // The keys of General belong to no system.
    const bool general = row["system"] == "General";
    maker.append({{"ixLayerSystem",
                   general ? COleVariant::null() : COleVariant(find(systems, row["system"], "system"))},
                  {"ixLayer", COleVariant(find(layers, row["layer"], "layer"))},
                  {"sKey", text(row["sKey"])}});
  }
}

void makeGlobals(Maker& maker, const std::filesystem::path& source) {
  maker.table("tblGlobal", {{"ixGlobal", "counter"},
                            {"sKey", "text(255) required"},
                            {"bNumeric", "yesno"},
                            {"sText", "text(255)"},
                            {"dNumber", "double"},
                            {"ixGlobal", "index primary"},
                            {"sKey", "index unique"}});
  for (Row& row : readSource(source / "globals.tsv")) {
    const bool numeric = row["bNumeric"] == "yes";
    maker.append({{"sKey", text(row["sKey"])},
                  {"bNumeric", COleVariant::boolean(numeric)},
                  {numeric ? "dNumber" : "sText", numeric ? real(row["value"]) : text(row["value"])}});
  }
}

void makeTextStyles(Maker& maker, const std::filesystem::path& source) {
  maker.table("tblTextStyle", {{"ixTextStyle", "counter"},
                               {"sKey", "text(255) required"},
                               {"sStyleName", "text(255)"},
                               {"dHeight", "double"},
                               {"dScaleFactor", "double"},
                               {"ixMasterDatabase", "long"},
                               {"iMasterDatabaseIndex", "long"},
                               {"ixTextStyle", "index primary"},
                               {"sKey", "index unique"}});
  for (Row& row : readSource(source / "text_styles.tsv")) {
    maker.append({{"sKey", text(row["sKey"])},
                  {"sStyleName", textOrNull(row["sStyleName"])},
                  {"dHeight", realOrNull(row["dHeight"])},
                  {"dScaleFactor", realOrNull(row["dScaleFactor"])}});
  }
}

void makeLabels(Maker& maker, const std::filesystem::path& source) {
  maker.table("tblLabelGroup", {{"ixLabelGroup", "counter"},
                                {"sGroup", "text(255) required"},
                                {"sKey", "text(255) required"},
                                {"sLabel", "text(255)"},
                                {"dWidth", "double"},
                                {"sJustification", "text(50)"},
                                {"bDisplay", "yesno"},
                                {"iSortOrder", "long"},
                                {"ixLabelGroup", "index primary"},
                                {"sGroup", "index(sGroup, iSortOrder)"}});
  for (Row& row : readSource(source / "label_groups.tsv")) {
    maker.append({{"sGroup", text(row["sGroup"])},
                  {"sKey", text(row["sKey"])},
                  {"sLabel", text(row["sLabel"])},
                  {"dWidth", realOrNull(row["dWidth"])},
                  {"sJustification", text(row["sJustification"])},
                  {"bDisplay", yesNo(row["bDisplay"])},
                  {"iSortOrder", integer(row["iSortOrder"])}});
  }
}

void make(const std::filesystem::path& source, const std::filesystem::path& database) {
  // Made under another name, so that a failure leaves the former database as it was.
  const std::filesystem::path growing = database.string() + ".making";
  std::filesystem::remove(growing);
  if (database.has_parent_path()) std::filesystem::create_directories(database.parent_path());
  {
    Maker maker(growing.string());
    const Counters layers = makeLayers(maker, source);
    const Counters systems = makeSystems(maker, source);
    makeKeys(maker, source, layers, systems);
    makeGlobals(maker, source);
    makeTextStyles(maker, source);
    makeLabels(maker, source);
  }
  std::filesystem::rename(growing, database);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) {
    std::fprintf(stderr, "usage: make_standards SOURCE-FOLDER DATABASE\n");
    return 2;
  }
  try {
    make(arguments[1], arguments[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "make_standards: %s\n", error.what());
    return 1;
  }
  return 0;
}
