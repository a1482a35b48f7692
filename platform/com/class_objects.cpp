#include "platform/com/class_objects.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#ifndef _WIN32
#include <dlfcn.h>
#endif

#include "platform/com/automation.h"

namespace {

struct Registered {
  unsigned key;
  CLSID classId;
  ObjectMaker maker;
};

struct Registry {
  std::mutex mutex;
  std::vector<Registered> registered;
  unsigned nextKey = 1;
  ClassLibraryResolver resolver;
  std::map<std::filesystem::path, GetClassObject> libraries;
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
  Dl_info info{};
  if (!dladdr(reinterpret_cast<void*>(&ownFolder), &info) || !info.dli_fname) return {};
  std::error_code ignored;
  return std::filesystem::absolute(info.dli_fname, ignored).parent_path();
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
  if (auto known = all.libraries.find(path); known != all.libraries.end()) return known->second;
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library) return nullptr;
  auto entry = reinterpret_cast<GetClassObject>(dlsym(library, "DllGetClassObject"));
  if (!entry) {
    dlclose(library);
    return nullptr;
  }
  all.libraries.emplace(path, entry);
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
