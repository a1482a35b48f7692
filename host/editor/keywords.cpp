#include "host/editor/keywords.h"

#include "platform/text/letters.h"

namespace host {
namespace {

bool isSmall(wchar_t c) { return upperLetter(c) != c; }
bool isCapital(wchar_t c) { return lowerLetter(c) != c; }

}  // namespace

KeywordList::Word KeywordList::wordOf(std::wstring_view text) {
  Word made;
  const size_t comma = text.find(L',');
  made.text = text.substr(0, comma);
  if (comma != std::wstring_view::npos) {
    made.required = upperCased(std::wstring(text.substr(comma + 1)));
    made.fewest = upperCased(made.text).starts_with(made.required) ? made.required.size() : made.text.size();
    return made;
  }
  size_t begin = 0;
  while (begin < made.text.size() && !isCapital(made.text[begin])) ++begin;
  // Digits and the like before the first capital belong to what is required: "2Points".
  while (begin > 0 && begin < made.text.size() && !isSmall(made.text[begin - 1])) --begin;
  size_t end = begin;
  while (end < made.text.size() && !isSmall(made.text[end])) ++end;
  made.required = upperCased(made.text.substr(begin, end - begin));
  made.fewest = end;
  return made;
}

KeywordList::KeywordList(std::wstring_view text) {
  bool ofProgram = false;
  while (!text.empty()) {
    const size_t blank = text.find_first_of(L" \t\n");
    std::wstring_view word = text.substr(0, blank);
    text = blank == std::wstring_view::npos ? std::wstring_view() : text.substr(blank + 1);
    if (!ofProgram && word.starts_with(L'_')) {
      ofProgram = true;
      word.remove_prefix(1);
    }
    if (!word.empty()) (ofProgram ? programNames_ : words_).push_back(wordOf(word));
  }
  // A list of program's names alone is a plain list.
  if (words_.empty()) words_.swap(programNames_);
}

bool KeywordList::Word::means(const std::wstring& typed) const {
  if (typed == required) return !typed.empty();
  const std::wstring whole = upperCased(text);
  return typed.size() >= fewest && !typed.empty() && whole.starts_with(typed);
}

std::optional<size_t> KeywordList::find(std::wstring_view typed) const {
  const bool byProgramName = typed.starts_with(L'_');
  if (byProgramName) typed.remove_prefix(1);
  const std::wstring wanted = upperCased(std::wstring(typed));
  const auto& searched = byProgramName && !programNames_.empty() ? programNames_ : words_;
  for (size_t i = 0; i < searched.size(); ++i) {
    if (upperCased(searched[i].text) == wanted) return i;
  }
  for (size_t i = 0; i < searched.size(); ++i) {
    if (searched[i].means(wanted)) return i;
  }
  return std::nullopt;
}

const std::wstring& KeywordList::nameAt(size_t place) const {
  return place < programNames_.size() ? programNames_[place].text : words_[place].text;
}

std::optional<std::wstring> KeywordList::match(std::wstring_view typed) const {
  const auto place = find(typed);
  return place ? std::optional(nameAt(*place)) : std::nullopt;
}

}  // namespace host
