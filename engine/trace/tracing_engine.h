#pragma once

#include "platform/com/com_ptr.h"
#include "zarbo/database/engine.h"

/// The engine behind an object that records each call in the call trace while that is on.
ComPtr<IZbEngine> traced(const ComPtr<IZbEngine>& engine);
