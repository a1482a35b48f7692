#include "platform/process/pages.h"

#include <sys/mman.h>

#include <new>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace {

/// The leak checker looks for pointers only in memory that it knows of.
void tellLeakChecker([[maybe_unused]] void* pages, [[maybe_unused]] size_t bytes) {
#ifdef __SANITIZE_ADDRESS__
  __lsan_register_root_region(pages, bytes);
#endif
}

}  // namespace

void* takePages(size_t bytes) {
  while (true) {
    void* const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages != MAP_FAILED) {
      tellLeakChecker(pages, bytes);
      return pages;
    }
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

void emptyPages(void* pages, size_t bytes) { madvise(pages, bytes, MADV_DONTNEED); }
