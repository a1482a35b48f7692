#pragma once

namespace host {

/// Toolkits end the process when the display goes away. As long as this lives, changed drawings are then
/// saved beside their files (those that have none in the user's temporary folder) as "name.rescued.dwg",
/// which standard error tells.
class Rescue {
 public:
  Rescue();
  ~Rescue();
  /// After work that may have made what the saving needs.
  void renew();
  Rescue(const Rescue&) = delete;
  Rescue& operator=(const Rescue&) = delete;
};

}  // namespace host
