#include "zarbo/database/project_file.h"
#include "platform/files/native_path.h"

#include "platform/files/files.h"
#include "platform/text/letters.h"
#include "zarbo/support/paths.h"

namespace {

bool isShipped(const std::wstring& fileName) {
  const std::wstring upper = upperCased(fileName);
  return upper.starts_with(L"52-KV") || upper.find(L"_MASTER") != std::wstring::npos ||
         upper.find(L"_STANDARDS") != std::wstring::npos;
}

}  // namespace

std::wstring findUniqueFile(const std::wstring& folder, const std::wstring& name,
                            const std::wstring& extension) {
  const std::wstring start = folder + platform::pathSeparator();
  std::wstring found;
  for (const std::wstring& each : platform::findFiles(start + L"*" + name + L"*." + extension)) {
    if (isShipped(each) || platform::folderExists(start + each)) continue;
    if (!found.empty()) return {};
    found = start + each;
  }
  return found;
}

std::wstring findProjectFile(const std::wstring& folder, const std::wstring& name) {
  const std::wstring found = findUniqueFile(folder, name, L"kv");
  return found.empty() ? findUniqueFile(folder, name, L"mdb") : found;
}
