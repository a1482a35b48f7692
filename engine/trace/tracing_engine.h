#pragma once

#include "interfaces/engine.h"
#include "platform/com/com_ptr.h"

/// The engine behind an object that records each call in the call trace while that is on.
ComPtr<IZbEngine> traced(const ComPtr<IZbEngine>& engine);
