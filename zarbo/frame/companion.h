#pragma once

/// The companion object of the installation: started with the module and stopped with it. It may be
/// missing, and nothing else is asked of it.

/// Creates and starts it; quiet when its class isn't there. A failing `Start` raises a `ComError`.
void startCompanion();
/// Stops and releases it, when there is one.
void stopCompanion();
