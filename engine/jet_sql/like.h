#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace jet {

/// A pattern of Like (`*` any text, `?` a character, `#` a digit, `[a-z]` and `[!a-z]` sets) or of ALike
/// (`%`, `_` and the sets). Case doesn't count. Matching takes at most text times pattern steps.
class LikePattern {
 public:
  /// Throws `Failure` (93) for a set that isn't closed.
  LikePattern(std::string_view pattern, bool ansi);
  bool matches(std::string_view text) const;

 private:
  struct Range {
    wchar_t low, high;
  };
  struct Step {
    enum Kind { Literal, AnyText, AnyCharacter, Digit, Set, NotSet } kind;
    wchar_t character = 0;
    std::vector<Range> ranges;
  };
  static bool accepts(const Step& step, wchar_t c);

  std::vector<Step> steps_;
};

}  // namespace jet
