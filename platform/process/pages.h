#pragma once

#include <cstddef>

/// Memory for what is named by its address: no address is ever given out again.

/// Zeroes; throws `std::bad_alloc` as `new` does.
void* takePages(size_t bytes);
/// Gives the memory back. Whoever still reads at the addresses finds zeroes.
void emptyPages(void* pages, size_t bytes);
