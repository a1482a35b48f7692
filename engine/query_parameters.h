#pragma once

#include <vector>

#include "engine/jet_sql/jet_sql.h"
#include "platform/com/types.h"

/// The parameters of a stored query from the array that a list was flattened into: values in their order,
/// or pairs of a name and a value, `(5 "a")` or `(("Floor" . 5) ("Zone" . "a"))`. Fails for anything else.
std::vector<jet::Parameter> readParameters(const VARIANT& list);
