#pragma once

#include <cstddef>

/// Bytes that the main thread's stack may grow to.
size_t stackLimit();
