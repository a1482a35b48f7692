#pragma once

/// Stops the timers that are still running, before the module goes.
void stopJigTimers();
