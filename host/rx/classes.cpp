#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "brx/rx_object.h"
#include "host/rx/registry.h"
#include "platform/text/utf.h"

struct AcRxClassAccess {
  static void link(AcRxClass& descriptor, AcRxClass* parent) { descriptor.parent_ = parent; }
  /// The code behind a retired class may be unloaded at any time.
  static void retire(AcRxClass& descriptor) {
    descriptor.create_ = nullptr;
    descriptor.companion_ = nullptr;
  }
  static void describe(AcRxClass& descriptor, const ACHAR* dxfName, const ACHAR* appName, int dwgVersion,
                       int maintenanceVersion, int proxyFlags, AcRxCompanion companion) {
    if (dxfName) descriptor.dxfName_ = dxfName;
    if (appName) descriptor.appName_ = appName;
    descriptor.dwgVersion_ = dwgVersion;
    descriptor.maintenanceVersion_ = maintenanceVersion;
    descriptor.proxyFlags_ = proxyFlags;
    descriptor.companion_ = companion;
  }
};

namespace {

class Dictionary : public AcRxDictionary {
 public:
  AcRxObject* at(const ACHAR* name) const override {
    const auto found = entries_.find(std::wstring_view(name ? name : L""));
    return found == entries_.end() ? nullptr : found->second;
  }
  AcRxObject* atPut(const ACHAR* name, AcRxObject* object) override {
    return std::exchange(entries_[name ? name : L""], object);
  }
  AcRxObject* remove(const ACHAR* name) override {
    const auto found = entries_.find(std::wstring_view(name ? name : L""));
    if (found == entries_.end()) return nullptr;
    AcRxObject* const object = found->second;
    entries_.erase(found);
    return object;
  }

 private:
  std::map<std::wstring, AcRxObject*, std::less<>> entries_;
};

/// All descriptors; "ClassDictionary" of the registry only names them. Descriptors taken out of the
/// registry are kept to the end, since objects of the class may still point at them.
struct Classes {
  std::vector<std::unique_ptr<AcRxClass>> all, retired;
  std::vector<AcRxClass*> notLinked;
  Dictionary byName;
  /// Of classes with the same name in drawing files the one counts that came last.
  std::multimap<std::wstring, AcRxClass*, std::less<>> byDxfName;
  Dictionary registry;
  AcRxClass* object;
  AcRxClass* descriptor;
  AcRxClass* dictionary;

  Classes() {
    registry.atPut(L"ClassDictionary", &byName);
    object = add(L"AcRxObject", L"");
    descriptor = add(L"AcRxClass", L"AcRxObject");
    dictionary = add(L"AcRxDictionary", L"AcRxObject");
    linkAll();
  }

  AcRxClass* add(const ACHAR* name, const ACHAR* parent, AcRxConstructor create = nullptr) {
    all.push_back(std::make_unique<AcRxClass>(name, parent ? parent : L"", create));
    byName.atPut(name, all.back().get());
    notLinked.push_back(all.back().get());
    return all.back().get();
  }

  AcRxClass* withDxfName(std::wstring_view dxfName) const {
    for (auto at = byDxfName.upper_bound(dxfName); at != byDxfName.begin();) {
      const auto& [name, each] = *--at;
      if (name != dxfName) break;
      if (byName.at(each->name()) == each) return each;
    }
    return nullptr;
  }

  /// Those that were not linked before.
  std::vector<AcRxClass*> linkAll() {
    for (const auto& each : all) {
      AcRxClassAccess::link(*each, static_cast<AcRxClass*>(byName.at(each->parentName())));
    }
    return std::exchange(notLinked, {});
  }

  void retire(AcRxClass& descriptor) {
    byName.remove(descriptor.name());
    std::erase_if(byDxfName, [&](const auto& each) { return each.second == &descriptor; });
    std::erase(notLinked, &descriptor);
    const auto found =
        std::find_if(all.begin(), all.end(), [&](auto& each) { return each.get() == &descriptor; });
    retired.push_back(std::move(*found));
    all.erase(found);
  }
};

Classes& classes() {
  static Classes instance;
  return instance;
}

host::ClassObserver& observer() {
  static host::ClassObserver instance{[](std::span<AcRxClass* const>) {}, [](AcRxClass&) {}};
  return instance;
}

}  // namespace

AcRxObject::~AcRxObject() = default;
AcRxClass* AcRxObject::isA() const { return desc(); }
AcRxClass* AcRxObject::desc() { return classes().object; }
bool AcRxObject::isKindOf(const AcRxClass* base) const {
  const AcRxClass* own = isA();
  return own && own->isDerivedFrom(base);
}

AcRxClass::AcRxClass(std::wstring name, std::wstring parent, AcRxConstructor create)
    : name_(std::move(name)), parentName_(std::move(parent)), create_(create) {}
AcRxClass* AcRxClass::isA() const { return desc(); }
AcRxClass* AcRxClass::desc() { return classes().descriptor; }
bool AcRxClass::isDerivedFrom(const AcRxClass* base) const {
  for (const AcRxClass* each = this; each; each = each->parent_) {
    if (each == base) return true;
  }
  return false;
}

AcRxClass* AcRxDictionary::isA() const { return desc(); }
AcRxClass* AcRxDictionary::desc() { return classes().dictionary; }

AcRxDictionary* acrxSysRegistry() { return &classes().registry; }

AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parent, AcRxConstructor create,
                        const ACHAR* dxfName) {
  return newBrxClass(name, parent, 0, 0, 0, create, nullptr, dxfName, nullptr);
}

AcRxClass* newBrxClass(const ACHAR* name, const ACHAR* parent, int dwgVersion, int maintenanceVersion,
                       int proxyFlags, AcRxConstructor create, AcRxCompanion companion, const ACHAR* dxfName,
                       const ACHAR* appName) {
  AcRxClass* const made = classes().add(name, parent, create);
  AcRxClassAccess::describe(*made, dxfName, appName, dwgVersion, maintenanceVersion, proxyFlags, companion);
  if (made->dxfName()) classes().byDxfName.emplace(made->dxfName(), made);
  return made;
}

void deleteAcRxClass(AcRxClass* descriptor) {
  if (descriptor && classes().byName.at(descriptor->name()) == descriptor) {
    observer().retiring(*descriptor);
    classes().retire(*descriptor);
    AcRxClassAccess::retire(*descriptor);
  }
}

void acrxBuildClassHierarchy() { observer().linked(classes().linkAll()); }

void acrx_abort(const ACHAR* format, ...) {
  wchar_t text[1024];
  va_list values;
  va_start(values, format);
  if (std::vswprintf(text, std::size(text), format, values) < 0) text[0] = 0;
  va_end(values);
  std::fprintf(stderr, "The host ends: %s\n", toUtf8(text).c_str());
  std::abort();
}

namespace host {

void setClassObserver(ClassObserver next) { observer() = next; }

AcRxClass* findClass(std::wstring_view name) {
  return static_cast<AcRxClass*>(classes().byName.at(std::wstring(name).c_str()));
}

AcRxClass* findClassByDxfName(std::wstring_view dxfName) { return classes().withDxfName(dxfName); }

}  // namespace host
