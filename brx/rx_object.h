#pragma once

#include <string>

#include "brx/adesk.h"

/// Run-time classes of the host and their registry.

class AcRxObject;
class AcRxClass;
class AcRxDictionary;

/// Root of all classes that the host knows by name at run time.
class BRX_API AcRxObject {
 public:
  virtual ~AcRxObject();
  virtual AcRxClass* isA() const;
  static AcRxClass* desc();
  bool isKindOf(const AcRxClass* base) const;

  AcRxObject(const AcRxObject&) = default;
  AcRxObject& operator=(const AcRxObject&) = default;

 protected:
  AcRxObject() = default;
};

using AcRxConstructor = AcRxObject* (*)();
/// Attaches the host's own implementation to an object of a module's class, under the class name.
using AcRxCompanion = void* (*)(const ACHAR* className);

/// Descriptor of a run-time class. Made by `newAcRxClass`/`newBrxClass`, owned by the registry.
class BRX_API AcRxClass : public AcRxObject {
 public:
  AcRxClass(std::wstring name, std::wstring parent, AcRxConstructor create);
  AcRxClass* isA() const override;
  static AcRxClass* desc();

  const ACHAR* name() const { return name_.c_str(); }
  const ACHAR* parentName() const { return parentName_.c_str(); }
  const ACHAR* dxfName() const { return dxfName_.empty() ? nullptr : dxfName_.c_str(); }
  const ACHAR* appName() const { return appName_.empty() ? nullptr : appName_.c_str(); }
  /// Null before `acrxBuildClassHierarchy` has linked the class, and at the root.
  AcRxClass* myParent() const { return parent_; }
  int dwgVersion() const { return dwgVersion_; }
  int maintenanceVersion() const { return maintenanceVersion_; }
  int proxyFlags() const { return proxyFlags_; }
  /// A new object of the class, the caller's; null when the class is abstract.
  AcRxObject* create() const { return create_ ? create_() : nullptr; }
  bool isDerivedFrom(const AcRxClass* base) const;

 private:
  friend struct AcRxClassAccess;
  std::wstring name_, parentName_, dxfName_, appName_;
  AcRxClass* parent_ = nullptr;
  AcRxConstructor create_;
  AcRxCompanion companion_ = nullptr;
  int dwgVersion_ = 0, maintenanceVersion_ = 0, proxyFlags_ = 0;
};

/// Registers a class that the host implements itself; DXF and application name may be null.
AcRxClass* newAcRxClass(const ACHAR* name, const ACHAR* parent, AcRxConstructor create = nullptr,
                        const ACHAR* dxfName = nullptr);
/// Registers a custom class of a module. The class is linked to its parent by the next
/// `acrxBuildClassHierarchy`.
AcRxClass* newBrxClass(const ACHAR* name, const ACHAR* parent, int dwgVersion, int maintenanceVersion,
                       int proxyFlags, AcRxConstructor create, AcRxCompanion companion, const ACHAR* dxfName,
                       const ACHAR* appName);
/// Takes a class out of the registry; objects of it become proxies.
void deleteAcRxClass(AcRxClass* descriptor);
void acrxBuildClassHierarchy();

/// Names and objects. Names are compared exactly.
class BRX_API AcRxDictionary : public AcRxObject {
 public:
  AcRxClass* isA() const override;
  static AcRxClass* desc();
  /// Null when the name isn't there. The dictionary keeps its entries.
  virtual AcRxObject* at(const ACHAR* name) const = 0;
  /// Puts or replaces; answers what stood there before. No ownership passes.
  virtual AcRxObject* atPut(const ACHAR* name, AcRxObject* object) = 0;
  virtual AcRxObject* remove(const ACHAR* name) = 0;
};

/// The registry of the process; holds "ClassDictionary", "AcEditor" and the services of modules.
AcRxDictionary* acrxSysRegistry();

/// Ends the program with a message.
[[noreturn]] void acrx_abort(const ACHAR* format, ...);

/// Declares `desc`, `isA` and `cast` of a run-time class; `desc` gives `gpDesc`, set at registration.
#define ACRX_DECLARE_MEMBERS(Class)                                   \
  AcRxClass* isA() const override;                                    \
  static AcRxClass* gpDesc;                                           \
  static AcRxClass* desc() { return gpDesc; }                         \
  static Class* cast(const AcRxObject* object) {                      \
    return object && gpDesc && object->isKindOf(gpDesc)               \
               ? static_cast<Class*>(const_cast<AcRxObject*>(object)) \
               : nullptr;                                             \
  }
#define ACRX_DEFINE_MEMBERS(Class)    \
  AcRxClass* Class::gpDesc = nullptr; \
  AcRxClass* Class::isA() const { return gpDesc; }
