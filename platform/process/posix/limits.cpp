#include "platform/process/limits.h"

#include <sys/resource.h>

size_t stackLimit() {
  constexpr size_t usual = size_t{8} << 20;
  rlimit limit{};
  const bool told = getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
  return told ? limit.rlim_cur : usual;
}
