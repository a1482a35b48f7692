#include "interfaces/function_help.h"

#include <span>

#include "platform/text/letters.h"
#include "zarbo/module/kv_help.h"
#include "zarbo/module/zb_help.h"

/// For hosts that show help; the others don't ask.
extern "C" __attribute__((visibility("default"))) const FunctionHelp* functionHelp(const wchar_t* name) {
  const std::wstring wanted = upperCased(name);
  for (const std::span<const FunctionHelp> table :
       {std::span<const FunctionHelp>(zbHelp), std::span<const FunctionHelp>(kvHelp)}) {
    for (const FunctionHelp& each : table) {
      if (upperCased(each.name) == wanted) return &each;
    }
  }
  return nullptr;
}
