#pragma once

#include <span>
#include <string_view>

#include "brx/rx_object.h"

namespace host {

/// Registered classes by run-time name or by the name that stands in drawing files; null when there
/// is none (any more).
AcRxClass* findClass(std::wstring_view name);
AcRxClass* findClassByDxfName(std::wstring_view dxfName);

/// Told of classes that come and go, so that objects of drawings can follow.
struct ClassObserver {
  /// These were registered since the last time, and are linked now.
  void (*linked)(std::span<AcRxClass* const> added);
  /// The class is about to leave the registry, and its code the process.
  void (*retiring)(AcRxClass& descriptor);
};
void setClassObserver(ClassObserver observer);

}  // namespace host
