#pragma once

#include "host/editor/input_source.h"
#include "host/editor/task.h"

namespace host {

/// Shows the prompt and takes input until some suits: what doesn't is refused with a message. A distance or
/// angle by two points asks for the second. Points become the variable LASTPOINT. A pick that was made by
/// a point comes back with the point and a null entity.
Task<Answer> acquire(InputSource& source, Request request);

/// The same of the user, at once.
Answer ask(Request request);

/// A point that was given, for those that are told from it.
void keepLastPoint(const AcGePoint3d& point);

/// What `acedInitGet` laid down for the next call, which it takes away.
PromptRules takePromptRules();
void setPromptRules(PromptRules rules);

/// The keyword behind the last answer of `RTKWORD`.
const std::wstring& lastKeyword();
void setLastKeyword(std::wstring keyword);

}  // namespace host
