#pragma once

#include <string_view>

namespace lisp {

/// The pattern language of `wcmatch`: `#` digit, `@` letter, `.` neither, `*` any run, `?` any character,
/// `[…]` one of, `[~…]` none of, a leading `~` not, "`" the next character as it stands, `,` or. Case counts.
bool matchesWildcard(std::wstring_view text, std::wstring_view pattern);

}  // namespace lisp
