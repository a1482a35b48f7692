#pragma once

#include <cstddef>
#include <utility>

#include "platform/com/types.h"

/// Counted pointer to a COM object: holds one reference, or none when null.
template <class T>
class ComPtr {
 public:
  ComPtr() = default;
  ComPtr(std::nullptr_t) {}
  /// Takes a further reference.
  explicit ComPtr(T* object) : object_(object) {
    if (object_) object_->AddRef();
  }
  ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ~ComPtr() { reset(); }

  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Takes over a reference that the caller holds.
  static ComPtr attach(T* object) {
    ComPtr result;
    result.object_ = object;
    return result;
  }
  /// Hands the reference to the caller.
  [[nodiscard]] T* detach() { return std::exchange(object_, nullptr); }

  void reset() {
    if (T* object = std::exchange(object_, nullptr)) object->Release();
  }

  /// Address for a call that gives out a reference; what was held is released first.
  T** put() {
    reset();
    return &object_;
  }
  void** putVoid() { return reinterpret_cast<void**>(put()); }

  /// The object's other interface, or null when it has none such.
  template <class Other>
  ComPtr<Other> as() const {
    ComPtr<Other> result;
    if (object_ && FAILED(object_->QueryInterface(interfaceId<Other>, result.putVoid()))) return {};
    return result;
  }

  T* get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const ComPtr& a, const ComPtr& b) { return a.object_ == b.object_; }
  friend bool operator==(const ComPtr& a, std::nullptr_t) { return a.object_ == nullptr; }

 private:
  T* object_ = nullptr;
};
