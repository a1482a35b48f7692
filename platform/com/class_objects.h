#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "platform/com/com_ptr.h"
#include "platform/com/types.h"

/// Objects are found by the identifier of their class, in this order: a factory that was registered in
/// this process; the library that the resolver names; the library that is installed beside this one for the
/// class. Libraries stay loaded until the process ends.

#ifndef _WIN32

/// In-process server, local server, remote server: all that the module asks for.
inline constexpr DWORD CLSCTX_ALL = 23;

HRESULT CoInitialize(void* reserved);
void CoUninitialize();
/// REGDB_E_CLASSNOTREG for an unknown class, CO_E_DLLNOTFOUND when its library can't be loaded.
HRESULT CoCreateInstance(const CLSID& classId, IUnknown* outer, DWORD context, const IID& iid, void** object);
/// Puts an embedded object into its running state, in which ours always are.
HRESULT OleRun(IUnknown* object);

#endif

/// A loadable library exports this as "DllGetClassObject": gives the factory of a class.
using GetClassObject = HRESULT(STDMETHODCALLTYPE*)(const CLSID& classId, const IID& iid, void** factory);

/// The class is found as long as this object lives.
class ClassRegistration {
 public:
  ClassRegistration() = default;
  explicit ClassRegistration(unsigned key) : key_(key) {}
  ClassRegistration(ClassRegistration&& other) noexcept : key_(std::exchange(other.key_, 0)) {}
  ClassRegistration& operator=(ClassRegistration&& other) noexcept {
    std::swap(key_, other.key_);
    return *this;
  }
  ~ClassRegistration();

 private:
  unsigned key_ = 0;
};

/// Makes an object of a class and queries `iid` of it.
using ObjectMaker = std::function<HRESULT(const IID& iid, void** object)>;

/// A later registration of the same class stands before an earlier one.
[[nodiscard]] ClassRegistration registerClassObject(const CLSID& classId, ObjectMaker maker);

/// Says in which library a class lies; an empty path for "not known". An empty function takes it away.
using ClassLibraryResolver = std::function<std::filesystem::path(const CLSID& classId)>;
void setClassLibraryResolver(ClassLibraryResolver resolver);

/// A new object of the class, or null when the class can't be had: never throws for that.
template <class Interface>
ComPtr<Interface> createObject(const CLSID& classId) {
  ComPtr<Interface> result;
  if (FAILED(CoCreateInstance(classId, nullptr, CLSCTX_ALL, interfaceId<Interface>, result.putVoid())))
    return {};
  if (result) OleRun(result.get());
  return result;
}
