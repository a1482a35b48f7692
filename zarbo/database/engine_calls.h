#pragma once

#include <string>

#include "interfaces/engine.h"
#include "platform/com/com_error.h"
#include "platform/com/owners.h"

/// How a call of the engine's interface becomes a plain value; a failing HRESULT is thrown.
namespace engine_calls {

inline void check(HRESULT result) { checkResult(result, interfaceId<IZbEngine>); }

/// A call whose only output is a boolean.
template <class Call>
bool asked(Call call) {
  short answer = VARIANT_FALSE;
  check(call(&answer));
  return answer != VARIANT_FALSE;
}

/// A call that answers by its sign: negative means failure.
template <class Call>
bool succeeded(Call call) {
  short failed = 0;
  check(call(&failed));
  return failed >= 0;
}

template <class Call>
std::wstring text(Call call) {
  Bstr answer;
  check(call(answer.put()));
  return answer.str();
}

/// A call that gives a record, and whether it did.
template <class Call>
bool giveRecord(COleVariant& record, Call call) {
  VARIANT* const slot = record.put();
  return asked([&](short* ok) { return call(slot, ok); });
}

}  // namespace engine_calls
