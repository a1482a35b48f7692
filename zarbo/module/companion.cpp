#include "zarbo/module/companion.h"

#include "platform/com/class_objects.h"
#include "platform/com/com_error.h"

namespace {

ComPtr<IZbCompanion>& companion() {
  static ComPtr<IZbCompanion> instance;
  return instance;
}

}  // namespace

void startCompanion() {
  ComPtr<IZbCompanion> made = createObject<IZbCompanion>(companionClass);
  if (made) checkResult(made->Start(), interfaceId<IZbCompanion>);
  companion() = std::move(made);
}

void stopCompanion() {
  const ComPtr<IZbCompanion> stopped = std::move(companion());
  if (stopped) checkResult(stopped->Stop(), interfaceId<IZbCompanion>);
}
