#include "engine/jet_sql/like.h"

#include <algorithm>

#include "engine/errors/error.h"
#include "engine/text/collation.h"
#include "platform/text/utf.h"

namespace jet {

LikePattern::LikePattern(std::string_view pattern, bool ansi) {
  std::wstring source = fromUtf8(pattern);
  std::transform(source.begin(), source.end(), source.begin(), lowerCharacter);
  const wchar_t anyText = ansi ? L'%' : L'*', anyCharacter = ansi ? L'_' : L'?';
  for (size_t i = 0; i < source.size(); ++i) {
    const wchar_t c = source[i];
    if (c == anyText) {
      if (steps_.empty() || steps_.back().kind != Step::AnyText) steps_.push_back({Step::AnyText, 0, {}});
    } else if (c == anyCharacter) {
      steps_.push_back({Step::AnyCharacter, 0, {}});
    } else if (c == L'#' && !ansi) {
      steps_.push_back({Step::Digit, 0, {}});
    } else if (c == L'[') {
      // A ] closes at once only in [], which matches nothing and takes no room.
      const size_t end = source.find(L']', i + 1);
      if (end == std::wstring::npos) throw Failure{{93, "Invalid pattern text", std::nullopt}};
      size_t at = i + 1;
      const bool negated = at + 1 < end && (source[at] == L'!' || (ansi && source[at] == L'^'));
      Step step{negated ? Step::NotSet : Step::Set, 0, {}};
      for (at += negated ? 1 : 0; at < end; ++at) {
        const bool range = at + 2 < end && source[at + 1] == L'-';
        step.ranges.push_back({source[at], source[range ? at + 2 : at]});
        if (range) at += 2;
      }
      if (!step.ranges.empty()) steps_.push_back(std::move(step));
      i = end;
    } else {
      steps_.push_back({Step::Literal, c, {}});
    }
  }
}

bool LikePattern::accepts(const Step& step, wchar_t c) {
  switch (step.kind) {
    case Step::Literal:
      return step.character == c;
    case Step::AnyCharacter:
      return true;
    case Step::Digit:
      return c >= L'0' && c <= L'9';
    default:
      break;
  }
  const bool in = std::any_of(step.ranges.begin(), step.ranges.end(),
                              [c](const Range& range) { return c >= range.low && c <= range.high; });
  return in == (step.kind == Step::Set);
}

// Only the last star needs to be taken back: what an earlier one took is as good as any.
bool LikePattern::matches(std::string_view bytes) const {
  std::wstring text = fromUtf8(bytes);
  std::transform(text.begin(), text.end(), text.begin(), lowerCharacter);
  constexpr size_t none = static_cast<size_t>(-1);
  size_t step = 0, at = 0, star = none, starAt = 0;
  while (at < text.size()) {
    if (step < steps_.size() && steps_[step].kind == Step::AnyText) {
      star = step++;
      starAt = at;
    } else if (step < steps_.size() && accepts(steps_[step], text[at])) {
      ++step;
      ++at;
    } else if (star != none) {
      step = star + 1;
      at = ++starAt;
    } else {
      return false;
    }
  }
  while (step < steps_.size() && steps_[step].kind == Step::AnyText) ++step;
  return step == steps_.size();
}

}  // namespace jet
