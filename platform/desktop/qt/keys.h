#pragma once

namespace platform {

/// The toolkit's key for a virtual key code; `Qt::Key_unknown` for those that it lacks.
int keyOfVirtualKey(int virtualKey);

}  // namespace platform
