#include "host/solids/solid_export.h"

#include "host/solids/writers.h"
#include "platform/files/whole_file.h"

namespace host {
namespace {

struct Format {
  std::string_view ending;
  std::string (*bytes)(const SolidModel& model);
};
constexpr Format formats[] = {
    {".ifc", ifcBytes}, {".step", stepBytes}, {".stp", stepBytes}, {".stl", stlBytes}, {".glb", glbBytes}};

bool endsWith(std::string_view file, std::string_view ending) {
  if (file.size() <= ending.size()) return false;
  file.remove_prefix(file.size() - ending.size());
  for (size_t i = 0; i < ending.size(); ++i) {
    if ((file[i] >= 'A' && file[i] <= 'Z' ? file[i] + 32 : file[i]) != ending[i]) return false;
  }
  return true;
}

const Format* formatOf(const std::string& file) {
  for (const Format& each : formats) {
    if (endsWith(file, each.ending)) return &each;
  }
  return nullptr;
}

std::string nameOf(const std::string& file) {
  const size_t slash = file.rfind('/'), begin = slash == std::string::npos ? 0 : slash + 1;
  return file.substr(begin, file.rfind('.') - begin);
}

}  // namespace

bool isSolidFormat(const std::string& file) { return formatOf(file) != nullptr; }

bool exportSolids(AcDbDatabase& drawing, const std::string& file, std::string& problem) {
  const Format* const format = formatOf(file);
  if (!format) return problem = "the ending names no format for solids", false;
  const SolidModel model = solidModel(drawing, nameOf(file));
  if (model.elements.empty()) return problem = "the drawing shows no solids", false;
  platform::WholeFile target(file);
  if (target.write(format->bytes(model)) && target.commit()) return true;
  return problem = "can't be written", false;
}

}  // namespace host
