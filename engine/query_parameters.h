#pragma once

#include <vector>

#include "engine/jet_sql/jet_sql.h"
#include "platform/com/types.h"

/// The parameters of a stored query from the array that a list was flattened into: values in their order,
/// `(5 "a")`, or lists of a name and a value, `(("Floor" . 5) ("Zone" "a") ("Key"))`, where a name alone is
/// null. Fails for anything else, naming it.
std::vector<jet::Parameter> readParameters(const VARIANT& list);
