#ifndef _WIN32

#include <cstdlib>
#include <cwchar>

#include "platform/com/automation.h"

namespace {

// The byte count lies right before the text; the block starts earlier to keep the text aligned.
constexpr size_t prefix = 8;

uint32_t* byteLength(BSTR text) { return reinterpret_cast<uint32_t*>(text) - 1; }

}  // namespace

BSTR SysAllocStringLen(const OLECHAR* text, UINT length) {
  constexpr size_t longest = (UINT32_MAX - 64) / sizeof(OLECHAR);
  if (length > longest) return nullptr;
  const size_t bytes = static_cast<size_t>(length) * sizeof(OLECHAR);
  char* block = static_cast<char*>(std::malloc(prefix + bytes + sizeof(OLECHAR)));
  if (!block) return nullptr;
  BSTR result = reinterpret_cast<BSTR>(block + prefix);
  *byteLength(result) = static_cast<uint32_t>(bytes);
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
  if (text) std::free(reinterpret_cast<char*>(text) - prefix);
}

UINT SysStringByteLen(BSTR text) { return text ? *byteLength(text) : 0; }

UINT SysStringLen(BSTR text) { return SysStringByteLen(text) / sizeof(OLECHAR); }

#endif
