#include "host/rx/modules.h"

#include <algorithm>
#include <filesystem>

#include "host/console/command_line.h"
#include "host/root/host.h"
#include "platform/text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

bool isFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

/// The folder of the running program, where the modules lie.
fs::path programFolder() { return fs::path(platform::programFile()).parent_path(); }

/// "zarbo", "zarbo.so" and "/somewhere/zarbo.so" name the same module.
std::wstring moduleName(const std::wstring& fileName) {
  const fs::path name = fs::path(toUtf8(fileName)).filename();
  return fromUtf8((name.extension() == platform::libraryEnding() ? name.stem() : name).string());
}

}  // namespace

const FunctionHelp* Application::helpOn(const std::wstring& function) const {
  if (!library) return nullptr;
  const auto help = library->function<FunctionHelpEntry>(functionHelpEntry);
  return help ? help(function.c_str()) : nullptr;
}

Application* Modules::find(const std::wstring& fileName) const {
  const std::wstring name = moduleName(fileName);
  for (Application* each : loaded_) {
    if (moduleName(each->fileName) == name) return each;
  }
  return nullptr;
}

std::string Modules::locate(const std::wstring& fileName) const {
  for (const auto& [name, file] : replacements_) {
    if (name == fileName) return toUtf8(file);
  }
  const fs::path name = toUtf8(fileName);
  if (name.has_parent_path()) return isFile(name) ? fs::absolute(name).string() : "";
  std::vector<fs::path> folders = {programFolder()};
  for (const std::wstring& each : searchPath_) folders.emplace_back(toUtf8(each));
  for (const fs::path& folder : folders) {
    for (const char* ending : {"", platform::libraryEnding()}) {
      const fs::path candidate = folder / (name.string() + ending);
      if (isFile(candidate)) return candidate.string();
    }
  }
  return "";
}

bool Modules::load(const std::wstring& fileName, std::wstring& problem) {
  if (find(fileName)) return true;
  const std::string file = locate(fileName);
  if (file.empty()) {
    problem = fileName + L": not found";
    return false;
  }
  std::string loaderProblem;
  auto library = platform::Library::open(file, loaderProblem);
  if (!library) {
    problem = fromUtf8(loaderProblem);
    return false;
  }
  const auto entry = library->function<Application::Entry>("acrxEntryPoint");
  if (!entry) {
    problem = fileName + L": has no entry acrxEntryPoint";
    return false;
  }
  all_.push_back(std::make_unique<Application>());
  Application& made = *all_.back();
  made.fileName = fileName;
  made.library = std::move(library);
  made.entry = entry;
  if (tell(made, AcRx::kInitAppMsg) == AcRx::kRetError) {
    problem = fileName + L": refuses to start";
    remove(made);
    return false;
  }
  loaded_.push_back(&made);
  if (documents_.forEachDocument) {
    documents_.forEachDocument([&] { tell(made, AcRx::kLoadDwgMsg); });
  }
  return true;
}

bool Modules::unload(const std::wstring& fileName, std::wstring& problem) {
  Application* const application = find(fileName);
  if (!application) {
    problem = fileName + L": is not loaded";
    return false;
  }
  if (!application->unlocked) {
    problem = fileName + L": does not allow to be unloaded";
    return false;
  }
  if (application == current_) {
    problem = fileName + L": is being called";
    return false;
  }
  if (documents_.forEachDocument) {
    documents_.forEachDocument([&] { tell(*application, AcRx::kUnloadDwgMsg); });
  }
  tell(*application, AcRx::kUnloadAppMsg);
  std::erase(loaded_, application);
  remove(*application);
  return true;
}

void Modules::unloadAll() {
  while (!loaded_.empty()) {
    Application* const last = loaded_.back();
    last->unlocked = true;
    std::wstring ignored;
    if (!unload(last->fileName, ignored)) break;
  }
}

void Modules::remove(Application& application) {
  if (documents_.forgetFunctions) documents_.forgetFunctions(application);
  application.entry = nullptr;
  application.functions.clear();
  application.library.reset();
}

void Modules::tellAll(AcRx::AppMsgCode message) {
  const std::vector<Application*> told = loaded_;
  for (Application* each : told) {
    if (each->isLoaded()) tell(*each, message);
  }
}

std::vector<std::wstring> Modules::loadedFiles() const {
  std::vector<std::wstring> files;
  for (const Application* each : loaded_) files.push_back(each->fileName);
  return files;
}

int Modules::tell(Application& application, AcRx::AppMsgCode message) {
  try {
    return call(application, [&] { return application.entry(message, &application); });
  } catch (...) {
    commandLine().print(L"\nexception in the entry of " + application.fileName + L"\n");
    return AcRx::kRetError;
  }
}

Modules& modules() { return theOne<Modules>(); }

}  // namespace host

namespace {

void say(const std::wstring& problem) { host::commandLine().print(L"\n" + problem + L"\n"); }

host::Application* applicationOf(void* applicationId) {
  return static_cast<host::Application*>(applicationId);
}

}  // namespace

bool acrxLoadModule(const ACHAR* fileName, bool print, bool) {
  std::wstring problem;
  const bool loaded = fileName && host::modules().load(fileName, problem);
  if (!loaded && print) say(problem);
  return loaded;
}

bool acrxUnloadModule(const ACHAR* fileName, bool) {
  std::wstring problem;
  return fileName && host::modules().unload(fileName, problem);
}

bool acrxUnlockApplication(void* applicationId) {
  if (!applicationId) return false;
  applicationOf(applicationId)->unlocked = true;
  return true;
}

bool acrxRegisterAppMDIAware(void* applicationId) {
  if (!applicationId) return false;
  applicationOf(applicationId)->worksWithSeveralDocuments = true;
  return true;
}

OdRxModule::OdRxModule() = default;
OdRxModule::~OdRxModule() = default;
