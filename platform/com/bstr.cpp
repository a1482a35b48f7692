#include "platform/com/owners.h"

#ifdef _WIN32

BSTR shareBstr(BSTR text) { return text ? SysAllocStringLen(text, SysStringLen(text)) : nullptr; }

#else

#include <atomic>
#include <cstdlib>
#include <cwchar>
#include <new>

namespace {

/// What lies before the text, the count of bytes right before it.
struct Prefix {
  std::atomic<uint32_t> owners;
  uint32_t bytes;
};

Prefix& prefixOf(BSTR text) { return reinterpret_cast<Prefix*>(text)[-1]; }

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  constexpr size_t longest = (UINT32_MAX - 64) / sizeof(OLECHAR);
  if (length > longest) return nullptr;
  const size_t bytes = static_cast<size_t>(length) * sizeof(OLECHAR);
  char* block = static_cast<char*>(std::malloc(sizeof(Prefix) + bytes + sizeof(OLECHAR)));
  if (!block) return nullptr;
  new (block) Prefix{1, static_cast<uint32_t>(bytes)};
  BSTR result = reinterpret_cast<BSTR>(block + sizeof(Prefix));
  if (text) {
    std::memcpy(result, text, bytes);
  } else {
    std::memset(result, 0, bytes);
  }
  result[length] = 0;
  return result;
}

BSTR SysAllocString(const OLECHAR* text) {
  return text ? SysAllocStringLen(text, static_cast<UINT>(std::wcslen(text))) : nullptr;
}

void SysFreeString(BSTR text) {
  if (!text) return;
  Prefix& prefix = prefixOf(text);
  // Nobody can join the only owner meanwhile, which spares most texts the atomic step.
  const bool last = prefix.owners.load(std::memory_order_acquire) == 1 ||
                    prefix.owners.fetch_sub(1, std::memory_order_acq_rel) == 1;
  if (last) std::free(&prefix);
}

BSTR shareBstr(BSTR text) {
  if (text) prefixOf(text).owners.fetch_add(1, std::memory_order_relaxed);
  return text;
}

UINT SysStringByteLen(BSTR text) { return text ? prefixOf(text).bytes : 0; }

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / sizeof(OLECHAR); }

#endif
