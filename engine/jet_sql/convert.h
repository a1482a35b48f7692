#pragma once

#include "engine/jet_sql/functions.h"

namespace jet {

/// How a value's own type changes its text: what SQLite's storage doesn't tell.
enum class Reading : int { Plain = 0, Date = 1, Scaled = 2, Single = 3 };
Reading readingOf(Type type);

/// The call in SQLite's SQL that gives what `sql` gives in the storage of `to`. `place` in the statement is
/// what a failure tells, -1 for none.
std::string conversionCall(const std::string& place, const std::string& sql, Reading reading, Type to);

/// Text of argument `i`, as `&` and text columns take it.
std::string textOf(const Call& call, int i, Reading reading);

/// Gives argument `i` converted to the storage of `type`; 6 beyond the type's range, 3464 for what is no
/// such value. Null gives null.
void giveAs(Call& call, int i, Type type, Reading reading);

}  // namespace jet
