#include <algorithm>
#include <filesystem>

#include "platform/files/files.h"
#include "platform/files/native_path.h"
#include "platform/text/letters.h"
#include "platform/text/utf.h"

namespace platform {

namespace {

/// One step of a pattern, with the meaning that its neighbours give it.
struct Step {
  enum Kind { letter, any, anyBeforeLastDot, oneOrEnd, dotOrEnd } kind;
  wchar_t character = 0;
};

bool isWildcard(wchar_t c) { return c == L'*' || c == L'?'; }

std::vector<Step> stepsOf(const std::wstring& pattern) {
  if (pattern == L"*.*") return {{Step::any}};
  std::vector<Step> steps;
  for (size_t i = 0; i < pattern.size(); ++i) {
    const wchar_t c = pattern[i];
    const bool last = i + 1 == pattern.size();
    if (c == L'*') {
      if (!steps.empty() && steps.back().kind == Step::any) continue;
      const bool closingDot = i + 2 == pattern.size() && pattern[i + 1] == L'.';
      steps.push_back({closingDot ? Step::anyBeforeLastDot : Step::any});
    } else if (c == L'?') {
      steps.push_back({Step::oneOrEnd});
    } else if (c == L'.' && !last && isWildcard(pattern[i + 1])) {
      steps.push_back({Step::dotOrEnd});
    } else if (c == L'.' && last && !steps.empty() && steps.back().kind == Step::anyBeforeLastDot) {
      // What it asks for stands in the step before.
    } else {
      steps.push_back({Step::letter, upperLetter(c)});
    }
  }
  return steps;
}

/// Which steps may come next, kept as a set, so that no pattern takes more than steps × letters.
class Matcher {
 public:
  explicit Matcher(const std::vector<Step>& steps) : steps_(steps), open_(steps.size() + 1) {
    open_[0] = true;
    skipEmptySteps(false);
  }

  void feed(wchar_t c) {
    if (c == L'.') passBeforeDot();
    std::vector<bool> next(open_.size());
    for (size_t i = 0; i < steps_.size(); ++i) {
      if (!open_[i]) continue;
      switch (steps_[i].kind) {
        case Step::any:
          next[i] = true;
          break;
        case Step::anyBeforeLastDot:
          next[i] = c != L'.';
          break;
        case Step::oneOrEnd:
          next[i + 1] = next[i + 1] || c != L'.';
          break;
        case Step::dotOrEnd:
          next[i + 1] = next[i + 1] || c == L'.';
          break;
        case Step::letter:
          next[i + 1] = next[i + 1] || c == steps_[i].character;
          break;
      }
    }
    open_ = std::move(next);
    skipEmptySteps(false);
  }

  bool complete() {
    skipEmptySteps(true);
    return open_.back();
  }

 private:
  // Steps that may stand for no character.
  void skipEmptySteps(bool atEnd) {
    for (size_t i = 0; i < steps_.size(); ++i) {
      const Step::Kind kind = steps_[i].kind;
      const bool empty = kind == Step::any || kind == Step::anyBeforeLastDot ||
                         (atEnd && (kind == Step::oneOrEnd || kind == Step::dotOrEnd));
      if (open_[i] && empty) open_[i + 1] = true;
    }
  }

  void passBeforeDot() {
    for (size_t i = 0; i < steps_.size(); ++i) {
      const Step::Kind kind = steps_[i].kind;
      if (open_[i] && (kind == Step::oneOrEnd || kind == Step::any)) open_[i + 1] = true;
    }
  }

  const std::vector<Step>& steps_;
  std::vector<bool> open_;
};

bool matches(const std::wstring& name, const std::vector<Step>& steps) {
  Matcher matcher(steps);
  for (const wchar_t c : name) matcher.feed(upperLetter(c));
  return matcher.complete();
}

}  // namespace

bool matchesPattern(const std::wstring& name, const std::wstring& pattern) {
  return matches(name, stepsOf(pattern));
}

std::vector<std::wstring> findFiles(const std::wstring& pattern) {
  const SplitPath parts = splitPath(nativePath(pattern));
  const std::vector<Step> steps = stepsOf(fromUtf8(parts.name));
  std::vector<std::wstring> names;
  if (steps.empty()) return names;
  std::error_code problem;
  std::filesystem::directory_iterator entry(parts.folder, problem);
  if (problem) return names;
  for (const wchar_t* self : {L".", L".."}) {
    if (matches(self, steps)) names.emplace_back(self);
  }
  const auto sortedFrom = static_cast<ptrdiff_t>(names.size());
  for (; !problem && entry != std::filesystem::directory_iterator(); entry.increment(problem)) {
    std::wstring name = fromUtf8(entry->path().filename().native());
    if (matches(name, steps)) names.push_back(std::move(name));
  }
  std::sort(names.begin() + sortedFrom, names.end(), [](const std::wstring& a, const std::wstring& b) {
    const std::wstring upperA = upperCased(a), upperB = upperCased(b);
    return upperA != upperB ? upperA < upperB : a < b;
  });
  return names;
}

}  // namespace platform
