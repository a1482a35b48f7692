#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/com/owners.h"

/// Record of interface calls, for scripts and tests that want to see what a program asks of an object.
/// One record for the process; off at first. A server that supports it records each call while it is on.

struct TracedCall {
  std::wstring method;
  std::vector<COleVariant> arguments;  ///< the plain inputs, in order
};

void setCallTrace(bool on);
bool callTraceOn();

/// Of more than 100,000 calls the oldest are dropped.
void recordCall(std::wstring_view method, std::vector<COleVariant> arguments);

/// The calls since the last one of this, oldest first.
std::vector<TracedCall> takeTracedCalls();
