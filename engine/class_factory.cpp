#include <new>

#include "engine/engine_object.h"
#include "engine/trace/tracing_engine.h"
#include "platform/com/com_ptr.h"

namespace {

/// The one factory of the library; lives as long as that.
class EngineFactory final : public IClassFactory {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) override {
    if (!object) return E_POINTER;
    const bool known = iid == interfaceId<IUnknown> || iid == interfaceId<IClassFactory>;
    *object = known ? static_cast<IClassFactory*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, const IID& iid, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    try {
      const auto engine = ComPtr<IZbEngine>::attach(new EngineObject);
      return traced(engine)->QueryInterface(iid, object);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(int) override { return S_OK; }
};

}  // namespace

extern "C" __attribute__((visibility("default"))) HRESULT DllGetClassObject(const CLSID& classId,
                                                                            const IID& iid, void** factory) {
  static EngineFactory instance;
  if (!factory) return E_POINTER;
  *factory = nullptr;
  if (!(classId == engineClassId)) return CLASS_E_CLASSNOTAVAILABLE;
  return instance.QueryInterface(iid, factory);
}
