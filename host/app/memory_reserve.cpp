#include "host/app/memory_reserve.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

#include "host/lisp/interpreter.h"

#ifdef ZARBO_OWN_ALLOCATOR
#include <mimalloc.h>
#endif

namespace {

/// Enough for the allocator, which takes memory in runs of 64 MB, and for a drawing on its way to a file.
constexpr size_t reserveSize = size_t{160} << 20;
std::atomic<void*> reserve = nullptr;

void giveReserveFree() {
  void* const held = reserve.exchange(nullptr);
  if (!held) throw std::bad_alloc();
  std::free(held);
  lisp::Interpreter::endForMemory();
}

}  // namespace

void host::holdMemoryReserve() {
  if (reserve.load()) return;
#ifdef ZARBO_OWN_ALLOCATOR
  // What has become free is kept for later; the reserve comes first.
  mi_collect(true);
#endif
  // Nothing is written to it, so that it costs address space alone.
  void* const held = std::malloc(reserveSize);
  if (!held) return;
  reserve = held;
  std::set_new_handler(giveReserveFree);
}

#ifdef ZARBO_OWN_ALLOCATOR

// The allocator's own `new` ends the program when there is no memory. These stand before it in the whole
// process, and do what the language asks: the handler is called, and std::bad_alloc thrown.

namespace {

template <class Allocate>
void* allocate(size_t size, Allocate once) {
  while (true) {
    if (void* const block = once()) return block;
    const std::new_handler handler = std::get_new_handler();
    // What is larger than the reserve isn't helped by it.
    if (!handler || size > reserveSize / 2) throw std::bad_alloc();
    handler();
  }
}

void* allocate(size_t size) {
  return allocate(size, [=] { return mi_malloc(size); });
}
void* allocate(size_t size, std::align_val_t alignment) {
  return allocate(size, [=] { return mi_malloc_aligned(size, static_cast<size_t>(alignment)); });
}

template <class... Where>
void* allocateOrNull(Where... where) noexcept {
  try {
    return allocate(where...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

void* operator new(size_t size) { return allocate(size); }
void* operator new[](size_t size) { return allocate(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size); }
void* operator new[](size_t size, const std::nothrow_t&) noexcept { return allocateOrNull(size); }
void* operator new(size_t size, std::align_val_t at) { return allocate(size, at); }
void* operator new[](size_t size, std::align_val_t at) { return allocate(size, at); }
void* operator new(size_t size, std::align_val_t at, const std::nothrow_t&) noexcept {
  return allocateOrNull(size, at);
}
void* operator new[](size_t size, std::align_val_t at, const std::nothrow_t&) noexcept {
  return allocateOrNull(size, at);
}

#endif
