#pragma once

#include "platform/com/automation.h"

/// An object of one interface. Its references are counted, and nothing ends with the last one.
template <class Interface>
class FakeObject : public Interface {
 public:
  ULONG references = 0;

  HRESULT STDMETHODCALLTYPE QueryInterface(const IID& iid, void** object) override {
    if (!(iid == interfaceId<Interface>)) return E_NOINTERFACE;
    *object = this;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(const IID&, OLECHAR**, UINT, LCID, DISPID*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, const IID&, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                   UINT*) override {
    return E_NOTIMPL;
  }
};
