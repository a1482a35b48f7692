#include "platform/process/pages.h"

#include <sys/mman.h>

#include <new>

void* takePages(size_t bytes) {
  while (true) {
    void* const pages = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages != MAP_FAILED) return pages;
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

void emptyPages(void* pages, size_t bytes) { madvise(pages, bytes, MADV_DONTNEED); }
