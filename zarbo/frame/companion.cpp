#include "zarbo/frame/companion.h"

#include "platform/com/class_objects.h"
#include "platform/com/com_error.h"

namespace {

ComPtr<IZbCompanion>& companion() {
  static ComPtr<IZbCompanion> instance;
  return instance;
}

}  // namespace

void startCompanion() {
  companion() = createObject<IZbCompanion>(companionClass);
  if (companion()) checkResult(companion()->Start(), interfaceId<IZbCompanion>);
}

void stopCompanion() {
  const ComPtr<IZbCompanion> stopped = std::move(companion());
  if (stopped) checkResult(stopped->Stop(), interfaceId<IZbCompanion>);
}
