#include "platform/com/class_objects.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "platform/com/automation.h"
#include "platform/library/library.h"

namespace {

struct Registered {
  unsigned key;
  CLSID classId;
  ObjectMaker maker;
};

struct LoadedServer {
  std::unique_ptr<platform::Library> library;
  GetClassObject entry;
};

struct Registry {
  std::mutex mutex;
  std::vector<Registered> registered;
  unsigned nextKey = 1;
  ClassLibraryResolver resolver;
  std::map<std::filesystem::path, LoadedServer> libraries;
};

Registry& registry() {
  // Never destroyed: objects may be made and classes revoked by destructors of other libraries.
  static Registry& instance = *new Registry;
  return instance;
}

#ifndef _WIN32

/// Class libraries that are installed beside this one.
struct InstalledClass {
  CLSID classId;
  const char* file;
};
constexpr InstalledClass installedClasses[] = {
    {{0x4D6FDF05, 0xA48B, 0x43B0, {0xB6, 0x40, 0x64, 0xB2, 0x99, 0x54, 0x8B, 0xC4}}, "zarbo_engine.so"},
};

std::filesystem::path ownFolder() {
  return std::filesystem::path(platform::fileOfCode(reinterpret_cast<void*>(&ownFolder))).parent_path();
}

std::filesystem::path libraryOf(const CLSID& classId) {
  ClassLibraryResolver resolver;
  {
    const std::lock_guard lock(registry().mutex);
    resolver = registry().resolver;
  }
  if (resolver) {
    if (auto path = resolver(classId); !path.empty()) return path;
  }
  for (const InstalledClass& each : installedClasses) {
    if (each.classId == classId) return ownFolder() / each.file;
  }
  return {};
}

// The entry of a library, loaded at its first use; null when it can't be loaded or has none.
GetClassObject entryOf(const std::filesystem::path& path) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  if (auto known = all.libraries.find(path); known != all.libraries.end()) return known->second.entry;
  std::string ignored;
  auto library = platform::Library::open(path.string(), ignored);
  const auto entry = library ? library->function<GetClassObject>("DllGetClassObject") : nullptr;
  if (!entry) return nullptr;
  all.libraries.emplace(path, LoadedServer{std::move(library), entry});
  return entry;
}

ObjectMaker registeredMaker(const CLSID& classId) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  auto found = std::find_if(all.registered.rbegin(), all.registered.rend(),
                            [&](const Registered& each) { return each.classId == classId; });
  return found == all.registered.rend() ? ObjectMaker() : found->maker;
}

HRESULT createFromLibrary(const CLSID& classId, const IID& iid, void** object) {
  const std::filesystem::path path = libraryOf(classId);
  if (path.empty()) return REGDB_E_CLASSNOTREG;
  const GetClassObject entry = entryOf(path);
  if (!entry) return CO_E_DLLNOTFOUND;
  ComPtr<IClassFactory> factory;
  const HRESULT result = entry(classId, interfaceId<IClassFactory>, factory.putVoid());
  if (FAILED(result)) return result;
  return factory ? factory->CreateInstance(nullptr, iid, object) : E_UNEXPECTED;
}

#endif

}  // namespace

ClassRegistration::~ClassRegistration() {
  if (key_ == 0) return;
  ObjectMaker revoked;  // destroyed after the lock: its destructor may come back here
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  auto found = std::find_if(all.registered.begin(), all.registered.end(),
                            [&](const Registered& each) { return each.key == key_; });
  if (found == all.registered.end()) return;
  revoked = std::move(found->maker);
  all.registered.erase(found);
}

ClassRegistration registerClassObject(const CLSID& classId, ObjectMaker maker) {
  Registry& all = registry();
  const std::lock_guard lock(all.mutex);
  all.registered.push_back({all.nextKey, classId, std::move(maker)});
  return ClassRegistration(all.nextKey++);
}

void setClassLibraryResolver(ClassLibraryResolver resolver) {
  const std::lock_guard lock(registry().mutex);
  registry().resolver = std::move(resolver);
}

#ifndef _WIN32

// Objects here belong to no apartment, so there is nothing to set up or to take down.
HRESULT CoInitialize(void*) { return S_OK; }
void CoUninitialize() {}

HRESULT CoCreateInstance(const CLSID& classId, IUnknown* outer, DWORD, const IID& iid, void** object) {
  if (!object) return E_POINTER;
  *object = nullptr;
  if (outer) return CLASS_E_NOAGGREGATION;
  if (const ObjectMaker maker = registeredMaker(classId)) return maker(iid, object);
  return createFromLibrary(classId, iid, object);
}

HRESULT OleRun(IUnknown* object) { return object ? S_OK : E_INVALIDARG; }

#endif
